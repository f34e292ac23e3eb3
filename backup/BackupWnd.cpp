#include "backup/BackupWnd.h"

#include "ui_BackupWnd.h"

#include "store/services/BackupFolder.h"
#include "ui/Convert.h"
#include "ui/FileDialogs.h"

#include <QDir>
#include <QLayout>
#include <QPushButton>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace
{

constexpr int kBarSteps = 1000;
constexpr auto kShowProgress = 100ms;
constexpr auto kShowResult = 4s;
constexpr int kKeepAtFirst = 30;

QString CountsText(CBackupCounts const& counts)
{
    return CBackupWnd::tr("%1 members, %2 workouts, %3 evaluations, %4 body compositions")
        .arg(counts[0])
        .arg(counts[1])
        .arg(counts[2])
        .arg(counts[3]);
}

} // namespace

CBackupWnd::CBackupWnd()
    : m_ui(std::make_unique<Ui::BackupWnd>())
    , m_plan(CBackupPlan::Load())
{
    m_ui->setupUi(this);
    m_ui->keepSpin->setRange(1, CBackupPlan::kMostKept);
    m_ui->keepSpin->setValue(m_plan.keep > 0 ? m_plan.keep : kKeepAtFirst);
    m_ui->keepCheck->setChecked(m_plan.keep > 0);
    m_ui->keepSpin->setEnabled(m_plan.keep > 0);
    m_ui->progressBar->setRange(0, kBarSteps);
    m_progress.setInterval(kShowProgress);
    m_closing.setInterval(kShowResult);
    m_closing.setSingleShot(true);
    connect(&m_progress, &QTimer::timeout, this, [this] {
        m_ui->progressBar->setValue(static_cast<int>(m_job.Done() * kBarSteps));
        if (m_job.IsThinning() && m_ui->stopButton->isEnabled()) {
            m_ui->stateLabel->setText(tr("Looking through older backups..."));
        }
    });
    connect(&m_closing, &QTimer::timeout, this, &QDialog::accept);
    connect(&m_job, &CBackupJob::Finished, this, &CBackupWnd::Finish);
    connect(m_ui->stopButton, &QPushButton::clicked, this, &CBackupWnd::StopJob);
    connect(m_ui->againButton, &QPushButton::clicked, this, [this] {
        if (!Start()) {
            ShowFailure(tr("Another backup is being made just now."));
        }
    });
    connect(m_ui->closeButton, &QPushButton::clicked, this, &CBackupWnd::reject);
    connect(m_ui->chooseButton, &QPushButton::clicked, this, &CBackupWnd::ChooseFolder);
    connect(m_ui->keepFolderButton, &QPushButton::clicked, this,
        [this] { UseFolder(ToQt(m_plan.folder)); });
    connect(m_ui->keepCheck, &QCheckBox::clicked, this, &CBackupWnd::StoreKeep);
    connect(m_ui->keepSpin, &QSpinBox::valueChanged, this, &CBackupWnd::StoreKeep);
    ShowPlace();
}

CBackupWnd::~CBackupWnd() = default;

bool CBackupWnd::Start()
{
    m_closing.stop();
    m_server = std::make_unique<CCompanionServer>(kBackupUtility);
    connect(m_server.get(), &CCompanionServer::QuitAsked, this, [this] {
        m_bEnding = true;
        if (!m_job.IsRunning()) {
            accept();
        }
    });
    auto const taken = m_server->Take();
    if (taken == CCompanionServer::Taken::byAnother) {
        m_server.reset();
        return false;
    }
    auto const fault = ToQt(m_plan.Prepare());
    ShowPlace();
    if (taken == CCompanionServer::Taken::failed) {
        ShowFailure(tr("The backup utility cannot make its files in the user's runtime folder, and "
                       "so cannot tell whether another copy is at work."));
    } else if (!fault.isEmpty()) {
        ShowFailure(fault);
    } else {
        ShowRunning(true);
        m_ui->stateLabel->setText(tr("Backing up all data..."));
        m_ui->detailLabel->clear();
        m_job.Start(m_plan.folder, m_plan.keep);
    }
    return true;
}

void CBackupWnd::StopJob()
{
    m_job.Stop(); // a slow disk is waited for
    m_ui->stateLabel->setText(tr("Stopping..."));
    m_ui->stopButton->setEnabled(false);
}

void CBackupWnd::Finish()
{
    ShowRunning(false);
    ShowPlace();
    if (m_bEnding) {
        done(m_job.m_status ? Accepted : Rejected);
    } else if (m_job.m_status) {
        ShowDone();
    } else if (m_job.m_status.Error() == DbError::stopped) {
        ShowFailure(tr("The backup was stopped."));
    } else {
        ShowFailure(tr("No backup was made."), ToQt(m_job.m_status.Text()));
    }
}

