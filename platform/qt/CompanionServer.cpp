#include "platform/qt/CompanionServer.h"

#include "platform/qt/RuntimeFolder.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

auto constexpr kPatience = 10s; ///< with another copy
auto constexpr kRetry = 20ms;
auto constexpr kSilence = 2s; ///< of a client
int constexpr kWaiting = 8; ///< clients

int MakeSocket()
{
    return socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
}

/// Calls bind or connect, which take the same arguments, for a socket file.
bool AtSocket(decltype(&connect) call, int end, std::string const& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::ranges::copy(path, address.sun_path);
    void const* const generic = &address;
    return call(end, static_cast<sockaddr const*>(generic), sizeof address) == 0;
}

bool IsThisUser(int client)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return getsockopt(client, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

void Send(int client, std::string_view text)
{
    send(client, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

} // namespace

CCompanionServer::CCompanionServer(CCompanion const& companion, QObject* parent)
    : QObject(parent)
    , m_strName(companion.name)
{
}

CCompanionServer::~CCompanionServer()
{
    StopListening();
}

CCompanionServer::Taken CCompanionServer::Take()
{
    auto const path = RuntimeFile(m_strName, ".sock");
    if (!path) {
        return Taken::failed;
    }
    m_strSocket = *path;
    auto const end = std::chrono::steady_clock::now() + kPatience;
    auto taken = LockName();
    while (taken == Taken::byAnother) {
        CDescriptor const contact(MakeSocket());
        if (AtSocket(&::connect, contact.Get(), m_strSocket)
            || std::chrono::steady_clock::now() > end) {
            return taken;
        }
        std::this_thread::sleep_for(kRetry);
        taken = LockName();
    }
    return taken == Taken::taken && !Listen() ? Taken::failed : taken;
}

CCompanionServer::Taken CCompanionServer::LockName()
{
    auto const path = RuntimeFile(m_strName, ".lock");
    auto lock = std::make_unique<CDescriptor>(path
            ? open(path->c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR)
            : -1);
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    if (!*lock) {
        return Taken::failed;
    }
    if (fcntl(lock->Get(), F_OFD_SETLK, &whole) != 0) {
        return errno == EAGAIN || errno == EACCES ? Taken::byAnother : Taken::failed;
    }
    m_lock = std::move(lock);
    return Taken::taken;
}

bool CCompanionServer::Listen()
{
    m_listener = std::make_unique<CDescriptor>(MakeSocket());
    unlink(m_strSocket.c_str()); // nobody listens on it: this process has the name
    auto const before = umask(S_IRWXG | S_IRWXO);
    bool const isBound = AtSocket(&::bind, m_listener->Get(), m_strSocket);
    umask(before);
    if (!isBound || listen(m_listener->Get(), kWaiting) != 0) {
        m_listener.reset();
        m_lock.reset();
        return false;
    }
    auto* const notifier = new QSocketNotifier(m_listener->Get(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &CCompanionServer::Accept);
    return true;
}

void CCompanionServer::StopListening()
{
    for (auto* const notifier : findChildren<QSocketNotifier*>()) {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    if (m_listener != nullptr) {
        unlink(m_strSocket.c_str());
        m_listener.reset();
    }
}

void CCompanionServer::Accept()
{
    auto client = std::make_shared<CDescriptor>(
        accept4(m_listener->Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!*client || !IsThisUser(client->Get())) {
        return;
    }
    auto* const notifier = new QSocketNotifier(client->Get(), QSocketNotifier::Read, this);
    auto* const patience = new QTimer(notifier);
    // The client's descriptor goes with the last of these.
    connect(notifier, &QSocketNotifier::activated, this, [this, client, notifier, patience] {
        patience->start(kSilence);
        if (!Answer(client->Get())) {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    });
    connect(patience, &QTimer::timeout, notifier, [client, notifier] {
        notifier->setEnabled(false);
        notifier->deleteLater();
    });
    patience->start(kSilence);
}

/// False when the conversation is over.
bool CCompanionServer::Answer(int client)
{
    std::array<char, kMaxCompanionMessage + 1> buffer = {};
    auto const count = recv(client, buffer.data(), buffer.size(), 0);
    if (count <= 0) {
        return count < 0 && errno == EAGAIN;
    }
    std::string_view const message(buffer.data(), static_cast<std::size_t>(count));
    if (message == kAskWho) {
        Send(client, m_strName);
    } else if (message == kAskQuit) {
        Send(client, kAnswerOk);
        StopListening();
        Q_EMIT QuitAsked();
        return false;
    }
    return true;
}
