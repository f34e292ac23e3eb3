#include "reports/server/ReportWnd.h"

#include "ui_ReportWnd.h"

#include "reports/server/Questions.h"
#include "reports/server/ReportName.h"
#include "reports/server/ReportSettingsDlg.h"
#include "reports/server/ReportViews.h"
#include "store/sets/DatabaseSession.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr auto kRefresh = 2s;
constexpr auto kRefreshSoon = 300ms;
constexpr auto kShowNote = 10s;
constexpr int kFirstRows = 100; // that the columns are made to fit
constexpr double kMostOfScreen = 0.9;
constexpr QSize kLetters = {110, 30}; // that the window has room for at first

} // namespace

CReportWnd::CReportWnd()
    : m_ui(std::make_unique<Ui::ReportWnd>())
    , m_worker(CReportPlan::Load())
{
    m_ui->setupUi(this);
    m_ui->jobList->setModel(&m_model);
    m_ui->jobList->header()->setResizeContentsPrecision(kFirstRows);
    m_refresh.setInterval(kRefresh);
    m_refreshSoon.setInterval(kRefreshSoon);
    m_refreshSoon.setSingleShot(true);
    connect(&m_refresh, &QTimer::timeout, this, &CReportWnd::Refresh);
    connect(&m_worker, &CReportWorker::Changed, this, &CReportWnd::ShowState);
    // Not after each of many short ones: who reads the list is to have time for it.
    connect(&m_worker, &CReportWorker::Handled, this, [this] {
        if (!m_refreshSoon.isActive()) {
            m_refreshSoon.start();
        }
    });
    connect(&m_refreshSoon, &QTimer::timeout, this, &CReportWnd::Refresh);
    connect(&m_worker, &CReportWorker::Ended, this, &CReportWnd::Ended);
    connect(m_ui->jobList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &CReportWnd::ShowSelection);
    connect(m_ui->jobList->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &CReportWnd::ShowSelection);
    connect(&m_model, &QAbstractItemModel::dataChanged, this, &CReportWnd::ShowSelection);
    ConnectActions();
    MakeTray();
    auto const font = fontMetrics();
    resize(QSize(kLetters.width() * font.averageCharWidth(), kLetters.height() * font.lineSpacing())
               .boundedTo(screen()->availableSize() * kMostOfScreen));
    ShowState();
    ShowSelection();
}

CReportWnd::~CReportWnd()
{
    m_worker.disconnect(this);
}

void CReportWnd::ConnectActions()
{
    connect(m_ui->previewAction, &QAction::triggered, this, [this] { View(&PreviewReport, {}); });
    connect(m_ui->printAction, &QAction::triggered, this,
        [this] { View(&PrintReport, tr("Printed on %1.")); });
    connect(m_ui->saveAction, &QAction::triggered, this,
        [this] { View(&SaveReport, tr("Saved as %1.")); });
    connect(m_ui->againAction, &QAction::triggered, this, &CReportWnd::DoAgain);
    connect(m_ui->removeAction, &QAction::triggered, this, &CReportWnd::Remove);
    connect(m_ui->settingsAction, &QAction::triggered, this, &CReportWnd::ChangeSettings);
    connect(m_ui->goOnAction, &QAction::triggered, &m_worker, &CReportWorker::GoOn);
    connect(m_ui->quitAction, &QAction::triggered, this, &CReportWnd::Quit);
    connect(m_ui->stopButton, &QPushButton::clicked, &m_worker, &CReportWorker::StopReport);
    connect(m_ui->jobList, &QAbstractItemView::activated, m_ui->previewAction, &QAction::trigger);
    for (auto const& [button, action] : {std::pair(m_ui->previewButton, m_ui->previewAction),
             {m_ui->printButton, m_ui->printAction}, {m_ui->saveButton, m_ui->saveAction},
             {m_ui->againButton, m_ui->againAction}, {m_ui->removeButton, m_ui->removeAction},
             {m_ui->goOnButton, m_ui->goOnAction}, {m_ui->settingsButton, m_ui->settingsAction}}) {
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        connect(action, &QAction::changed, button,
            [button = button, action = action] { button->setEnabled(action->isEnabled()); });
    }
    connect(m_ui->jobList, &QWidget::customContextMenuRequested, this, &CReportWnd::ShowMenu);
    auto* const menuKey = new QShortcut(QKeySequence(u"Shift+F10"_s), m_ui->jobList);
    menuKey->setContext(Qt::WidgetShortcut);
    connect(menuKey, &QShortcut::activated, this, [this] { ShowMenu({-1, -1}); });
}

