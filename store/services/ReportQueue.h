#pragma once

#include "platform/db/Database.h"
#include "store/services/ReportJob.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// A job of the queue, as it is stored now. What no console writes (a type that is none, a text
/// longer than a class has) reads as a value that no report is made of.
struct CQueuedReport
{
    enum State
    {
        waiting,
        done,
        failed
    };
    std::int64_t id = 0;
    CReportJob job; ///< its type is -1 for a number that is none
    State state = waiting;
    bool isInHand = false; ///< waiting, and a server makes it now
    int attempts = 0; ///< begun, the present one included
    std::int64_t notBefore = 0; ///< of the next attempt, Unix seconds; 0 = now
    std::string reason; ///< of the last failure
    std::string
        output; ///< the path of its file, or the printer's name; empty before the first attempt
    std::int64_t finished = 0; ///< when it was done or set aside, Unix seconds

    bool operator==(CQueuedReport const& other) const;
};

struct CQueueCounts
{
    std::int64_t waiting = 0; ///< those in hand included
    std::int64_t inHand = 0;
    std::int64_t done = 0;
    std::int64_t failed = 0;
};

/// The queue of reports as its servers use it. A server claims a job under a token of its own, for
/// two minutes from then or from its last Renew(), and every later change of the job takes that
/// token: so no two make the same job, and that of one that died comes back by itself.
///
/// A job is made in three attempts at most, each later one some time after the failure before.
class CReportQueue
{
public:
    static constexpr std::int64_t kLease = 120; ///< seconds
    static constexpr int kMostAttempts = 3;
    static constexpr std::array<std::int64_t, 2> kPauses = {10, 60}; ///< after a failure, seconds
    static constexpr std::int64_t kKeepDone = 7 * std::int64_t(86400); ///< seconds
    static constexpr std::int64_t kMostDone = 200;
    static constexpr std::int64_t kMostListed = 1000; ///< of each state

    /// What the clock says, in Unix seconds; empty for the computer's own.
    explicit CReportQueue(std::function<std::int64_t()> clock = {});

    /// A text that nobody else claims under.
    static std::string NewToken();

    // For servers.

    /// Takes the first job that waits, in the order of the queue; empty when there is none now.
    /// Sets aside those that took the last of their attempts with their server.
    CDbStatus Claim(std::string const& token, std::optional<CQueuedReport>& claimed);
    /// Whether the claim still stands, in held; with the job as it is now.
    CDbStatus FindClaimed(
        std::int64_t id, std::string const& token, std::optional<CQueuedReport>& claimed);
    // Each of these is told whether the claim still stood; if not, nothing was changed.
    CDbStatus Renew(std::int64_t id, std::string const& token, bool& held);
    /// Where the report goes, before it is made.
    CDbStatus SetOutput(
        std::int64_t id, std::string const& token, std::string const& output, bool& held);
    CDbStatus Done(std::int64_t id, std::string const& token, bool& held);
    /// For another attempt, or as failed for good.
    CDbStatus Failed(
        std::int64_t id, std::string const& token, std::string const& reason, bool& held);
    /// As if it had not been claimed.
    CDbStatus GiveBack(std::int64_t id, std::string const& token, bool& held);
    /// Removes done jobs that are a week old, and all but the newest 200.
    CDbStatus Thin();

    // For their users.

    /// What waits, in the order of the queue, then what failed and what is done, the newest first;
    /// of each kMostListed at most.
    CDbStatus List(std::vector<CQueuedReport>& jobs);
    CDbStatus Find(std::int64_t id, std::optional<CQueuedReport>& job);
    CDbStatus Count(CQueueCounts& counts);
    /// Lets a job that is not in hand wait from the beginning; one that waits is tried now.
    CDbStatus Again(std::int64_t id, bool& changed);
    /// Deletes a job that is not in hand.
    CDbStatus Remove(std::int64_t id, bool& removed);

private:
    CDatabase* Open(CDbStatus& status) const;
    std::int64_t Now() const { return m_clock(); }
    CDbStatus Read(
        std::string_view clause, std::vector<DbValue> values, std::vector<CQueuedReport>& jobs);
    CDbStatus ReadOne(
        std::string_view clause, std::vector<DbValue> values, std::optional<CQueuedReport>& job);
    CDbStatus Change(std::string const& sql, std::vector<DbValue> const& values, bool& changed);
    CDbStatus SetAside(CQueuedReport const& job);

    std::function<std::int64_t()> m_clock;
};
