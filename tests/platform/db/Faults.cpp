#include "tests/platform/db/Faults.h"

#include <cerrno>
#include <csignal>
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
bool g_bExchange = true;

bool Strikes(bool needsRoom)
{
    if (g_nLeft == 0 || (g_nError == ENOSPC && !needsRoom) || --g_nLeft > 0) {
        return false;
    }
    if (g_nError == Faults::kKill) {
        std::raise(SIGKILL);
    }
    g_nLeft = g_bLasting ? 1 : 0;
    g_bStruck = true;
    if (g_nError == Faults::kHold) {
        std::raise(SIGSTOP);
        return false;
    }
    errno = g_nError;
    return true;
}

/// Lets the system do what a function of this name does, unless a fault strikes.
template <typename Result, typename... Arguments>
Result Call(bool needsRoom, char const* name, Arguments... arguments)
{
    using Function = Result (*)(Arguments...);
    return Strikes(needsRoom) ? -1
                              : reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

void Faults::Begin(int nth, int error, bool lasting)
{
    g_nLeft = nth;
    g_nError = error;
    g_bLasting = lasting;
    g_bStruck = false;
}

bool Faults::End()
{
    g_nLeft = 0;
    return g_bStruck;
}

void Faults::Exchange(bool possible)
{
    g_bExchange = possible;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): theirs are reserved
extern "C" {

ssize_t pwrite64(int file, void const* bytes, size_t size, off64_t offset)
{
    return Call<ssize_t>(true, "pwrite64", file, bytes, size, offset);
}

ssize_t write(int file, void const* bytes, size_t size)
{
    return Call<ssize_t>(true, "write", file, bytes, size);
}

int fsync(int file)
{
    return Call<int>(false, "fsync", file);
}

int fdatasync(int file)
{
    return Call<int>(false, "fdatasync", file);
}

int ftruncate64(int file, off64_t size) noexcept
{
    return Call<int>(false, "ftruncate64", file, size);
}

int renameat2(
    int fromFolder, char const* from, int toFolder, char const* to, unsigned flags) noexcept
{
    if (!g_bExchange && flags == RENAME_EXCHANGE) {
        errno = EINVAL;
        return -1;
    }
    return Call<int>(true, "renameat2", fromFolder, from, toFolder, to, flags);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
