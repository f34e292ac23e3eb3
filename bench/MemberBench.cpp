// Searching, loading and saving whole members.

#include "bench/BenchData.h"
#include "bench/RawSqlite.h"
#include "store/DAOMemCls.h"
#include "store/MemberSearchData.h"
#include "store/MemberServices.h"

#include <memory>
#include <string>
#include <vector>

namespace
{

using Search = CMemberSearchData;

constexpr int kMembersOfAClass = 250;
constexpr std::int32_t kFirstNew = 500'000'000;

/// The other tables of the members that are there, three classes each.
void FillTablesOfMembers()
{
    CRawDatabase const raw(MemberPath());
    raw.Run("BEGIN;"
            "INSERT INTO profiles (member_id, address, city, state, zip, phone, email, "
            "emergency_name, emergency_phone, physician, release, employee, birthday, sex, goals, "
            "medical_history) SELECT member_id, '4711 Evergreen Terrace', 'Springfield', 'WA', "
            "'98101-1234', '(555) 555-0101', 'katharine.q@example.org', 'John Featherstonehaugh', "
            "'(555) 555-0102', 'Dr. Elizabeth Q. Hamilton', 1, 0, 3000000000, 0, 21, 5 "
            "FROM members;"
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
            "SELECT member_id, 3980000000, 4010000000, 3, 1 FROM members;"
            "INSERT INTO messages (member_id, message) SELECT member_id, 'Welcome back!' "
            "FROM members;");
    CRawStatement const classes(raw,
        "INSERT INTO classes (member_id, class_index, category, course, section, grade_status, "
        "orientation, re_evaluations, other_bonuses) SELECT member_id, ?1, 'Category ' || ?1, "
        "'Course ' || (member_id * 7919 % (1 + (SELECT count(*) FROM members) / ?2)), "
        "'Monday evening', 1, 1, 2, 0 FROM members");
    for (int index = 1; index <= 3; ++index) {
        classes.Bind(1, index);
        classes.Bind(2, kMembersOfAClass);
        classes.Step();
        classes.Reset();
    }
    raw.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

// ---- searches

constexpr char const* kMemberColumns
    = "id, member_id, expire_date, workout_number, first_name, middle_initial, last_name, status, "
      "address, city, state, zip, birthday, sex";
constexpr char const* kNameOrder = " ORDER BY last_name COLLATE NOCASE, first_name COLLATE NOCASE, "
                                   "middle_initial COLLATE NOCASE, id";

void TakeRawMembers(CRawStatement const& select, bool withClass)
{
    while (select.Step()) {
        for (int const column : {0, 1, 2, 3, 7, 12, 13}) {
            benchmark::DoNotOptimize(select.Integer(column));
        }
        for (int const column : {4, 5, 6, 8, 9, 10, 11}) {
            benchmark::DoNotOptimize(select.Text(column));
        }
        benchmark::DoNotOptimize(withClass ? select.Integer(14) : 0);
    }
    select.Reset();
}

void TakeMembers(benchmark::State& state, CDAOMem& set, Search const& search)
{
    int const count = set.FindMembers(search, true, true);
    for (int i = 0; i < count; ++i) {
        benchmark::DoNotOptimize(set.m_LastName.data());
        set.Op(CDAOEFSet::opMoveNext);
    }
    set.Op(CDAOEFSet::opClose);
    state.counters["rows"] = count;
}

/// The last names end with numbers: this one begins some tens or hundreds of them.
std::string SomeName(int turn)
{
    return "featherstonehaugh " + std::to_string(g_members / 1000 + turn % 7);
}

void RawSearchByName(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawStatement const select(raw,
        std::string("SELECT ") + kMemberColumns
            + " FROM member_view WHERE last_name COLLATE NOCASE >= ?1 "
              "AND last_name COLLATE NOCASE < ?1 || '~'"
            + kNameOrder);
    int turn = 0;
    for (auto _ : state) {
        select.Bind(1, SomeName(turn++));
        TakeRawMembers(select, false);
    }
}

void StoreSearchByName(benchmark::State& state)
{
    CDAOMem set;
    int turn = 0;
    for (auto _ : state) {
        Search search;
        search.SetSearchCriteria(Search::sLastName, SomeName(turn++).c_str(), nullptr, nullptr);
        TakeMembers(state, set, search);
    }
}

void RawSearchByID(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawStatement const select(raw,
        std::string("SELECT ") + kMemberColumns + " FROM member_view WHERE member_id = ?"
            + kNameOrder);
    int member = 0;
    for (auto _ : state) {
        member = (member + 7919) % g_members;
        select.Bind(1, member + 1);
        TakeRawMembers(select, false);
    }
}

void StoreSearchByID(benchmark::State& state)
{
    CDAOMem set;
    int member = 0;
    for (auto _ : state) {
        member = (member + 7919) % g_members;
        Search search;
        search.SetSearchCriteria(Search::sMemberID, std::int32_t(member + 1));
        TakeMembers(state, set, search);
    }
}

std::string SomeCourse(int turn)
{
    return "Course " + std::to_string(turn % (g_members / kMembersOfAClass));
}

void RawSearchByClass(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawStatement const select(raw,
        std::string("SELECT ") + kMemberColumns
            + ", class_index FROM member_class_view WHERE category = ?1 COLLATE NOCASE "
              "AND course = ?2 COLLATE NOCASE AND section = ?3 COLLATE NOCASE"
            + kNameOrder);
    int turn = 0;
    for (auto _ : state) {
        select.Bind(1, std::string("category 2"));
        select.Bind(2, SomeCourse(turn++));
        select.Bind(3, std::string("Monday evening"));
        TakeRawMembers(select, true);
    }
}

void StoreSearchByClass(benchmark::State& state)
{
    CDAOMemCls set;
    int turn = 0;
    for (auto _ : state) {
        Search search;
        search.SetSearchCriteria(
            Search::sClass, "category 2", SomeCourse(turn++).c_str(), "Monday evening");
        TakeMembers(state, set, search);
    }
}

// ---- whole members

std::string TextOf(int turn)
{
    return "Springfield " + std::to_string(turn);
}

/// The tables of a member with what is read and written of each.
struct CMemberTable
{
    char const* name;
    std::vector<char const*> numbers;
    std::vector<char const*> texts;
};

std::vector<CMemberTable> const kTables = {
    {"members", {"workout_number", "status"}, {"first_name", "middle_initial", "last_name"}},
    {"profiles", {"release", "employee", "birthday", "sex", "goals", "medical_history"},
        {"address", "city", "state", "zip", "phone", "email", "emergency_name", "emergency_phone",
            "physician"}},
    {"enrollments", {"enroll_date", "expire_date", "period", "incentive"}, {}},
    {"messages", {}, {"message"}},
    {"classes", {"class_index", "grade_status", "orientation", "re_evaluations", "other_bonuses"},
        {"category", "course", "section"}}};

/// A statement for each table.
class CRawMemberStatements
{
public:
    enum class Kind
    {
        select,
        insert,
        update
    };

    CRawMemberStatements(CRawDatabase const& raw, Kind kind)
    {
        for (auto const& table : kTables) {
            std::string columns = "member_id";
            std::string places = "?1";
            std::string changes;
            int place = 1;
            for (auto const* list : {&table.numbers, &table.texts}) {
                for (auto const* const column : *list) {
                    columns += std::string(", ") + column;
                    places += ", ?" + std::to_string(++place);
                    changes += (changes.empty() ? "" : ", ") + std::string(column) + " = ?"
                        + std::to_string(place);
                }
            }
            std::string const name = table.name;
            m_statements.push_back(std::make_unique<CRawStatement>(raw,
                kind == Kind::select
                    ? "SELECT id, " + columns + " FROM " + name + " WHERE member_id = ? ORDER BY id"
                    : kind == Kind::insert
                    ? "INSERT INTO " + name + " (" + columns + ") VALUES (" + places + ")"
                    : "UPDATE " + name + " SET " + changes + " WHERE member_id = ?1"
                        + (name == "classes" ? " AND class_index = ?2" : "")));
        }
    }

    CRawStatement const& Of(std::size_t table) const { return *m_statements[table]; }

private:
    std::vector<std::unique_ptr<CRawStatement>> m_statements;
};

/// Runs a table's statement that writes, each field from the turn.
void WriteRaw(CRawStatement const& write, CMemberTable const& table, std::int32_t member, int turn)
{
    auto const rows = std::string(table.name) == "classes" ? 3 : 1;
    for (int row = 1; row <= rows; ++row) {
        int place = 1;
        write.Bind(place, member);
        for (std::string const column : table.numbers) {
            write.Bind(++place,
                column == "class_index"          ? row
                    : column == "workout_number" ? member
                                                 : turn % 100);
        }
        for (std::size_t i = 0; i < table.texts.size(); ++i) {
            write.Bind(++place, TextOf(turn));
        }
        write.Step();
        write.Reset();
    }
}

void LoadRaw(CRawMemberStatements const& selects, std::int32_t member)
{
    for (std::size_t i = 0; i < kTables.size(); ++i) {
        auto const& select = selects.Of(i);
        select.Bind(1, member);
        while (select.Step()) {
            int column = 0;
            for (std::size_t n = 0; n < 2 + kTables[i].numbers.size(); ++n) {
                benchmark::DoNotOptimize(select.Integer(column++));
            }
            for (std::size_t n = 0; n < kTables[i].texts.size(); ++n) {
                benchmark::DoNotOptimize(select.Text(column++));
            }
        }
        select.Reset();
    }
}

/// The record sets that the document keeps for its editor.
struct CMemberSets
{
    CDAOSmMem members;
    CDAOProf profiles;
    CDAOEnr enrollments;
    CDAOMsg messages;
    CDAOCls classes;

    bool Find(std::int32_t member)
    {
        int found = members.FindMember(CDAOSmMem::idMember, member);
        found += profiles.FindProfile(member);
        found += enrollments.FindEnrollment(member);
        return found + messages.FindMessages(member) == 4;
    }
    bool DoAll(CDAOEFSet::op operation)
    {
        bool done = true;
        for (auto* const set :
            std::initializer_list<CDAOEFSet*>{&members, &profiles, &enrollments, &messages}) {
            done = set->Op(operation) && done;
        }
        return done;
    }
};

void Fill(CMemberSets& sets, std::int32_t member, int turn)
{
    auto const text = TextOf(turn);
    auto const number = static_cast<std::uint8_t>(turn % 100);
    auto const date = CEFOleDateTime::FromSeconds(number);
    sets.members.m_MemberID = sets.members.m_WorkoutNum = member;
    sets.members.m_FirstName = sets.members.m_MiddleInit = sets.members.m_LastName = text;
    sets.members.m_Status = number;
    auto& profile = sets.profiles;
    profile.m_MemberID = member;
    profile.m_Address = profile.m_City = profile.m_State = profile.m_Zip = profile.m_Phone = text;
    profile.m_Email = profile.m_EmergName = profile.m_EmergPhone = profile.m_Physician = text;
    profile.m_Release = profile.m_Employee = profile.m_Sex = number;
    profile.m_Birthday = date;
    profile.m_Goals = profile.m_MedHist = number;
    sets.enrollments.m_MemberID = member;
    sets.enrollments.m_EnrollDate = sets.enrollments.m_ExpireDate = date;
    sets.enrollments.m_EnrollPer = sets.enrollments.m_Incentive = number;
    sets.messages.m_MemberID = member;
    sets.messages.m_Message = text;
}

CClassSlot SlotOf(std::uint8_t index, int turn)
{
    auto const text = TextOf(turn);
    return {text, text, text, CDAODef::gsInProgress, turn % 2 != 0, turn % 100, turn % 100, index};
}

/// As the member's editor does on OK.
bool Save(CMemberSets& sets, std::int32_t member, int turn)
{
    CDbStatus status;
    CTransaction transaction(*CDatabaseSession::Get().Open(DataFile::member, status));
    bool const found = sets.Find(member);
    if (!sets.DoAll(found ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew)) {
        return false;
    }
    Fill(sets, member, turn);
    return sets.DoAll(CDAOEFSet::opUpdate) && sets.DoAll(CDAOEFSet::opClose)
        && UpdateClasses(member, SlotOf(1, turn), SlotOf(2, turn), SlotOf(3, turn))
        && transaction.Commit();
}

void RawLoad(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawMemberStatements const selects(raw, CRawMemberStatements::Kind::select);
    int member = 0;
    for (auto _ : state) {
        member = (member + 7919) % g_members;
        LoadRaw(selects, member + 1);
    }
}

void StoreLoad(benchmark::State& state)
{
    CMemberSets sets;
    int member = 0;
    for (auto _ : state) {
        member = (member + 7919) % g_members;
        if (!sets.Find(member + 1)) {
            state.SkipWithError("a member is missing");
        }
        for (int count = sets.classes.FindClasses(member + 1); count > 0; --count) {
            benchmark::DoNotOptimize(sets.classes.m_Category.data());
            sets.classes.Op(CDAOEFSet::opMoveNext);
        }
        sets.DoAll(CDAOEFSet::opClose);
        sets.classes.Op(CDAOEFSet::opClose);
    }
}

void RawAddMember(benchmark::State& state)
{
    static std::int32_t member = kFirstNew;
    CRawDatabase const raw(MemberPath());
    CRawMemberStatements const inserts(raw, CRawMemberStatements::Kind::insert);
    for (auto _ : state) {
        raw.Run("BEGIN IMMEDIATE");
        ++member;
        for (std::size_t i = 0; i < kTables.size(); ++i) {
            WriteRaw(inserts.Of(i), kTables[i], member, member);
        }
        raw.Run("COMMIT");
    }
}

void StoreAddMember(benchmark::State& state)
{
    static std::int32_t member = kFirstNew + kFirstNew / 2;
    CMemberSets sets;
    for (auto _ : state) {
        ++member;
        if (!Save(sets, member, member)) {
            state.SkipWithError("a member could not be added");
        }
    }
}

void RawChangeMember(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawMemberStatements const selects(raw, CRawMemberStatements::Kind::select);
    CRawMemberStatements const updates(raw, CRawMemberStatements::Kind::update);
    static int turn = 0;
    for (auto _ : state) {
        auto const member = ++turn * 7919 % g_members + 1;
        raw.Run("BEGIN IMMEDIATE");
        LoadRaw(selects, member);
        for (std::size_t i = 0; i < kTables.size(); ++i) {
            WriteRaw(updates.Of(i), kTables[i], member, turn);
        }
        raw.Run("COMMIT");
    }
}

void StoreChangeMember(benchmark::State& state)
{
    CMemberSets sets;
    static int turn = 50;
    for (auto _ : state) {
        auto const member = ++turn * 7919 % g_members + 1;
        if (!Save(sets, member, turn)) {
            state.SkipWithError("a member could not be changed");
        }
    }
}

} // namespace

void RegisterMemberPairs()
{
    FillTablesOfMembers();
    RegisterPair(
        "search by last name", RawSearchByName, StoreSearchByName, benchmark::kMicrosecond);
    RegisterPair("search by ID", RawSearchByID, StoreSearchByID, benchmark::kMicrosecond);
    RegisterPair("search by class", RawSearchByClass, StoreSearchByClass, benchmark::kMicrosecond);
    RegisterPair("load a whole member", RawLoad, StoreLoad, benchmark::kMicrosecond);
    RegisterPair("add a whole member", RawAddMember, StoreAddMember, benchmark::kMicrosecond);
    RegisterPair(
        "change a whole member", RawChangeMember, StoreChangeMember, benchmark::kMicrosecond);
}
