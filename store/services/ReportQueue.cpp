#include "store/services/ReportQueue.h"

#include "store/sets/DatabaseSession.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <initializer_list>
#include <limits>
#include <string_view>
#include <sys/random.h>
#include <tuple>
#include <utility>

namespace
{

// ?1 is the present moment in all of these. A time too far ahead was written by another clock, or
// by nobody who knows the queue, and counts as none.
constexpr std::string_view kIsLeased = "(claim <> '' AND lease_end > ?1 AND lease_end <= ?1 + 120)";
constexpr std::string_view kIsDeferred = "(not_before > ?1 AND not_before <= ?1 + 60)";
static_assert(CReportQueue::kLease == 120 && CReportQueue::kPauses[1] == 60);

// Texts are cut behind what any class, reason or path has: nobody is to run out of memory over
// them.
constexpr std::string_view kColumns
    = "id, type, parameter, date_from, date_to,"
      " substr(category, 1, 257), substr(course, 1, 257),"
      " substr(section, 1, 257), state, attempts, not_before,"
      " substr(reason, 1, 500), substr(output, 1, 5000), finished, ";

constexpr int kFirstType = CDAOReport::rtMemberProfile;
constexpr int kLastType = CDAOReport::rtUnknownWorkouts;

std::string Sql(std::initializer_list<std::string_view> parts)
{
    std::string sql;
    for (auto const part : parts) {
        sql += part;
    }
    return sql;
}

template <typename T>
T WithinOr(std::int64_t value, T other)
{
    return std::in_range<T>(value) ? static_cast<T>(value) : other;
}

/// The columns of a row one after the other.
class CCells
{
public:
    explicit CCells(CRowView const& row)
        : m_row(row)
    {
    }
    std::int64_t Number()
    {
        auto const& cell = m_row.Cell(m_nNext++);
        return cell.type == CCell::integer ? cell.integerValue : 0;
    }
    std::string Text()
    {
        auto const& cell = m_row.Cell(m_nNext++);
        return cell.type == CCell::text ? std::string(m_row.Text(cell)) : std::string();
    }
    CEFOleDateTime Date() { return CEFOleDateTime::FromSeconds(Number()); }

private:
    CRowView const m_row;
    std::size_t m_nNext = 0;
};

CQueuedReport ReportOf(CRowView const& row)
{
    CCells cells(row);
    CQueuedReport report;
    report.id = cells.Number();
    auto const type = cells.Number();
    report.job.m_nType = CDAOReport::rpttype(
        type >= kFirstType && type <= kLastType ? static_cast<int>(type) : -1);
    report.job.m_nParam = WithinOr<std::int32_t>(cells.Number(), 0);
    report.job.m_dtFrom = cells.Date();
    report.job.m_dtTo = cells.Date();
    report.job.m_strCategory = cells.Text();
    report.job.m_strCourse = cells.Text();
    report.job.m_strSection = cells.Text();
    auto const state = cells.Number();
    report.state = state == 0 ? CQueuedReport::waiting
        : state == 1          ? CQueuedReport::done
                              : CQueuedReport::failed;
    report.attempts = static_cast<int>(
        std::clamp<std::int64_t>(cells.Number(), 0, std::numeric_limits<int>::max()));
    report.notBefore = cells.Number();
    report.reason = cells.Text();
    report.output = cells.Text();
    report.finished = cells.Number();
    report.isInHand = report.state == CQueuedReport::waiting && cells.Number() != 0;
    return report;
}

} // namespace

bool CQueuedReport::operator==(CQueuedReport const& other) const
{
    auto const parts = [](CQueuedReport const& r) {
        return std::tie(r.id, r.job.m_nType, r.job.m_nParam, r.job.m_dtFrom, r.job.m_dtTo,
            r.job.m_strCategory, r.job.m_strCourse, r.job.m_strSection, r.state, r.isInHand,
            r.attempts, r.notBefore, r.reason, r.output, r.finished);
    };
    return parts(*this) == parts(other);
}

CReportQueue::CReportQueue(std::function<std::int64_t()> clock)
    : m_clock(std::move(clock))
{
    if (!m_clock) {
        m_clock = [] {
            using namespace std::chrono;
            return std::int64_t(
                duration_cast<seconds>(system_clock::now().time_since_epoch()).count());
        };
    }
}

