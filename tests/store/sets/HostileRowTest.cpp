#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOChkIn.h"
#include "store/sets/DAOCirc.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/DAOMemCls.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOWk.h"
#include "store/services/MemberSearchData.h"
#include "store/services/MemberServices.h"
#include "tests/store/StoreFixture.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <set>
#include <sqlite3.h>

namespace
{

using Limits = std::numeric_limits<std::int64_t>;
using namespace std::string_literals;

/// Values as they stand in SQL.
std::vector<std::string> const kNumbers = {"-9223372036854775808", "9223372036854775807",
    "4294967296", "2147483648", "65536", "300", "-1"};
std::vector<std::string> const kMeasures = {"9e999", "-9e999", "1e308", "5e-324", "-0.0"};
std::vector<std::string> const kTexts = {"CAST(zeroblob(200000) AS TEXT)",
    "replace(hex(zeroblob(50000)), '0', 'long ')", "CAST(x'6100620A5C7C' AS TEXT)",
    "CAST(x'FFFEC0AF' AS TEXT)", "CAST(x'EDA080' AS TEXT)", "''"};
/// What only tables without types take.
std::vector<std::string> const kAnything
    = {"NULL", "x'00FF00'", "zeroblob(100000)", "'text'", "'12'", "7", "7.5", "9e999"};

/// A table of members or their records, and a change of one field of a row.
struct CTableCase
{
    std::string table;
    std::string column; ///< the one that is changed
    std::function<bool()> change; ///< finds the only row and changes it
};

template <typename Set, typename Value>
CTableCase Case(std::string const& column, Value Set::*field, Value const& value)
{
    return {std::string(Set::GetThisClass()->table), column, [=] {
                Set set;
                EXPECT_EQ(set.OpenSet(true), 1);
                bool const begun = set.Op(CDAOEFSet::opEdit);
                set.*field = value;
                return begun && set.Op(CDAOEFSet::opUpdate);
            }};
}

std::vector<CTableCase> const kCases = {
    Case("status", &CDAOSmMem::m_Status, std::uint8_t(9)),
    Case("city", &CDAOProf::m_City, "Changed"s),
    Case("incentive", &CDAOEnr::m_Incentive, std::uint8_t(9)),
    Case("section", &CDAOCls::m_Section, "Changed"s),
    Case("message", &CDAOMsg::m_Message, "Changed"s),
    Case("check_out", &CDAOWk::m_dtCheckOut, CEFOleDateTime(2026, 11, 16)),
    Case("weight", &CDAOSmEval::m_dWeight, 9.5),
    Case("thigh", &CDAOEvalBodyComp::m_dThigh, 9.5),
    Case("weight", &CDAOBodyComp::m_dWeight, 9.5),
    {"lifts", "lift3",
        [] {
            CDAOCirc set;
            EXPECT_EQ(set.OpenSet(true), 1);
            bool const begun = set.Op(CDAOEFSet::opEdit);
            set.SetStnVal(2, 9.5);
            return begun && set.Op(CDAOEFSet::opUpdate);
        }},
};

/// The other program: plain SQLite that keeps none of our rules. It and the session take turns.
class CForeignProgram
{
public:
    explicit CForeignProgram(std::string const& path)
    {
        CDatabaseSession::Get().ShutDown();
        EXPECT_EQ(sqlite3_open(path.c_str(), &m_pConnection), SQLITE_OK);
        Run("PRAGMA ignore_check_constraints = ON; PRAGMA foreign_keys = OFF");
    }
    ~CForeignProgram() { sqlite3_close(m_pConnection); }
    CForeignProgram(CForeignProgram const&) = delete;
    CForeignProgram& operator=(CForeignProgram const&) = delete;

