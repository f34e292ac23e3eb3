#pragma once

#include "reports/server/ReportChild.h"

#include <QObject>
#include <QProcess>
#include <QString>

/// One report, made by a process of its own; see ReportChild.h.
class CReportRun : public QObject
{
    Q_OBJECT
public:
    explicit CReportRun(QObject* parent = nullptr);
    ~CReportRun() override; ///< ends the process

    /// The program that makes reports: this one, unless another was set.
    void SetProgram(QString const& program) { m_strProgram = program; }
    void Start(CReportTask const& task);
    /// Asks the process to end, and ends it after a second.
    void Stop();

    bool IsRunning() const { return m_process.state() != QProcess::NotRunning; }
    int Percent() const { return m_nPercent; }

Q_SIGNALS:
    void Progress();
    void Finished(CMade const& made);

private:
    void ReadLines();
    void Finish(int exitCode, QProcess::ExitStatus status);

    QProcess m_process;
    QString m_strProgram;
    QString m_strReason;
    int m_nPercent = 0;
    bool m_bStopping = false;
};
