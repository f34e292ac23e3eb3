#include "tests/platform/db/Families.h"
#include "tests/platform/db/Faults.h"

#include <functional>
#include <set>

namespace
{

namespace fs = std::filesystem;

class FaultTest : public CFamiliesTest
{
protected:
    std::set<std::string> Names() const
    {
        std::set<std::string> names;
        for (auto const& entry : fs::directory_iterator(m_folder)) {
            names.insert(entry.path().filename());
        }
        return names;
    }

    /// Each trial gets a fresh file with a family in it and returns whether a fault struck.
    void ForEachFault(std::function<bool(int nth, int error, bool lasting)> const& trial)
    {
        int const struck = Faults::ForEach([&](int nth, int error, bool lasting) {
            SCOPED_TRACE(testing::Message() << error << (lasting ? " from " : " at ") << nth);
            for (auto const& name : Names()) {
                fs::remove(m_folder / name);
            }
            SetUp();
            EXPECT_TRUE(Save(*Open(), 1, std::string(3000, 'n')));
            return trial(nth, error, lasting) && !HasFailure();
        });
        EXPECT_GT(struck, 6) << "the faults do not reach the engine";
    }
};

} // namespace

TEST_F(FaultTest, AFileIsMadeAsAWholeOrAtTheNextTryAndACheckpointLosesNothing)
{
    for (std::string const made : {"copy.mdb", "new.mdb", ""}) {
        SCOPED_TRACE(made);
        auto const make = [&](CDatabase& database) {
            return made == "copy.mdb" ? database.CopyTo(m_folder / made)
                : made == "new.mdb"   ? CreateDatabase(m_folder / made, Schema())
                                      : database.Checkpoint();
        };
        ForEachFault([&](int nth, int error, bool lasting) {
            auto database = Open();
            EXPECT_TRUE(Save(*database, 2)) << "something in the log";
            auto const before = Names();
            if (!made.empty()) { // what a killed maker left
                WriteFile(m_folder / (made + ".part"), "begun");
                WriteFile(m_folder / (made + ".part-wal"), "begun");
            }
            Faults::Begin(nth, error, lasting);
            auto status = make(*database);
            if (made.empty()) {
                database.reset();
            }
            bool const struck = Faults::End();
            EXPECT_TRUE(struck || status) << status.Text();
            if (!status) {
                EXPECT_EQ(status.Error() == DbError::full, error == ENOSPC) << status.Text();
                database = database == nullptr ? Open() : std::move(database);
                EXPECT_EQ(Names(), before);
                status = make(*database);
                EXPECT_TRUE(status) << status.Text();
            }
            database.reset();
            ExpectSound(*Open(), 2);
            if (!made.empty()) {
                ExpectSound(*Open(m_folder / made), made == "copy.mdb" ? 2 : 0);
                EXPECT_EQ(CreateDatabase(m_folder / made, Schema()).Error(), DbError::exists);
            }
            EXPECT_EQ(Names().size(), made.empty() ? 1U : 2U);
            return struck;
        });
    }
}

// A log that was written but could not be synced is valid for whoever opens the file next: then the
// whole migration is there.
TEST_F(FaultTest, AMigrationIsWholeOrLeavesTheOldVersion)
{
    auto next = Schema();
    next.steps.emplace_back("ALTER TABLE families ADD COLUMN city TEXT NOT NULL DEFAULT '';"
                            "UPDATE families SET city = note;"
                            "CREATE INDEX families_city ON families (city);");
    ForEachFault([&](int nth, int error, bool lasting) {
        std::unique_ptr<CDatabase> database;
        Faults::Begin(nth, error, lasting);
        auto const status = OpenDatabase(m_strPath, next, database);
        database.reset();
        bool const struck = Faults::End();
        EXPECT_TRUE(struck || status) << status.Text();
        if (!status && !lasting) {
            ExpectSound(*Open(), 1);
        }
        ExpectSound(*Open(m_strPath, next), 1);
        return struck;
    });
}
