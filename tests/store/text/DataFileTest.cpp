#include "store/sets/DAOCls.h"
#include "store/sets/DAOMemCls.h"
#include "store/services/MemberSearchData.h"
#include "tests/store/text/DataFileFixture.h"

#include <fstream>
#include <set>
#include <stdexcept>

namespace
{

class DataFileTest : public CDataFileTest
{
};

/// Holds some bytes, behind which reading fails as that of a file does.
class CBadDisk : public std::stringbuf
{
public:
    using std::stringbuf::stringbuf;

protected:
    std::streamsize xsgetn(char* to, std::streamsize count) override
    {
        auto const read = std::stringbuf::xsgetn(to, count);
        if (read < count) {
            throw std::runtime_error("bad disk");
        }
        return read;
    }
};

} // namespace

TEST_F(DataFileTest, RestoresEveryFieldOfEveryTable)
{
    for (std::int32_t id = 1; id <= 60; ++id) {
        AddMember(id);
        for (int i = 0; i < 4; ++i) {
            auto const time = m_rows.Chance(10) ? -9'000'000'000'000 + i : kTime + i;
            AddWorkout(id, time);
            Add(m_setEval, {{"member_id", id}, {"eval_date", time}, {"eval_id", id * 10 - i}});
            Add(m_setBodyComp, {{"member_id", id}, {"body_comp_date", time}});
        }
    }
    std::map<std::string, Rows> before;
    for (auto const* const table : {"members", "profiles", "enrollments", "classes", "messages",
             "workouts", "evaluations", "skinfolds", "lifts", "body_compositions"}) {
        before[table] = Dump(table);
        EXPECT_GT(before[table].size(), 20U);
    }
    auto const classes = Dump("classes", false);
    auto const members = BackupMembers();
    auto const workouts = BackupWorkouts();
    auto const evaluations = BackupEvaluations();
    auto const bodyComps = BackupBodyComps();
    EXPECT_EQ(Run(DataFile::member, "DELETE FROM members"), 60);

    for (auto const& [set, file, count] :
        {std::tuple<CDAOFileSet*, std::string, int>{&m_setMem, members, 60},
            {&m_setWk, workouts, 240}, {&m_setEval, evaluations, 240},
            {&m_setBodyComp, bodyComps, 240}}) {
        EXPECT_TRUE(Test(*set, file)) << set->LastStatus().Text();
        EXPECT_EQ(Restore(*set, file), count) << set->LastStatus().Text();
        EXPECT_EQ(set->LastSkipped(), 0);
    }
    for (auto const& [table, rows] : before) {
        EXPECT_EQ(Dump(table), rows) << table;
    }
    EXPECT_EQ(Dump("classes", false), classes);
    EXPECT_EQ(BackupMembers(), members);
    EXPECT_EQ(BackupWorkouts(), workouts);
}

TEST_F(DataFileTest, TestTakesWholeFilesOfItsKindAlone)
{
    AddMember(1);
    AddWorkout(1, kTime);
    AddWorkout(1, kTime + 1);
    auto const members = BackupMembers();
    auto const workouts = BackupWorkouts();
    EXPECT_TRUE(Test(m_setWk, workouts + workouts)); // joined with itself
    EXPECT_FALSE(Test(m_setWk, ""));
    EXPECT_FALSE(Test(m_setWk, members));
    EXPECT_EQ(m_setWk.LastStatus().Text(), "line 1, field 1: is another kind of record than WK1.");
    EXPECT_FALSE(Test(m_setWk, workouts + members));
    EXPECT_EQ(m_setWk.LastStatus().Text(), "line 3, field 1: is another kind of record than WK1.");
    Run(DataFile::member, "UPDATE members SET last_name = 'Changed'");
    EXPECT_TRUE(Test(m_setMem, members + members));
    EXPECT_FALSE(Test(m_setMem, members + BackupMembers()));
    EXPECT_EQ(m_setMem.LastStatus().Text(),
        "line 2: holds a member that an earlier line holds otherwise.");
    std::ifstream missing(m_folder / "missing");
    EXPECT_FALSE(m_setWk.Test(missing, '|'));
    std::ifstream folder(m_folder);
    EXPECT_FALSE(m_setWk.Test(folder, '|'));
}

