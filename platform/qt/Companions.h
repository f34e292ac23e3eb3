#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// A program of the suite that runs beside the console on the same computer. It
/// listens under its name on the socket "<name>.sock" in the runtime folder;
/// docs/companions.md is the page for those who write one.
struct CCompanion
{
    std::string_view name; ///< of its one running copy, matched exactly
    std::string_view file; ///< of its program, without folder
};

inline constexpr CCompanion kReportServer{"Report Server", "corvrpt"};
inline constexpr CCompanion kBackupUtility{"Backup Utility", "corvbk"};

/// The messages, one a packet, without a terminator. A companion answers kAskWho
/// with its name and kAskQuit with kAnswerOk.
inline constexpr std::string_view kAskWho = "who";
inline constexpr std::string_view kAskQuit = "quit";
inline constexpr std::string_view kAnswerOk = "ok";
inline constexpr std::size_t kMaxCompanionMessage = 64; ///< bytes

/// Whether the companion runs: a process of this user accepts connections under
/// the name and gives exactly that name. One that accepts and then says nothing
/// for two seconds counts as running: it may be busy with a long report, it still
/// holds the name, and a second copy beside it could only end again. The socket
/// file of one that was killed counts as nothing. Takes at most two seconds,
/// usually well under a millisecond.
bool FindCompanion(CCompanion const& companion);

/// Asks the companion to quit, whoever started it, if FindCompanion would find
/// it. Returns whether it answered that it will; it may still be finishing its
/// work. A silent one gets the request too and may follow it later, but the
/// result is false. Takes at most two seconds.
bool QuitCompanion(CCompanion const& companion);

/// Starts the companion from the given folder, if its program is there, else from
/// the search path. It gets no arguments, this program's environment and current
/// folder, and nothing that is open here. An empty folder stands for that of this
/// program. Returns whether it was started; does not wait until it listens, does
/// not look whether one already runs, and does not watch it.
bool StartCompanion(CCompanion const& companion, std::string const& folder = {});
