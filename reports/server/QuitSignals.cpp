#include "reports/server/QuitSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

std::array<int, 2> g_pipe = {-1, -1};

void WriteByte(int)
{
    int const before = errno;
    [[maybe_unused]] auto const written = ::write(g_pipe[1], "q", 1); // a full pipe says it already
    errno = before;
}

} // namespace

CQuitSignals::CQuitSignals(QObject* parent)
    : QObject(parent)
{
    if (::pipe2(g_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals end the program as they always do
    }
    auto* const notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        std::array<char, 16> bytes = {};
        if (::read(g_pipe[0], bytes.data(), bytes.size()) > 0) {
            Q_EMIT Asked();
        }
    });
    struct sigaction action = {};
    action.sa_handler = WriteByte;
    action.sa_flags = SA_RESTART;
    for (int const number : {SIGTERM, SIGINT, SIGHUP}) {
        ::sigaction(number, &action, nullptr);
    }
}
