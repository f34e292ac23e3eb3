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
        Tell(Window(), tr("Error: member ID %1 could not be read.").arg(memberID),
            CMessageIcon::exclamation, ToQt(editor.Status().Text()));
        return false;
    }
    sheet.SetFinish([&] { return SaveMember(sheet, editor, *profile); });
    if (sheet.exec() != QDialog::Accepted) {
        return false;
    }
    auto const& slot = enroll->m_lstSlots[0];
    if (IsCurrentClass(slot.category, slot.course, slot.section)) {
        m_strDefCategory = slot.category;
        m_strDefCourse = slot.course;
        m_strDefSection = slot.section;
    }
    ShowSavedMember(profile->m_lMemberID, memberID, editor.IsNew());
    return true;
}

void CCorvanaDoc::EditExistingMember()
{
    if (auto const memberID = AskMemberID(true); memberID != 0) {
        EditMember(memberID);
    }
}

/// The last step of OK. Whatever keeps the member from being stored is told; the form then stays
/// open with everything that was entered, so that it can be tried again.
bool CCorvanaDoc::SaveMember(
    CPropertySheet& sheet, CMemberEditor& editor, CMemberProfilePg& profile)
{
    auto const save = [&] {
        CWaitCursor const waitCursor;
        CWaitDlg const wait(tr("Saving member data, please wait..."), &sheet);
        return editor.Save();
    };
    for (;;) {
        auto const outcome = save();
        switch (outcome) {
        case CMemberSave::saved:
            return true;
        case CMemberSave::changed:
        case CMemberSave::deleted:
            if (!Ask(&sheet,
                    outcome == CMemberSave::changed
                        ? tr("This member has been changed at another place\n"
                             "since you opened the form.\n"
                             "Do you want to replace those changes with yours?")
                        : tr("This member has been deleted at another place\n"
                             "since you opened the form.\n"
                             "Do you want to add the member again?"),
                    outcome == CMemberSave::changed ? CQuestion::destroying : CQuestion::yesNo)) {
                return false;
            }
            editor.TakeOver();
            break;
        case CMemberSave::memberIDTaken:
            sheet.ShowPage(&profile);
            return profile.RefuseMemberID(profile.m_lMemberID);
        case CMemberSave::workoutNumTaken:
            sheet.ShowPage(&profile);
            return profile.RefuseWorkoutNum(profile.m_lWorkoutNum);
        case CMemberSave::failed:
            Tell(&sheet,
                tr("Error: the member was not saved.\nYour entries are still in the form."),
                CMessageIcon::exclamation, ToQt(editor.Status().Text()));
            return false;
        }
    }
}

void CCorvanaDoc::ShowSavedMember(std::int32_t memberID, std::int32_t previousID, bool isNew)
{
    if (m_pViews == nullptr) {
        return;
    }
    if (isNew) {
        m_pViews->RemoveMemberNode(previousID); // of a member whom another program deleted
        m_pViews->AddMemberNode(memberID);
    } else {
        m_pViews->RefreshMemberNode(
            memberID, kMembersNode, memberID != previousID ? previousID : 0);
    }
    ShowResult(tr("Member ID %1 was saved.").arg(memberID));
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
        isDeleted = ConfirmDeletion(expiration) && DeleteFoundMember();
    }
    if (isDeleted && m_pViews != nullptr) {
        m_pViews->RemoveMemberNode(memberID);
        ShowResult(tr("Member ID %1 was deleted.").arg(memberID));
    }
    return isDeleted;
}

bool CCorvanaDoc::ConfirmDeletion(QString const& expiration)
{
    CDeleteMemberDlg dialog(Window());
    dialog.m_strMember = NameOf(m_setSmMem);
    dialog.m_strID = QString::number(m_setSmMem.m_MemberID);
    dialog.m_strStatus = ToQt(CDAOSmMem::GetStatusStr(m_setSmMem.m_Status));
    dialog.m_strExpiration = expiration;
    if (expiration.isEmpty()) {
        CSetCloser const close(m_setMem);
        if (m_setMem.FindMember(CDAOSmMem::idMember, m_setSmMem.m_MemberID) != 0) {
            dialog.m_strExpiration = ToQt(m_setMem.m_ExpireDate.DateStrLongYear());
        }
    }
    CWaitCursorPause const pause;
    return dialog.exec() == QDialog::Accepted;
}

/// Deletes the current member, unless another program did so meanwhile, which comes to the same.
bool CCorvanaDoc::DeleteFoundMember()
{
    if (m_setSmMem.DelCurrent() || m_setSmMem.LastStatus()) {
        return true;
    }
    return Fail(tr("Error: the member was not deleted."), m_setSmMem);
}
