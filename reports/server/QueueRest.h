#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

/// Lets go of the queue's file when nothing has waited for a while, so that others can compact it,
/// and tells by the looks of the file when something may wait again.
class CQueueRest
{
public:
    /// True while there is no need to look into the queue.
    bool IsResting();
    /// Nothing waited when the queue was looked into: closes its file if that was so for long.
    void FoundNothing();
    /// The file is in use again, or is to stay open.
    void Wake();

private:
    using Clock = std::chrono::steady_clock;
    using CStamp = std::vector<std::int64_t>;
    static CStamp Stamp();

    int m_nLooks = 0; ///< one after the other that found nothing
    CStamp m_stamp; ///< of the files when they were closed; empty while they are open
    Clock::time_point m_closed;
};
