#include "doc/CorvanaDoc.h"

#include "doc/ReportPrompts.h"
#include "store/services/ReportJob.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

namespace
{

bool StoreJob(CDAOReport& set, CReportJob const& job)
{
    if (!set.Op(CDAOEFSet::opAddNew)) {
        return false;
    }
    set.m_nRptType = job.m_nType;
    set.m_nRptParam = job.m_nParam;
    set.m_dtRptFrom = job.m_dtFrom;
    set.m_dtRptTo = job.m_dtTo;
    set.m_strRptCategory = job.m_strCategory;
    set.m_strRptCourse = job.m_strCourse;
    set.m_strRptSection = job.m_strSection;
    return set.Op(CDAOEFSet::opUpdate);
}

} // namespace

bool CCorvanaDoc::QueueReport(int type)
{
    CReportJob job{.m_nType = CDAOReport::rpttype(type)};
    return AskReport(*this, job) && AddReport(job);
}

bool CCorvanaDoc::AddReport(CReportJob const& job)
{
    CWaitCursor const wait;
    CSetCloser const close(m_setReport);
    m_setReport.OpenSet(false);
    auto const name = ToQt(CDAOReport::GetTypeStr(job.m_nType));
    if (!StoreJob(m_setReport, job)) {
        Tell(Window(), tr("Error: the report \"%1\" could not be queued.").arg(name),
            CMessageIcon::none, ToQt(m_setReport.LastStatus().Text()));
        return false;
    }
    ShowResult(tr("The report \"%1\" is queued for the report server.").arg(name));
    return true;
}
