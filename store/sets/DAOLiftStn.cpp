#include "store/sets/DAOLiftStn.h"

CRecordClass const* CDAOLiftStn::GetThisClass()
{
    static CRecordClass const record = {"CDAOLiftStn", nullptr, DataFile::center, "lift_stations"};
    return &record;
}

void CDAOLiftStn::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("name", m_strStnName);
    fx.Field("least_lift", m_dMinLift);
    fx.Field("greatest_lift", m_dMaxLift);
}
