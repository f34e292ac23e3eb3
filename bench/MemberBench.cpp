// Searching, loading and saving whole members.

#include "bench/BenchData.h"
#include "bench/RawMember.h"
#include "store/services/MemberSearchData.h"
#include "store/services/MemberServices.h"
#include "store/sets/DAOMemCls.h"

#include <memory>
#include <string>
#include <vector>

namespace
{

using Search = CMemberSearchData;

constexpr int kMembersOfAClass = 250;
constexpr std::int32_t kFirstNew = 500'000'000;

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

/// Runs a search again and again; bind sets what is looked for at each turn.
template <typename Bind>
void RawSearch(
    benchmark::State& state, std::string const& fromWhere, bool withClass, Bind const& bind)
{
    CRawDatabase const raw(MemberPath());
    CRawStatement const select(raw,
        std::string("SELECT ") + kMemberColumns + (withClass ? ", class_index" : "") + " FROM "
            + fromWhere + kNameOrder);
    int turn = 0;
    for (auto _ : state) {
        bind(select, turn++);
        TakeRawMembers(select, withClass);
    }
}

template <typename Set, typename SetCriterion>
void StoreSearch(benchmark::State& state, SetCriterion const& setCriterion)
{
    Set set;
    int turn = 0;
    for (auto _ : state) {
        Search search;
        setCriterion(search, turn++);
        int const count = set.FindMembers(search, true, true);
        for (int i = 0; i < count; ++i) {
            benchmark::DoNotOptimize(set.m_LastName.data());
            set.Op(CDAOEFSet::opMoveNext);
        }
        set.Op(CDAOEFSet::opClose);
        state.counters["rows"] = count;
    }
}

/// The last names end with numbers: this one begins some tens or hundreds of them.
std::string SomeName(int turn)
{
    return "featherstonehaugh " + std::to_string(g_members / 1000 + turn % 7);
}

void RawSearchByName(benchmark::State& state)
{
    RawSearch(state,
        "member_view WHERE last_name COLLATE NOCASE >= ?1 "
        "AND last_name COLLATE NOCASE < ?1 || '~'",
        false, [](CRawStatement const& select, int turn) { select.Bind(1, SomeName(turn)); });
}

void StoreSearchByName(benchmark::State& state)
{
    StoreSearch<CDAOMem>(state, [](Search& search, int turn) {
        search.SetSearchCriteria(Search::sLastName, SomeName(turn).c_str(), nullptr, nullptr);
    });
}

std::int32_t SomeMember(int turn)
{
    return static_cast<std::int32_t>((turn + 1LL) * 7919 % g_members + 1);
}

void RawSearchByID(benchmark::State& state)
{
    RawSearch(state, "member_view WHERE member_id = ?1", false,
        [](CRawStatement const& select, int turn) { select.Bind(1, SomeMember(turn)); });
}

void StoreSearchByID(benchmark::State& state)
{
    StoreSearch<CDAOMem>(state, [](Search& search, int turn) {
        search.SetSearchCriteria(Search::sMemberID, SomeMember(turn));
    });
}

std::string SomeCourse(int turn)
{
    return "Course " + std::to_string(turn % (g_members / kMembersOfAClass));
}

void RawSearchByClass(benchmark::State& state)
{
    RawSearch(state,
        "member_class_view WHERE category = ?1 COLLATE NOCASE AND course = ?2 COLLATE NOCASE "
        "AND section = ?3 COLLATE NOCASE",
        true, [](CRawStatement const& select, int turn) {
            select.Bind(1, std::string("category 2"));
            select.Bind(2, SomeCourse(turn));
            select.Bind(3, std::string("Monday evening"));
        });
}

void StoreSearchByClass(benchmark::State& state)
{
    StoreSearch<CDAOMemCls>(state, [](Search& search, int turn) {
        search.SetSearchCriteria(
            Search::sClass, "category 2", SomeCourse(turn).c_str(), "Monday evening");
    });
}

// ---- whole members

std::string TextOf(int turn)
{
    return "Springfield " + std::to_string(turn);
}

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
        benchmark::DoNotOptimize(LoadRaw(selects, member + 1));
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
        for (std::size_t i = 0; i < MemberTables().size(); ++i) {
            WriteRaw(inserts.Of(i), MemberTables()[i], member, member);
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

/// Each side changes members of its own, the odd or the even ones: who came second to a member
/// would find there what he is to write, or its index entries next to where they are to go.
std::int32_t Half(int turn)
{
    return turn * 7919 % (g_members / 2) * 2;
}

void RawChangeMember(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawMemberStatements const selects(raw, CRawMemberStatements::Kind::select);
    CRawMemberStatements const updates(raw, CRawMemberStatements::Kind::update);
    static int turn = 0;
    for (auto _ : state) {
        auto const member = Half(++turn) + 1;
        raw.Run("BEGIN IMMEDIATE");
        benchmark::DoNotOptimize(LoadRaw(selects, member));
        for (std::size_t i = 0; i < MemberTables().size(); ++i) {
            WriteRaw(updates.Of(i), MemberTables()[i], member, turn);
        }
        raw.Run("COMMIT");
    }
}

void StoreChangeMember(benchmark::State& state)
{
    CMemberSets sets;
    static int turn = 0;
    for (auto _ : state) {
        auto const member = Half(++turn) + 2;
        if (!Save(sets, member, turn)) {
            state.SkipWithError("a member could not be changed");
        }
    }
}

} // namespace

void RegisterMemberPairs()
{
    AddTablesOfMembers(CRawDatabase(MemberPath()), kMembersOfAClass);
    RegisterPair(
        "search by last name", RawSearchByName, StoreSearchByName, benchmark::kMicrosecond);
    RegisterPair("search by ID", RawSearchByID, StoreSearchByID, benchmark::kMicrosecond);
    RegisterPair("search by class", RawSearchByClass, StoreSearchByClass, benchmark::kMicrosecond);
    RegisterPair("load a whole member", RawLoad, StoreLoad, benchmark::kMicrosecond);
    RegisterPair("add a whole member", RawAddMember, StoreAddMember, benchmark::kMicrosecond);
    RegisterPair(
        "change a whole member", RawChangeMember, StoreChangeMember, benchmark::kMicrosecond);
}
