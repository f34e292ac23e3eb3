#include "backup/BackupJob.h"

#include "store/sets/DatabaseSession.h"

#include <QThread>

CBackupJob::CBackupJob(QObject* parent)
    : QObject(parent)
{
}

CBackupJob::~CBackupJob()
{
    Stop();
    if (m_thread != nullptr) {
        m_thread->wait();
    }
}

void CBackupJob::Start(std::string const& folder, int keep)
{
    m_status = {};
    m_result = {};
    m_thinStatus = {};
    m_thinned = {};
    m_bStop = false;
    m_bThinning = false;
    m_done = 0;
    m_thread.reset(QThread::create([this, folder, keep] { Run(folder, keep); }));
    connect(m_thread.get(), &QThread::finished, this, [this] {
        m_thread->wait();
        m_thread.release()->deleteLater(); // it is the sender
        Q_EMIT Finished();
    });
    m_thread->start();
}

void CBackupJob::Run(std::string const& folder, int keep)
{
    auto const watch = [this](double done) {
        m_done = done;
        return !m_bStop;
    };
    m_status = MakeBackup(folder, watch, m_result);
    CDatabaseSession::Get().ShutDown();
    if (m_status && keep > 0) {
        m_done = 0;
        m_bThinning = true;
        m_thinStatus = ThinBackups(folder, keep, m_result.name, watch, m_thinned);
    }
}
