#include "store/sets/DAOMem.h"

#include "store/services/MemberSearchData.h"
#include "store/sets/DAOCls.h"
#include "store/sets/DAOEnr.h"
#include "store/sets/DAOMsg.h"
#include "store/sets/DAOProf.h"

CRecordClass const* CDAOMem::GetThisClass()
{
    static CRecordClass const record = {"CDAOMem", nullptr, DataFile::member, "member_view", true};
    return &record;
}

CRecordLine const& CDAOMem::GetLine() const
{
    using Line = CRecordLine;
    static Line const line("MB1", {},
        {Line::PartOf(CDAOSmMem()), Line::PartOf(CDAOProf(), "member_id"),
            Line::PartOf(CDAOEnr(), "member_id"), Line::PartOf(CDAOCls(), "member_id"),
            Line::PartOf(CDAOCls(), "member_id"), Line::PartOf(CDAOCls(), "member_id"),
            Line::PartOf(CDAOMsg(), "member_id")});
    return line;
}

std::int32_t CDAOMem::FindMember(CDAOSmMem::id kind, std::int32_t number)
{
    return kind == CDAOSmMem::idMember ? FindFew("WHERE member_id = ?", number)
                                       : FindFew("WHERE workout_number = ?", number);
}

int CDAOMem::FindAllMembers(bool past)
{
    return past ? Find("ORDER BY id") : Find("WHERE status <> 0 ORDER BY id");
}

int CDAOMem::FindMembers(CMemberSearchData const& search, bool /*byName*/, bool /*past*/)
{
    std::vector<DbValue> values;
    auto const clause = search.Clause(CMemberSearchData::Over::members, values);
    return Select(clause, std::move(values), search.UsesIndex() ? Extent::mostlyFew : Extent::many);
}

void CDAOMem::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("expire_date", m_ExpireDate);
    fx.Field("workout_number", m_WorkoutNum);
    fx.Field("first_name", m_FirstName);
    fx.Field("middle_initial", m_MiddleInit);
    fx.Field("last_name", m_LastName);
    fx.Field("status", m_Status);
    fx.Field("address", m_Address);
    fx.Field("city", m_City);
    fx.Field("state", m_State);
    fx.Field("zip", m_Zip);
    fx.Field("birthday", m_Birthday);
    fx.Field("sex", m_Sex);
}

std::optional<CRowView> CDAOMem::LineCells(CRowBlock& block)
{
    return JoinedCells(JoinedTable(), block);
}

CTableInfo const& CDAOMem::JoinedTable() const
{
    static CTableInfo const joined = JoinedOver("members AS p0", "p0.id");
    return joined;
}

/// The parts of a member's line, from a clause that gives the members as p0.
CTableInfo CDAOMem::JoinedOver(std::string_view members, std::string_view key) const
{
    auto const nth = [](std::string const& part, std::string const& table, int place) {
        return " LEFT JOIN " + table + " AS " + part + " ON " + part + ".id = (SELECT id FROM "
            + table + " WHERE member_id = p0.member_id ORDER BY id LIMIT 1 OFFSET "
            + std::to_string(place) + ")";
    };
    auto const from = std::string(members)
        + " LEFT JOIN profiles AS p1 ON p1.member_id = p0.member_id"
          " LEFT JOIN enrollments AS p2 ON p2.member_id = p0.member_id"
        + nth("p3", "classes", 0) + nth("p4", "classes", 1) + nth("p5", "classes", 2)
        + nth("p6", "messages", 0);
    return GetLine().Joined(from, key,
        "(SELECT count(*) FROM classes WHERE member_id = p0.member_id) <= 3"
        " AND (SELECT count(*) FROM messages WHERE member_id = p0.member_id) <= 1");
}

