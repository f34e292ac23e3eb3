// Adding, editing and deleting a member.
#include "doc/CorvanaDoc.h"

#include "doc/DocViews.h"
#include "members/DeleteMemberDlg.h"
#include "members/MemberEditor.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"
#include "platform/qt/PropertySheet.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <optional>

namespace
{

/// First name, middle initial and last name, without those that are empty.
QString NameOf(CDAOSmMem const& member)
{
    QString name;
    for (auto const* const part : {&member.m_FirstName, &member.m_MiddleInit}) {
        if (!part->empty()) {
            name += ToQt(*part) + u' ';
        }
    }
    return name + ToQt(member.m_LastName);
}

void RefuseTakenNumber(
    CPropertySheet& sheet, CMemberProfilePg& profile, CMemberEditor const& editor)
{
    sheet.ShowPage(&profile);
    if (editor.TakenNumber() == CTakenNumber::memberID) {
        profile.RefuseMemberID(profile.m_lMemberID);
    } else {
        profile.RefuseWorkoutNum(profile.m_lWorkoutNum);
    }
}

void ShowSaved(CCorvanaDoc& doc, std::int32_t memberID, std::int32_t previousID, bool isNew)
{
    auto* const views = doc.Views();
    if (views == nullptr) {
        return;
    }
    if (isNew) {
        views->RemoveMemberNode(previousID); // of a member whom another program deleted
        views->AddMemberNode(memberID);
    } else {
        views->RefreshMemberNode(memberID, kMembersNode, memberID != previousID ? previousID : 0);
    }
    doc.ShowResult(CCorvanaDoc::tr("Member ID %1 was saved.").arg(memberID));
}

/// Asks about the member on which the document's set of small member records stands.
bool ConfirmDeletion(CCorvanaDoc& doc, QString const& expiration)
{
    auto const& member = doc.m_setSmMem;
    CDeleteMemberDlg dialog(doc.Window());
    dialog.m_strMember = NameOf(member);
    dialog.m_strID = QString::number(member.m_MemberID);
    dialog.m_strStatus = ToQt(CDAOSmMem::GetStatusStr(member.m_Status));
    dialog.m_strExpiration = expiration;
    if (expiration.isEmpty()) {
        CSetCloser const close(doc.m_setMem);
        if (doc.m_setMem.FindMember(CDAOSmMem::idMember, member.m_MemberID) != 0) {
            dialog.m_strExpiration = ToQt(doc.m_setMem.m_ExpireDate.DateStrLongYear());
        }
    }
    CWaitCursorPause const pause;
    return dialog.exec() == QDialog::Accepted;
}

/// Deletes that member, unless another program did so meanwhile, which comes to the same.
bool DeleteFound(CCorvanaDoc& doc)
{
    if (doc.m_setSmMem.DelCurrent() || doc.m_setSmMem.LastStatus()) {
        return true;
    }
    return doc.Fail(CCorvanaDoc::tr("Error: the member was not deleted."), doc.m_setSmMem);
}

} // namespace

bool CCorvanaDoc::EditMember(std::int32_t memberID)
{
    if (memberID == 0) {
        memberID = AskMemberID(false);
    }
    if (memberID == 0) {
        return false;
    }
    std::optional<CWaitCursor> waitCursor(std::in_place);
    std::optional<CWaitDlg> wait(std::in_place, tr("Loading data, please wait..."), Window());
    CPropertySheet sheet(tr("Member ID %1").arg(memberID), Window());
    auto* const profile = new CMemberProfilePg;
    auto* const enroll = new CMemberEnrollPg(*this);
    auto* const goals = new CMemberGoalsPg;
    auto* const medHist = new CMemberMedHistPg;
    sheet.AddPage(profile, tr("Profile"));
    sheet.AddPage(enroll, tr("Enrollment"));
    sheet.AddPage(goals, tr("Fitness Goals"));
    sheet.AddPage(medHist, tr("Medical History"));
    CMemberEditor editor(*this, {*profile, *enroll, *goals, *medHist}, memberID);
    bool const isRead = editor.Load();
    wait.reset();
    waitCursor.reset();
    if (!isRead) {
        return Fail(tr("Error: member ID %1 could not be read.").arg(memberID), editor.Status());
    }
    sheet.SetFinish([&] {
        return SaveForm(sheet, tr("member"), tr("Saving member data, please wait..."), editor,
            [&] { RefuseTakenNumber(sheet, *profile, editor); });
    });
    if (sheet.exec() != QDialog::Accepted) {
        return false;
    }
    auto const& slot = enroll->m_lstSlots[0];
    if (IsCurrentClass(slot.category, slot.course, slot.section)) {
        m_strDefCategory = slot.category;
        m_strDefCourse = slot.course;
        m_strDefSection = slot.section;
    }
    ShowSaved(*this, profile->m_lMemberID, memberID, editor.IsNew());
    return true;
}

void CCorvanaDoc::EditExistingMember()
{
    if (auto const memberID = AskMemberID(true); memberID != 0) {
        EditMember(memberID);
    }
}

bool CCorvanaDoc::DeleteMember(std::int32_t memberID, QString const& expiration)
{
    if (memberID == 0) {
        memberID = AskMemberID(true);
    }
    if (memberID == 0) {
        return false;
    }
    bool isDeleted = false;
    {
        CWaitCursor const waitCursor;
        CSetCloser const close(m_setSmMem);
        if (m_setSmMem.FindMember(CDAOSmMem::idMember, memberID) == 0) {
            if (!m_setSmMem.LastStatus()) {
                Fail(tr("Error: member ID %1 could not be read.").arg(memberID), m_setSmMem);
            }
            return false;
        }
        isDeleted = ConfirmDeletion(*this, expiration) && DeleteFound(*this);
    }
    if (isDeleted && m_pViews != nullptr) {
        m_pViews->RemoveMemberNode(memberID);
        ShowResult(tr("Member ID %1 was deleted.").arg(memberID));
    }
    return isDeleted;
}
