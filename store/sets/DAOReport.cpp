#include "store/sets/DAOReport.h"

CRecordClass const* CDAOReport::GetThisClass()
{
    static CRecordClass const record = {"CDAOReport", nullptr, DataFile::report, "reports"};
    return &record;
}

int CDAOReport::FindReports()
{
    return Find("ORDER BY id");
}

void CDAOReport::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("type", m_nRptType);
    fx.Field("parameter", m_nRptParam);
    fx.Field("date_from", m_dtRptFrom);
    fx.Field("date_to", m_dtRptTo);
    fx.Field("category", m_strRptCategory);
    fx.Field("course", m_strRptCourse);
    fx.Field("section", m_strRptSection);
}
