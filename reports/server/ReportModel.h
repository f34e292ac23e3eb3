#pragma once

#include "store/services/ReportQueue.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <optional>
#include <vector>

/// The jobs of the queue as a list shows them.
class CReportModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column
    {
        report,
        about,
        state,
        when, ///< finished, or attempts
        output,
        columns
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Tells the views what is different. False when all rows are as they were, or in their places.
    bool SetJobs(std::vector<CQueuedReport> jobs);
    /// How far the job is that this program makes; 0 for none.
    void SetProgress(std::int64_t job, int percent);
    CQueuedReport const& At(int row) const { return m_jobs[static_cast<std::size_t>(row)]; }
    int RowOf(std::int64_t job) const; ///< -1 when it is not there

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString Text(CQueuedReport const& job, int column) const;
    QString StateText(CQueuedReport const& job) const;

    std::vector<CQueuedReport> m_jobs;
    std::int64_t m_nOwn = 0; ///< the job that this program makes
    int m_nPercent = 0;
};
