#pragma once

#include <unistd.h>

/// Owns a file descriptor and closes it.
class CDescriptor
{
public:
    /// Takes over what open() or socket() returned, -1 included.
    explicit CDescriptor(int fd) noexcept
        : m_nFd(fd)
    {
    }
    ~CDescriptor()
    {
        if (m_nFd >= 0) {
            close(m_nFd);
        }
    }
    CDescriptor(CDescriptor const&) = delete;
    CDescriptor& operator=(CDescriptor const&) = delete;

    explicit operator bool() const noexcept { return m_nFd >= 0; }
    int Get() const noexcept { return m_nFd; }
    /// Leaves the descriptor open for as long as the process lives.
    void KeepOpen() noexcept { m_nFd = -1; }

private:
    int m_nFd;
};