void CReportWnd::ShowMenu(QPoint const& at)
{
    // By the keyboard it belongs to the row, wherever the mouse is.
    auto const row = m_ui->jobList->visualRect(m_ui->jobList->currentIndex());
    auto const* const view = m_ui->jobList->viewport();
    m_ui->reportMenu->popup(
        view->mapToGlobal(m_ui->jobList->indexAt(at).isValid() ? at : row.bottomLeft()));
}

void CReportWnd::MakeTray()
{
    setWindowIcon(
        QIcon::fromTheme(u"corvana"_s, style()->standardIcon(QStyle::SP_FileDialogDetailedView)));
    auto* const menu = new QMenu(this);
    menu->addAction(tr("&Open"), this, &CReportWnd::ShowFront);
    menu->addAction(m_ui->quitAction);
    m_tray.setIcon(windowIcon());
    m_tray.setToolTip(windowTitle());
    m_tray.setContextMenu(menu);
    connect(&m_tray, &QSystemTrayIcon::activated, this, [this](auto reason) {
        if (reason != QSystemTrayIcon::Context) {
            ShowFront();
        }
    });
    connect(&m_tray, &QSystemTrayIcon::messageClicked, this, &CReportWnd::ShowFront);
}

void CReportWnd::StepBack()
{
    if (QSystemTrayIcon::isSystemTrayAvailable()) { // which can come and go
        m_tray.show();
        hide();
    } else {
        showMinimized();
    }
}

void CReportWnd::ShowFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void CReportWnd::closeEvent(QCloseEvent* event)
{
    if (qApp->isSavingSession()) {
        return;
    }
    event->ignore();
    StepBack();
}

void CReportWnd::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    Refresh();
    m_refresh.start();
}

void CReportWnd::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isVisible() && !isMinimized()) {
        Refresh();
        m_refresh.start();
    }
}

void CReportWnd::ShowState()
{
    auto const& job = m_worker.InHand();
    auto const& pause = m_worker.PauseReason();
    auto state = tr("Waiting for reports.");
    if (job) {
        state = m_worker.IsEnding() ? tr("Making \"%1\", and ending then.") : tr("Making \"%1\".");
        state = state.arg(ReportName(job->job));
    } else if (!pause.isEmpty()) {
        state = tr("Paused: %1").arg(pause);
    }
    if (m_ui->stateLabel->text() != state) {
        m_ui->stateLabel->setText(state);
        m_tray.setToolTip(windowTitle() + u": "_s + state);
        FitTexts();
    }
    bool const isPaused = !job && !pause.isEmpty();
    m_ui->progressBar->setTextVisible(job.has_value());
    m_ui->progressBar->setValue(job ? m_worker.Percent() : 0);
    m_ui->stopButton->setEnabled(job.has_value());
    m_ui->goOnButton->setVisible(isPaused);
    m_ui->goOnAction->setEnabled(isPaused);
    m_model.SetProgress(job ? job->id : 0, m_worker.Percent());
    if (pause != m_strPause) {
        m_strPause = pause;
        if (!pause.isEmpty() && !isActiveWindow()) {
            QApplication::alert(this);
            m_tray.showMessage(windowTitle(), pause, QSystemTrayIcon::Warning);
        }
    }
}

