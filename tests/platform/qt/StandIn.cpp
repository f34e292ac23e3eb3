// Stands in for a companion program, and is the example of how one behaves towards the console:
// docs/companions.md explains each step. It does no other work. The variable CORVANA_STANDIN makes
// it misbehave for tests:
//   other  answers another name when it is asked who it is
//   deaf   does not hear the request to quit
//   busy   has work to finish after it was asked to quit

#include "platform/qt/Companions.h"
#include "platform/qt/RuntimeFolder.h"
#include "platform/qt/SingleInstance.h"
#include "tests/platform/qt/LocalSocket.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

bool Misbehaves(std::string_view how)
{
    auto const* const variable = std::getenv("CORVANA_STANDIN");
    return variable != nullptr && variable == how;
}

/// Takes the name, if need be once the copy before, which no longer listens, has finished.
bool TakeName(char const* name, std::string const& path)
{
    auto const end = std::chrono::steady_clock::now() + 10s;
    while (IsCORVAppRunning(name, true)) {
        if (IsListening(path) || std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(20ms);
    }
    return true;
}

bool IsThisUser(CDescriptor const& client)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return getsockopt(client.Get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == geteuid();
}

void Answer(CDescriptor const& client, std::string_view text)
{
    send(client.Get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

/// Answers one client until it hangs up or says nothing for two seconds. Returns
/// whether it asked to quit.
bool Serve(CDescriptor const& client, std::string const& name)
{
    timeval constexpr patience = {2, 0};
    setsockopt(client.Get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    std::array<char, kMaxCompanionMessage> buffer = {};
    for (;;) {
        auto const count = recv(client.Get(), buffer.data(), buffer.size(), 0);
        if (count <= 0) {
            return false;
        }
        std::string_view const message(buffer.data(), static_cast<std::size_t>(count));
        if (message == kAskWho) {
            Answer(client, Misbehaves("other") ? name + " 2" : name);
        } else if (message == kAskQuit && !Misbehaves("deaf")) {
            Answer(client, kAnswerOk);
            return true;
        }
    }
}

/// Listens until it is asked to quit. False when it cannot listen.
bool ListenUntilQuit(std::string const& name, std::string const& path)
{
    auto const listener = MakeSocket();
    unlink(path.c_str()); // nobody listens on it: this process has the name
    if (!AtSocket(&bind, listener, path) || listen(listener.Get(), 8) != 0) {
        return false;
    }
    for (bool quit = false; !quit;) {
        CDescriptor const client(accept4(listener.Get(), nullptr, nullptr, SOCK_CLOEXEC));
        quit = client && IsThisUser(client) && Serve(client, name);
    }
    unlink(path.c_str());
    return true;
}

} // namespace

int main()
{
    umask(S_IRWXG | S_IRWXO);
    std::string const name(STAND_IN_FOR.name);
    auto const path = RuntimeFile(name, ".sock");
    if (path && !TakeName(name.c_str(), *path)) {
        return EXIT_SUCCESS;
    }
    if (!path || !ListenUntilQuit(name, *path)) {
        return EXIT_FAILURE;
    }
    // The socket is closed by now, so that nobody takes a program that is about to end for a
    // running one; the name is kept until the work is done.
    std::this_thread::sleep_for(Misbehaves("busy") ? 300ms : 0ms);
    return EXIT_SUCCESS;
}
