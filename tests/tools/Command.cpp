#include "tests/tools/Command.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int kPatience = 30000; // milliseconds

[[noreturn]] void Execute(std::vector<std::string> arguments)
{
    std::vector<char*> pointers(arguments.size() + 1); // the last one stays null
    std::ranges::transform(
        arguments, pointers.begin(), [](auto& argument) { return argument.data(); });
    ::execvp(pointers[0], pointers.data());
    ::_exit(127);
}

int ExitCode(pid_t process)
{
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Appends what there is to read; false at the end.
bool ReadSome(int descriptor, std::string& text)
{
    std::array<char, 4096> bytes = {};
    auto const count = ::read(descriptor, bytes.data(), bytes.size());
    if (count <= 0) {
        return false;
    }
    text.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

bool EndsWithQuestion(std::string const& text)
{
    return text.ends_with(": ") || text.ends_with("? ");
}

} // namespace

CCommandResult RunCommand(std::vector<std::string> const& arguments)
{
    std::array<int, 2> out = {};
    std::array<int, 2> err = {};
    if (::pipe2(out.data(), O_CLOEXEC) != 0 || ::pipe2(err.data(), O_CLOEXEC) != 0) {
        return {};
    }
    pid_t const process = ::fork();
    if (process == 0) {
        ::setsid();
        ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        ::dup2(err[1], STDERR_FILENO);
        Execute(arguments);
    }
    ::close(out[1]);
    ::close(err[1]);
    CCommandResult result;
    std::array<pollfd, 2> ends = {{{out[0], POLLIN, 0}, {err[0], POLLIN, 0}}};
    while ((ends[0].fd >= 0 || ends[1].fd >= 0) && ::poll(ends.data(), 2, kPatience) > 0) {
        if (ends[0].revents != 0 && !ReadSome(out[0], result.output)) {
            ends[0].fd = -1;
        }
        if (ends[1].revents != 0 && !ReadSome(err[0], result.errors)) {
            ends[1].fd = -1;
        }
    }
    ::close(out[0]);
    ::close(err[0]);
    result.exitCode = ExitCode(process);
    return result;
}

bool HasTerminals()
{
    std::array<int, 2> ends = {-1, -1};
    bool const made = ::openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) == 0;
    if (made) {
        ::close(ends[0]);
        ::close(ends[1]);
    }
    return made;
}

CCommandResult RunAtTerminal(
    std::vector<std::string> const& arguments, std::vector<std::string> const& lines)
{
    int terminal = -1;
    pid_t const process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (process == 0) {
        Execute(arguments);
    }
    CCommandResult result;
    if (process < 0) {
        return result;
    }
    auto line = lines.begin();
    pollfd end = {terminal, POLLIN, 0};
    while (::poll(&end, 1, kPatience) > 0 && ReadSome(terminal, result.output)) {
        if (EndsWithQuestion(result.output) && line != lines.end()) {
            if (::write(terminal, line->data(), line->size()) < 0) {
                break;
            }
            ++line;
        }
    }
    ::close(terminal);
    result.exitCode = ExitCode(process);
    return result;
}
