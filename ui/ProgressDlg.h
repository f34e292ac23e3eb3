#pragma once

#include "ui/WaitDlg.h"

class QProgressBar;

/// A wait window with a bar that advances one step a row:
///
///     CProgressDlg progress(this, tr("Loading workouts, please wait..."), count);
///     for (...) {
///         ...
///         progress.Step();
///     }
///
/// A loop that can be stopped goes on as long as !progress.IsStopped().
class CProgressDlg : public CWaitDlg
{
    Q_OBJECT
public:
    /// The bar takes count rows modulo 65536; with 0 of them it stays empty.
    CProgressDlg(
        QWidget* owner, QString const& sentence, int count, CStoppable stoppable = CStoppable::no);
    ~CProgressDlg() override;

    /// So many rows are done. Past its maximum the bar starts over. Costs about 0.1 us; the window
    /// is brought up to date at most 60 times a second.
    void Step(int rows = 1);

private:
    QProgressBar* m_pBar = nullptr;
    int m_nMaximum = 0;
    int m_nPosition = 0;
};
