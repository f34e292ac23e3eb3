#pragma once

#include "backup/BackupJob.h"
#include "backup/BackupPlan.h"
#include "platform/qt/CompanionServer.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui
{
class BackupWnd;
}

/// The window of the backup utility. It backs up as soon as it is asked to Start(), and closes by
/// itself when there is nothing that the user has to know or decide.
class CBackupWnd : public QDialog
{
    Q_OBJECT
public:
    CBackupWnd();
    ~CBackupWnd() override;

    /// Begins a backup. False when another copy of the program is at work: then there is nothing
    /// to show.
    bool Start();

    void reject() override; // Esc, Close and the box in the title: stops first

private:
    void StopJob();
    void Finish();
    void ShowDone();
    void ShowFailure(QString const& text, QString const& detail = {});
    void ShowPlace();
    void ShowRunning(bool running);
    void StayOpen();
    void FitTexts();
    void ChooseFolder();
    void UseFolder(QString const& folder);
    void StoreKeep();

    std::unique_ptr<Ui::BackupWnd> const m_ui;
    CBackupPlan m_plan;
    CBackupJob m_job;
    std::unique_ptr<CCompanionServer> m_server; ///< while there is something to do
    QTimer m_progress;
    QTimer m_closing; ///< runs while the good result is shown
    bool m_bEnding = false; ///< closes when the job has finished, whatever came of it
};
