#include "reports/server/QueueRest.h"

#include "store/sets/DatabaseSession.h"

#include <sys/stat.h>

using namespace std::chrono_literals;

namespace
{

constexpr int kLooks = 3; ///< before the file is closed
constexpr auto kLongestRest = 30s; ///< for a job whose lease ends, or that is to be tried again

} // namespace

bool CQueueRest::IsResting()
{
    if (m_stamp.empty() || (Stamp() == m_stamp && Clock::now() - m_closed < kLongestRest)) {
        return !m_stamp.empty();
    }
    m_stamp.clear();
    return false;
}

void CQueueRest::FoundNothing()
{
    if (++m_nLooks >= kLooks) {
        CDatabaseSession::Get().ShutDown();
        m_stamp = Stamp();
        m_closed = Clock::now();
    }
}

void CQueueRest::Wake()
{
    m_nLooks = 0;
    m_stamp.clear();
}

/// What a commit of anybody changes: the size and the time of the file and of its log.
CQueueRest::CStamp CQueueRest::Stamp()
{
    auto const path = CDatabaseSession::Get().PathOf(DataFile::report);
    CStamp stamp;
    for (auto const* const end : {"", "-wal"}) {
        struct stat file = {};
        bool const isThere = ::stat((path + end).c_str(), &file) == 0;
        stamp.insert(stamp.end(),
            {std::int64_t(isThere), std::int64_t(file.st_ino), std::int64_t(file.st_size),
                std::int64_t(file.st_mtim.tv_sec), std::int64_t(file.st_mtim.tv_nsec)});
    }
    return stamp;
}