std::string CReportQueue::NewToken()
{
    std::array<unsigned char, 16> bytes = {};
    while (::getrandom(bytes.data(), bytes.size(), 0) < 0 && errno == EINTR) { }
    std::string token;
    for (auto const byte : bytes) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        token += kDigits[byte >> 4U];
        token += kDigits[byte & 15U];
    }
    return token;
}

CDatabase* CReportQueue::Open(CDbStatus& status) const
{
    return CDatabaseSession::Get().Open(DataFile::report, status);
}

CDbStatus CReportQueue::Read(
    std::string_view clause, std::vector<DbValue> values, std::vector<CQueuedReport>& jobs)
{
    CDbStatus status;
    auto* const database = Open(status);
    if (database == nullptr) {
        return status;
    }
    values.insert(values.begin(), Now());
    CRowBlock rows;
    status = database->Query(
        Sql({"SELECT ", kColumns, kIsLeased, " FROM reports ", clause}), values, rows);
    for (std::size_t row = 0; status && row < rows.Rows(); ++row) {
        jobs.push_back(ReportOf(rows.Row(row)));
    }
    return status;
}

CDbStatus CReportQueue::ReadOne(
    std::string_view clause, std::vector<DbValue> values, std::optional<CQueuedReport>& job)
{
    std::vector<CQueuedReport> jobs;
    auto status = Read(clause, std::move(values), jobs);
    job = jobs.empty() ? std::nullopt : std::optional(jobs.front());
    return status;
}

CDbStatus CReportQueue::Change(
    std::string const& sql, std::vector<DbValue> const& values, bool& changed)
{
    CDbStatus status;
    auto* const database = Open(status);
    std::int64_t rows = 0;
    if (database != nullptr) {
        status = database->Execute(sql, values, rows);
    }
    changed = rows > 0;
    return status;
}

/// Of a job that took the last of its attempts with its server, or that nobody can have tried so
/// often.
CDbStatus CReportQueue::SetAside(CQueuedReport const& job)
{
    bool changed = false;
    return Change("UPDATE reports SET state = 2, finished = ?2, lease_end = 0, reason = CASE claim "
                  "WHEN '' THEN reason ELSE ?3 END, claim = '' WHERE id = ?1",
        {job.id, Now(),
            "The report server ended while it made this report, for the last of "
                + std::to_string(kMostAttempts) + " attempts."},
        changed);
}

CDbStatus CReportQueue::Claim(std::string const& token, std::optional<CQueuedReport>& claimed)
{
    auto const free = Sql(
        {"WHERE state = 0 AND NOT ", kIsLeased, " AND NOT ", kIsDeferred, " ORDER BY id LIMIT 1"});
    // Looked at first, since this is asked every other second and writing takes the file's locks.
    auto status = ReadOne(free, {}, claimed);
    auto* const database = status && claimed ? Open(status) : nullptr;
    claimed.reset();
    if (database == nullptr) {
        return status;
    }
    CTransaction transaction(*database);
    std::optional<CQueuedReport> job;
    status = transaction.Status();
    status = status ? ReadOne(free, {}, job) : status;
    while (status && job && job->attempts >= kMostAttempts) {
        status = SetAside(*job);
        status = status ? ReadOne(free, {}, job) : status;
    }
    bool isTaken = false;
    if (status && job) {
        status
            = Change("UPDATE reports SET claim = ?1, lease_end = ?2, attempts = ?3 WHERE id = ?4",
                {token, Now() + kLease, std::int64_t(++job->attempts), job->id}, isTaken);
    }
    status = status ? transaction.Commit() : status;
    if (status && isTaken) {
        job->isInHand = true;
        claimed = job;
    }
    return status;
}

CDbStatus CReportQueue::FindClaimed(
    std::int64_t id, std::string const& token, std::optional<CQueuedReport>& claimed)
{
    return ReadOne(
        "WHERE id = ?2 AND claim = ?3 AND claim <> '' AND state = 0", {id, token}, claimed);
}

CDbStatus CReportQueue::Renew(std::int64_t id, std::string const& token, bool& held)
{
    return Change("UPDATE reports SET lease_end = ?3 WHERE id = ?1 AND claim = ?2 AND claim <> '' "
                  "AND state = 0",
        {id, token, Now() + kLease}, held);
}

