#include "tests/store/ForeignProgram.h"
#include "tests/store/text/DataFileFixture.h"

namespace
{

/// Records of other programs, in tables without types and rules.
class DataFileHostileTest : public CDataFileTest
{
protected:
    void SetUp() override
    {
        CDataFileTest::SetUp();
        CForeignProgram(DataFile::member).LoosenTables();
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

TEST_F(DataFileHostileTest, EveryLineThatIsSavedIsARightOne)
{
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

TEST_F(DataFileHostileTest, ARecordThatFitsNoLineIsToldByItsField)
{
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
