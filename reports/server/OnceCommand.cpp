#include "reports/server/OnceCommand.h"

#include "reports/server/QuitSignals.h"
#include "reports/server/ReportName.h"
#include "reports/server/ReportWorker.h"
#include "store/sets/DatabaseSession.h"

#include <QEventLoop>

#include <cstdio>
#include <cstdlib>

namespace
{

class COnce : public QObject
{
public:
    explicit COnce(CReportPlan const& plan)
        : m_worker(plan)
    {
        connect(&m_worker, &CReportWorker::Handled, this, &COnce::Tell);
        connect(&m_worker, &CReportWorker::NothingWaits, this, [this] {
            TellLeft();
            m_loop.quit();
        });
        connect(&m_worker, &CReportWorker::Changed, this, [this] {
            if (!m_worker.PauseReason().isEmpty() && !m_worker.IsEnding()) {
                Fail(m_worker.PauseReason());
            }
        });
        connect(&m_worker, &CReportWorker::Ended, this, [this] {
            m_bAllMade = false;
            m_loop.quit();
        });
        connect(&m_signals, &CQuitSignals::Asked, this, [this] { m_worker.End(true); });
    }

    int Run()
    {
        m_worker.GoOn();
        m_loop.exec();
        return m_bAllMade ? EXIT_SUCCESS : EXIT_FAILURE;
    }

private:
    void Tell(CQueuedReport const& job, CMade const& made)
    {
        switch (made.outcome) {
        case CMade::Outcome::made:
            Line(job, "made");
            break;
        case CMade::Outcome::jobFailed:
            m_bAllMade = false;
            Line(job,
                (job.attempts >= CReportQueue::kMostAttempts ? "set aside: "
                                                             : "to be tried again: ")
                    + made.reason);
            break;
        case CMade::Outcome::lost:
            Line(job, "taken by another server");
            break;
        case CMade::Outcome::cannotPrint:
        case CMade::Outcome::stopped:
            m_bAllMade = false;
            Line(job, "not made");
            break;
        }
    }

    /// What waits for its next attempt, or is in the hand of another server.
    void TellLeft()
    {
        std::vector<CQueuedReport> jobs;
        CReportQueue queue;
        if (auto const status = queue.List(jobs); !status) {
            Fail(QString::fromStdString(status.Text()));
        }
        for (auto const& job : jobs) {
            if (job.state == CQueuedReport::waiting) {
                Line(job, job.isInHand ? "in the hand of another server" : "left for later");
                m_bAllMade = m_bAllMade && job.isInHand;
            }
        }
    }

    static void Line(CQueuedReport const& job, std::string const& what)
    {
        std::printf("job %lld, %s: %s\n", static_cast<long long>(job.id),
            ReportName(job.job).toUtf8().constData(), what.c_str());
    }

    void Fail(QString const& reason)
    {
        m_bAllMade = false;
        std::fflush(stdout);
        std::fprintf(stderr, "corvrpt: %s\n", reason.toUtf8().constData());
        m_loop.quit();
    }

    CReportWorker m_worker;
    CQuitSignals m_signals;
    QEventLoop m_loop;
    bool m_bAllMade = true;
};

} // namespace

int RunOnce(CReportPlan const& plan)
{
    int const result = COnce(plan).Run();
    CDatabaseSession::Get().ShutDown();
    return result;
}
