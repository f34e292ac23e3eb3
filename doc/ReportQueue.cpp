#include "doc/CorvanaDoc.h"

#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

namespace
{

constexpr int kMemberCount = 1;
constexpr int kUnknownWorkouts = 13;

} // namespace

bool CCorvanaDoc::QueueReport(int type)
{
    switch (type) {
    case kMemberCount:
        return AddReport(type, tr("Member Count"));
    case kUnknownWorkouts:
        return AddReport(type, tr("Category \"Unknown\" Workouts"));
    default:
        TellNotBuiltYet();
        return false;
    }
}

bool CCorvanaDoc::AddReport(int type, QString const& name)
{
    if (!StoreReport(type)) {
        Tell(Window(), tr("Error: the report \"%1\" could not be queued.").arg(name),
            CMessageIcon::none, ToQt(m_setReport.LastStatus().Text()));
        return false;
    }
    ShowResult(tr("The report \"%1\" is queued for the report server.").arg(name));
    return true;
}

bool CCorvanaDoc::StoreReport(int type)
{
    CWaitCursor const wait;
    CSetCloser const close(m_setReport);
    m_setReport.OpenSet(false);
    if (!m_setReport.Op(CDAOEFSet::opAddNew)) {
        return false;
    }
    m_setReport.m_nRptType = type;
    m_setReport.m_nRptParam = 0;
    m_setReport.m_dtRptFrom = {};
    m_setReport.m_dtRptTo = {};
    m_setReport.m_strRptCategory.clear();
    m_setReport.m_strRptCourse.clear();
    m_setReport.m_strRptSection.clear();
    return m_setReport.Op(CDAOEFSet::opUpdate);
}
