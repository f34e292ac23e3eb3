#include "store/DAOMem.h"

#include "store/DAOCls.h"
#include "store/DAOEnr.h"
#include "store/DAOMsg.h"
#include "store/DAOProf.h"
#include "store/MemberSearchData.h"

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

CDAOFileSet::Outcome CDAOMem::RestoreRow(CRowView const& row, bool keepExisting)
{
    enum
    {
        unread, // what a question that failed gives
        isNew,
        there,
        newNumberTaken,
        thereNumberTaken
    };
    DbValue const member = std::int64_t(GetLine().MemberOf(row));
    auto const cells = GetLine().Cells(row, 0);
    // cells[1] is the workout number, by which no other member may check in.
    auto const found = Ask("SELECT CASE WHEN EXISTS (SELECT 1 FROM members WHERE member_id = ?1) "
                           "THEN 2 ELSE 1 END + CASE WHEN EXISTS (SELECT 1 FROM members "
                           "WHERE workout_number = ?2 AND member_id <> ?1) THEN 2 ELSE 0 END",
        {member, cells[1].integerValue});
    bool const isThere = found == there || found == thereNumberTaken;
    if (isThere && keepExisting) {
        return Outcome::kept;
    }
    if (found == newNumberTaken || found == thereNumberTaken) {
        return Outcome::skipped;
    }
    bool added = found != unread
        && (isThere ? ReplaceSummary(row, member)
                    : Run(GetLine().Parts().front().insert, {}, row, cells));
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
                    std::span(&member, 1), row, {}));
    }
    return done;
}
