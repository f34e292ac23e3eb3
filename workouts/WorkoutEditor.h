#pragma once

#include "doc/RowEditor.h"

class CDAOWk;
class CWorkoutDlg;

/// Reads a workout into its form and writes it back.
class CWorkoutEditor : public CRowEditor
{
public:
    /// Both must outlive the editor. To change a workout the set stands on its row, and stays open
    /// until the editor goes.
    CWorkoutEditor(CDAOWk& set, CWorkoutDlg& dialog);

    /// The row on which the set stands becomes the one to change. Without this one is added.
    void Load();

private:
    void OpenForAdding() override;
    void TakeForm() override;

    CDAOWk& m_set;
    CWorkoutDlg& m_dialog;
};
