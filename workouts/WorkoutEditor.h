#pragma once

#include "doc/RecordEditor.h"
#include "doc/RowSnapshot.h"

class CDAOWk;
class CWorkoutDlg;

/// Reads a workout into its form and writes it back. What others did to the row in between is
/// noticed and not written over, unless that is asked for. Reads and writes one row.
class CWorkoutEditor : public CRecordEditor
{
public:
    /// Both must outlive the editor. To change a workout the set stands on its row, and stays open
    /// until the editor goes; to add one it opens with the first Save.
    CWorkoutEditor(CDAOWk& set, CWorkoutDlg& dialog)
        : m_set(set)
        , m_dialog(dialog)
    {
    }

    /// The row on which the set stands becomes the one to change. Without this one is added.
    void Load();
    CSaveOutcome Save() override;
    void TakeOver() override { m_known = m_found; }

private:
    CSaveOutcome Find();
    void TakeForm();

    CDAOWk& m_set;
    CWorkoutDlg& m_dialog;
    bool m_bLoaded = false;
    CRowSnapshot m_known; ///< as the form was filled from it; of no row for a new workout
    CRowSnapshot m_found; ///< as the last Save found it
};
