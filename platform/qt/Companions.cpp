#include "platform/qt/Companions.h"

#include "platform/qt/Descriptor.h"
#include "platform/qt/RuntimeFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

using Clock = std::chrono::steady_clock;
auto constexpr kPatience = 2s;

enum class Answer
{
    expected,
    none,
    wrong
};

/// One connection to a companion. All that is asked on it ends before one common
/// deadline.
class CConversation
{
public:
    explicit CConversation(std::string_view name);

    /// Asks for the name; wrong as well when nobody is there.
    Answer Greet();
    Answer Ask(std::string_view message, std::string_view expected);

private:
    Answer Connect();
    bool IsPeerThisUser() const;
    bool AwaitAnswer() const;

    std::string_view const m_strName;
    CDescriptor const m_socket;
    Clock::time_point const m_deadline;
};

CConversation::CConversation(std::string_view name)
    : m_strName(name)
    , m_socket(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    , m_deadline(Clock::now() + kPatience)
{
}

Answer CConversation::Greet()
{
    auto const contact = Connect();
    return contact == Answer::expected ? Ask(kAskWho, m_strName) : contact;
}

Answer CConversation::Connect()
{
    auto const path = RuntimeFile(m_strName, ".sock");
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (!path || path->size() >= sizeof address.sun_path) {
        return Answer::wrong;
    }
    std::ranges::copy(*path, address.sun_path);
    void const* const generic = &address;
    if (connect(m_socket.Get(), static_cast<sockaddr const*>(generic), sizeof address) != 0) {
        // A full queue of connections: somebody listens but takes none.
        return errno == EAGAIN ? Answer::none : Answer::wrong;
    }
    return IsPeerThisUser() ? Answer::expected : Answer::wrong;
}

bool CConversation::IsPeerThisUser() const
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return getsockopt(m_socket.Get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == geteuid();
}

Answer CConversation::Ask(std::string_view message, std::string_view expected)
{
    if (send(m_socket.Get(), message.data(), message.size(), MSG_NOSIGNAL) < 0) {
        return Answer::wrong;
    }
    if (!AwaitAnswer()) {
        return Answer::none;
    }
    // A byte more than allowed, so that a packet that was cut off never equals what is expected.
    std::array<char, kMaxCompanionMessage + 1> buffer = {};
    auto const count = recv(m_socket.Get(), buffer.data(), buffer.size(), 0);
    if (count < 0) {
        return Answer::wrong;
    }
    std::string_view const answer(buffer.data(), static_cast<std::size_t>(count));
    return answer == expected ? Answer::expected : Answer::wrong;
}

bool CConversation::AwaitAnswer() const
{
    for (;;) {
        auto const left = std::max(
            std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now()), 0ms);
        pollfd waiting = {m_socket.Get(), POLLIN, 0};
        int const ready = poll(&waiting, 1, static_cast<int>(left.count()));
        if (ready >= 0 || errno != EINTR) {
            return ready > 0;
        }
    }
}

QString ProgramPath(std::string_view file, std::string const& folder)
{
    auto const program = QString::fromUtf8(file.data(), static_cast<qsizetype>(file.size()));
    auto const first = folder.empty() ? QCoreApplication::applicationDirPath()
                                      : QFile::decodeName(QByteArray::fromStdString(folder));
    auto const beside = QStandardPaths::findExecutable(program, {first});
    return beside.isEmpty() ? QStandardPaths::findExecutable(program) : beside;
}

} // namespace

bool FindCompanion(CCompanion const& companion)
{
    return CConversation(companion.name).Greet() != Answer::wrong;
}

bool QuitCompanion(CCompanion const& companion)
{
    CConversation conversation(companion.name);
    return conversation.Greet() != Answer::wrong
        && conversation.Ask(kAskQuit, kAnswerOk) == Answer::expected;
}

bool StartCompanion(CCompanion const& companion, std::string const& folder)
{
    auto const path = ProgramPath(companion.file, folder);
    if (path.isEmpty()) {
        return false;
    }
    QProcess process;
    process.setProgram(path);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}
