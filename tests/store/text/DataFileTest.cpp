#include "store/services/MemberSearchData.h"
#include "store/sets/DAOCls.h"
#include "store/sets/DAOMemCls.h"
#include "tests/store/ForeignProgram.h"
#include "tests/store/text/DataFileFixture.h"

#include <fstream>

namespace
{
class DataFileTest : public CDataFileTest
{
protected:
    /// Why a file can be neither tested nor restored; empty when it is a right one.
    std::string Fault(CDAOFileSet& set, std::string const& file)
    {
        std::istringstream stream(file);
        bool const right = set.Test(stream, '|');
        auto const reason = set.LastStatus().Text();
        EXPECT_EQ(right, reason.empty());
        if (!right) {
            auto const before = Count("members") + Count("workouts");
            EXPECT_EQ(Restore(set, file, 77, false), 0) << "also of a member not asked for";
            EXPECT_EQ(set.LastStatus().Text(), reason);
            EXPECT_EQ(Count("members") + Count("workouts"), before);
        }
        return reason;
    }

    /// The cells of a record whose parts are all there.
    std::vector<DbValue> WholeCells(CRecordLine const& line)
    {
        std::vector<DbValue> cells;
        while (cells.empty() || std::count(cells.begin(), cells.end(), DbValue()) > 0) {
            cells = MakeCells(line, {});
        }
        return cells;
    }

    /// Makes these cells the only record.
    static void Put(CDAOFileSet& set, std::vector<DbValue> const& cells)
    {
        for (auto const& part : set.GetLine().Parts()) {
            Run(DataFile::member, "DELETE FROM " + part.table);
        }
        EXPECT_TRUE(AddCells(set.GetLine(), cells, true));
        EXPECT_EQ(set.OpenSet(true), 1);
    }
};

} // namespace

TEST_F(DataFileTest, RestoresEveryFieldOfEveryTable)
{
    for (std::int32_t id = 1; id <= 60; ++id) {
        AddMember(id);
        for (int i = 0; i < 4; ++i) {
            // Other programs can add two records of one moment, which can be no date.
            auto const time = i < 2 ? -9'000'000'000'000 : kTime + i;
            AddWorkout(id, time);
            Add(m_setEval, {{"member_id", id}, {"eval_date", time}, {"eval_id", id * 10 - i}});
            Add(m_setBodyComp, {{"member_id", id}, {"body_comp_date", time}});
        }
    }
    auto const before = DumpAll();
    Rows files;
    for (auto* const set : m_sets) {
        files.push_back(Backup(*set));
    }
    Run(DataFile::member, "DELETE FROM members");
    for (auto const& [table, rows] : before) {
        EXPECT_GT(rows.size(), 20U) << table;
    }
    for (std::size_t i = 0; i < m_sets.size(); ++i) {
        EXPECT_EQ(Fault(*m_sets[i], files[i]), "");
        EXPECT_EQ(Restore(*m_sets[i], files[i] + files[i]), i == 0 ? 60 : 240); // joined files
        EXPECT_EQ(Restore(*m_sets[i], files[i]) + m_sets[i]->LastSkipped(), 0);
        EXPECT_EQ(Backup(*m_sets[i]), files[i]);
    }
    EXPECT_EQ(DumpAll(), before);
}

TEST_F(DataFileTest, ARecordThatIsThereIsKept)
{
    AddMember(1);
    AddWorkout(1, kTime);
    auto const file = Backup(m_setWk);
    Run(DataFile::member, "UPDATE workouts SET circuits = 77");
    EXPECT_EQ(Restore(m_setWk, file + file), 0);
    EXPECT_EQ(Count("workouts WHERE circuits = 77"), 1);
}

TEST_F(DataFileTest, ABadFileStoresNothingAndTellsWhy)
{
    AddMember(1);
    auto const members = Backup(m_setMem);
    Run(DataFile::member, "UPDATE members SET last_name = 'Changed'");
    EXPECT_EQ(Fault(m_setMem, members + Backup(m_setMem)),
        "line 2: holds a member that an earlier line holds otherwise.");
    for (int i = 0; i < 1000; ++i) {
        AddWorkout(1, kTime + i);
    }
    auto const file = Backup(m_setWk);
    Run(DataFile::member, "DELETE FROM workouts");
    auto const at = file.find('\n', file.size() / 2) + 1;
    auto const number
        = std::to_string(std::count(file.begin(), file.begin() + std::ptrdiff_t(at), '\n'));
    auto damaged = file;
    damaged[at - 5] = damaged[at - 5] == '1' ? '2' : '1';
    EXPECT_EQ(
        Fault(m_setWk, damaged), "line " + number + ": is damaged: its check sum does not fit.");
    EXPECT_EQ(Fault(m_setWk, ""), "line 1: there is no record.");
    EXPECT_EQ(
        Fault(m_setWk, file + members), "line 1001, field 1: is another kind of record than WK1.");
    EXPECT_EQ(Restore(m_setWk, file.substr(0, at)), std::stoi(number));
    std::ifstream folder(m_folder); // cannot be read, which is no end of the file
    EXPECT_FALSE(m_setWk.Test(folder, '|'));
    EXPECT_EQ(m_setWk.LastStatus().Text(), "line 1: could not be read.");
}