TEST_F(DataFileTest, KeepsRecordsThatAreThereAndSkipsThoseOfUnknownMembers)
{
    for (std::int32_t id = 1; id <= 3; ++id) {
        AddMember(id);
        for (int i = 0; i < 10; ++i) {
            AddWorkout(id, kTime + i);
        }
    }
    auto const file = BackupWorkouts();
    EXPECT_EQ(Restore(m_setWk, file), 0);
    EXPECT_EQ(m_setWk.LastSkipped(), 0);
    EXPECT_TRUE(m_setWk.LastStatus());

    Run(DataFile::member, "UPDATE workouts SET circuits = 7 WHERE member_id = 1 AND id % 2 = 0");
    Run(DataFile::member, "DELETE FROM workouts WHERE circuits <> 7 OR member_id = 2");
    auto const kept = Count("workouts");
    Run(DataFile::member, "DELETE FROM members WHERE member_id = 3");
    EXPECT_EQ(Restore(m_setWk, file + file, 2), 10);
    EXPECT_EQ(m_setWk.LastSkipped(), 0);
    EXPECT_EQ(Count("workouts"), kept + 10);
    EXPECT_EQ(Restore(m_setWk, file), static_cast<int>(10 - kept));
    EXPECT_EQ(m_setWk.LastSkipped(), 10);
    EXPECT_EQ(Count("workouts WHERE member_id = 1 AND circuits = 7"), kept);
    EXPECT_EQ(Restore(m_setWk, file, 3), 0);
    EXPECT_EQ(m_setWk.LastSkipped(), 10);
    EXPECT_EQ(Restore(m_setWk, file + "\n"), 0);
    EXPECT_EQ(m_setWk.LastSkipped(), 0) << "nothing was done";
}

