#include "store/DAOMem.h"

#include "store/MemberSearchData.h"

CRecordClass const* CDAOMem::GetThisClass()
{
    static CRecordClass const record = {"CDAOMem", nullptr, DataFile::member, "member_view", true};
    return &record;
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
    return Select(clause, std::move(values), false);
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
