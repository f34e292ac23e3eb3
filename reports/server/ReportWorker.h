#pragma once

#include "reports/server/QueueRest.h"
#include "reports/server/ReportPlan.h"
#include "reports/server/ReportRun.h"
#include "store/services/ReportQueue.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <string>

/// Works off the queue of reports, one after the other, as long as there is an event loop: looks
/// into the queue every other second, claims a job, has it made and keeps the claim meanwhile. When
/// no report can be made at all it pauses, says why, and tries again by itself.
class CReportWorker : public QObject
{
    Q_OBJECT
public:
    explicit CReportWorker(CReportPlan plan, QObject* parent = nullptr);

    CReportRun& Run() { return m_run; }
    void SetPlan(CReportPlan const& plan); ///< for the next report
    CReportPlan const& Plan() const { return m_plan; }

    /// Begins, or goes on at once after a pause.
    void GoOn();
    /// Ends the report in hand, which waits again, and pauses until somebody says GoOn().
    void StopReport();
    /// Keeps the queue's file open, for somebody who looks into it too, even if nothing waits.
    void KeepOpen(bool keeps);
    /// Begins no further report, and tells Ended() when the one in hand is made, or given back.
    void End(bool givesBack);

    std::optional<CQueuedReport> const& InHand() const { return m_job; }
    int Percent() const { return m_run.Percent(); }
    /// Why it pauses; empty when it does not.
    QString const& PauseReason() const { return m_strPause; }
    bool IsEnding() const { return m_bEnding; }

Q_SIGNALS:
    void Changed(); ///< what it does, or how far it is
    void Handled(CQueuedReport const& job, CMade const& made); ///< and the queue knows
    void NothingWaits(); ///< that could be made now
    void Ended();

private:
    void Look();
    void Begin(CQueuedReport const& job);
    std::string NewFile(CQueuedReport const& job) const;
    CDbStatus SetOutput(CQueuedReport& job, bool& isThere);
    void Renew();
    void TakeResult(CMade const& made);
    void TellQueue();
    CDbStatus WriteResult(bool& held);
    void Handle();
    void Pause(QString const& reason, bool triesAgain);

    CReportPlan m_plan;
    CReportQueue m_queue;
    CReportRun m_run;
    CQueueRest m_rest;
    bool m_bKeepsOpen = false;
    QTimer m_look;
    QTimer m_renew;
    QTimer m_again; ///< after a pause
    QTimer m_tell; ///< while the queue cannot be written
    int m_nTold = 0; ///< attempts to write it
    std::optional<CQueuedReport> m_job;
    std::string m_strToken;
    CMade m_made; ///< of the job in hand
    QString m_strPause;
    bool m_bStopping = false; ///< the user's wish
    bool m_bLost = false;
    bool m_bEnding = false;
};
