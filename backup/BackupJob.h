#pragma once

#include "store/services/BackupSet.h"

#include <QObject>

#include <atomic>
#include <memory>
#include <string>

class QThread;

/// One backup, and the thinning behind it, in a thread of its own, since the engine copies a file
/// in one call and the window is to stay alive. Nobody else may use the store from Start() until
/// Finished().
class CBackupJob : public QObject
{
    Q_OBJECT
public:
    explicit CBackupJob(QObject* parent = nullptr);
    ~CBackupJob() override; ///< stops, and waits for it

    /// keep 0 thins nothing.
    void Start(std::string const& folder, int keep);
    /// Asks for the end. A set that is not whole yet goes.
    void Stop() { m_bStop = true; }

    bool IsRunning() const { return m_thread != nullptr; }
    bool IsThinning() const { return m_bThinning; }
    double Done() const { return m_done; } ///< of the backup, or of the thinning: 0 to 1

    // What came of it, once it has finished.
    CDbStatus m_status;
    CBackupResult m_result;
    CDbStatus m_thinStatus;
    CThinned m_thinned;

Q_SIGNALS:
    void Finished();

private:
    void Run(std::string const& folder, int keep);

    std::unique_ptr<QThread> m_thread;
    std::atomic<bool> m_bStop = false;
    std::atomic<bool> m_bThinning = false;
    std::atomic<double> m_done = 0;
};
