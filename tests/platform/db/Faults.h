#pragma once

#include <cerrno>
#include <utility>

/// Lets the calls fail by which SQLite and the engine write. Linked into a test, whose own
/// functions then stand before those of the system.
namespace Faults
{

/// The n-th call from now on, counted from 1, fails with this errno; if lasting, all later ones do
/// too. Where the disk is full only what needs room fails. With kKill the process is killed, with
/// kHold it is held before the call, which then succeeds.
inline constexpr int kKill = -1;
inline constexpr int kHold = -2;
void Begin(int nth, int error, bool lasting);

/// Lets all calls through again. True when at least one had failed.
bool End();

/// Whether the file system can exchange two names in one step.
void Exchange(bool possible);

/// Runs a trial again and again, with another call failing each time: a sector that fails once, a
/// disk that fails from some moment on, one that is full from some moment on. A trial begins and
/// ends its fault and returns whether one struck: with none left the next kind begins. Returns how
/// many struck.
template <typename Trial>
int ForEach(Trial const& trial)
{
    int struck = 0;
    for (auto const& [error, lasting] : {std::pair(EIO, false), {EIO, true}, {ENOSPC, true}}) {
        for (int nth = 1; trial(nth, error, lasting); nth += nth < 32 ? 1 : nth / 4) {
            ++struck;
        }
    }
    return struck;
}

} // namespace Faults
