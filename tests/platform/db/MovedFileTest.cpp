#include "tests/platform/db/Families.h"

#include <chrono>

namespace
{

namespace fs = std::filesystem;

class MovedFileTest : public CFamiliesTest
{
protected:
    /// Writes are refused at once, reads some milliseconds later.
    void ExpectAllRefused(CDatabase& database) const
    {
        std::int64_t number = 0;
        std::int64_t const key = 1;
        std::vector<DbValue> const values{std::int64_t(7), std::int64_t(3), "note"};
        std::vector<CDbStatus> results = {
            database.Insert(kFamilies, values, number),
            database.Update(kFamilies, key, values, {true, false, false}),
            database.Remove(kFamilies, key, number),
            database.Execute("DELETE FROM families", {}, number),
            database.CopyTo(m_folder / "copy.mdb"),
            database.Checkpoint(),
            CTransaction(database).Commit(),
        };
        EXPECT_FALSE(fs::exists(m_folder / "copy.mdb"));
        CKeyset keys;
        CRowBlock rows;
        auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        while (database.ReadRows(kFamilies, {&key, 1}, rows)
            && std::chrono::steady_clock::now() < deadline) { }
        results.insert(results.end(),
            {database.FindKeys(kFamilies, {"ORDER BY id", {}}, keys),
                database.FindRows(kFamilies, {"ORDER BY id", {}}, keys, rows),
                database.ReadRows(kFamilies, {&key, 1}, rows),
                database.Query("SELECT count(*) FROM families", {}, rows)});
        for (auto const& status : results) {
            SCOPED_TRACE(&status - results.data());
            ExpectStatus(status, DbError::moved);
        }
    }
};

} // namespace

TEST_F(MovedFileTest, AFileThatIsNotWhereItWasIsRefusedAndSoIsOneInItsPlace)
{
    auto database = Open();
    ASSERT_TRUE(Save(*database, 1));
    ASSERT_TRUE(database->Checkpoint());
    {
        CTransaction transaction(*database);
        ASSERT_TRUE(Save(*database, 2));
        fs::rename(m_strPath, m_folder / "away.mdb");
        EXPECT_EQ(transaction.Commit().Error(), DbError::moved) << "not stored where it belongs";
    }
    ExpectAllRefused(*database);
    EXPECT_FALSE(fs::exists(m_strPath));
    // The log is empty: one with changes in it would be taken for the new file's.
    ASSERT_TRUE(CreateDatabase(m_folder / "other.mdb", Schema()));
    fs::rename(m_folder / "other.mdb", m_strPath);
    CPeer there([&](CPeer const& /*self*/) {
        auto const other = Open();
        CTransaction transaction(*other);
        EXPECT_TRUE(Save(*other, 1));
        CPeer::Hold();
        EXPECT_TRUE(transaction.Commit());
    });
    there.WaitUntilItHolds();
    ExpectAllRefused(*database);
    database.reset();
    EXPECT_TRUE(there.Finish());
    ExpectSound(*Open(), 1);
    ExpectSound(*Open(m_folder / "away.mdb"), 1);
}
