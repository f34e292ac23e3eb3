#include "store/services/MemberSearchData.h"
#include "store/services/MemberServices.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOChkIn.h"
#include "store/sets/DAOCirc.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/DAOMemCls.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOWk.h"
#include "tests/store/ForeignProgram.h"
#include "tests/store/StoreFixture.h"

#include <algorithm>
#include <functional>

namespace
{

using namespace std::string_literals;
using Values = std::vector<std::string>; // as they stand in SQL

/// What tables without types take.
Values const kAnything = {"NULL", "x'00FF00'", "zeroblob(70000)", "'text'", "'12'", "''", "7",
    "7.5", "-9223372036854775808", "9223372036854775807", "4294967296", "2147483648", "65536",
    "300", "-1", "9e999", "-9e999", "1e308", "5e-324", "-0.0", "CAST(zeroblob(70000) AS TEXT)",
    "replace(hex(zeroblob(8000)), '0', 'long ')", "CAST(x'6100620A5C7C' AS TEXT)",
    "CAST(x'FFFEC0AF' AS TEXT)", "CAST(x'EDA080' AS TEXT)"};

/// A table with one row, and a change of one field of it.
struct CTableCase
{
    std::shared_ptr<CDAOEFSet> set;
    std::string column; ///< the one that is changed
    std::function<void()> setField;
};

template <typename Set, typename Field>
CTableCase Case(
    std::string const& column, Field Set::*field, std::type_identity_t<Field> const& value)
{
    auto set = std::make_shared<Set>();
    return {set, column, [=] { set.get()->*field = value; }};
}

std::vector<CTableCase> Cases()
{
    auto const lifts = std::make_shared<CDAOCirc>();
    return {
        Case("status", &CDAOSmMem::m_Status, 9),
        Case("city", &CDAOProf::m_City, "Changed"),
        Case("incentive", &CDAOEnr::m_Incentive, 9),
        Case("section", &CDAOCls::m_Section, "Changed"),
        Case("message", &CDAOMsg::m_Message, "Changed"),
        Case("check_out", &CDAOWk::m_dtCheckOut, CEFOleDateTime(2026, 11, 16)),
        Case("weight", &CDAOSmEval::m_dWeight, 9.5),
        Case("thigh", &CDAOEvalBodyComp::m_dThigh, 9.5),
        Case("weight", &CDAOBodyComp::m_dWeight, 9.5),
        {lifts, "lift3", [=] { lifts->SetStnVal(2, 9.5); }},
        Case("first_name", &CDAOChkIn::m_strFirstName, "Changed"),
    };
}

class HostileRowTest : public CStoreTest
{
protected:
    /// The rows of a table, without one column.
    static Rows Without(std::string const& column, CDAOEFSet& set)
    {
        std::string columns = "id";
        for (auto const& other : set.Columns()) {
            columns += other.name == column ? "" : ", " + other.name;
        }
        auto const& kind = *set.GetClass();
        return Dump("(SELECT " + columns + " FROM " + std::string(kind.table) + ")", kind.file);
    }

    /// Puts a row into a table and changes one field of it.
    template <typename ValueOf>
    static void ExpectOnlyChanges(CTableCase const& given, ValueOf const& valueOf)
    {
        auto& set = *given.set;
        auto const table = std::string(set.GetClass()->table);
        {
            CForeignProgram const foreign(set.GetClass()->file);
            foreign.Run("DELETE FROM " + table);
            foreign.Run(InsertInto(set, valueOf));
        }
        SCOPED_TRACE(table);
        auto const before = Without(given.column, set);
        ASSERT_EQ(set.OpenSet(true), 1);
        EXPECT_TRUE(set.Op(CDAOEFSet::opEdit));
        given.setField();
        EXPECT_TRUE(set.Op(CDAOEFSet::opUpdate));
        EXPECT_TRUE(before == Without(given.column, set)) << "more was changed than the field";
        set.Op(CDAOEFSet::opClose);
    }

    template <typename Set, typename Find>
    static void Walk(Find const& find)
    {
        Set set;
        int count = find(set);
        EXPECT_TRUE(set.LastStatus()) << set.LastStatus().Text();
        for (; count > 0; --count) {
            set.Op(CDAOEFSet::opMoveNext);
        }
    }

