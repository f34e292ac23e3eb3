#include "store/DAOMem.h"

CRecordClass const* CDAOMem::GetThisClass()
{
    static CRecordClass const record = {"CDAOMem", nullptr, DataFile::member, "member_view", true};
    return &record;
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
