#pragma once

#include "store/sets/DatabaseSession.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

/// Another program at work on the centre of a test: a copy of this process that runs a task over
/// files it opens itself, and tells numbers. Killed at the latest when the object goes.
class CStorePeer
{
public:
    /// Tells a number in one write, so that a kill leaves the whole of it or nothing.
    using Tell = std::function<void(std::int64_t)>;

    explicit CStorePeer(std::function<void(Tell const&)> const& task)
    {
        CDatabaseSession::Get().ShutDown(); // no connection may live in two processes
        std::array<int, 2> output = {};
        if (::pipe2(output.data(), O_CLOEXEC) != 0) {
            ADD_FAILURE() << "no pipe";
            return;
        }
        m_nPid = ::fork();
        if (m_nPid == 0) {
            task([&](std::int64_t number) {
                if (::write(output[1], &number, sizeof number) != sizeof number) {
                    ::_exit(2);
                }
            });
            CDatabaseSession::Get().ShutDown();
            ::_exit(testing::Test::HasFailure() ? 1 : 0);
        }
        ::close(output[1]);
        m_nOutput = output[0];
    }
    ~CStorePeer()
    {
        Kill();
        ::close(m_nOutput);
    }
    CStorePeer(CStorePeer const&) = delete;
    CStorePeer& operator=(CStorePeer const&) = delete;

    /// The next number it tells; empty when it has ended and told all.
    std::optional<std::int64_t> Next() const
    {
        std::int64_t number = 0;
        return ::read(m_nOutput, &number, sizeof number) == sizeof number ? std::optional(number)
                                                                          : std::nullopt;
    }

    void Kill()
    {
        if (m_nPid > 0) {
            ::kill(m_nPid, SIGKILL);
            ::waitpid(std::exchange(m_nPid, -1), nullptr, 0);
        }
    }

private:
    pid_t m_nPid = -1;
    int m_nOutput = -1;
};
