#include "store/sets/DAOSec.h"

CRecordClass const* CDAOSec::GetThisClass()
{
    static CRecordClass const record = {"CDAOSec", nullptr, DataFile::center, "sections"};
    return &record;
}

int CDAOSec::FindSections(std::int32_t course)
{
    return Find("WHERE course = ? ORDER BY id", course);
}

int CDAOSec::FindSections(std::int32_t course, char const* name)
{
    return name == nullptr
        ? FindSections(course)
        : Find("WHERE course = ? AND name = ? ORDER BY id", course, std::string_view(name));
}

void CDAOSec::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("number", m_nSecID);
    fx.Field("course", m_nSecCourID);
    fx.Field("name", m_strSecName);
}
