#include "tests/store/text/DataFileFixture.h"

namespace
{

/// What becomes of numbers that others have: workout numbers, and those of evaluations.
class DataFileNumberTest : public CDataFileTest
{
protected:
    /// "1=502 2=501": members with these workout numbers. Their status tells those of files.
    void AddMembers(std::string const& members, std::int64_t status)
    {
        std::istringstream words(members);
        std::int32_t id = 0;
        std::int64_t number = 0;
        for (char equals = 0; words >> id >> equals >> number;) {
            Add(m_setMem, {{"member_id", id}, {"workout_number", number}, {"status", status}});
            AddWorkout(id, kTime);
        }
    }
    std::string FileOf(std::string const& members)
    {
        std::istringstream words(members);
        std::string file;
        for (std::string member; words >> member;) {
            Run(DataFile::member, "DELETE FROM members");
            AddMembers(member, 2);
            file += Backup(m_setMem);
        }
        return file;
    }
    /// The members that there are; those that were restored end in "n".
    static std::string Members()
    {
        CDAOSmMem set;
        std::string found;
        for (int count = set.FindAllMembers(true); count > 0; --count) {
            found += std::to_string(set.m_MemberID) + "=" + std::to_string(set.m_WorkoutNum)
                + (set.m_Status == 2 ? "n " : " ");
            set.Op(CDAOEFSet::opMoveNext);
        }
        return found;
    }
};

} // namespace

/// A member who is there is kept or replaced whole. Members can have taken over one another's
/// numbers since the file was written: only a number that stays with another keeps a member out.
TEST_F(DataFileNumberTest, OnlyANumberThatStaysWithAnotherMemberKeepsAMemberOut)
{
    struct Case
    {
        char const* what;
        char const* there;
        char const* given;
        std::string expected;
        int skipped = 0;
        bool keepExisting = false;
        std::int32_t only = 0;
    };
    for (auto const& c : {
             Case{"new ones", "", "2=502 1=501", "2=502n 1=501n "},
             Case{"a ring", "1=502 2=503 3=501", "3=503 1=501 2=502", "1=501n 2=502n 3=503n "},
             Case{"a ring and who waits for it", "1=502 2=501 3=504", "4=504 3=503 2=502 1=501",
                 "1=501n 2=502n 3=503n 4=504n "},
             Case{"a chain", "1=502 2=503", "3=503 2=502 1=501", "1=501n 2=502n 3=503n "},
             Case{"a chain behind one who is not given", "1=502 2=503 7=504", "1=503 2=504 3=505",
                 "1=502 2=503 7=504 3=505n ", 2},
             Case{"where others step aside is somebody", "1=502 2=501 7=999999999", "1=501 2=502",
                 "1=501n 2=502n 7=999999999 "},
             Case{"two want one number", "1=501 2=502", "1=502 3=502 2=503", "1=502n 2=503n ", 1},
             Case{"some are kept", "1=502 2=501", "1=501 3=503", "1=502 2=501 3=503n ", 0, true},
             Case{"one who is kept has it", "1=503", "1=501 3=503", "1=503 ", 1, true},
             Case{"one is asked for", "1=504", "1=501 2=502", "1=504 2=502n ", 0, false, 2},
             Case{"another one has it", "1=502 2=501", "1=501 2=502", "1=502 2=501 ", 1, false, 2},
         }) {
        SCOPED_TRACE(c.what);
        auto const file = FileOf(c.given);
        Run(DataFile::member, "DELETE FROM members");
        AddMembers(c.there, 1);
        auto const before = DumpAll();
        EXPECT_EQ(Restore(m_setMem, file + "\n", c.only, c.keepExisting), 0);
        EXPECT_EQ(DumpAll(), before);
        // Who waited then waits no longer.
        EXPECT_EQ(Restore(m_setMem, file, c.only, c.keepExisting),
            std::count(c.expected.begin(), c.expected.end(), 'n'));
        EXPECT_EQ(Members(), c.expected);
        EXPECT_EQ(m_setMem.LastSkipped(), c.skipped);
        EXPECT_EQ(Dump("workouts"), before.at("workouts"));
    }
}

TEST_F(DataFileNumberTest, AnEvaluationWhoseNumberIsTakenGetsOneBehindAllOthers)
{
    AddMember(1);
    AddMember(2);
    for (std::int32_t const id : {10, 11, 12, 20}) {
        Add(m_setEval, {{"member_id", id == 20 ? 2 : 1}, {"eval_date", id}, {"eval_id", id}});
    }
    auto const file = Backup(m_setEval);
    auto const lifts = Dump("lifts WHERE eval_id < 20");
    EXPECT_FALSE(lifts.empty());
    Run(DataFile::member, "UPDATE evaluations SET eval_id = 500 WHERE eval_id = 20");
    auto const bad = Backup(m_setEval) + "\n";
    Run(DataFile::member, "DELETE FROM members WHERE member_id = 2");
    // Behind the largest number that there can be, the first free ones.
    for (auto const& [other, member, first] :
        {std::tuple(Limits::min(), 0, 21), {Limits::min(), 1, 21}, {2'147'483'647, 0, 1}}) {
        Run(DataFile::member, "DELETE FROM evaluations");
        for (auto const& [id, date] : {std::pair(std::int64_t(10), 97), {11, 98}, {other, 99}}) {
            Add(m_setEval, {{"member_id", 1}, {"eval_date", date}, {"eval_id", id}});
        }
        EXPECT_EQ(Restore(m_setEval, bad), 0);
        Run(DataFile::member, "DELETE FROM lifts");
        ASSERT_EQ(Restore(m_setEval, file, member), 3) << m_setEval.LastStatus().Text();
        auto const number = std::to_string(first);
        EXPECT_EQ(Count("evaluations WHERE (eval_id, eval_date) IN ((10, 97), (11, 98), (12, 12), ("
                      + number + ", 10), (" + number + " + 1, 11))"),
            5);
        Run(DataFile::member,
            "UPDATE lifts SET eval_id = eval_id - " + number + " + 10 WHERE eval_id <> 12");
        EXPECT_EQ(Dump("lifts"), lifts);
    }
}
