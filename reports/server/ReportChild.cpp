#include "reports/server/ReportChild.h"

#include "store/services/ReportQueue.h"
#include "store/sets/DatabaseSession.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace
{

constexpr double kRead = 0.5; ///< of the work, when the records are read
constexpr int kFirstCode = 10;

/// Tells each percent once. Nobody who reads it any more: then there is nobody to make it for.
class CTeller
{
public:
    bool operator()(double done)
    {
        int const percent = std::clamp(static_cast<int>(done * 100), 0, 100);
        if (percent != m_nTold) {
            m_nTold = percent;
            std::printf("%d\n", percent);
            m_bHeard = std::fflush(stdout) == 0;
        }
        return m_bHeard;
    }

private:
    int m_nTold = -1;
    bool m_bHeard = true;
};

CMade Make(CReportTask const& task)
{
    CReportQueue queue;
    std::optional<CQueuedReport> claimed;
    auto const status = queue.FindClaimed(task.id, task.token, claimed);
    if (!status) {
        return {CMade::Outcome::cannotPrint, status.Text()};
    }
    if (!claimed) {
        return {CMade::Outcome::lost, {}};
    }
    CTeller tell;
    CReport report;
    auto made = ReadReport(
        claimed->job, [&tell](double done) { return tell(done * kRead); }, report);
    auto const watch = [&tell](double done) { return tell(kRead + done * (1 - kRead)); };
    auto const holdsClaim = [&] {
        std::optional<CQueuedReport> still;
        return queue.FindClaimed(task.id, task.token, still) && still
            && still->output == claimed->output;
    };
    if (!made.IsMade()) {
        return made;
    }
    if (!task.isToPrinter) {
        return PrintToFile(report, {claimed->output, task.printer.paper, false, holdsClaim}, watch);
    }
    return holdsClaim() ? PrintToPrinter(report, task.printer, watch)
                        : CMade{CMade::Outcome::lost, {}};
}

} // namespace

int ExitCodeOf(CMade::Outcome outcome)
{
    return outcome == CMade::Outcome::made ? EXIT_SUCCESS : kFirstCode + static_cast<int>(outcome);
}

CMade::Outcome OutcomeOf(int exitCode)
{
    for (auto const outcome : {CMade::Outcome::made, CMade::Outcome::cannotPrint,
             CMade::Outcome::stopped, CMade::Outcome::lost}) {
        if (exitCode == ExitCodeOf(outcome)) {
            return outcome;
        }
    }
    return CMade::Outcome::jobFailed;
}

int RunReportTask(CReportTask const& task)
{
    auto made = Make(task);
    CDatabaseSession::Get().ShutDown();
    if (!made.reason.empty()) {
        std::ranges::replace(made.reason, '\n', ' ');
        std::printf("!%s\n", made.reason.c_str());
        std::fflush(stdout);
    }
    return ExitCodeOf(made.outcome);
}
