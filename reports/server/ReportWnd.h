#pragma once

#include "reports/server/ReportModel.h"
#include "reports/server/ReportViews.h"
#include "reports/server/ReportWorker.h"

#include <QMainWindow>
#include <QSystemTrayIcon>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <vector>

class QAction;

namespace Ui
{
class ReportWnd;
}

/// The window of the report server: what it does, and the queue. Closed, it stays in the tray, or
/// in the task bar where there is none; only Quit ends the program.
class CReportWnd : public QMainWindow
{
    Q_OBJECT
public:
    CReportWnd();
    ~CReportWnd() override;

    CReportWorker& Worker() { return m_worker; }
    /// Out of the user's way: in the tray, or minimised.
    void StepBack();

Q_SIGNALS:
    void Ended(); ///< the program is to end now

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void ConnectActions();
    void MakeTray();
    void ShowFront();
    void ShowMenu(QPoint const& at);
    void ShowState();
    void Refresh();
    void FitColumns();
    void ShowSelection();
    void FitTexts();
    CQueuedReport const* Current() const;
    std::vector<std::int64_t> Selected() const;
    void DoAgain();
    void Remove();
    void ChangeSettings();
    void Quit();
    void View(ReportView view, QString const& note);
    void TellFailure(QString const& text, CDbStatus const& status);

    std::unique_ptr<Ui::ReportWnd> const m_ui;
    CReportModel m_model;
    CReportQueue m_queue;
    CReportWorker m_worker;
    QSystemTrayIcon m_tray;
    QTimer m_refresh; ///< while the window can be seen
    QTimer m_refreshSoon; ///< after a report
    QString m_strPause; ///< of which the user was told
};
