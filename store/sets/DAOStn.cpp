#include "store/sets/DAOStn.h"

CRecordClass const* CDAOStn::GetThisClass()
{
    static CRecordClass const record = {"CDAOStn", nullptr, DataFile::center, "stations"};
    return &record;
}

void CDAOStn::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("name", m_strStnName);
    fx.Field("abbreviation", m_strStnAbbr);
}