void CReportWnd::Refresh()
{
    bool const isSeen = isVisible() && !isMinimized();
    m_worker.KeepOpen(isSeen);
    if (!isSeen) {
        m_refresh.stop();
        return;
    }
    std::vector<CQueuedReport> jobs;
    auto const status = m_queue.List(jobs);
    if (!status) {
        CDatabaseSession::Get().ShutDown(); // opened anew the next time
        m_ui->statusBar->showMessage(QString::fromStdString(status.Text()));
        return;
    }
    m_ui->jobLabel->setText(jobs.size() < std::size_t(CReportQueue::kMostListed)
            ? tr("&Jobs:")
            : tr("&Jobs, the first %1 of each state:").arg(CReportQueue::kMostListed));
    bool const wasEmpty = m_model.rowCount() == 0;
    auto const selected = Selected();
    auto const current = Current() != nullptr ? Current()->id : 0;
    if (!m_model.SetJobs(std::move(jobs))) {
        return;
    }
    for (auto const id : selected) {
        if (int const row = m_model.RowOf(id); row >= 0) {
            m_ui->jobList->selectionModel()->select(
                m_model.index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }
    int const row = std::max(m_model.RowOf(current), 0);
    m_ui->jobList->selectionModel()->setCurrentIndex(m_model.index(row, 0),
        selected.empty() ? QItemSelectionModel::Select | QItemSelectionModel::Rows
                         : QItemSelectionModel::NoUpdate);
    if (wasEmpty) {
        FitColumns();
    }
    ShowSelection();
}

void CReportWnd::FitColumns()
{
    for (int column = 0; column < CReportModel::columns; ++column) {
        m_ui->jobList->resizeColumnToContents(column);
    }
    // States change, to one of this length at most in the usual case.
    auto const state = fontMetrics().horizontalAdvance(tr("Tried again at 00:00:00 "));
    auto& header = *m_ui->jobList->header();
    header.resizeSection(
        CReportModel::state, std::max(header.sectionSize(CReportModel::state), state));
}

CQueuedReport const* CReportWnd::Current() const
{
    auto const index = m_ui->jobList->currentIndex();
    return index.isValid() ? &m_model.At(index.row()) : nullptr;
}

std::vector<std::int64_t> CReportWnd::Selected() const
{
    std::vector<std::int64_t> ids;
    for (auto const& index : m_ui->jobList->selectionModel()->selectedRows()) {
        ids.push_back(m_model.At(index.row()).id);
    }
    return ids;
}

void CReportWnd::ShowSelection()
{
    auto const* const job = Current();
    bool const isSelected = m_ui->jobList->selectionModel()->hasSelection();
    bool const isReport = job != nullptr && isSelected && job->job.m_nType >= 0;
    for (auto* const action : {m_ui->previewAction, m_ui->printAction, m_ui->saveAction}) {
        action->setEnabled(isReport);
    }
    m_ui->againAction->setEnabled(isSelected);
    m_ui->removeAction->setEnabled(isSelected);
    auto const detail
        = job != nullptr && isSelected ? QString::fromStdString(job->reason) : QString();
    if (m_ui->detailLabel->text() != detail) {
        m_ui->detailLabel->setText(detail);
        FitTexts();
    }
}

/// A layout gives a text that breaks into lines no room by itself.
void CReportWnd::FitTexts()
{
    if (isVisible()) {
        centralWidget()->layout()->activate();
    }
}

void CReportWnd::View(ReportView view, QString const& note)
{
    auto const* const current = Current();
    if (current == nullptr) {
        return;
    }
    auto const job = current->job; // the list may change meanwhile
    if (auto const result = view(this, job, m_worker.Plan()); !result.isEmpty()) {
        m_ui->statusBar->showMessage(
            note.arg(result), static_cast<int>(std::chrono::milliseconds(kShowNote).count()));
    }
}

void CReportWnd::TellFailure(QString const& text, CDbStatus const& status)
{
    if (!status) {
        CDatabaseSession::Get().ShutDown();
        TellUser(this, text, QString::fromStdString(status.Text()));
    }
    Refresh();
}

void CReportWnd::DoAgain()
{
    CDbStatus status;
    for (auto const id : Selected()) {
        bool changed = false;
        status = status ? m_queue.Again(id, changed) : status;
    }
    TellFailure(tr("Error: not all of these reports wait again."), status);
    if (m_worker.PauseReason().isEmpty()) {
        m_worker.GoOn();
    }
}

void CReportWnd::Remove()
{
    auto const ids = Selected();
    if (ids.empty()
        || !AskToDestroy(this,
            ids.size() == 1
                ? tr("Do you want to remove this report from the list?")
                : tr("Do you want to remove these %1 reports from the list?").arg(ids.size()))) {
        return;
    }
    CDbStatus status;
    bool areAllRemoved = true;
    for (auto const id : ids) {
        bool removed = false;
        status = status ? m_queue.Remove(id, removed) : status;
        areAllRemoved = areAllRemoved && removed;
    }
    if (status && !areAllRemoved) {
        status = {DbError::inUse, tr("A report that is being made stays.").toStdString()};
    }
    TellFailure(tr("Not all of these reports were removed."), status);
}

void CReportWnd::ChangeSettings()
{
    CReportSettingsDlg dialog(this);
    dialog.m_plan = m_worker.Plan();
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    if (!dialog.m_plan.Store()) {
        TellUser(this,
            tr("The settings could not be remembered; they hold until the report server "
               "ends."));
    }
    m_worker.SetPlan(dialog.m_plan);
}

void CReportWnd::Quit()
{
    if (!m_worker.InHand()) {
        m_worker.End(false);
        return;
    }
    switch (AskHowToQuit(this)) {
    case CQuitChoice::finish:
        m_worker.End(false);
        break;
    case CQuitChoice::giveBack:
        m_worker.End(true);
        break;
    case CQuitChoice::stay:
        break;
    }
}
