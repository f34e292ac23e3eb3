#include "tests/store/text/DataFileFixture.h"

#include <set>

namespace
{

/// What becomes of numbers that others have: workout numbers, and those of evaluations.
using DataFileNumberTest = CDataFileTest;

using Numbers = std::map<std::int64_t, std::int64_t>; // by member

/// Which of some members a file stores that gives each the number 500 more than his ID: whose
/// number stays with a member that is not replaced is not stored.
std::set<std::int64_t> Stored(std::set<std::int64_t> members, Numbers const& there)
{
    for (bool done = false; !done;) {
        done = true;
        for (auto const& [id, number] : there) {
            done = done && (members.contains(id) || members.erase(number - 500) == 0);
        }
    }
    return members;
}

std::map<std::int64_t, std::string> LinesByMember(std::string const& file)
{
    std::istringstream stream(file);
    std::map<std::int64_t, std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines[std::stoi(line.substr(4))] = line + "\n";
    }
    return lines;
}

} // namespace

/// A member who is there is kept or replaced whole. Members can have taken over one another's
/// numbers since the file was written.
TEST_F(DataFileNumberTest, OnlyANumberThatStaysWithAnotherMemberKeepsAMemberOut)
{
    std::vector<std::int32_t> order = {1, 2, 3, 4, 5};
    for (auto const id : order) {
        AddMember(id);
    }
    auto const lines = LinesByMember(Backup(m_setMem));
    for (int round = 0; round < 100; ++round) {
        Run(DataFile::member, "DELETE FROM members");
        // Two who are not in the file; one of them where others would step aside.
        Add(m_setMem, {{"member_id", 7}, {"workout_number", 999'999'999}});
        std::vector<std::int64_t> numbers = {501, 502, 503, 504, 505, 506};
        std::shuffle(numbers.begin(), numbers.end(), m_random);
        Numbers there;
        for (std::int32_t id = 1; id <= 6; ++id) {
            if (Random(1, 6) > 1) {
                there[id] = numbers[static_cast<std::size_t>(id) - 1];
                Add(m_setMem, {{"member_id", id}, {"workout_number", there[id]}});
                AddWorkout(id, kTime);
            }
        }
        auto expected = LinesByMember(Backup(m_setMem));
        auto const workouts = Backup(m_setWk);
        std::string file;
        std::shuffle(order.begin(), order.end(), m_random);
        for (auto const id : order) {
            file += lines.at(id);
        }
        auto const only = static_cast<std::int32_t>(std::max(Random(-5, 5), std::int64_t(0)));
        bool const keepExisting = Random(1, 3) == 1;
        std::set<std::int64_t> asked;
        for (auto const id : order) {
            if ((only == 0 || id == only) && !(keepExisting && there.contains(id))) {
                asked.insert(id);
            }
        }
        auto const stored = Stored(asked, there);
        for (auto const id : stored) {
            expected[id] = lines.at(id);
        }
        ASSERT_EQ(Restore(m_setMem, file, only, keepExisting), std::ssize(stored)) << file;
        ASSERT_EQ(m_setMem.LastSkipped(), std::ssize(asked) - std::ssize(stored));
        ASSERT_EQ(LinesByMember(Backup(m_setMem)), expected);
        ASSERT_EQ(Backup(m_setWk), workouts);
    }
}

TEST_F(DataFileNumberTest, OfTwoMembersThatWantOneNumberOneGetsIt)
{
    std::string file;
    for (auto const& [member, number] : {std::pair(1, 502), {3, 502}, {2, 503}}) {
        Run(DataFile::member, "DELETE FROM members");
        Add(m_setMem, {{"member_id", member}, {"workout_number", number}});
        file += Backup(m_setMem);
    }
    Run(DataFile::member, "DELETE FROM members");
    AddMember(1);
    AddMember(2);
    auto const before = DumpAll();
    EXPECT_EQ(Restore(m_setMem, file + "\n", 0, false), 0);
    EXPECT_EQ(Restore(m_setMem, Backup(m_setMem), 0, false), 2);
    EXPECT_EQ(m_setMem.LastSkipped(), 0);
    EXPECT_EQ(DumpAll(), before) << "who waited in a restore that failed waits no longer";
    EXPECT_EQ(Restore(m_setMem, file, 0, false), 2);
    EXPECT_EQ(m_setMem.LastSkipped(), 1);
    EXPECT_EQ(Count("members WHERE workout_number IN (502, 503)"), 2);
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
        for (auto const& [id, date] : Numbers{{10, 97}, {11, 98}, {other, 99}}) {
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
