// Adding, editing, deleting and finding workouts.
#include "doc/CorvanaDoc.h"

#include "doc/RecordCommands.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/WaitCursor.h"
#include "workouts/FindWorkoutsDlg.h"
#include "workouts/WorkoutDlg.h"
#include "workouts/WorkoutEditor.h"
#include "workouts/WorkoutListDlg.h"

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

/// In a list, those on which the document's set stands; of one member or of all.
void ShowWorkouts(CCorvanaDoc& doc, bool isOneMember, QString const& title)
{
    CWorkoutListDlg list(doc, doc.m_setWk);
    list.m_strTitle = title;
    if (isOneMember) {
        list.m_nColumns &= ~(CWorkoutListDlg::colName | CWorkoutListDlg::colMemberID);
    }
    list.exec();
}

QString TitleOf(CFindWorkoutsDlg const& search)
{
    auto title = CCorvanaDoc::tr("Workouts for ");
    if (search.m_lMemberID != 0) {
        title += CCorvanaDoc::tr("Member ID %1 - ").arg(search.m_lMemberID);
    }
    auto const from = ToQt(search.m_dtFrom.DateStrLongYear());
    return title
        + (search.m_dtFrom.IsSameDay(search.m_dtTo)
                ? from
                : CCorvanaDoc::tr("%1 to %2").arg(from, ToQt(search.m_dtTo.DateStrLongYear())));
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
        [this](std::int32_t memberID, CClassChoice const& choice) {
            ShowWorkouts(*this, true,
                tr("Workouts for Member ID %1, %2")
                    .arg(QString::number(memberID), ToQt(choice.m_strClass)));
        });
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
        ShowWorkouts(*this, dialog.m_lMemberID != 0, TitleOf(dialog));
    }
}
