#include "workouts/WorkoutEditor.h"

#include "store/sets/DAOWk.h"
#include "workouts/WorkoutDlg.h"

CWorkoutEditor::CWorkoutEditor(CDAOWk& set, CWorkoutDlg& dialog)
    : CRowEditor(set)
    , m_set(set)
    , m_dialog(dialog)
{
}

void CWorkoutEditor::Load()
{
    KnowRow();
    m_dialog.m_lMemberID = m_set.m_lMemberID;
    m_dialog.m_nClassIndex = m_set.m_nClassIndex;
    m_dialog.m_nWorkoutOK = m_set.m_bWorkoutOK ? 1 : 0;
    m_dialog.m_dtCheckIn = m_set.m_dtCheckIn;
    m_dialog.m_dtCheckOut = m_set.m_dtCheckOut;
    for (int i = 0; i < CDAOWk::kStationValues; ++i) {
        m_dialog.m_nStnVal[static_cast<std::size_t>(i)] = m_set.GetStnVal(i);
    }
}

void CWorkoutEditor::OpenForAdding()
{
    m_set.FindWks(m_dialog.m_lMemberID);
}

void CWorkoutEditor::TakeForm()
{
    m_set.m_lMemberID = m_dialog.m_lMemberID;
    m_set.m_bWorkoutOK = m_dialog.m_nWorkoutOK == 1;
    m_set.m_nClassIndex = m_dialog.m_nClassIndex;
    m_set.m_dtCheckIn = m_dialog.m_dtCheckIn;
    m_set.m_dtCheckOut = m_dialog.m_dtCheckOut;
    for (int i = 0; i < CDAOWk::kStationValues; ++i) {
        m_set.SetStnVal(i, m_dialog.m_nStnVal[static_cast<std::size_t>(i)]);
    }
}