    /// Everything that reads members and records, for what must not end the program.
    static void ReadEverything()
    {
        CMemberSearchData all;
        all.SetSearchCriteria(CMemberSearchData::sLastName, "long", nullptr, nullptr);
        all.SetSearchCriteria(CMemberSearchData::sAge, 0, 125);
        all.SetSearchCriteria(CMemberSearchData::sClass, "\xFF", "", "");
        for (auto const& search : {CMemberSearchData(), all}) {
            Walk<CDAOMem>([&](auto& set) { return set.FindMembers(search, true, true); });
            Walk<CDAOMemCls>([&](auto& set) { return set.FindMembers(search, true, true); });
        }
        Walk<CDAOSmMem>([](auto& set) { return set.FindAllMembersByName(false); });
        Walk<CDAOCls>([](auto& set) { return set.GenerateIndex(-1, 255), set.FindClasses(-1); });
        Walk<CDAOWk>([](auto& set) { return set.CountToday(), set.FindWks(0); });
        Walk<CDAOEval>([](auto& set) { return set.FindEvals(CDAOSmEval::idMember, 0); });
        Walk<CDAOSmEval>([](auto& set) { return set.GenerateIDNum(), set.OpenSet(true); });
        Walk<CDAOBodyComp>([](auto& set) { return set.FindBodyComps(0); });
    }
};

} // namespace

TEST_F(HostileRowTest, EachColumnHasAFieldOfItsOwn)
{
    for (auto const& [set, column, setField] : Cases()) {
        std::vector<DbValue> values;
        CForeignProgram(set->GetClass()->file).Run(InsertInto(*set, [&](CColumn const& own) {
            auto const number = own.type == ColumnType::flag ? 1 : std::ssize(values) + 2;
            auto const text = std::to_string(number);
            values.push_back(own.type == ColumnType::text ? DbValue(text)
                    : own.type == ColumnType::real        ? DbValue(double(number))
                                                          : DbValue(number));
            return "'" + text + "'";
        }));
        ASSERT_EQ(set->OpenSet(true), 1);
        EXPECT_EQ(set->FieldValues(), values) << set->GetClass()->table;
        set->Op(CDAOEFSet::opClose);
    }
}

TEST_F(HostileRowTest, AChangeOfOneFieldKeepsWhatFitsNoField)
{
    CForeignProgram(DataFile::member).LoosenTables();
    CForeignProgram(DataFile::checkIn).LoosenTables();
    for (auto const& value : kAnything) {
        for (auto const& given : Cases()) {
            ExpectOnlyChanges(given, [&](CColumn const& /*column*/) { return value; });
        }
        ReadEverything();
    }
    std::vector<std::string> findings;
    EXPECT_TRUE(Database(DataFile::member).Check(findings));
    EXPECT_NE(
        std::ranges::find(findings, "not as this version makes it: workouts"), findings.end());
}

TEST_F(HostileRowTest, ShowsValuesAsTheyAreOrAsNone)
{
    CForeignProgram(DataFile::member)
        .Run("INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
             "last_name, status) VALUES (7, 7, CAST(x'610062' AS TEXT), 'many', CAST(x'FF41' AS "
             "TEXT), 256)");
    CDAOMem member;
    ASSERT_EQ(member.FindMember(CDAOSmMem::idMember, 7), 1);
    EXPECT_EQ(member.m_FirstName + member.m_MiddleInit + member.m_LastName, "a\0bmany\xFF\x41"s);
    CDAOWk workout;
    Run(DataFile::member, InsertInto(workout, [](CColumn const& column) {
        return column.name == "member_id" ? "7" : column.name == "station1" ? "-32768" : "32768";
    }));
    ASSERT_EQ(workout.FindWks(7), 1);
    EXPECT_TRUE(workout.m_bWorkoutOK && workout.m_nClassIndex == 0);
    EXPECT_TRUE(workout.GetStnVal(1) == -32768 && workout.GetStnVal(2) == 0);
}
