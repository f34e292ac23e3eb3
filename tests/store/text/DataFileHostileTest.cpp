#include "tests/store/text/DataFileFixture.h"

#include <cmath>
#include <limits>

namespace
{

using namespace std::string_literals;
using Limits = std::numeric_limits<std::int64_t>;

std::vector<DbValue> const kHostile = {std::monostate(), Limits::min(), Limits::max(),
    std::int64_t(-1), std::int64_t(0), std::int64_t(256), std::int64_t(65'536),
    std::int64_t(1'000'000'000), std::int64_t(4'294'967'296), -0.0, 7.5, 5e-324, 1e15, HUGE_VAL,
    -HUGE_VAL, ""s, "text"s, "12"s, "\\N"s, "|\\\n\r\0\xFF"s, "2026-11-16T18:05:09"s};

/// Records of other programs that keep none of our rules.
class DataFileHostileTest : public CDataFileTest
{
protected:
    void SetUp() override
    {
        CDataFileTest::SetUp();
        Run(DataFile::member, "PRAGMA ignore_check_constraints = ON");
    }

    /// Makes the tables of a line anew as they are, but without types and rules.
    static void LoosenTables(CRecordLine const& line)
    {
        for (auto const& part : line.Parts()) {
            std::string columns = "id INTEGER PRIMARY KEY AUTOINCREMENT";
            columns += part.link.empty() ? "" : ", " + part.link;
            for (auto const& column : part.columns) {
                columns += ", " + column.name;
            }
            if (!part.next) {
                Run(DataFile::member, "DROP TABLE " + part.table);
                Run(DataFile::member, "CREATE TABLE " + part.table + " (" + columns + ")");
            }
        }
    }

    /// Members to which the records of any member ID belong.
    static void AddMembers()
    {
        for (auto const& number : kHostile) {
            if (std::holds_alternative<std::int64_t>(number)) {
                Run(DataFile::member,
                    "INSERT OR IGNORE INTO members (member_id, workout_number, first_name, "
                    "middle_initial, last_name, status) VALUES (?1, ?1, '', '', '', 1)",
                    {number});
            }
        }
    }

    /// The values of a record whose parts are all there.
    std::vector<DbValue> Values(CRecordLine const& line)
    {
        CRowBlock block;
        bool whole = false;
        while (!whole) {
            m_rows.Make(line, {{"member_id", 256}}, block);
            whole = true;
            for (std::size_t part = 0; part < line.Parts().size(); ++part) {
                whole = whole && line.Has(block.Row(0), part);
            }
        }
        std::vector<DbValue> values;
        for (std::size_t i = 0; i < line.Columns(); ++i) {
            values.push_back(ValueOf(block.Row(0).Cell(i), block.Row(0)));
        }
        return values;
    }

    /// Makes it the only record; false when the tables refuse it.
    static bool Put(CRecordLine const& line, std::vector<DbValue> const& values)
    {
        for (auto const& part : line.Parts()) {
            Run(DataFile::member, "DELETE FROM " + part.table);
        }
        auto first = values.begin();
        bool taken = true;
        for (auto const& part : line.Parts()) {
            auto const end = first + std::ssize(part.columns);
            std::vector<DbValue> row(first, end);
            if (!part.link.empty()) {
                row.insert(row.begin(), values.front());
            }
            std::int64_t changed = 0;
            taken = taken && Database(DataFile::member).Execute(part.insert, row, changed).IsOK();
            first = end;
        }
        return taken;
    }

    /// Saves the only record. Either the line is a right one, or the reason names the field.
    bool SavesARightLine(CDAOFileSet& set, std::size_t column)
    {
        std::ostringstream stream;
        CText text(&stream, '|');
        EXPECT_EQ(set.OpenSet(true), 1);
        if (set.Save(text)) {
            EXPECT_TRUE(Test(set, stream.str())) << set.LastStatus().Text();
            return true;
        }
        EXPECT_EQ(stream.str(), "");
        auto const field = " of " + std::string(set.GetLine().Kind()) + ", ";
        // Where the first of a part is missing, the next one is what should be missing as well.
        auto const found = set.LastStatus().Text().find(std::to_string(column + 2) + field);
        auto const next = set.LastStatus().Text().find(std::to_string(column + 3) + field);
        EXPECT_TRUE(found != std::string::npos || next != std::string::npos)
            << column << ": " << set.LastStatus().Text();
        return false;
    }

    static std::vector<ColumnType> Types(CRecordLine const& line)
    {
        std::vector<ColumnType> types;
        for (auto const& part : line.Parts()) {
            for (auto const& column : part.columns) {
                types.push_back(column.type);
            }
        }
        return types;
    }

    static bool IsOfType(DbValue const& value, ColumnType type)
    {
        return type == ColumnType::text ? std::holds_alternative<std::string>(value)
            : type == ColumnType::real  ? std::holds_alternative<double>(value)
                                        : std::holds_alternative<std::int64_t>(value);
    }

    /// Makes every field of a record hold every value; counts what was saved and what was not.
    std::map<bool, int> SaveEverything(CDAOFileSet& set, bool typed)
    {
        auto const& line = set.GetLine();
        auto const types = Types(line);
        std::map<bool, int> count;
        for (std::size_t column = 0; column < line.Columns(); ++column) {
            for (auto const& hostile : kHostile) {
                auto values = Values(line);
                values[column] = hostile;
                if (Put(line, values)) {
                    bool const saved = SavesARightLine(set, column);
                    // A message that is null is none.
                    bool const isNoMessage = !line.HasTime() && column + 1 == line.Columns()
                        && std::holds_alternative<std::monostate>(hostile);
                    EXPECT_TRUE(!saved || typed || isNoMessage || IsOfType(hostile, types[column]))
                        << column;
                    ++count[saved];
                }
            }
        }
        return count;
    }

    std::array<CDAOFileSet*, 4> m_sets = {&m_setMem, &m_setWk, &m_setEval, &m_setBodyComp};
};

} // namespace

TEST_F(DataFileHostileTest, EveryLineThatIsSavedIsARightOne)
{
    for (auto* const set : m_sets) {
        if (set != &m_setMem) {
            AddMembers();
        }
        auto count = SaveEverything(*set, true);
        EXPECT_GT(count[true], 100) << set->GetLine().Kind();
        EXPECT_GT(count[false], 5) << set->GetLine().Kind();
    }
}

TEST_F(DataFileHostileTest, EveryLineThatIsSavedOfTablesWithoutTypesIsARightOne)
{
    for (auto* const set : m_sets) {
        LoosenTables(set->GetLine());
    }
    for (auto* const set : m_sets) {
        auto count = SaveEverything(*set, false);
        EXPECT_GT(count[true], 100) << set->GetLine().Kind();
        EXPECT_GT(count[false], 100) << set->GetLine().Kind();
    }
}

TEST_F(DataFileHostileTest, ARecordThatFitsNoLineIsToldByItsField)
{
    struct Case
    {
        CDAOFileSet* set;
        std::ptrdiff_t field; ///< the first of those that are changed
        int count;
        DbValue value;
        std::string reason;
    };
    std::vector<Case> const cases = {
        {&m_setMem, 3, 1, std::int64_t(0),
            "field 3 of MB1, workout_number in members, is out of range"},
        {&m_setMem, 27, 1, {},
            "field 28 of MB1, category in classes, is no null, as those before it"},
        {&m_setMem, 27, 8, {},
            "field 35 of MB1, class_index in classes, belongs to a row whose row before it is "
            "missing"},
        {&m_setMem, 51, 1, std::string(CText::kLongestLine, 'a'),
            "it is longer than a line of MB1 can be"},
        {&m_setWk, 9, 1, "abc"s,
            "field 9 of WK1, station2 in workouts, is not of its column's type"},
    };
    for (auto* const set : m_sets) {
        LoosenTables(set->GetLine());
    }
    for (auto const& [set, field, count, value, reason] : cases) {
        auto values = Values(set->GetLine());
        std::fill_n(values.begin() + field - 2, count, value);
        ASSERT_TRUE(Put(set->GetLine(), values));
        std::ostringstream stream;
        CText text(&stream, '|');
        ASSERT_EQ(set->OpenSet(true), 1);
        EXPECT_FALSE(set->Save(text));
        EXPECT_EQ(stream.str(), "");
        EXPECT_EQ(set->LastStatus().Text(),
            std::string("A record could not be written: ").append(reason).append("."));
    }
}