void CBackupWnd::ShowDone()
{
    m_ui->progressBar->setValue(kBarSteps);
    m_ui->stateLabel->setText(tr("The backup is made, and was read back."));
    QStringList details{CountsText(m_job.m_result.records) + u'.'};
    bool isWell = m_plan.isChosen;
    if (auto const removed = m_job.m_thinned.removed.size(); removed > 0) {
        details += tr("Older backups removed: %1.").arg(removed);
    }
    if (m_job.m_result.leftOut > 0) {
        details += tr("%1 record(s) fit no data file and stand in the copy of member.mdb alone.")
                       .arg(m_job.m_result.leftOut)
            + u' ' + ToQt(m_job.m_result.reason);
        isWell = false;
    }
    for (auto const& fault : m_job.m_thinned.faults) {
        details += tr("An older backup is not as it was made, and stays:") + u' ' + ToQt(fault);
        isWell = false;
    }
    if (!m_plan.isChosen) {
        details += tr("Choose where backups are to go from now on, best on another disk, or keep "
                      "this folder.");
    }
    m_ui->detailLabel->setText(details.join(u'\n'));
    FitTexts();
    (m_plan.isChosen ? m_ui->closeButton : m_ui->chooseButton)->setFocus();
    if (isWell) {
        m_closing.start();
    } else {
        StayOpen();
    }
}

void CBackupWnd::ShowFailure(QString const& text, QString const& detail)
{
    ShowRunning(false);
    m_ui->progressBar->setValue(0);
    m_ui->stateLabel->setText(text);
    m_ui->detailLabel->setText(detail);
    FitTexts();
    StayOpen();
    m_ui->againButton->setFocus();
}

/// A window that waits for the user is no backup utility at work: the console may start another.
void CBackupWnd::StayOpen()
{
    m_closing.stop();
    m_server.reset();
}

void CBackupWnd::ShowPlace()
{
    m_ui->folderEdit->setText(ToQt(m_plan.folder));
    auto const newest = BackupSetTime(NewestBackup(m_plan.folder));
    m_ui->lastLabel->setText(newest.ChkStatus()
            ? tr("Last good backup there: %1").arg(ToQt(newest.DateTimeStrLongYear()))
            : tr("No backup of this data is there."));
    m_ui->diskLabel->setVisible(IsOnDataDisk(m_plan.folder));
    m_ui->keepFolderButton->setVisible(!m_plan.isChosen);
}

/// A layout gives a text that breaks into lines no room by itself.
void CBackupWnd::FitTexts()
{
    if (!isVisible()) {
        return; // it gets the size that it needs when it is shown
    }
    layout()->activate();
    auto const wide = std::max(width(), layout()->totalSizeHint().width());
    resize(wide, std::max(height(), layout()->totalHeightForWidth(wide)));
}

void CBackupWnd::ShowRunning(bool running)
{
    if (running) {
        m_progress.start();
    } else {
        m_progress.stop();
    }
    m_ui->stopButton->setEnabled(running);
    m_ui->stopButton->setVisible(running);
    m_ui->againButton->setVisible(!running);
    m_ui->closeButton->setVisible(!running);
    m_ui->placeBox->setEnabled(!running);
}

void CBackupWnd::ChooseFolder()
{
    StayOpen();
    CFileQuestion question;
    question.m_strTitle = tr("Folder for Backups");
    question.m_strName = ToQt(m_plan.folder);
    question.m_bFolder = true;
    auto const folder = AskForFile(this, question);
    if (!folder.isEmpty()) {
        bool const isOther = FromQt(QDir::cleanPath(folder)) != m_plan.folder;
        UseFolder(QDir::cleanPath(folder));
        if (isOther && !Start()) {
            ShowFailure(tr("Another backup is being made just now."));
        }
    }
}

void CBackupWnd::UseFolder(QString const& folder)
{
    StayOpen();
    bool const isStored = m_plan.Choose(FromQt(folder));
    ShowPlace();
    m_ui->detailLabel->setText(isStored ? tr("Backups go to this folder from now on.")
                                        : tr("The folder could not be remembered."));
    FitTexts();
}

void CBackupWnd::StoreKeep()
{
    StayOpen();
    bool const keeps = m_ui->keepCheck->isChecked();
    m_ui->keepSpin->setEnabled(keeps);
    if (!m_plan.StoreKeep(keeps ? m_ui->keepSpin->value() : 0)) {
        m_ui->detailLabel->setText(tr("The number could not be remembered."));
    }
}

void CBackupWnd::reject()
{
    if (m_job.IsRunning()) {
        m_bEnding = true;
        StopJob();
    } else {
        done(m_job.m_status ? Accepted : Rejected);
    }
}
