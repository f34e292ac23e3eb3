#pragma once

#include "doc/RecordEditor.h"
#include "doc/RowSnapshot.h"

/// An editor of a record that is one row. What others did to the row in between is noticed and not
/// written over, unless that is asked for. A save reads and writes that row.
class CRowEditor : public CRecordEditor
{
public:
    CSaveOutcome Save() override;
    void TakeOver() override { m_known = m_found; }

protected:
    /// The set must outlive the editor. To change a row the set stands on it, and stays open until
    /// the editor goes; to add one it is opened with the first Save.
    explicit CRowEditor(CDAOEFSet& set)
        : m_set(set)
    {
    }

    /// The row on which the set stands becomes the one to change. Without this one is added.
    void KnowRow();
    /// Whether the row is a new one, or another program has deleted it and it is added again.
    bool IsAdding() const { return !m_known.IsThere(); }

    virtual void OpenForAdding() { m_set.OpenSet(false); }
    /// From the form to the fields of the set; those of a new row are cleared.
    virtual void TakeForm() = 0;

private:
    CSaveOutcome Begin();

    CDAOEFSet& m_set;
    bool m_bOpen = false;
    CRowSnapshot m_known; ///< as the form was filled from it; of no row for a new one
    CRowSnapshot m_found; ///< as the last Save found it
};