TEST_F(DataFileTest, NotesEachOfManyRecordsOnce)
{
    using Found = CRecordKeys::Found;
    CRecordKeys keys;
    std::map<std::pair<int, int>, std::set<int>> noted;
    for (int i = 0; i < 30'000; ++i) {
        // A member and time of one record, of a few and of thousands.
        auto const member = static_cast<int>(m_rows.Number(1, 3));
        auto const time
            = static_cast<int>(member == 1 ? 0 : m_rows.Number(-1, member == 2 ? 999 : 99'999));
        auto const checkSum = static_cast<int>(m_rows.Number(0, 9'999));
        bool const known = noted.contains({member, time});
        ASSERT_EQ(keys.Has(member, time), known);
        auto& sums = noted[{member, time}];
        auto const expected = sums.contains(checkSum) ? Found::same
            : known                                   ? Found::different
                                                      : Found::none;
        ASSERT_EQ(keys.Add(member, time, static_cast<std::uint32_t>(checkSum)), expected) << i;
        sums.insert(checkSum);
    }
    std::size_t records = 0;
    for (auto const& [key, sums] : noted) {
        EXPECT_TRUE(keys.Has(key.first, key.second));
        records += sums.size();
    }
    EXPECT_EQ(keys.Size(), records);
}

/// Other programs can add two workouts of one moment, and then both are in the archive.
TEST_F(DataFileTest, KeepsApartWhatDiffersInOneMoment)
{
    AddMember(1);
    constexpr int kWorkouts = 1000;
    for (int i = 0; i < kWorkouts; ++i) {
        AddWorkout(1, kTime);
    }
    for (int i = 0; i < 5; ++i) {
        Add(m_setEval, {{"member_id", 1}, {"eval_date", 0}, {"eval_id", i}});
    }
    auto const workouts = Dump("workouts", false);
    auto const evaluations = Dump("evaluations", false);
    auto const file = BackupWorkouts();
    auto const evaluationFile = BackupEvaluations();
    Run(DataFile::member, "DELETE FROM workouts");
    Run(DataFile::member, "DELETE FROM evaluations");
    EXPECT_TRUE(Test(m_setWk, file));
    EXPECT_EQ(Restore(m_setWk, file + file), kWorkouts);
    EXPECT_EQ(Dump("workouts", false), workouts);
    EXPECT_EQ(Restore(m_setEval, evaluationFile), 5);
    EXPECT_EQ(Dump("evaluations", false), evaluations);
    EXPECT_EQ(Restore(m_setWk, file), 0);
    EXPECT_EQ(Restore(m_setEval, evaluationFile), 0);
}

TEST_F(DataFileTest, ABadLineStoresNothingAndIsNamed)
{
    AddMember(1);
    for (int i = 0; i < 1000; ++i) {
        AddWorkout(1, kTime + i);
    }
    auto file = BackupWorkouts();
    Run(DataFile::member, "DELETE FROM workouts");
    auto const fifth = file.find(Line(file, 500));
    file[fifth + 4] = file[fifth + 4] == '1' ? '2' : '1';
    EXPECT_EQ(Restore(m_setWk, file), 0);
    EXPECT_EQ(m_setWk.LastStatus().Text(), "line 500: is damaged: its check sum does not fit.");
    EXPECT_EQ(Count("workouts"), 0U);
    // A line of a member that was not asked for counts as well.
    EXPECT_EQ(Restore(m_setWk, file, 77), 0);
    EXPECT_FALSE(m_setWk.LastStatus());
    auto const cut = file.substr(0, fifth - 3);
    EXPECT_EQ(Restore(m_setWk, cut), 0);
    EXPECT_EQ(m_setWk.LastStatus().Text(), "line 499: has no end: the file is cut.");
    EXPECT_EQ(Count("workouts"), 0U);
    EXPECT_EQ(Restore(m_setWk, file.substr(0, fifth)), 499);
}

/// Also between two lines, where the file could end.
TEST_F(DataFileTest, AnErrorOfTheDiskIsNoEndOfTheFile)
{
    AddMember(1);
    Run(DataFile::member, "DELETE FROM messages");
    Run(DataFile::member, "INSERT INTO messages (member_id, message) VALUES (1, '')");
    std::string const message(65'536 - BackupMembers().size(), 'm'); // a line as long as a read
    Run(DataFile::member, "UPDATE messages SET message = ?", {message});
    auto const file = BackupMembers();
    Run(DataFile::member, "DELETE FROM members");
    auto const restore = [&](std::string const& readable) {
        CBadDisk disk(readable);
        std::istream stream(&disk);
        EXPECT_EQ(m_setMem.Restore(stream, '|', 0, true), 0);
        EXPECT_EQ(Count("members"), 0U);
        return m_setMem.LastStatus().Text();
    };
    EXPECT_EQ(restore(file), "line 2: could not be read.");
    EXPECT_EQ(restore(file + file.substr(0, 100)), "line 2: could not be read.");
    EXPECT_EQ(restore(""), "line 1: could not be read.");
    EXPECT_EQ(Restore(m_setMem, file), 1);
}

TEST_F(DataFileTest, AMemberThatIsThereIsKeptOrReplacedWhole)
{
    AddMember(1);
    Run(DataFile::member, "DELETE FROM messages");
    Run(DataFile::member, "INSERT INTO messages (member_id, message) VALUES (1, 'Of the file')");
    AddWorkout(1, kTime);
    std::map<std::string, Rows> before;
    auto const tables = {"members", "profiles", "enrollments", "classes", "messages", "workouts"};
    for (auto const* const table : tables) {
        before[table] = Dump(table, false);
    }
    auto const file = BackupMembers();
    Run(DataFile::member, "UPDATE members SET last_name = 'Changed', workout_number = 9");
    Run(DataFile::member, "UPDATE messages SET message = 'Changed'");
    for (auto const* const table : {"profiles", "enrollments", "classes"}) {
        Run(DataFile::member, std::string("DELETE FROM ") + table);
    }
    ASSERT_TRUE(AddRow<CDAOCls>([](CDAOCls& set) { set.m_MemberID = 1; }));

    auto const changed = BackupMembers();
    EXPECT_EQ(Restore(m_setMem, file, 0, true), 0);
    EXPECT_EQ(BackupMembers(), changed);
    EXPECT_EQ(Restore(m_setMem, file, 2, false), 0);
    EXPECT_EQ(BackupMembers(), changed);
    EXPECT_EQ(Restore(m_setMem, file, 1, false), 1) << m_setMem.LastStatus().Text();
    for (auto const* const table : tables) {
        EXPECT_EQ(Dump(table, false), before[table]) << table;
    }
}

TEST_F(DataFileTest, SavesTheRowAsItIsStored)
{
    AddMember(1);
    AddWorkout(1, kTime);
    std::ostringstream stream;
    CText text(&stream, '|');
    EXPECT_FALSE(m_setWk.Save(text));
    ASSERT_EQ(m_setWk.FindWks(1), 1);
    m_setWk.m_dtCheckOut = {};
    EXPECT_TRUE(m_setWk.Save(text));
    auto const before = stream.str();
    m_setWk.Op(CDAOEFSet::opEdit);
    m_setWk.m_nClassIndex = static_cast<std::uint8_t>(m_setWk.m_nClassIndex + 1);
    ASSERT_TRUE(m_setWk.Op(CDAOEFSet::opUpdate));
    EXPECT_TRUE(m_setWk.Save(text));
    auto const after = stream.str().substr(before.size());
    EXPECT_NE(after, before);
    EXPECT_EQ(BackupWorkouts(), after);

    ASSERT_EQ(m_setWk.FindWks(1), 1);
    ASSERT_NE(m_setMem.FindMember(CDAOSmMem::idMember, 1), 0);
    Run(DataFile::member, "DELETE FROM members");
    EXPECT_FALSE(m_setMem.Save(text));
    EXPECT_EQ(m_setMem.LastStatus().Error(), DbError::gone);
    m_setWk.Op(CDAOEFSet::opMoveFirst);
    EXPECT_FALSE(m_setWk.Save(text));
    EXPECT_EQ(m_setWk.LastStatus().Error(), DbError::gone);
}

TEST_F(DataFileTest, RefusesAMemberThatALineCannotHoldWhole)
{
    AddMember(1);
    Run(DataFile::member, "DELETE FROM classes");
    Run(DataFile::member, "DELETE FROM messages");
    std::ostringstream stream;
    CText text(&stream, '|');
    for (int i = 1; i <= 4; ++i) {
        Run(DataFile::member,
            "INSERT INTO classes (member_id, class_index, category, course, section, grade_status, "
            "orientation, re_evaluations, other_bonuses) VALUES (1, ?, 'A', '', '', 0, 0, 0, 0)",
            {std::int64_t(i)});
        ASSERT_NE(m_setMem.FindMember(CDAOSmMem::idMember, 1), 0);
        EXPECT_EQ(m_setMem.Save(text), i <= 3);
    }
    Run(DataFile::member, "DELETE FROM classes WHERE class_index > 2");
    CDAOMemCls found;
    CMemberSearchData search;
    search.SetSearchCriteria(CMemberSearchData::sClass, "A", nullptr, nullptr);
    ASSERT_EQ(found.FindMembers(search, true, true), 1);
    EXPECT_EQ(Backup(found), BackupMembers());
    Run(DataFile::member, "INSERT INTO messages (member_id, message) VALUES (1, ''), (1, 'b')");
    ASSERT_NE(m_setMem.FindMember(CDAOSmMem::idMember, 1), 0);
    EXPECT_FALSE(m_setMem.Save(text));
}

TEST_F(DataFileTest, TellsThatADiskIsFull)
{
    AddMember(1);
    std::ofstream full("/dev/full");
    CText text(&full, '|');
    m_setMem.FindAllMembers(true);
    bool saved = true;
    for (int i = 0; i < 10'000 && saved; ++i) {
        saved = m_setMem.Save(text);
    }
    EXPECT_FALSE(saved);
    EXPECT_EQ(m_setMem.LastStatus().Text(),
        "A record could not be written: the data file cannot be written or has no room for it.");
}
