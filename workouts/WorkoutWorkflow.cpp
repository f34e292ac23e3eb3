// Adding, editing, deleting and finding workouts.
#include "doc/CorvanaDoc.h"

#include "doc/DocViews.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "workouts/FindWorkoutsDlg.h"
#include "workouts/WorkoutDlg.h"
#include "workouts/WorkoutEditor.h"

namespace
{

/// Tells the tree, and where it does not interrupt anybody the user.
void ShowChanged(CCorvanaDoc& doc, std::int32_t memberID, QString const& result)
{
    if (doc.Views() != nullptr) {
        doc.Views()->RefreshMemberNode(memberID, kWorkoutsNode, 0);
    }
    doc.ShowResult(result.arg(memberID));
}

/// Does something with the member's workout that was checked in at the time that a text gives.
template <typename Use>
bool UseWorkoutAt(CCorvanaDoc& doc, std::int32_t memberID, QString const& checkIn, Use const& use)
{
    auto const when = CEFOleDateTime::Parse(FromQt(checkIn));
    if (!when.ChkStatus()) {
        return false;
    }
    auto& set = doc.m_setWk;
    CSetCloser const close(set);
    if (set.FindWks(memberID, when) > 0) {
        return use(set);
    }
    if (!set.LastStatus()) {
        return doc.Fail(CCorvanaDoc::tr("Error: the workout could not be read."), set);
    }
    // Another program has deleted it, and the tree does not know.
    ShowChanged(
        doc, memberID, CCorvanaDoc::tr("Member ID %1 does not have this workout any more."));
    return false;
}

/// Whether a find gave workouts; tells the user when it gave none.
bool AreFound(CCorvanaDoc& doc, int count, QString const& none)
{
    if (!doc.m_setWk.LastStatus()) {
        return doc.Fail(CCorvanaDoc::tr("Error: the workouts could not be read."), doc.m_setWk);
    }
    if (count == 0) {
        Tell(doc.Window(), none);
    }
    return count > 0;
}

} // namespace

bool CCorvanaDoc::AddEditWorkout(CDAOWk* set)
{
    auto const memberID = set != nullptr ? set->m_lMemberID : AskMemberID(true);
    if (memberID == 0) {
        return false;
    }
    CWorkoutDlg dialog(*this, Window());
    CWorkoutEditor editor(set != nullptr ? *set : m_setWk, dialog);
    dialog.m_lMemberID = memberID;
    dialog.m_strCaption = tr("Add Workout for Member ID %1").arg(memberID);
    if (set != nullptr) {
        editor.Load();
        dialog.m_strCaption = tr("Edit Workout for Member ID %1").arg(memberID);
    }
    dialog.SetFinish([&] { return SaveForm(dialog, tr("workout"), {}, editor); });
    bool const isSaved = dialog.exec() == QDialog::Accepted;
    if (set == nullptr) {
        m_setWk.Op(CDAOEFSet::opClose);
    }
    if (isSaved) {
        ShowChanged(*this, memberID, tr("The workout of member ID %1 was saved."));
    }
    return isSaved;
}

bool CCorvanaDoc::DeleteWorkout(CDAOWk& set)
{
    auto const memberID = set.m_lMemberID;
    CWaitCursor const wait;
    if (memberID == 0
        || !Ask(Window(),
            tr("Are you sure you want to delete the workout\nfor Member ID: %1 dated %2?")
                .arg(QString::number(memberID), ToQt(set.m_dtCheckIn.DateStrLongYear())),
            CQuestion::destroying)) {
        return false;
    }
    // One that another program has deleted meanwhile is as good as deleted.
    if (!set.DelCurrent() && !set.LastStatus()) {
        return Fail(tr("Error: the workout was not deleted."), set);
    }
    ShowChanged(*this, memberID, tr("The workout of member ID %1 was deleted."));
    return true;
}

bool CCorvanaDoc::EditWorkoutAt(std::int32_t memberID, QString const& checkIn)
{
    return UseWorkoutAt(
        *this, memberID, checkIn, [this](CDAOWk& set) { return AddEditWorkout(&set); });
}

bool CCorvanaDoc::DeleteWorkoutAt(std::int32_t memberID, QString const& checkIn)
{
    return UseWorkoutAt(
        *this, memberID, checkIn, [this](CDAOWk& set) { return DeleteWorkout(set); });
}

void CCorvanaDoc::ShowMemberWorkouts()
{
    auto const memberID = AskMemberID(true);
    auto const choice = memberID != 0 ? AskMemberClass(memberID) : std::nullopt;
    if (!choice) {
        return;
    }
    std::optional<CWaitCursor> wait(std::in_place);
    CSetCloser const close(m_setWk);
    int const count = choice->m_nClassIndex == CDAOCls::kAllClasses
        ? m_setWk.FindWks(memberID)
        : m_setWk.FindWks(memberID, choice->m_nClassIndex);
    wait.reset();
    if (AreFound(*this, count,
            tr("No workouts are recorded for Member ID %1 under %2")
                .arg(QString::number(memberID), ToQt(choice->m_strClass)))) {
        ShowFoundWorkouts();
    }
}

void CCorvanaDoc::FindWorkouts()
{
    CFindWorkoutsDlg dialog(Window());
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    dialog.m_dtFrom.Midnight();
    dialog.m_dtTo.PreMidnight();
    std::optional<CWaitCursor> wait(std::in_place);
    CSetCloser const close(m_setWk);
    int const count = m_setWk.FindWks(
        dialog.m_lMemberID, dialog.m_dtFrom, dialog.m_dtTo, CDAOWk::ok(dialog.m_nOk));
    wait.reset();
    if (AreFound(*this, count, tr("No workouts are recorded for the specified search criteria"))) {
        ShowFoundWorkouts();
    }
}
