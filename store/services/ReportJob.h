#pragma once

#include "store/sets/DAOReport.h"

/// What the report server is asked for. What a report does not use stays as it is here.
struct CReportJob
{
    CDAOReport::rpttype m_nType = {};
    std::int32_t m_nParam = 0; ///< a member ID or flags, see CDAOReport::GetParamKind
    CEFOleDateTime m_dtFrom = {};
    CEFOleDateTime m_dtTo = {};
    std::string m_strCategory = {};
    std::string m_strCourse = {};
    std::string m_strSection = {};
};
