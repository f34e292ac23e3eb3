#include "reports/server/ReportWorker.h"

#include "reports/server/PdfFile.h"
#include "reports/server/ReportName.h"
#include "store/sets/DatabaseSession.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace
{

constexpr auto kLook = 2s;
constexpr auto kRenew = 30s;
constexpr auto kTryAgain = 60s;
constexpr auto kTellAgain = 2s;
constexpr int kMostTold = 30; ///< for a minute: the lease ends soon after

bool IsThere(std::string const& path)
{
    return QFileInfo(QString::fromStdString(path)).isFile();
}

} // namespace

CReportWorker::CReportWorker(CReportPlan plan, QObject* parent)
    : QObject(parent)
    , m_plan(std::move(plan))
{
    m_look.setInterval(kLook);
    m_renew.setInterval(kRenew);
    m_again.setInterval(kTryAgain);
    m_again.setSingleShot(true);
    m_tell.setInterval(kTellAgain);
    m_tell.setSingleShot(true);
    connect(&m_look, &QTimer::timeout, this, &CReportWorker::Look);
    connect(&m_renew, &QTimer::timeout, this, &CReportWorker::Renew);
    connect(&m_again, &QTimer::timeout, this, &CReportWorker::GoOn);
    connect(&m_tell, &QTimer::timeout, this, &CReportWorker::TellQueue);
    connect(&m_run, &CReportRun::Progress, this, &CReportWorker::Changed);
    connect(&m_run, &CReportRun::Finished, this, &CReportWorker::TakeResult);
}

void CReportWorker::SetPlan(CReportPlan const& plan)
{
    m_plan = plan;
    if (m_again.isActive()) { // what it pauses for may be put right by that
        GoOn();
    }
}

void CReportWorker::GoOn()
{
    m_again.stop();
    m_strPause.clear();
    m_look.start();
    // Who asked is to be told about it first, and one report must not wait inside of another.
    QTimer::singleShot(0, this, &CReportWorker::Look);
}

void CReportWorker::KeepOpen(bool keeps)
{
    if (std::exchange(m_bKeepsOpen, keeps) != keeps) {
        m_rest.Wake();
    }
}

void CReportWorker::StopReport()
{
    if (m_job) {
        m_bStopping = true;
        m_run.Stop();
    }
}

void CReportWorker::End(bool givesBack)
{
    m_bEnding = true;
    if (givesBack) {
        StopReport();
    }
    Q_EMIT Changed();
    if (!m_job) {
        Q_EMIT Ended();
    }
}

void CReportWorker::Pause(QString const& reason, bool triesAgain)
{
    m_strPause = reason;
    m_look.stop();
    if (triesAgain) {
        m_again.start();
    }
    Q_EMIT Changed();
}

void CReportWorker::Look()
{
    if (m_job || m_bEnding || !m_strPause.isEmpty() || m_rest.IsResting()) {
        return;
    }
    m_strToken = CReportQueue::NewToken();
    auto status = m_queue.Claim(m_strToken, m_job);
    if (!status) {
        CDatabaseSession::Get().ShutDown(); // opened anew the next time
        // One that was replaced is there under its name.
        status = status.Error() == DbError::moved ? m_queue.Claim(m_strToken, m_job) : status;
    }
    if (!status) {
        m_job.reset();
        Pause(QString::fromStdString(status.Text()), true);
    } else if (m_job) {
        m_rest.Wake();
        Begin(*std::exchange(m_job, std::nullopt));
    } else {
        if (!m_bKeepsOpen) {
            m_rest.FoundNothing();
        }
        Q_EMIT Changed();
        Q_EMIT NothingWaits();
    }
}

void CReportWorker::Begin(CQueuedReport const& job)
{
    m_job = job;
    m_made = {};
    m_bStopping = false;
    m_bLost = false;
    m_nTold = 0;
    m_renew.start();
    bool isThere = false;
    if (auto const status = SetOutput(*m_job, isThere); !status) {
        TakeResult(
            {status.Error() == DbError::gone ? CMade::Outcome::lost : CMade::Outcome::cannotPrint,
                status.Text()});
    } else if (isThere) {
        TakeResult({});
    } else {
        m_run.Start({job.id, m_strToken, m_plan.isToPrinter,
            {m_plan.printer, m_plan.Paper(), m_plan.copies}});
        Q_EMIT Changed();
    }
}

