#pragma once

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

/// Another program at work on the files of a test: a copy of this process that runs a task over
/// what it opens itself. No connection of the test to the same file may be open when it starts.
/// Killed at the latest when the object goes.
class CPeer
{
public:
    using Task = std::function<void(CPeer const& self)>;

    explicit CPeer(Task const& task)
    {
        std::array<int, 2> ends = {};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        m_nPid = ::fork();
        bool const isPeer = m_nPid == 0;
        m_nPipe = ends[isPeer ? 1 : 0];
        ::close(ends[isPeer ? 0 : 1]);
        if (isPeer) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            task(*this);
            ::_exit(testing::Test::HasFailure() ? 1 : 0);
        }
    }
    ~CPeer()
    {
        Kill();
        ::close(m_nPipe);
    }
    CPeer(CPeer const&) = delete;
    CPeer& operator=(CPeer const&) = delete;

    pid_t Pid() const { return m_nPid; }

    /// For the task: one write, so that a kill leaves the whole of a number or nothing.
    void Tell(std::int64_t number) const
    {
        EXPECT_EQ(::write(m_nPipe, &number, sizeof number), sizeof number);
    }
    /// Waits for the next number that the task tells; empty when it has ended and told all.
    std::optional<std::int64_t> Next() const
    {
        std::int64_t number = 0;
        bool const isThere = ::read(m_nPipe, &number, sizeof number) == sizeof number;
        return isThere ? std::optional(number) : std::nullopt;
    }

    /// For the task: keeps what it has until it is told to go on.
    static void Hold() { std::raise(SIGSTOP); }
    void WaitUntilItHolds() { EXPECT_TRUE(WIFSTOPPED(Wait(WUNTRACED))) << "it ended"; }
    void GoOn() const { ::kill(m_nPid, SIGCONT); }
    /// True when it could do all of its task.
    bool Finish()
    {
        GoOn();
        return Wait() == 0;
    }
    void Kill()
    {
        if (m_nPid > 0) {
            ::kill(m_nPid, SIGKILL);
            Wait();
        }
    }

private:
    int Wait(int options = 0)
    {
        int status = 0;
        ::waitpid(m_nPid, &status, options);
        m_nPid = WIFSTOPPED(status) ? m_nPid : -1;
        return status;
    }

    pid_t m_nPid = -1;
    int m_nPipe = -1;
};

/// For a task: does a step over and over for that time; tells how often it succeeded and failed.
template <typename Step>
void Saturate(CPeer const& self, std::chrono::milliseconds time, Step const& step)
{
    std::int64_t done = 0;
    std::int64_t failed = 0;
    auto const end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
        ++(step() ? done : failed);
    }
    self.Tell(done);
    self.Tell(failed);
}
/// How often such a task succeeded; it must never fail.
inline std::int64_t StepsOf(CPeer const& peer)
{
    auto const done = peer.Next().value_or(0);
    EXPECT_GT(done, 0) << "starved";
    EXPECT_EQ(peer.Next(), 0);
    return done;
}
