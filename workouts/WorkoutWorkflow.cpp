// Adding, editing, deleting and finding workouts.
#include "doc/CorvanaDoc.h"

#include "doc/RecordCommands.h"
#include "store/sets/SetCloser.h"
#include "ui/WaitCursor.h"
#include "workouts/FindWorkoutsDlg.h"
#include "workouts/WorkoutDlg.h"
#include "workouts/WorkoutEditor.h"

namespace
{

CRecordCommands CommandsOf(CCorvanaDoc& doc)
{
    return {doc, doc.m_setWk,
        [&doc](std::int32_t memberID, CEFOleDateTime const& checkIn) {
            return doc.m_setWk.FindWks(memberID, checkIn);
        },
        CCorvanaDoc::tr("workout"), CCorvanaDoc::tr("workouts")};
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
        CommandsOf(*this).ShowSaved(memberID);
    }
    return isSaved;
}

bool CCorvanaDoc::DeleteWorkout(CDAOWk& set)
{
    auto const commands = CommandsOf(*this);
    return commands.ConfirmDeletion(set.m_lMemberID, set.m_dtCheckIn) && commands.DeleteRow(set);
}

bool CCorvanaDoc::EditWorkoutAt(std::int32_t memberID, QString const& checkIn)
{
    return CommandsOf(*this).UseAt(memberID, checkIn, [this] { return AddEditWorkout(&m_setWk); });
}

bool CCorvanaDoc::DeleteWorkoutAt(std::int32_t memberID, QString const& checkIn)
{
    return CommandsOf(*this).UseAt(memberID, checkIn, [this] { return DeleteWorkout(m_setWk); });
}

void CCorvanaDoc::ShowMemberWorkouts()
{
    CommandsOf(*this).ShowOfMember(
        [this](std::int32_t memberID, std::optional<std::uint8_t> classIndex) {
            return classIndex ? m_setWk.FindWks(memberID, *classIndex) : m_setWk.FindWks(memberID);
        },
        [this](std::int32_t, CClassChoice const&) { ShowFoundWorkouts(); });
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
    if (CommandsOf(*this).AreFound(
            count, tr("No workouts are recorded for the specified search criteria"))) {
        ShowFoundWorkouts();
    }
}
