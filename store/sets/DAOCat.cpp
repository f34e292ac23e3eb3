#include "store/sets/DAOCat.h"

CRecordClass const* CDAOCat::GetThisClass()
{
    static CRecordClass const record = {"CDAOCat", nullptr, DataFile::center, "categories"};
    return &record;
}

int CDAOCat::FindCategories(std::int32_t number)
{
    return number == 0 ? Find("ORDER BY id") : FindFew("WHERE number = ?", number);
}

void CDAOCat::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("number", m_nCatID);
    fx.Field("name", m_strCatName);
}
