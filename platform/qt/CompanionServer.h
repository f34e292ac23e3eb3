#pragma once

#include "platform/qt/Companions.h"
#include "platform/qt/Descriptor.h"

#include <QObject>

#include <memory>
#include <string>

/// The companion's side of docs/companions.md, for one with an event loop: takes the name, and
/// answers who asks. Gives the name back when it goes.
class CCompanionServer : public QObject
{
    Q_OBJECT
public:
    enum class Taken
    {
        taken,
        byAnother, ///< which runs and answers, or has not ended in ten seconds
        failed ///< no socket or no lock can be had
    };

    explicit CCompanionServer(CCompanion const& companion, QObject* parent = nullptr);
    ~CCompanionServer() override;

    /// Takes the name and listens. Waits for another copy that is about to end.
    Taken Take();
    /// Stops listening, so that nobody takes this one for a running copy, and keeps the name.
    void StopListening();

Q_SIGNALS:
    /// Somebody asked for the end and was told "ok"; nobody is listened to any more.
    void QuitAsked();

private:
    Taken LockName();
    bool Listen();
    void Accept();
    bool Answer(int client);

    std::string const m_strName;
    std::string m_strSocket; ///< its path
    std::unique_ptr<CDescriptor> m_lock;
    std::unique_ptr<CDescriptor> m_listener;
};
