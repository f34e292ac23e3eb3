#include "tests/platform/db/Families.h"

namespace
{

namespace fs = std::filesystem;

class MigrationTest : public CFamiliesTest
{
protected:
    /// Version 3 of the families. The last step replaces the parent table, which is the only way to
    /// give a table another rule.
    static CSchema ThirdSchema()
    {
        auto schema = Schema();
        schema.steps.emplace_back(
            "ALTER TABLE families ADD COLUMN city TEXT NOT NULL DEFAULT 'Bern'");
        schema.steps.emplace_back(
            "CREATE TABLE families_new (id INTEGER PRIMARY KEY AUTOINCREMENT, number INTEGER NOT "
            "NULL UNIQUE CHECK (number > 0), children INTEGER NOT NULL, note TEXT NOT NULL, city "
            "TEXT NOT NULL);"
            "INSERT INTO families_new SELECT id, number, children, note, city FROM families;"
            "DROP TABLE families;"
            "ALTER TABLE families_new RENAME TO families -- and so it ends");
        return schema;
    }

    void SetUp() override
    {
        fs::copy_file(fs::path(CORVANA_TEST_DATA) / "family-v1.mdb", m_strPath);
    }

    static void ExpectAllRows(CDatabase& database)
    {
        ExpectSound(database, 3);
        EXPECT_EQ(Number(database,
                      "SELECT count(*) FROM families AS f JOIN children ON family_id = f.id "
                      "WHERE note = 'Weiß & Söhne ' || number"),
            9);
    }
};

} // namespace

TEST_F(MigrationTest, AnOldFileComesToThePresentVersionAndLeavesACopy)
{
    WriteFile(m_folder / "family.v1.bak", "somebody's");
    auto const user = StartUser([](auto& /*database*/) {});
    ExpectRefused(DbError::inUse, "", ThirdSchema());
    EXPECT_TRUE(user->Finish());
    auto database = Open(m_strPath, ThirdSchema());
    ExpectAllRows(*database);
    EXPECT_EQ(Number(*database, "SELECT count(*) FROM families WHERE city = 'Bern'"), 3);
    std::int64_t changed = 0;
    EXPECT_EQ(database->Execute("UPDATE children SET family_id = 4711", {}, changed).Error(),
        DbError::constraint);
    database.reset();
    auto const copy = m_folder / "family.v1-2.bak";
    EXPECT_EQ(ReadFile(m_folder / "family.v1.bak"), "somebody's") << "must not be replaced";
    EXPECT_EQ(fs::status(copy).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    ExpectAllRows(*Open(copy));
    ExpectRefused(DbError::newer);

    database = Open(m_strPath, ThirdSchema());
    EXPECT_FALSE(fs::exists(m_folder / "family.v1-3.bak")) << "done once";
    EXPECT_TRUE(database->Execute("DELETE FROM families WHERE number = 1", {}, changed));
    EXPECT_EQ(Number(*database, "SELECT count(*) FROM children"), 6);
}

TEST_F(MigrationTest, AStepThatFailsLeavesTheOldVersion)
{
    for (auto const* const step :
        {"CREATE TABLE half (id INTEGER PRIMARY KEY); SELECT nothing FROM nowhere",
            "DELETE FROM families WHERE number = 2", "UPDATE families SET number = 7"}) {
        auto schema = ThirdSchema();
        schema.steps.emplace_back(step);
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, schema, database);
        EXPECT_FALSE(status) << step;
        ExpectStatus(status, status.Error());
        EXPECT_EQ(database, nullptr);
        ExpectAllRows(*Open());
    }
}
