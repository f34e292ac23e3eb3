// What is changed for all members of a list together.
#include "doc/CorvanaDoc.h"

#include "doc/UpdateClassDlg.h"
#include "members/MemberBatch.h"
#include "members/PostMessageDlg.h"
#include "members/UpdateEnrollDlg.h"
#include "store/services/MemberServices.h"
#include "store/sets/DAOMemCls.h"
#include "ui/WaitCursor.h"

namespace
{

bool IsAccepted(CDialog& dialog)
{
    CWaitCursorPause const pause;
    return dialog.exec() == QDialog::Accepted;
}

/// Of the record sets of a new member only what the dialog asks for counts.
void BeginAsNewMember(CUpdateEnrollDlg& dialog)
{
    CDAOSmMem members;
    CDAOEnr enrollments;
    CDAOProf profiles;
    CDAOCls classes;
    CDAOMsg messages;
    if (ResetMember(members, enrollments, profiles, classes, messages)) {
        dialog.m_dtEnroll = enrollments.m_EnrollDate;
        dialog.m_dtExpire = enrollments.m_ExpireDate;
        dialog.m_nEnrollPer = enrollments.m_EnrollPer;
        dialog.m_bIncentive = enrollments.m_Incentive != 0;
        dialog.m_bCurrent = members.m_Status != 0;
    }
}

} // namespace

bool CCorvanaDoc::UpdateClass(CDAOMem& members)
{
    Q_ASSERT(members.IsKindOf(CDAOMemCls::GetThisClass()));
    auto const& found = static_cast<CDAOMemCls const&>(members);
    CWaitCursor const wait;
    CUpdateClassDlg dialog(*this, Window());
    return IsAccepted(dialog)
        && ChangeMembers(*this, members,
            {tr("Updating classes, please wait..."), tr("Failed to update class for %1"),
                tr("Classes updated for %1 of %2 members"),
                [&](std::int32_t memberID) {
                    return ReplaceClass(
                        memberID, found.m_ClassIndex, dialog.m_class, dialog.m_bTransfer);
                },
                true});
}

bool CCorvanaDoc::UpdateEnrollment(CDAOMem& members)
{
    CWaitCursor const wait;
    CUpdateEnrollDlg dialog(Window());
    BeginAsNewMember(dialog);
    return IsAccepted(dialog)
        && ChangeMembers(*this, members,
            {tr("Updating enrollments, please wait..."), tr("Failed to update enrollment for %1"),
                tr("Enrollments updated for %1 of %2 members"), [&](std::int32_t memberID) {
                    // Without a period the number of none is stored as it is.
                    return ::UpdateEnrollment(memberID, dialog.m_dtEnroll, dialog.m_dtExpire,
                        static_cast<std::uint8_t>(dialog.m_nEnrollPer), dialog.m_bIncentive ? 1 : 0,
                        dialog.m_bCurrent ? 1 : 0);
                }});
}

void CCorvanaDoc::PostMessages(CDAOMem& members)
{
    CPostMessageDlg dialog(Window());
    if (dialog.exec() == QDialog::Accepted) {
        ChangeMembers(*this, members,
            {tr("Posting messages, please wait..."), tr("Failed to post message for %1"),
                dialog.m_bReplace ? tr("Messages posted for %1 of %2 members")
                                  : tr("Messages posted or kept for %1 of %2 members"),
                [&](std::int32_t memberID) {
                    return corv_apiPostMemberMessage(
                               dialog.m_strMessage.c_str(), memberID, dialog.m_bReplace)
                        == apiSuccess;
                }});
    }
}