    /// False when SQLite refuses it.
    bool Try(std::string const& sql)
    {
        return sqlite3_exec(m_pConnection, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    void Run(std::string const& sql)
    {
        EXPECT_TRUE(Try(sql)) << sqlite3_errmsg(m_pConnection) << ": " << sql.substr(0, 200);
    }

    /// Makes all tables anew as they are, but without types, rules and NOT NULL.
    void LoosenTables()
    {
        std::vector<std::pair<std::string, std::string>> tables;
        auto const keep = [](void* target, int, char** values, char**) {
            static_cast<decltype(tables)*>(target)->emplace_back(values[0], values[1]);
            return 0;
        };
        sqlite3_exec(m_pConnection,
            "SELECT m.name, 'CREATE TABLE ' || m.name || ' (' || group_concat(c.name || CASE c.pk "
            "WHEN 1 THEN ' INTEGER PRIMARY KEY AUTOINCREMENT' ELSE '' END, ', ') || ')' FROM "
            "sqlite_schema AS m, pragma_table_info(m.name) AS c WHERE m.type = 'table' "
            "AND m.name NOT LIKE 'sqlite%' GROUP BY m.name",
            keep, &tables, nullptr);
        for (auto const& [name, sql] : tables) {
            Run("DROP TABLE " + name);
            Run(sql);
        }
    }

private:
    sqlite3* m_pConnection = nullptr;
};

class HostileRowTest : public CStoreTest
{
protected:
    CForeignProgram Foreign(DataFile file = DataFile::member) const
    {
        return CForeignProgram(m_folder / DataFileName(file));
    }

    /// The columns of a table with their types, without its key.
    static std::vector<std::pair<std::string, std::string>> Columns(std::string const& table)
    {
        CRowBlock rows;
        EXPECT_TRUE(Database(DataFile::member)
                        .Query("SELECT name, type FROM pragma_table_info(?) WHERE name <> 'id'",
                            std::vector<DbValue>{table}, rows));
        std::vector<std::pair<std::string, std::string>> columns;
        for (std::size_t i = 0; i < rows.Rows(); ++i) {
            auto const row = rows.Row(i);
            columns.emplace_back(row.Text(row.Cell(0)), row.Text(row.Cell(1)));
        }
        return columns;
    }

    /// The row of a table, without one column, as SQLite writes it.
    static std::string Row(std::string const& table, std::string const& without)
    {
        std::string sql;
        for (auto const& [column, type] : Columns(table)) {
            if (column != without) {
                sql += sql.empty() ? "SELECT " : " || ',' || ";
                sql.append("typeof(").append(column).append(") || quote(CAST(").append(column);
                sql.append(" AS BLOB))");
            }
        }
        CRowBlock rows;
        EXPECT_TRUE(Database(DataFile::member).Query(sql + " FROM " + table, {}, rows));
        return rows.Rows() == 1 ? std::string(rows.Row(0).Text(rows.Row(0).Cell(0))) : "";
    }

    /// The only row of the table: each column holds the n-th value of its type.
    void Put(CTableCase const& given, std::size_t nth, std::vector<std::string> const& untyped = {})
    {
        std::string names = "id";
        std::string values = std::to_string(-1 - static_cast<int>(nth));
        for (auto const& [column, type] : Columns(given.table)) {
            auto const& choice = !untyped.empty() ? untyped
                : type == "INTEGER"               ? kNumbers
                : type == "REAL"                  ? kMeasures
                                                  : kTexts;
            names += ", " + column;
            values += ", " + choice[nth % choice.size()];
        }
        auto foreign = Foreign();
        foreign.Run("DELETE FROM " + given.table);
        foreign.Run("INSERT INTO " + given.table + " (" + names + ") VALUES (" + values + ")");
    }

    static void ExpectChangeOfOneColumn(CTableCase const& given, std::string const& what)
    {
        auto const before = Row(given.table, given.column);
        ASSERT_NE(before, "") << what;
        EXPECT_TRUE(given.change()) << what;
        EXPECT_TRUE(before == Row(given.table, given.column)) << what;
    }

    /// Everything that reads members and records, for what must not end the program.
    static void ReadEverything()
    {
        for (std::int32_t const member : {0, 1, 7}) {
            ReadRecords(member);
        }
        CMemberSearchData all;
        all.SetSearchCriteria(CMemberSearchData::sLastName, "long", nullptr, nullptr);
        all.SetSearchCriteria(CMemberSearchData::sAge, 0, 125);
        all.SetSearchCriteria(CMemberSearchData::sGoals, std::int32_t(-1));
        all.SetSearchCriteria(CMemberSearchData::sClass, "\xFF", "", "");
        CDAOMem members;
        CDAOMemCls classes;
        CDAOSmMem summary;
        Walk(members, members.FindAllMembers(true));
        Walk(members, members.FindMembers({}, true, true));
        Walk(members, members.FindMembers(all, true, true));
        Walk(classes, classes.FindMembers({}, true, true));
        Walk(classes, classes.FindMembers(all, true, true));
        Walk(summary, summary.FindAllMembersByName(false));
        summary.CountPast();
    }

    /// A member of the classes A, B and C with these indexes and values that no field can show;
    /// returns its slots as they are read.
    static std::vector<CClassSlot> AddClasses(
        std::int32_t member, std::vector<std::string> const& indexes)
    {
        std::int64_t const key = member;
        Run(DataFile::member,
            "INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
            "last_name, status) VALUES (?1, ?1, '', '', '', 1)",
            {key});
        for (std::size_t i = 0; i < indexes.size(); ++i) {
            Run(DataFile::member,
                "INSERT INTO classes (member_id, class_index, category, course, section, "
                "grade_status, orientation, re_evaluations, other_bonuses) VALUES (?, "
                    + indexes[i] + ", char(65 + ?2), CAST(x'FF' AS TEXT), '', 300 + ?2, 7, 99999, "
                    + "-99999)",
                {key, std::int64_t(i)});
        }
        std::vector<CClassSlot> slots;
        CDAOCls set;
        for (int count = set.FindClasses(member); count > 0; --count) {
            slots.push_back({set.m_Category, set.m_Course, set.m_Section, set.m_GradeStat,
                set.m_Orient != 0, set.m_ReEval, set.m_Other, set.m_ClassIndex});
            set.Op(CDAOEFSet::opMoveNext);
        }
        EXPECT_EQ(slots.size(), indexes.size());
        return slots;
    }

    /// The classes of a member in their order as they are stored, with these columns.
    static std::vector<std::string> ClassRows(std::int32_t member, std::string const& columns)
    {
        CRowBlock block;
        EXPECT_TRUE(Database(DataFile::member)
                        .Query("SELECT format('%s %s %d %d %d %d %s', category, hex(course), "
                               "grade_status, orientation, re_evaluations, other_bonuses, "
                               "json_array("
                                + columns + ")) FROM classes WHERE member_id = ? ORDER BY id",
                            std::vector<DbValue>{std::int64_t(member)}, block));
        std::vector<std::string> rows;
        for (std::size_t i = 0; i < block.Rows(); ++i) {
            rows.emplace_back(block.Row(i).Text(block.Row(i).Cell(0)));
        }
        return rows;
    }

    static void AddWorkout(std::int32_t member, std::string const& classIndex)
    {
        std::string columns;
        std::string values;
        for (auto const& [column, type] : Columns("workouts")) {
            columns += columns.empty() ? column : ", " + column;
            values += values.empty() ? "" : ", ";
            values += column == "member_id" ? std::to_string(member)
                : column == "class_index"   ? classIndex
                                            : "0";
        }
        Run(DataFile::member, "INSERT INTO workouts (" + columns + ") VALUES (" + values + ")");
    }

private:
    static void ReadRecords(std::int32_t member)
    {
        CDAOWk workouts;
        CDAOEval evaluations;
        CDAOSmEval small;
        CDAOBodyComp bodyComps;
        CDAOCls classes;
        Walk(workouts, workouts.FindWks(member));
        Walk(evaluations, evaluations.FindEvals(CDAOSmEval::idMember, member));
        Walk(small, small.FindEvals(CDAOSmEval::idMember, member));
        Walk(bodyComps, bodyComps.FindBodyComps(member));
        Walk(classes, classes.FindClasses(member));
        workouts.CountToday();
        small.GenerateIDNum();
        classes.GenerateIndex(member, 255);
    }

    template <typename Set>
    static void Walk(Set& set, int count)
    {
        EXPECT_TRUE(set.LastStatus()) << set.LastStatus().Text();
        for (; count > 0; --count) {
            set.Op(CDAOEFSet::opMoveNext);
        }
    }
};

} // namespace

TEST_F(HostileRowTest, AChangeOfOneFieldKeepsWhatFitsNoField)
{
    for (auto const& given : kCases) {
        for (std::size_t nth = 0; nth < kNumbers.size(); ++nth) {
            Put(given, nth);
            ExpectChangeOfOneColumn(given, given.table + " " + std::to_string(nth));
        }
    }
    ReadEverything();
}

TEST_F(HostileRowTest, TablesWithoutTypesAreReadAndTold)
{
    Foreign().LoosenTables();
    for (auto const& given : kCases) {
        for (std::size_t nth = 0; nth < kAnything.size(); ++nth) {
            Put(given, nth, kAnything);
            ExpectChangeOfOneColumn(given, given.table + " " + std::to_string(nth));
        }
    }
    ReadEverything();
    std::vector<std::string> findings;
    EXPECT_TRUE(Database(DataFile::member).Check(findings));
    EXPECT_NE(
        std::ranges::find(findings, "not as this version makes it: workouts"), findings.end());
}

TEST_F(HostileRowTest, ShowsValuesAsTheyAreOrAsNone)
{
    Run(DataFile::member,
        "INSERT INTO members (member_id, workout_number, first_name, middle_initial, last_name, "
        "status) VALUES (7, 7, CAST(x'610062' AS TEXT), 'many', CAST(x'FF41' AS TEXT), 256)");
    Run(DataFile::member,
        "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
        "VALUES (7, 255611462400, -9223372036854775808, 200, -1)");
    Run(DataFile::member,
        "INSERT INTO workouts (member_id, workout_ok, class_index, check_in, check_out, circuits, "
        "station1, station2, station3, station4, station5, station6, station7, station8, "
        "station9, station10, station11, station12) VALUES (7, 256, 256, 9223372036854775807, 1, "
        "32768, -32768, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 32767)");
    CDAOMem member;
    ASSERT_EQ(member.FindMember(CDAOSmMem::idMember, 7), 1);
    EXPECT_EQ(member.m_FirstName, "a\0b"s);
    EXPECT_EQ(member.m_MiddleInit, "many");
    EXPECT_EQ(member.m_LastName, "\xFF\x41");
    EXPECT_EQ(member.m_Status, 0);
    EXPECT_EQ(member.m_ExpireDate.DateStrLongYear(), "Invalid DateTime");
    EXPECT_EQ(member.m_Birthday, CEFOleDateTime()) << "no profile at all";
    CDAOEnr enrollment;
    ASSERT_EQ(enrollment.FindEnrollment(7), 1);
    EXPECT_EQ(enrollment.m_EnrollDate.DateStrLongYear(), "Invalid DateTime") << "the year 10000";
    EXPECT_EQ(enrollment.m_EnrollPer, 200);
    EXPECT_EQ(CDAODef::GetEnrPerStr(static_cast<CDAODef::enrollper>(200)), ""s);
    EXPECT_EQ(enrollment.m_Incentive, 0);
    CDAOWk workout;
    ASSERT_EQ(workout.FindWks(7), 1);
    EXPECT_TRUE(workout.m_bWorkoutOK);
    EXPECT_EQ(workout.m_nClassIndex, 0);
    EXPECT_EQ(workout.GetStnVal(0), 0);
    EXPECT_EQ(workout.GetStnVal(1), -32768);
    EXPECT_EQ(workout.GetStnVal(12), 32767);
}

TEST_F(HostileRowTest, CheckInsOfAnyKindAreReadAndDeleted)
{
    int count = 0;
    {
        auto foreign = Foreign(DataFile::checkIn);
        foreign.LoosenTables();
        for (auto const* values : {&kAnything, &kNumbers, &kTexts}) {
            for (auto const& value : *values) {
                std::string row;
                for (auto const* const comma : {"", ", ", ", ", ", ", ", "}) {
                    row += comma + value;
                }
                foreign.Run("INSERT INTO check_ins (member_id, workout_number, first_name, "
                            "last_name, check_in) VALUES ("
                    + row + ")");
                ++count;
            }
        }
        foreign.Run("INSERT INTO check_ins (member_id, workout_number, first_name, last_name, "
                    "check_in) VALUES (99999999999, -1, CAST(x'FF' AS TEXT), 7, NULL)");
        ++count;
    }
    CDAOChkIn set;
    ASSERT_EQ(set.FindChkIns(), count);
    bool found = false;
    for (; count > 0; --count) {
        found = found
            || (set.m_lMemberID == 0 && set.m_lWorkoutNo == -1 && set.m_strFirstName == "\xFF"
                && set.m_strLastName.empty() && set.m_dtCheckIn == CEFOleDateTime());
        EXPECT_TRUE(set.DelCurrent()) << set.LastStatus().Text();
        set.Op(CDAOEFSet::opMoveNext);
    }
    EXPECT_TRUE(found) << "as they are or as none";
    EXPECT_EQ(set.FindChkIns(), 0);
}

/// A member's editor gives all classes back, whether they were changed or not.
TEST_F(HostileRowTest, ClassesGivenBackAsTheyWereReadStayAsTheyAre)
{
    auto const slots = AddClasses(7, {"150", "0", "3"});
    auto const before = ClassRows(7, "id, class_index");
    EXPECT_TRUE(UpdateClasses(7, slots[0], slots[1], slots[2]));
    EXPECT_EQ(ClassRows(7, "id, class_index"), before);
    auto changed = slots[2];
    changed.section = "Changed";
    EXPECT_TRUE(UpdateClasses(7, slots[0], slots[1], changed));
    EXPECT_EQ(ClassRows(7, "id, class_index"), before) << "but for the section";
}

/// Whatever becomes of the other classes: deleted, moved, new, or of the same index.
TEST_F(HostileRowTest, ClassesThatMoveKeepWhatFitsNoField)
{
    for (std::int32_t move = 0; move < 250; ++move) {
        bool const alike = move >= 125;
        auto const member = move + 1;
        auto slots
            = alike ? AddClasses(member, {"7", "7", "7"}) : AddClasses(member, {"150", "9", "2"});
        std::string const columns = alike ? "0" : "class_index";
        auto const before = ClassRows(member, columns);
        auto const keys = ClassRows(member, "id");
        CClassSlot added;
        added.category = "New";
        added.classIndex = 50;
        slots.insert(slots.end(), {added, {}});
        std::vector<std::size_t> chosen;
        for (int const slot : {move % 5, move / 5 % 5, move / 25 % 5}) {
            chosen.push_back(static_cast<std::size_t>(slot));
        }
        SCOPED_TRACE(testing::PrintToString(chosen));
        EXPECT_TRUE(UpdateClasses(member, slots[chosen[0]], slots[chosen[1]], slots[chosen[2]]));
        std::erase(chosen, slots.size() - 1);
        if (std::set(chosen.begin(), chosen.end()).size() < chosen.size()) {
            continue; // given twice: that is not the stored one any more
        }
        auto const after = ClassRows(member, columns);
        auto const keysAfter = ClassRows(member, "id");
        ASSERT_EQ(after.size(), chosen.size());
        bool stays = true;
        for (std::size_t i = 0; i < chosen.size(); ++i) {
            bool const isStored = chosen[i] < before.size();
            stays = stays && isStored && (i == 0 || chosen[i - 1] < chosen[i]);
            EXPECT_TRUE(!isStored || after[i] == before[chosen[i]]) << after[i];
            auto const key = [](std::string const& row) { return row.substr(row.find('[')); };
            EXPECT_TRUE(!isStored || (key(keysAfter[i]) == key(keys[chosen[i]])) == stays);
        }
    }
}

TEST_F(HostileRowTest, AClassWhoseIndexIsNoneTakesNobodyElses)
{
    std::int32_t member = 0;
    for (std::string const none : {"0", "99", "100", "101", "300"}) {
        SCOPED_TRACE(none);
        auto const slots = AddClasses(++member, {"150", none, "3"});
        auto const before = ClassRows(member, "0");
        auto const records = [&](std::string const& index) {
            return Number(DataFile::member,
                "SELECT count(*) FROM workouts WHERE member_id = " + std::to_string(member)
                    + " AND class_index = " + index);
        };
        for (auto const& index : {std::string("150"), none, std::string("3")}) {
            AddWorkout(member, index);
        }
        EXPECT_TRUE(UpdateClasses(member, {}, slots[1], slots[2]));
        auto const after = ClassRows(member, "0");
        ASSERT_EQ(after.size(), 2U);
        EXPECT_EQ(after[0], before[1]);
        EXPECT_EQ(after[1], before[2]);
        auto const index = Number(DataFile::member,
            "SELECT class_index FROM classes WHERE category = 'B' AND member_id = "
                + std::to_string(member));
        EXPECT_TRUE(index >= 1 && index <= CDAOCls::kLargestIndex && index != 3) << index;
        EXPECT_EQ(records("150"), 0);
        EXPECT_EQ(records("3"), 1);
        // What a reader takes for records of the class stays with it; 99 is of classes deleted.
        bool const follow = none == "0" || none == "100" || none == "101";
        EXPECT_EQ(records(std::to_string(index)), follow ? 1 : 0);
        EXPECT_EQ(records("99"), none == "99" ? 2 : 1);
    }
}
