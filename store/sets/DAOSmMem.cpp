#include "store/sets/DAOSmMem.h"

CRecordClass const* CDAOSmMem::GetThisClass()
{
    static CRecordClass const record = {"CDAOSmMem", nullptr, DataFile::member, "members"};
    return &record;
}

std::int32_t CDAOSmMem::FindMember(id kind, std::int32_t number)
{
    return kind == idMember ? FindFew("WHERE member_id = ?", number)
                            : FindFew("WHERE workout_number = ?", number);
}

bool CDAOSmMem::GetMember(id kind, std::int32_t number, std::string& firstName,
    std::string& middleInit, std::string& lastName, std::uint8_t& status)
{
    CDAOSmMem member;
    if (member.FindMember(kind, number) == 0) {
        return false;
    }
    firstName = member.m_FirstName;
    middleInit = member.m_MiddleInit;
    lastName = member.m_LastName;
    status = member.m_Status;
    return true;
}

int CDAOSmMem::FindAllMembers(bool past)
{
    return past ? Find("ORDER BY id") : Find("WHERE status <> 0 ORDER BY id");
}

int CDAOSmMem::FindAllMembersByName(bool past)
{
    return past ? Find("ORDER BY last_name COLLATE NOCASE, first_name COLLATE NOCASE, "
                       "middle_initial COLLATE NOCASE, id")
                : Find("WHERE status <> 0 ORDER BY last_name COLLATE NOCASE, "
                       "first_name COLLATE NOCASE, middle_initial COLLATE NOCASE, id");
}

int CDAOSmMem::CountPast()
{
    // No index: two values are not worth one.
    return static_cast<int>(Ask("SELECT count(*) FROM members WHERE status = 0", {}));
}

char const* CDAOSmMem::GetStatusStr(std::uint8_t status)
{
    return status != 0 ? "Current" : "Past";
}

void CDAOSmMem::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("workout_number", m_WorkoutNum);
    fx.Field("first_name", m_FirstName);
    fx.Field("middle_initial", m_MiddleInit);
    fx.Field("last_name", m_LastName);
    fx.Field("status", m_Status);
}
