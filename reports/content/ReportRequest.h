#pragma once

#include "reports/content/BuildReport.h"

/// What each report is made from, and where to.
struct CReportRequest
{
    CReportJob const& m_job;
    CReportWatch const& m_watch;
    CReport& m_report;

    bool GoesOn(double done) const { return !m_watch || m_watch(done); }
};

inline CDbStatus StoppedReport()
{
    return {DbError::stopped, "The report was stopped."};
}

inline CDbStatus NoSuchMember()
{
    return {DbError::gone, "There is no member of this number any more."};
}