/// A name that no file has: a job can be made again in the same second.
std::string CReportWorker::NewFile(CQueuedReport const& job) const
{
    auto const path = m_plan.folder.toStdString() + '/'
        + ReportFileName(job, CEFOleDateTime::GetCurrentTime(), m_plan.hasNames).toStdString();
    auto const stem = path.substr(0, path.rfind('.'));
    auto free = path;
    for (int n = 2; IsThere(free); ++n) {
        free = stem + " (" + std::to_string(n) + ").pdf";
    }
    return free;
}

/// Where the report goes; isThere when a server that was killed had made its file.
CDbStatus CReportWorker::SetOutput(CQueuedReport& job, bool& isThere)
{
    auto output = m_plan.printer.toStdString();
    if (job.output.starts_with('/') && IsThere(job.output)) {
        isThere = true;
        return {};
    }
    if (!m_plan.isToPrinter) {
        if (auto status = m_plan.PrepareFolder(); !status) {
            return status;
        }
        bool const isKept
            = job.output.starts_with('/') && FolderOf(job.output) == m_plan.folder.toStdString();
        output = isKept ? job.output : NewFile(job);
    } else if (output.empty()) {
        output = "default printer";
    }
    if (output == job.output) {
        return {};
    }
    bool held = false;
    auto status = m_queue.SetOutput(job.id, m_strToken, output, held);
    job.output = output;
    return status && !held ? CDbStatus(DbError::gone, {}) : status;
}

void CReportWorker::Renew()
{
    bool held = true;
    auto const status = m_job ? m_queue.Renew(m_job->id, m_strToken, held) : CDbStatus();
    if (status && !held) {
        m_bLost = true;
        m_run.Stop();
    }
}

void CReportWorker::TakeResult(CMade const& made)
{
    m_made = m_bLost ? CMade{CMade::Outcome::lost, {}} : made;
    if (!m_made.IsMade() && m_made.outcome != CMade::Outcome::lost
        && m_job->output.starts_with('/')) {
        CPdfFile::RemoveLeftover(m_job->output);
    }
    TellQueue();
}

CDbStatus CReportWorker::WriteResult(bool& held)
{
    switch (m_made.outcome) {
    case CMade::Outcome::made:
        return m_queue.Done(m_job->id, m_strToken, held);
    case CMade::Outcome::jobFailed:
        return m_queue.Failed(m_job->id, m_strToken, m_made.reason, held);
    case CMade::Outcome::cannotPrint:
    case CMade::Outcome::stopped:
        return m_queue.GiveBack(m_job->id, m_strToken, held);
    case CMade::Outcome::lost:
        break;
    }
    return {};
}

void CReportWorker::TellQueue()
{
    bool held = false;
    auto const status = WriteResult(held);
    if (!status && ++m_nTold < kMostTold) {
        CDatabaseSession::Get().ShutDown();
        m_tell.start();
        return;
    }
    if (!held && m_made.outcome != CMade::Outcome::made) {
        m_made.outcome = CMade::Outcome::lost;
    }
    Handle();
}

void CReportWorker::Handle()
{
    m_renew.stop();
    auto const job = *std::exchange(m_job, std::nullopt);
    auto const made = m_made;
    bool const canPrint = made.outcome != CMade::Outcome::cannotPrint;
    if (!canPrint) {
        Pause(QString::fromStdString(made.reason), true);
    }
    if (canPrint && m_bStopping) {
        Pause(made.IsMade() ? tr("Stopped behind a report that was done. Try Again goes on.")
                            : tr("The report was stopped, and waits until you choose Try Again."),
            false);
    }
    Q_EMIT Handled(job, made);
    if (made.IsMade() && !m_queue.Thin()) {
        CDatabaseSession::Get().ShutDown(); // the next look tells what is wrong
    }
    if (m_bEnding) {
        Q_EMIT Ended();
        return;
    }
    QTimer::singleShot(0, this, &CReportWorker::Look);
}
