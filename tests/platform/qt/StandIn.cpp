// Stands in for a companion program, and is the example of how one behaves towards the console:
// docs/companions.md explains each step. It does no other work. The variable CORVANA_STANDIN makes
// it misbehave for tests:
//   name=TEXT  answers TEXT when it is asked who it is
//   hang       accepts connections and never answers
//   deaf       does not hear the request to quit
//   busy=MS    has work to finish, for so many milliseconds, after it was asked to quit

#include "platform/qt/Companions.h"
#include "platform/qt/Descriptor.h"
#include "platform/qt/RuntimeFolder.h"
#include "platform/qt/SingleInstance.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

auto constexpr kWaitForPredecessor = 10s;
timeval constexpr kWaitForMessage = {2, 0};

/// What follows the key in CORVANA_STANDIN; nothing when the variable says something else.
std::optional<std::string> Misbehaviour(std::string_view key)
{
    auto const* const variable = std::getenv("CORVANA_STANDIN");
    std::string_view const text = variable == nullptr ? "" : variable;
    return text.starts_with(key) ? std::optional<std::string>(text.substr(key.size()))
                                 : std::nullopt;
}

/// Calls bind or connect, which take the same arguments.
bool AtAddress(decltype(&connect) function, CDescriptor const& endpoint, std::string const& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::ranges::copy(path, address.sun_path);
    void const* const generic = &address;
    return function(endpoint.Get(), static_cast<sockaddr const*>(generic), sizeof address) == 0;
}

bool IsListening(std::string const& path)
{
    CDescriptor const probe(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    return AtAddress(&connect, probe, path);
}

/// Takes the name, if need be once the copy before, which no longer listens, has finished.
bool TakeName(char const* name, std::string const& path)
{
    auto const end = std::chrono::steady_clock::now() + kWaitForPredecessor;
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
    if (!Misbehaviour("hang")) { // one that hangs does not hang up either
        setsockopt(client.Get(), SOL_SOCKET, SO_RCVTIMEO, &kWaitForMessage, sizeof kWaitForMessage);
    }
    std::array<char, kMaxCompanionMessage> buffer = {};
    for (;;) {
        auto const count = recv(client.Get(), buffer.data(), buffer.size(), 0);
        if (count <= 0) {
            return false;
        }
        std::string_view const message(buffer.data(), static_cast<std::size_t>(count));
        if (message == kAskWho && !Misbehaviour("hang")) {
            Answer(client, name);
        } else if (message == kAskQuit && !Misbehaviour("deaf") && !Misbehaviour("hang")) {
            Answer(client, kAnswerOk);
            return true;
        }
    }
}

/// Listens until it is asked to quit. False when it cannot listen.
bool ListenUntilQuit(std::string const& name, std::string const& path)
{
    CDescriptor const listener(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    unlink(path.c_str()); // nobody listens on it: this process has the name
    if (!AtAddress(&bind, listener, path) || listen(listener.Get(), 8) != 0) {
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
    if (!path) {
        return EXIT_FAILURE;
    }
    if (!TakeName(name.c_str(), *path)) {
        return EXIT_SUCCESS;
    }
    if (!ListenUntilQuit(Misbehaviour("name=").value_or(name), *path)) {
        return EXIT_FAILURE;
    }
    // The socket is closed by now, so that nobody takes a program that is about to end for a
    // running one; the name is kept until the work is done.
    if (auto const busy = Misbehaviour("busy=")) {
        std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(*busy)));
    }
    return EXIT_SUCCESS;
}
