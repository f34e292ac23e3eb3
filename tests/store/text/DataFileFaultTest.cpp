#include "tests/platform/db/Faults.h"
#include "tests/store/text/DataFileFixture.h"

#include <cerrno>
#include <functional>

namespace
{

class DataFileFaultTest : public CDataFileTest
{
protected:
    /// All that a restore could change.
    static std::map<std::string, Rows> DumpAll()
    {
        std::map<std::string, Rows> tables;
        for (auto const* const table : {"members", "profiles", "enrollments", "classes", "messages",
                 "workouts", "evaluations", "skinfolds", "lifts", "body_compositions"}) {
            tables[table] = Dump(table);
        }
        return tables;
    }

    /// Lets one call after the other fail by which a restore writes, from a state that undo makes,
    /// until the restore comes to its end without the one that would fail.
    static void RestoreWithFaults(
        CDAOFileSet& set, std::string const& file, int count, std::function<void()> const& undo)
    {
        for (int const error : {EIO, ENOSPC}) {
            for (bool const lasting : {false, true}) {
                undo();
                auto const before = DumpAll();
                int failed = 0;
                int stored = 0;
                // It can write thousands of times: not each of them is a case of its own.
                for (int nth = 1; stored == 0 && nth < 100'000; nth += nth / 3 + 1) {
                    Faults::Begin(nth, error, lasting);
                    stored = Restore(set, file, 0, false);
                    Faults::End();
                    failed += stored == 0 ? 1 : 0;
                    ASSERT_EQ(stored > 0, set.LastStatus().IsOK()) << nth;
                    ASSERT_TRUE(stored == count || DumpAll() == before) << nth << " of " << error;
                }
                EXPECT_GT(failed, 3) << "the faults do not reach the restore";
                EXPECT_EQ(stored, count);
            }
        }
    }
};

} // namespace

TEST_F(DataFileFaultTest, AFailingWriteLeavesAllMembersAsTheyWere)
{
    constexpr int kMembers = 16;
    for (int id = 1; id <= kMembers; ++id) {
        AddMember(id);
    }
    AddWorkout(1, 1);
    // So much that it does not fit into memory, and some is written long before the end.
    Run(DataFile::member, "UPDATE messages SET message = hex(zeroblob(100000))");
    auto const whole = DumpAll();
    auto const file = BackupMembers();
    RestoreWithFaults(m_setMem, file, kMembers, [] {
        Run(DataFile::member, "DELETE FROM members WHERE member_id % 2 = 0");
        Run(DataFile::member, "DELETE FROM classes");
        Run(DataFile::member, "UPDATE members SET last_name = 'Changed'");
        // Some have one another's numbers.
        Run(DataFile::member, "UPDATE members SET workout_number = workout_number + 1000");
        Run(DataFile::member, "UPDATE members SET workout_number = 500 + (member_id + 2) % 16");
    });
    EXPECT_TRUE(DumpAll() == whole);
}

TEST_F(DataFileFaultTest, AFailingWriteAddsNoEvaluation)
{
    AddMember(1);
    for (int i = 1; i <= 20; ++i) {
        Add(m_setEval, {{"member_id", 1}, {"eval_date", i}, {"eval_id", i}});
    }
    auto const whole = DumpAll();
    auto const file = BackupEvaluations();
    auto const renumber = [](std::string const& number) {
        Run(DataFile::member, "UPDATE evaluations SET eval_id = -eval_id");
        Run(DataFile::member, "UPDATE evaluations SET eval_id = " + number);
    };
    RestoreWithFaults(m_setEval, file, 10, [&] {
        Run(DataFile::member, "DELETE FROM evaluations WHERE eval_date % 2 = 0");
        renumber("eval_date + 1"); // the numbers of those that are gone
    });
    EXPECT_EQ(Count("evaluations WHERE eval_id > 20"), 10U);
    renumber("eval_date");
    EXPECT_TRUE(DumpAll() == whole);
}
