#include "reports/server/ReportModel.h"

#include "reports/server/ReportName.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

QString TimeText(std::int64_t seconds, QString const& format)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(format);
}

/// Of a column that is cut.
QString TipText(CQueuedReport const& job, int column)
{
    return QString::fromStdString(column == CReportModel::output ? job.output
            : column == CReportModel::state                      ? job.reason
                                                                 : std::string());
}

} // namespace

bool CReportModel::SetJobs(std::vector<CQueuedReport> jobs)
{
    bool const areInPlace = std::ranges::equal(
        jobs, m_jobs, [](auto const& a, auto const& b) { return a.id == b.id; });
    if (!areInPlace) {
        beginResetModel();
        m_jobs = std::move(jobs);
        endResetModel();
        return true;
    }
    for (std::size_t row = 0; row < jobs.size(); ++row) {
        if (!(jobs[row] == m_jobs[row])) {
            m_jobs[row] = std::move(jobs[row]);
            Q_EMIT dataChanged(index(int(row), 0), index(int(row), columns - 1));
        }
    }
    return false;
}

void CReportModel::SetProgress(std::int64_t job, int percent)
{
    auto const before = std::exchange(m_nOwn, job);
    if (before != job || std::exchange(m_nPercent, percent) != percent) {
        for (auto const id : {before, job}) {
            if (int const row = RowOf(id); row >= 0) {
                Q_EMIT dataChanged(index(row, state), index(row, state));
            }
        }
    }
    m_nPercent = percent;
}

int CReportModel::RowOf(std::int64_t job) const
{
    auto const found
        = std::ranges::find_if(m_jobs, [job](auto const& other) { return other.id == job; });
    return found == m_jobs.end() ? -1 : static_cast<int>(found - m_jobs.begin());
}

int CReportModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_jobs.size());
}

int CReportModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : int(columns);
}

QString CReportModel::StateText(CQueuedReport const& job) const
{
    switch (job.state) {
    case CQueuedReport::done:
        return tr("Done");
    case CQueuedReport::failed:
        return tr("Failed");
    case CQueuedReport::waiting:
        break;
    }
    if (job.id == m_nOwn) {
        return tr("Being made, %1 %").arg(m_nPercent);
    }
    if (job.isInHand) {
        return tr("Being made by another server");
    }
    return job.notBefore > QDateTime::currentSecsSinceEpoch()
        ? tr("To be tried again at %1").arg(TimeText(job.notBefore, u"HH:mm:ss"_s))
        : tr("Waiting");
}

QString CReportModel::Text(CQueuedReport const& job, int column) const
{
    switch (column) {
    case report:
        return ReportName(job.job);
    case about:
        return ReportScope(job.job);
    case state:
        return StateText(job);
    case when:
        return job.state == CQueuedReport::done ? TimeText(job.finished, u"MM/dd/yyyy HH:mm:ss"_s)
            : job.attempts == 0
            ? QString()
            : tr("%1 of %2 attempts").arg(job.attempts).arg(CReportQueue::kMostAttempts);
    case output:
        return job.output.starts_with('/')
            ? QFileInfo(QString::fromStdString(job.output)).fileName()
            : QString::fromStdString(job.output);
    default:
        return {};
    }
}

QVariant CReportModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    auto const& job = At(index.row());
    if (role == Qt::DisplayRole) {
        return Text(job, index.column()).left(200);
    }
    return role == Qt::ToolTipRole ? TipText(job, index.column()).toHtmlEscaped() : QVariant();
}

QVariant CReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case report:
        return tr("Report");
    case about:
        return tr("For");
    case state:
        return tr("State");
    case when:
        return tr("Finished/Attempts");
    case output:
        return tr("Output");
    default:
        return {};
    }
}
