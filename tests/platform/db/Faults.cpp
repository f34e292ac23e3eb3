#include "tests/platform/db/Faults.h"

#include <cerrno>
#include <cstdio>
#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

namespace
{

int g_nLeft = 0; // calls until the first that fails; 0 when none will
int g_nError = 0;
bool g_bLasting = false;
bool g_bStruck = false;
bool g_bKeptAFile = false;
bool g_bKeptFromWriting = false;

bool Strikes()
{
    if (g_nLeft == 0 || --g_nLeft > 0) {
        return false;
    }
    g_nLeft = g_bLasting ? 1 : 0;
    g_bStruck = true;
    errno = g_nError;
    return true;
}

bool StrikesWriting()
{
    bool const strikes = Strikes();
    g_bKeptFromWriting = g_bKeptFromWriting || strikes;
    return strikes;
}

template <typename Function>
Function Real(char const* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

void Faults::Begin(int nth, int error, bool lasting)
{
    g_nLeft = nth;
    g_nError = error;
    g_bLasting = lasting;
    g_bStruck = false;
    g_bKeptAFile = false;
    g_bKeptFromWriting = false;
}

bool Faults::End()
{
    g_nLeft = 0;
    return g_bStruck;
}

bool Faults::KeptAFile()
{
    return g_bKeptAFile;
}

bool Faults::KeptFromWriting()
{
    return g_bKeptFromWriting;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): theirs are reserved
extern "C" {

ssize_t pwrite64(int file, void const* bytes, size_t size, off64_t offset)
{
    static auto const real = Real<ssize_t (*)(int, void const*, size_t, off64_t)>("pwrite64");
    return StrikesWriting() ? -1 : real(file, bytes, size, offset);
}

ssize_t write(int file, void const* bytes, size_t size)
{
    static auto const real = Real<ssize_t (*)(int, void const*, size_t)>("write");
    return StrikesWriting() ? -1 : real(file, bytes, size);
}

int fsync(int file)
{
    static auto const real = Real<int (*)(int)>("fsync");
    return Strikes() ? -1 : real(file);
}

int fdatasync(int file)
{
    static auto const real = Real<int (*)(int)>("fdatasync");
    return Strikes() ? -1 : real(file);
}

int ftruncate64(int file, off64_t size) noexcept
{
    static auto const real = Real<int (*)(int, off64_t)>("ftruncate64");
    return Strikes() ? -1 : real(file, size);
}

int renameat2(
    int fromFolder, char const* from, int toFolder, char const* to, unsigned flags) noexcept
{
    static auto const real
        = Real<int (*)(int, char const*, int, char const*, unsigned)>("renameat2");
    return Strikes() ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int unlink(char const* path) noexcept
{
    static auto const real = Real<int (*)(char const*)>("unlink");
    if (g_nError != ENOSPC && Strikes()) {
        g_bKeptAFile = true;
        return -1;
    }
    return real(path);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
