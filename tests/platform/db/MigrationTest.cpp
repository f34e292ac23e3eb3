#include "tests/TempFolder.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PeerProcess.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace
{

namespace fs = std::filesystem;

/// Version 3 of the families. The last step replaces the parent table, which is the only way to
/// give a table another rule.
CSchema ThirdSchema()
{
    auto schema = Families::Schema();
    schema.steps.emplace_back("ALTER TABLE families ADD COLUMN city TEXT NOT NULL DEFAULT 'Bern'");
    schema.steps.emplace_back(
        "CREATE TABLE families_new (id INTEGER PRIMARY KEY AUTOINCREMENT, number INTEGER NOT NULL "
        "UNIQUE CHECK (number > 0), children INTEGER NOT NULL, note TEXT NOT NULL, "
        "city TEXT NOT NULL);"
        "INSERT INTO families_new SELECT id, number, children, note, city FROM families;"
        "DROP TABLE families;"
        "ALTER TABLE families_new RENAME TO families -- and so it ends");
    return schema;
}

class MigrationTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::copy_file(fs::path(CORVANA_TEST_DATA) / "family-v1.mdb", m_strPath);
    }

    static void ExpectSound(std::string const& path, CSchema const& schema)
    {
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(path, schema, database);
        ASSERT_TRUE(status) << status.Text();
        EXPECT_EQ(Families::Count(*database), 3);
        EXPECT_EQ(Families::Partial(*database), 0);
        EXPECT_EQ(Families::Number(*database, "SELECT count(*) FROM children"), 9);
        EXPECT_EQ(Families::Number(*database,
                      "SELECT count(*) FROM families WHERE note = 'Weiß & Söhne ' || number"),
            3);
        std::vector<std::string> findings;
        EXPECT_TRUE(database->Check(findings));
        EXPECT_EQ(findings, std::vector<std::string>());
    }

    std::string FileBytes() const
    {
        std::ifstream file(m_strPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    CTempFolder m_temporary;
    std::string const m_strPath = m_temporary.Path() / "family.mdb";
    std::string const m_strCopy = m_temporary.Path() / "family.v1.bak";
};

} // namespace

TEST_F(MigrationTest, AnOldFileComesToThePresentVersionAndLeavesACopy)
{
    std::ofstream(m_strCopy) << "somebody's";
    auto const copy = m_temporary.Path() / "family.v1-2.bak";
    ExpectSound(m_strPath, ThirdSchema());
    EXPECT_EQ(fs::file_size(m_strCopy), 10U) << "a copy that was there must not be replaced";
    EXPECT_EQ(fs::status(copy).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    ExpectSound(copy, Families::Schema());
    ExpectSound(m_strPath, ThirdSchema());
    EXPECT_FALSE(fs::exists(m_temporary.Path() / "family.v1-3.bak")) << "done once";

    std::unique_ptr<CDatabase> database;
    ASSERT_TRUE(OpenDatabase(m_strPath, ThirdSchema(), database));
    EXPECT_EQ(Families::Number(*database, "SELECT count(*) FROM families WHERE city = 'Bern'"), 3);
    std::int64_t changed = 0;
    EXPECT_EQ(database->Execute("UPDATE children SET family_id = 4711", {}, changed).Error(),
        DbError::constraint);
    EXPECT_TRUE(database->Execute("DELETE FROM families WHERE number = 1", {}, changed));
    EXPECT_EQ(Families::Number(*database, "SELECT count(*) FROM children"), 6);
}

TEST_F(MigrationTest, AStepThatFailsLeavesTheOldVersion)
{
    auto wrong = ThirdSchema();
    auto orphaning = ThirdSchema();
    auto breaking = ThirdSchema();
    wrong.steps.emplace_back(
        "CREATE TABLE half (id INTEGER PRIMARY KEY); SELECT nothing FROM nowhere");
    orphaning.steps.emplace_back("DELETE FROM families WHERE number = 2");
    breaking.steps.emplace_back("UPDATE families SET number = 7");
    for (auto const& schema : {wrong, orphaning, breaking}) {
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, schema, database);
        EXPECT_FALSE(status);
        EXPECT_EQ(database, nullptr);
        EXPECT_NE(status.Text().find(m_strPath), std::string::npos) << status.Text();
        ExpectSound(m_strPath, Families::Schema());
    }
    ExpectSound(m_strPath, ThirdSchema());
}

TEST_F(MigrationTest, AFileInUseIsLeftAsItIs)
{
    auto const before = FileBytes();
    CPeer peer({"idle", m_strPath});
    ASSERT_EQ(peer.Line(), "ready");
    std::unique_ptr<CDatabase> database;
    auto const status = OpenDatabase(m_strPath, ThirdSchema(), database);
    EXPECT_EQ(status.Error(), DbError::inUse) << status.Text();
    EXPECT_EQ(database, nullptr);
    EXPECT_FALSE(fs::exists(m_strCopy));
    EXPECT_EQ(peer.Finish(), 0);
    EXPECT_TRUE(FileBytes() == before);
    ExpectSound(m_strPath, ThirdSchema());
    EXPECT_TRUE(fs::exists(m_strCopy));
}

TEST_F(MigrationTest, ANewerFileIsRefused)
{
    ExpectSound(m_strPath, ThirdSchema());
    auto const before = FileBytes();
    std::unique_ptr<CDatabase> database;
    auto const status = OpenDatabase(m_strPath, Families::Schema(), database);
    EXPECT_EQ(status.Error(), DbError::newer) << status.Text();
    EXPECT_TRUE(FileBytes() == before);
}