CDbStatus CReportQueue::SetOutput(
    std::int64_t id, std::string const& token, std::string const& output, bool& held)
{
    return Change(
        "UPDATE reports SET output = ?3 WHERE id = ?1 AND claim = ?2 AND claim <> '' AND state = 0",
        {id, token, output}, held);
}

CDbStatus CReportQueue::Done(std::int64_t id, std::string const& token, bool& held)
{
    return Change(
        "UPDATE reports SET state = 1, finished = ?3, reason = '', claim = '', lease_end = "
        "0 WHERE id = ?1 AND claim = ?2 AND claim <> '' AND state = 0",
        {id, token, Now()}, held);
}

CDbStatus CReportQueue::Failed(
    std::int64_t id, std::string const& token, std::string const& reason, bool& held)
{
    auto const now = Now();
    return Change(
        "UPDATE reports SET state = CASE WHEN attempts >= ?4 THEN 2 ELSE 0 END, finished = "
        "CASE WHEN attempts >= ?4 THEN ?5 ELSE 0 END, not_before = CASE WHEN attempts <= 1 "
        "THEN ?6 ELSE ?7 END, reason = ?3, claim = '', lease_end = 0 "
        "WHERE id = ?1 AND claim = ?2 AND claim <> '' AND state = 0",
        {id, token, reason, std::int64_t(kMostAttempts), now, now + kPauses[0], now + kPauses[1]},
        held);
}

CDbStatus CReportQueue::GiveBack(std::int64_t id, std::string const& token, bool& held)
{
    return Change("UPDATE reports SET attempts = max(attempts - 1, 0), claim = '', lease_end = 0 "
                  "WHERE id = ?1 AND claim = ?2 AND claim <> '' AND state = 0",
        {id, token}, held);
}

CDbStatus CReportQueue::Thin()
{
    bool changed = false;
    return Change("DELETE FROM reports WHERE state = 1 AND (finished < ?1 OR id IN (SELECT id FROM "
                  "reports WHERE state = 1 ORDER BY finished DESC, id DESC LIMIT -1 OFFSET ?2))",
        {Now() - kKeepDone, kMostDone}, changed);
}

CDbStatus CReportQueue::List(std::vector<CQueuedReport>& jobs)
{
    jobs.clear();
    CDbStatus status;
    for (auto const* const clause : {"WHERE state = 0 ORDER BY id LIMIT ?2",
             "WHERE state NOT IN (0, 1) ORDER BY id DESC LIMIT ?2",
             "WHERE state = 1 ORDER BY finished DESC, id DESC LIMIT ?2"}) {
        status = status ? Read(clause, {kMostListed}, jobs) : status;
    }
    return status;
}

CDbStatus CReportQueue::Find(std::int64_t id, std::optional<CQueuedReport>& job)
{
    return ReadOne("WHERE id = ?2", {id}, job);
}

CDbStatus CReportQueue::Count(CQueueCounts& counts)
{
    counts = {};
    CDbStatus status;
    auto* const database = Open(status);
    CRowBlock rows;
    if (database != nullptr) {
        status = database->Query(Sql({"SELECT count(*), sum(state = 0), sum(state = 0 AND ",
                                     kIsLeased, "), sum(state = 1) FROM reports"}),
            std::array<DbValue, 1>{Now()}, rows);
    }
    if (status && rows.Rows() == 1) {
        CCells cells(rows.Row(0));
        auto const all = cells.Number();
        counts.waiting = cells.Number(); // of no row the sums are null, which reads as 0
        counts.inHand = cells.Number();
        counts.done = cells.Number();
        counts.failed = all - counts.waiting - counts.done;
    }
    return status;
}

CDbStatus CReportQueue::Again(std::int64_t id, bool& changed)
{
    // The file of one that waits may be there already, and is to be found by its name.
    return Change(
        Sql({"UPDATE reports SET output = CASE state WHEN 0 THEN output ELSE '' END, state "
             "= 0, attempts = 0, not_before = 0, reason = '', finished = 0, claim = '', "
             "lease_end = 0 WHERE id = ?2 AND NOT (state = 0 AND ",
            kIsLeased, ")"}),
        {Now(), id}, changed);
}

CDbStatus CReportQueue::Remove(std::int64_t id, bool& removed)
{
    return Change(
        Sql({"DELETE FROM reports WHERE id = ?2 AND NOT (state = 0 AND ", kIsLeased, ")"}),
        {Now(), id}, removed);
}
