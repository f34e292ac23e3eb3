#include "doc/RowEditor.h"

void CRowEditor::KnowRow()
{
    m_bOpen = true;
    m_known = CRowSnapshot(m_set, true);
}

CSaveOutcome CRowEditor::Save()
{
    auto* const database = CDatabaseSession::Get().Open(m_set.GetClass()->file, m_status);
    if (database == nullptr) {
        return CSaveOutcome::failed;
    }
    CTransaction transaction(*database);
    m_status = transaction.Status();
    if (!m_status) {
        return CSaveOutcome::failed;
    }
    if (auto const outcome = Begin(); outcome != CSaveOutcome::saved) {
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
CSaveOutcome CRowEditor::Begin()
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
        if (!m_bOpen) { // else it is on a selection that somebody may look at
            OpenForAdding();
        }
        begun = m_set.LastStatus() && m_set.Op(CDAOEFSet::opAddNew);
    }
    m_status = m_set.LastStatus();
    return begun ? CSaveOutcome::saved : CSaveOutcome::failed;
}
