#include "store/DAOSmMem.h"

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

void CDAOSmMem::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("workout_number", m_WorkoutNum);
    fx.Field("first_name", m_FirstName);
    fx.Field("middle_initial", m_MiddleInit);
    fx.Field("last_name", m_LastName);
    fx.Field("status", m_Status);
}
