#include "workouts/WorkoutEditor.h"

#include "store/sets/DAOWk.h"
#include "workouts/WorkoutDlg.h"

void CWorkoutEditor::Load()
{
    m_bLoaded = true;
    m_known = CRowSnapshot(m_set, true);
    m_dialog.m_lMemberID = m_set.m_lMemberID;
    m_dialog.m_nClassIndex = m_set.m_nClassIndex;
    m_dialog.m_nWorkoutOK = m_set.m_bWorkoutOK ? 1 : 0;
    m_dialog.m_dtCheckIn = m_set.m_dtCheckIn;
    m_dialog.m_dtCheckOut = m_set.m_dtCheckOut;
    for (int i = 0; i < CDAOWk::kStationValues; ++i) {
        m_dialog.m_nStnVal[static_cast<std::size_t>(i)] = m_set.GetStnVal(i);
    }
}

CSaveOutcome CWorkoutEditor::Save()
{
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, m_status);
    if (database == nullptr) {
        return CSaveOutcome::failed;
    }
    CTransaction transaction(*database);
    m_status = transaction.Status();
    if (!m_status) {
        return CSaveOutcome::failed;
    }
    if (auto const outcome = Find(); outcome != CSaveOutcome::saved) {
        return outcome;
    }
    TakeForm();
    if (!m_set.Op(CDAOEFSet::opUpdate)) {
        m_status = m_set.LastStatus();
        return CSaveOutcome::failed;
    }
    m_status = transaction.Commit();
    return m_status ? CSaveOutcome::saved : CSaveOutcome::failed;
}

/// Begins the change of the row if it still stands as it is known, or a new row; "saved" if so.
CSaveOutcome CWorkoutEditor::Find()
{
    bool begun = false;
    if (m_known.IsThere()) {
        begun = m_set.Op(CDAOEFSet::opEdit);
        m_found = begun ? CRowSnapshot(m_set, true) : CRowSnapshot();
        if (!begun && m_set.LastStatus()) {
            return CSaveOutcome::deleted;
        }
        if (begun && m_found != m_known) {
            return CSaveOutcome::changed;
        }
    } else {
        if (!m_bLoaded) { // else it is open, on a selection that somebody may look at
            m_set.FindWks(m_dialog.m_lMemberID);
        }
        begun = m_set.LastStatus() && m_set.Op(CDAOEFSet::opAddNew);
    }
    m_status = m_set.LastStatus();
    return begun ? CSaveOutcome::saved : CSaveOutcome::failed;
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
