#include "store/sets/DAOBon.h"

CRecordClass const* CDAOBon::GetThisClass()
{
    static CRecordClass const record = {"CDAOBon", nullptr, DataFile::center, "bonuses"};
    return &record;
}

void CDAOBon::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("name", m_strBonusName);
    fx.Field("points", m_nPoints);
}