CDAOFileSet::Outcome CDAOMem::RestoreRecord(CRowBlock& record, bool keepExisting)
{
    enum
    {
        unread, // what a question that failed gives
        isNew,
        there,
        newNumberTaken,
        thereNumberTaken
    };
    auto const row = record.Row(0);
    std::int64_t const member = GetLine().MemberOf(row);
    auto const found = Ask("SELECT CASE WHEN EXISTS (SELECT 1 FROM members WHERE member_id = ?1) "
                           "THEN 2 ELSE 1 END + CASE WHEN EXISTS (SELECT 1 FROM members "
                           "WHERE workout_number = ?2 AND member_id <> ?1) THEN 2 ELSE 0 END",
        {member, WorkoutNumber(row)});
    bool const isThere = found == there || found == thereNumberTaken;
    if (found == unread) {
        return Outcome::failed;
    }
    if (isThere && keepExisting) {
        return Outcome::kept;
    }
    if (found == isNew || found == there) {
        return Store(row, isThere);
    }
    if (keepExisting) {
        return Outcome::skipped;
    }
    m_waiting.emplace(member, CWaiting{std::move(record), isThere});
    return Outcome::waits;
}

/// Goes from each member who waits to the one who has the number, as long as that one waits too,
/// and stores them backwards. Where the way leads round, one of them gives its number up first.
bool CDAOMem::RestoreRest()
{
    std::vector<std::int64_t> way;
    std::int64_t parking = CDAOSmMem::kLargestNumber;
    while (!m_waiting.empty()) {
        if (way.empty()) {
            way.push_back(m_waiting.begin()->first);
        }
        auto const at = m_waiting.find(way.back());
        at->second.isMet = true;
        auto const row = at->second.record.Row(0);
        auto const holder
            = Ask("SELECT member_id FROM members WHERE workout_number = ? AND member_id <> ?",
                {WorkoutNumber(row), way.back()});
        if (!LastStatus()) {
            return false;
        }
        if (auto const next = m_waiting.find(holder); next == m_waiting.end()) {
            if (!Count(holder == 0 ? Store(row, at->second.isThere) : Outcome::skipped)) {
                return false;
            }
            m_waiting.erase(at);
            way.pop_back();
        } else if (!next->second.isMet) {
            way.push_back(holder);
        } else if (!Park(holder, parking)) {
            return false;
        }
    }
    return true;
}

void CDAOMem::EndRestore()
{
    CDAOFileSet::EndRestore();
    m_waiting.clear();
}

/// No other member may check in by it.
std::int64_t CDAOMem::WorkoutNumber(CRowView const& row) const
{
    return GetLine().Cells(row, 0)[1].integerValue;
}

/// Gives a member a workout number that nobody has: the first from that number downwards.
bool CDAOMem::Park(std::int64_t member, std::int64_t& number)
{
    while (Ask("SELECT count(*) FROM members WHERE workout_number = ?", {number}) != 0) {
        --number;
    }
    std::vector<DbValue> const values = {number, member};
    return LastStatus() && Run("UPDATE members SET workout_number = ? WHERE member_id = ?", values);
}

CDAOFileSet::Outcome CDAOMem::Store(CRowView const& row, bool isThere)
{
    DbValue const member = std::int64_t(GetLine().MemberOf(row));
    bool added = isThere ? ReplaceSummary(row, member)
                         : Run(GetLine().Parts().front().insert, {}, row, GetLine().Cells(row, 0));
    for (std::size_t part = 1; part < GetLine().Parts().size(); ++part) {
        added = added && AddPart(row, part, member);
    }
    return added ? Outcome::stored : Outcome::failed;
}

/// Takes a member's rows away but for the summary, on which the member's records hang, and changes
/// that one.
bool CDAOMem::ReplaceSummary(CRowView const& row, DbValue const& member)
{
    auto const& parts = GetLine().Parts();
    std::string update;
    for (auto const& column : parts.front().columns) {
        update += (update.empty() ? "UPDATE members SET " : ", ") + column.name + " = ?"
            + std::to_string(&column - parts.front().columns.data() + 1);
    }
    bool done = Run(update + " WHERE member_id = ?1", {}, row, GetLine().Cells(row, 0));
    for (std::size_t part = 1; part < parts.size(); ++part) {
        done = done
            && (parts[part].next
                || Run("DELETE FROM " + parts[part].table + " WHERE member_id = ?",
                    std::span(&member, 1)));
    }
    return done;
}
