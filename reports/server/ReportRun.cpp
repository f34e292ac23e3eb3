#include "reports/server/ReportRun.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <sys/prctl.h>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr auto kPatience = 1s;
constexpr int kLongestLine = 2000; ///< bytes

} // namespace

CReportRun::CReportRun(QObject* parent)
    : QObject(parent)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s); // it has no windows
    m_process.setProcessEnvironment(environment);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // It ends with this process, however that ends.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &CReportRun::ReadLines);
    connect(&m_process, &QProcess::finished, this, &CReportRun::Finish);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            Q_EMIT Finished({CMade::Outcome::cannotPrint,
                tr("The program that makes reports cannot be started: %1.")
                    .arg(m_process.errorString())
                    .toStdString()});
        }
    });
}

CReportRun::~CReportRun()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished();
}

void CReportRun::Start(CReportTask const& task)
{
    m_strReason.clear();
    m_nPercent = 0;
    m_bStopping = false;
    m_process.setProgram(
        m_strProgram.isEmpty() ? QCoreApplication::applicationFilePath() : m_strProgram);
    QStringList arguments
        = {u"--job"_s, QString::number(task.id), u"--claim"_s, QString::fromStdString(task.token),
            u"--paper"_s, task.printer.paper == QPageSize::A4 ? u"a4"_s : u"letter"_s};
    if (task.isToPrinter) {
        arguments += {u"--print"_s, u"--copies"_s, QString::number(task.printer.copies)};
        if (!task.printer.printer.isEmpty()) {
            arguments += {u"--printer"_s, task.printer.printer};
        }
    }
    m_process.setArguments(arguments);
    m_process.start(QIODevice::ReadOnly);
}

void CReportRun::Stop()
{
    if (IsRunning() && !m_bStopping) {
        m_bStopping = true;
        m_process.terminate();
        QTimer::singleShot(kPatience, this, [this] {
            if (m_bStopping) {
                m_process.kill();
            }
        });
    }
}

void CReportRun::ReadLines()
{
    while (m_process.canReadLine() || m_process.bytesAvailable() > kLongestLine) {
        auto const line = m_process.readLine(kLongestLine).trimmed();
        bool isNumber = false;
        int const percent = line.toInt(&isNumber);
        if (line.startsWith('!')) {
            m_strReason = QString::fromUtf8(line.mid(1));
        } else if (isNumber && percent >= 0 && percent <= 100) {
            m_nPercent = percent;
            Q_EMIT Progress();
        }
    }
}

void CReportRun::Finish(int exitCode, QProcess::ExitStatus status)
{
    ReadLines();
    bool const hasEnded = status == QProcess::NormalExit;
    CMade made{
        hasEnded ? OutcomeOf(exitCode) : CMade::Outcome::jobFailed, m_strReason.toStdString()};
    bool const wasStopped = std::exchange(m_bStopping, false);
    if (!made.IsMade() && wasStopped) {
        made = {CMade::Outcome::stopped, {}};
    }
    if (!made.IsMade() && !wasStopped && made.reason.empty()) {
        made.reason = tr("The process that made the report ended too early.").toStdString();
    }
    Q_EMIT Finished(made);
}
