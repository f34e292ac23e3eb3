#include "tests/TempFolder.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/Faults.h"

#include <gtest/gtest.h>
#include <sys/mount.h>

namespace
{

class TransactionTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(CreateDatabase(m_strPath, Families::Schema()));
        auto const status = OpenDatabase(m_strPath, Families::Schema(), m_database);
        ASSERT_TRUE(status) << status.Text();
    }

    CTempFolder m_temporary;
    std::string m_strPath = m_temporary.Path() / "family.mdb";
    std::unique_ptr<CDatabase> m_database;
};

/// A disk of 1 MB in the place of a folder, for as long as the object lives.
class CSmallDisk
{
public:
    explicit CSmallDisk(std::string path)
        : m_strPath(std::move(path))
        , m_bMounted(::mount("tmpfs", m_strPath.c_str(), "tmpfs", 0, "size=1m") == 0)
    {
    }
    ~CSmallDisk()
    {
        if (m_bMounted) {
            ::umount2(m_strPath.c_str(), MNT_DETACH);
        }
    }
    CSmallDisk(CSmallDisk const&) = delete;
    CSmallDisk& operator=(CSmallDisk const&) = delete;

    bool IsMounted() const { return m_bMounted; }

private:
    std::string m_strPath;
    bool m_bMounted;
};

} // namespace

TEST_F(TransactionTest, TheOutermostCommitsAndNothingBeforeIt)
{
    {
        CTransaction outer(*m_database);
        ASSERT_TRUE(Families::Save(*m_database, 1));
        ASSERT_TRUE(Families::Save(*m_database, 2));
    }
    EXPECT_EQ(Families::Count(*m_database), 0);
    CTransaction outer(*m_database);
    ASSERT_TRUE(Families::Save(*m_database, 1));
    ASSERT_TRUE(outer.Commit());
    EXPECT_EQ(Families::Count(*m_database), 1);
}

TEST_F(TransactionTest, AnInnerOneThatIsGivenUpTakesTheOuterOneAlong)
{
    CTransaction outer(*m_database);
    ASSERT_TRUE(Families::Save(*m_database, 1));
    {
        CTransaction const inner(*m_database);
        ASSERT_TRUE(Families::SaveRows(*m_database, 2));
    }
    EXPECT_FALSE(Families::SaveRows(*m_database, 3));
    EXPECT_FALSE(Families::Save(*m_database, 4));
    EXPECT_FALSE(outer.Commit());
    EXPECT_EQ(Families::Count(*m_database), 0);
    EXPECT_TRUE(Families::Save(*m_database, 5)) << "the next one starts anew";
    EXPECT_EQ(Families::Count(*m_database), 1);
}

TEST_F(TransactionTest, ARowThatBreaksARuleLeavesTheRest)
{
    CTransaction outer(*m_database);
    ASSERT_TRUE(Families::Save(*m_database, 1));
    std::int64_t key = 0;
    std::vector<DbValue> const twin{std::int64_t(1), std::int64_t(0), "note"};
    std::vector<DbValue> const orphan{std::int64_t(4711), "child"};
    EXPECT_EQ(m_database->Insert(Families::kFamilies, twin, key).Error(), DbError::constraint);
    EXPECT_EQ(
        m_database->Insert(Families::kChildrenTable, orphan, key).Error(), DbError::constraint);
    ASSERT_TRUE(Families::Save(*m_database, 2));
    ASSERT_TRUE(outer.Commit());
    EXPECT_EQ(Families::Count(*m_database), 2);
    EXPECT_EQ(Families::Partial(*m_database), 0);
}

TEST_F(TransactionTest, AStatementThatCannotRunTakesTheRestAlong)
{
    CTransaction outer(*m_database);
    std::int64_t changed = 0;
    ASSERT_TRUE(Families::Save(*m_database, 1));
    EXPECT_FALSE(m_database->Execute("DELETE FROM nowhere", {}, changed));
    EXPECT_FALSE(outer.Commit());
    EXPECT_EQ(Families::Count(*m_database), 0);
}

TEST_F(TransactionTest, ATextTooLongForAnyFieldIsRefusedAndNotForgotten)
{
    std::int64_t key = 0;
    std::vector<DbValue> values{std::int64_t(1), std::int64_t(0), "note"};
    ASSERT_TRUE(m_database->Insert(Families::kFamilies, values, key));
    ASSERT_TRUE(
        m_database->Execute("CREATE TABLE notes (id INTEGER PRIMARY KEY, note TEXT)", {}, key));
    CTableInfo const notes{"notes", {"note"}};
    ASSERT_TRUE(m_database->Insert(notes, std::vector<DbValue>{"kept"}, key));
    std::vector<DbValue> const tooLong{std::string(65U << 20, 'x')};
    EXPECT_FALSE(m_database->Update(notes, key, tooLong, {true}));
    EXPECT_EQ(Families::Number(*m_database, "SELECT count(*) FROM notes WHERE note = 'kept'"), 1);
}

// SQLite rolls a transaction back by itself when a page that it has to put aside finds no room.
TEST_F(TransactionTest, AFullDiskInTheMiddleLeavesNothingThatFollows)
{
    std::string const note(100'000, 'n');
    CTransaction transaction(*m_database);
    CDbStatus status;
    std::int64_t number = 1;
    for (; status && number < 1000; ++number) {
        if (number == 10) {
            Faults::Begin(1, ENOSPC, true);
        }
        status = Families::SaveRows(*m_database, number, note);
    }
    ASSERT_TRUE(Faults::End());
    EXPECT_EQ(status.Error(), DbError::full) << status.Text();
    EXPECT_FALSE(Families::SaveRows(*m_database, 5000));
    std::int64_t removed = 0;
    EXPECT_FALSE(m_database->Execute("DELETE FROM children", {}, removed));
    EXPECT_EQ(transaction.Commit().Error(), DbError::full) << "the reason, not its consequence";
    EXPECT_EQ(Families::Count(*m_database), 0);
    EXPECT_TRUE(Families::Save(*m_database, 1));
    EXPECT_EQ(Families::Count(*m_database), 1);
}

TEST_F(TransactionTest, ADiskThatIsReallyFullIsToldAndKeepsWhatItHas)
{
    CSmallDisk const disk(m_temporary.Path());
    if (!disk.IsMounted()) {
        GTEST_SKIP() << "only root may make a small disk";
    }
    auto const path = m_temporary.Path() / "full.mdb";
    ASSERT_TRUE(CreateDatabase(path, Families::Schema()));
    std::unique_ptr<CDatabase> database;
    ASSERT_TRUE(OpenDatabase(path, Families::Schema(), database));
    std::int64_t stored = 0;
    CDbStatus status;
    while (status && stored < 1000) {
        status = Families::Save(*database, stored + 1, std::string(20'000, 'n'));
        stored += status ? 1 : 0;
    }
    EXPECT_EQ(status.Error(), DbError::full) << status.Text();
    EXPECT_GT(stored, 5);
    EXPECT_EQ(Families::Count(*database), stored);
    EXPECT_EQ(Families::Partial(*database), 0);
    auto const copy = m_temporary.Path() / "copy.mdb";
    EXPECT_EQ(database->CopyTo(copy).Error(), DbError::full);
    EXPECT_FALSE(std::filesystem::exists(copy));
    auto const other = m_temporary.Path() / "new.mdb";
    EXPECT_EQ(CreateDatabase(other, Families::Schema()).Error(), DbError::full);
    EXPECT_FALSE(std::filesystem::exists(other));
}
