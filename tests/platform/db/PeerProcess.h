#pragma once

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

/// Another program at work on the same file: DbPeer with a task, told to end by closing its input.
/// Killed at the latest when the object goes.
class CPeer
{
public:
    explicit CPeer(std::vector<std::string> arguments)
    {
        std::array<int, 2> input = {};
        std::array<int, 2> output = {};
        if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0) {
            return;
        }
        auto const program
            = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "DbPeer";
        arguments.insert(arguments.begin(), program);
        std::vector<char*> pointers(arguments.size() + 1); // the last one stays null
        std::ranges::transform(
            arguments, pointers.begin(), [](auto& argument) { return argument.data(); });
        m_nPid = ::fork();
        if (m_nPid == 0) {
            ::dup2(input[0], STDIN_FILENO);
            ::dup2(output[1], STDOUT_FILENO);
            ::execv(pointers[0], pointers.data());
            ::_exit(127);
        }
        ::close(input[0]);
        ::close(output[1]);
        m_nInput = input[1];
        m_pOutput = ::fdopen(output[0], "r");
    }
    ~CPeer()
    {
        Kill();
        std::fclose(m_pOutput);
    }
    CPeer(CPeer const&) = delete;
    CPeer& operator=(CPeer const&) = delete;

    pid_t Pid() const { return m_nPid; }

    bool IsRunning() const
    {
        siginfo_t info = {};
        auto const id = static_cast<id_t>(m_nPid);
        return ::waitid(P_PID, id, &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
    }

    /// The next line it says, without its end; empty when it has nothing more to say.
    std::string Line()
    {
        std::string line;
        for (int c = 0; (c = std::fgetc(m_pOutput)) != EOF && c != '\n';) {
            line += static_cast<char>(c);
        }
        return line;
    }

    /// Lets it finish what it does; returns its exit status.
    int Finish()
    {
        CloseInput();
        return Wait();
    }

    void Kill()
    {
        if (m_nPid > 0) {
            ::kill(m_nPid, SIGKILL);
        }
        CloseInput();
        Wait();
    }

private:
    void CloseInput()
    {
        if (m_nInput >= 0) {
            ::close(std::exchange(m_nInput, -1));
        }
    }

    int Wait()
    {
        int status = 0;
        if (m_nPid > 0) {
            ::waitpid(std::exchange(m_nPid, -1), &status, 0);
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    pid_t m_nPid = -1;
    int m_nInput = -1;
    std::FILE* m_pOutput = nullptr;
};
