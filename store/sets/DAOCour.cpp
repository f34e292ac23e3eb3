#include "store/sets/DAOCour.h"

CRecordClass const* CDAOCour::GetThisClass()
{
    static CRecordClass const record = {"CDAOCour", nullptr, DataFile::center, "courses"};
    return &record;
}

int CDAOCour::FindCourses(std::int32_t category, std::int32_t course)
{
    return course == 0 ? Find("WHERE category = ? ORDER BY id", category)
                       : FindFew("WHERE number = ? AND category = ?", course, category);
}

void CDAOCour::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("number", m_nCourID);
    fx.Field("category", m_nCourCatID);
    fx.Field("name", m_strCourName);
}
