#include "store/sets/DAOEnr.h"

CRecordClass const* CDAOEnr::GetThisClass()
{
    static CRecordClass const record = {"CDAOEnr", nullptr, DataFile::member, "enrollments"};
    return &record;
}

std::int32_t CDAOEnr::FindEnrollment(std::int32_t memberID)
{
    return FindFew("WHERE member_id = ?", memberID);
}

void CDAOEnr::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("enroll_date", m_EnrollDate);
    fx.Field("expire_date", m_ExpireDate);
    fx.Field("period", m_EnrollPer);
    fx.Field("incentive", m_Incentive);
}