TEST_F(DataFileTest, SavesTheRowAsItIsStored)
{
    AddMember(1);
    AddWorkout(1, kTime);
    EXPECT_EQ(Line(m_setWk), "") << "there is no row";
    ASSERT_EQ(m_setWk.FindWks(1), 1);
    m_setWk.Op(CDAOEFSet::opEdit);
    m_setWk.m_nClassIndex = static_cast<std::uint8_t>(m_setWk.m_nClassIndex + 1);
    ASSERT_TRUE(m_setWk.Op(CDAOEFSet::opUpdate));
    m_setWk.m_dtCheckOut = {};
    CDAOWk others;
    EXPECT_EQ(Line(m_setWk), Backup(others));

    std::ofstream full;
    full.rdbuf()->pubsetbuf(nullptr, 0);
    full.open("/dev/full");
    CText text(&full, '|');
    EXPECT_FALSE(m_setWk.Save(text));
    EXPECT_EQ(m_setWk.LastStatus().Text(),
        "A record could not be written: the data file cannot be written or has no room for it.");

    ASSERT_EQ(m_setMem.FindMember(CDAOSmMem::idMember, 1), 1);
    Run(DataFile::member, "DELETE FROM members");
    m_setWk.Op(CDAOEFSet::opMoveFirst);
    for (auto* const set : {m_sets[0], m_sets[1]}) {
        EXPECT_EQ(Line(*set), "");
        EXPECT_EQ(set->LastStatus().Error(), DbError::gone);
    }
}

TEST_F(DataFileTest, RefusesAMemberThatALineCannotHoldWhole)
{
    AddMember(1);
    Run(DataFile::member, "DELETE FROM classes");
    Run(DataFile::member, "DELETE FROM messages");
    CDAOMemCls found;
    CMemberSearchData search;
    search.SetSearchCriteria(CMemberSearchData::sClass, "A", nullptr, nullptr);
    for (std::uint8_t i = 1; i <= 4; ++i) {
        ASSERT_TRUE(AddRow<CDAOCls>([&](CDAOCls& set) {
            set.m_MemberID = 1;
            set.m_ClassIndex = i;
            set.m_Category = "A";
        }));
        ASSERT_EQ(m_setMem.OpenSet(true), 1);
        ASSERT_EQ(found.FindMembers(search, true, true), 1);
        EXPECT_EQ(Line(m_setMem).empty(), i > 3);
        EXPECT_EQ(Line(found), Line(m_setMem));
    }
    Run(DataFile::member, "DELETE FROM classes");
    Run(DataFile::member, "INSERT INTO messages (member_id, message) VALUES (1, ''), (1, 'b')");
    EXPECT_EQ(Line(m_setMem), "");
}

// Records of other programs, in tables without types and rules.
TEST_F(DataFileTest, EveryLineThatIsSavedIsARightOne)
{
    CForeignProgram(DataFile::member).LoosenTables();
    for (auto* const set : m_sets) {
        std::map<bool, int> saved;
        std::size_t place = 0;
        for (auto const& part : set->GetLine().Parts()) {
            for (auto const& column : part.columns) {
                for (std::size_t kind = 0; kind < kValues.size(); ++kind) {
                    for (auto const& value : kValues[kind]) {
                        auto cells = WholeCells(set->GetLine());
                        cells[place] = value;
                        Put(*set, cells);
                        std::istringstream stream(Line(*set));
                        bool const taken = set->LastStatus().IsOK();
                        ++saved[taken];
                        EXPECT_TRUE(!taken || set->Test(stream, '|')) << column.name;
                        // A message that is null is none.
                        EXPECT_TRUE(
                            !taken || kind == KindOf(column.type) || column.name == "message")
                            << column.name;
                    }
                }
                ++place;
            }
        }
        EXPECT_GT(saved[true], 100);
        EXPECT_GT(saved[false], 100);
    }
}

TEST_F(DataFileTest, ARecordThatFitsNoLineIsToldByItsField)
{
    CForeignProgram(DataFile::member).LoosenTables();
    // Those that are changed, from which field on.
    using Case = std::tuple<CDAOFileSet*, std::ptrdiff_t, int, DbValue, std::string>;
    for (auto const& [set, field, count, value, reason] :
        {Case(&m_setMem, 3, 1, std::int64_t(0),
             "field 3 of MB1, workout_number in members, is out of range"),
            Case(&m_setMem, 27, 1, DbValue(),
                "field 28 of MB1, category in classes, is no null, as those before it"),
            Case(&m_setMem, 27, 8, DbValue(),
                "field 35 of MB1, class_index in classes, belongs to a row whose row before it is "
                "missing"),
            Case(&m_setMem, 51, 1, std::string(CText::kLongestLine, 'a'),
                "it is longer than a line of MB1 can be"),
            Case(&m_setWk, 9, 1, "abc",
                "field 9 of WK1, station2 in workouts, is not of its column's type")}) {
        auto cells = WholeCells(set->GetLine());
        std::fill_n(cells.begin() + field - 2, count, value);
        Put(*set, cells);
        EXPECT_EQ(Line(*set), "");
        EXPECT_EQ(set->LastStatus().Text(), "A record could not be written: " + reason + ".");
    }
}
