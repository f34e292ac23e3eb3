// Finding members.
#include "doc/CorvanaDoc.h"

#include "members/MemberEnrollFindPg.h"
#include "members/MemberFindPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberListDlg.h"
#include "members/MemberMedHistPg.h"
#include "platform/qt/PropertySheet.h"
#include "store/sets/DAOMemCls.h"
#include "store/sets/SetCloser.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

#include <memory>
#include <optional>

namespace
{

void AddMask(CMemberSearchData& search, CMemberSearchData::search criterion, CMaskPg const& page)
{
    if (page.Mask() != 0) {
        search.SetSearchCriteria(criterion, static_cast<std::int32_t>(page.Mask()));
    }
}

/// Lets the user describe the members to look for; false when he gives up.
bool AskCriteria(CCorvanaDoc& doc, CMemberSearchData& search)
{
    std::optional<CWaitCursor> wait(std::in_place);
    CPropertySheet sheet(CCorvanaDoc::tr("Find Members"), doc.Window());
    auto* const goals = new CMemberGoalsPg;
    auto* const medHist = new CMemberMedHistPg;
    sheet.AddPage(new CMemberFindPg(search), CCorvanaDoc::tr("Profile"));
    sheet.AddPage(new CMemberEnrollFindPg(doc, search), CCorvanaDoc::tr("Enrollment"));
    sheet.AddPage(goals, CCorvanaDoc::tr("Fitness Goals"));
    sheet.AddPage(medHist, CCorvanaDoc::tr("Medical History"));
    wait.reset();
    if (sheet.exec() != QDialog::Accepted) {
        return false;
    }
    AddMask(search, CMemberSearchData::sGoals, *goals);
    AddMask(search, CMemberSearchData::sMedicalHistory, *medHist);
    return true;
}

} // namespace

void CCorvanaDoc::FindMembers()
{
    CMemberSearchData search;
    if (!AskCriteria(*this, search)) {
        return;
    }
    std::optional<CWaitCursor> wait(std::in_place);
    bool const isClassSearch = search.Has(CMemberSearchData::sClass);
    auto const classSet = isClassSearch ? std::make_unique<CDAOMemCls>() : nullptr;
    CDAOMem& set = isClassSearch ? *classSet : m_setMem;
    CSetCloser const close(set);
    int const count = set.FindMembers(search, true, true);
    wait.reset();
    if (!set.LastStatus()) {
        Fail(tr("Error: the members could not be read."), set);
    } else if (count == 0) {
        Tell(Window(), tr("No members are recorded for the specified search criteria"));
    } else {
        CMemberListDlg list(*this, set, isClassSearch);
        list.m_strTitle
            = count == 1 ? tr("Member ID %1").arg(set.m_MemberID) : tr("Member Search Results");
        list.exec();
    }
}
