#include "tests/TempFolder.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PeerProcess.h"

#include <chrono>
#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

class MovedFileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(CreateDatabase(m_strPath, Families::Schema()));
        m_database = Open();
        ASSERT_TRUE(Families::Save(*m_database, 1));
        ASSERT_TRUE(m_database->FindKeys(Families::kFamilies, {"ORDER BY id", {}}, m_keys));
        ASSERT_TRUE(m_database->Checkpoint());
    }

    std::unique_ptr<CDatabase> Open() const
    {
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, Families::Schema(), database);
        EXPECT_TRUE(status) << status.Text();
        return database;
    }

    /// Writes are refused at once, reads some milliseconds later.
    void ExpectAllRefused()
    {
        std::int64_t number = 0;
        auto const key = m_keys[0];
        std::vector<DbValue> const values{std::int64_t(7), std::int64_t(3), "note"};
        ExpectMoved({
            m_database->Insert(Families::kFamilies, values, number),
            m_database->Update(Families::kFamilies, key, values, {true, false, false}),
            m_database->Remove(Families::kFamilies, key, number),
            m_database->Execute("DELETE FROM families", {}, number),
            m_database->CopyTo(m_strPath + ".copy"),
            m_database->Checkpoint(),
            CTransaction(*m_database).Commit(),
        });
        CKeyset keys;
        CRowBlock rows;
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        while (m_database->ReadRows(Families::kFamilies, {&key, 1}, rows)
            && std::chrono::steady_clock::now() < deadline) { }
        ExpectMoved({
            m_database->FindKeys(Families::kFamilies, {"ORDER BY id", {}}, keys),
            m_database->FindRows(Families::kFamilies, {"ORDER BY id", {}}, keys, rows),
            m_database->ReadRows(Families::kFamilies, {&key, 1}, rows),
            m_database->Query("SELECT count(*) FROM families", {}, rows),
        });
        EXPECT_FALSE(fs::exists(m_strPath + ".copy"));
    }

    void ExpectMoved(std::vector<CDbStatus> const& results)
    {
        for (std::size_t i = 0; i < results.size(); ++i) {
            EXPECT_EQ(results[i].Error(), DbError::moved) << i << results[i].Text();
            EXPECT_NE(results[i].Text().find(m_strPath), std::string::npos) << i;
        }
    }

    CTempFolder m_temporary;
    std::string const m_strPath = m_temporary.Path() / "family.mdb";
    std::unique_ptr<CDatabase> m_database;
    CKeyset m_keys;
};

} // namespace

TEST_F(MovedFileTest, ARenamedFileIsRefusedAndKeepsItsRows)
{
    auto const other = m_temporary.Path() / "renamed.mdb";
    fs::rename(m_strPath, other);
    ExpectAllRefused();
    m_database.reset();
    fs::rename(other, m_strPath);
    EXPECT_EQ(Families::Count(*Open()), 1);
}

TEST_F(MovedFileTest, ADeletedFileIsRefused)
{
    fs::remove(m_strPath);
    ExpectAllRefused();
    m_database.reset();
    EXPECT_FALSE(fs::exists(m_strPath));
}

TEST_F(MovedFileTest, AFileInItsPlaceIsLeftAlone)
{
    // The log is empty: one with changes in it would be taken for the new file's.
    auto const other = m_temporary.Path() / "other.mdb";
    ASSERT_TRUE(CreateDatabase(other, Families::Schema()));
    fs::rename(other, m_strPath);
    CPeer saving({"save", m_strPath, "100"});
    for (int i = 100; i < 120; ++i) {
        ASSERT_EQ(saving.Line(), std::to_string(i));
    }
    ExpectAllRefused();
    m_database.reset();
    auto last = std::stoll(saving.Line());
    saving.Kill();
    for (auto line = saving.Line(); !line.empty(); line = saving.Line()) {
        last = std::stoll(line);
    }
    auto const database = Open();
    EXPECT_GE(Families::Count(*database), last - 99);
    EXPECT_EQ(Families::Partial(*database), 0);
    std::vector<std::string> findings;
    EXPECT_TRUE(database->Check(findings));
    EXPECT_EQ(findings, std::vector<std::string>());
}

TEST_F(MovedFileTest, ATransactionThatAFileChangeOvertakesIsNotCalledStored)
{
    CTransaction transaction(*m_database);
    ASSERT_TRUE(Families::SaveRows(*m_database, 2));
    fs::rename(m_strPath, m_strPath + ".away");
    EXPECT_EQ(transaction.Commit().Error(), DbError::moved);
}
