#include "tools/ShowJobs.h"

#include "store/services/ReportQueue.h"
#include "tools/Printable.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

constexpr int kMostJobs = 20; ///< that a page can show
constexpr std::size_t kMostBytes = 80; ///< of a text in a line

std::string ShortQuoted(std::string_view text)
{
    auto size = std::min(text.size(), kMostBytes);
    while (size > 0 && size < text.size()
        && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) {
        --size; // no letter is cut
    }
    return '"' + Printable(text.substr(0, size)) + (size < text.size() ? "...\"" : "\"");
}

std::string OptionsText(std::int32_t options)
{
    std::string text;
    auto rest = options;
    for (auto const& [option, words] : {std::pair(CDAOReport::roMemberIDs, "with member IDs"),
             {CDAOReport::roAll, "all members"}, {CDAOReport::roCurrent, "current members"},
             {CDAOReport::roPast, "past members"}, {CDAOReport::roAllWorkouts, "all workouts"}}) {
        if ((options & option) != 0) {
            text += (text.empty() ? "" : ", ") + std::string(words);
            rest -= option;
        }
    }
    if (rest != 0 || text.empty()) {
        text += (text.empty() ? "options " : ", options ") + std::to_string(rest);
    }
    return text;
}

/// Empty when a job of the type has none.
std::string ParamText(CReportJob const& job)
{
    switch (CDAOReport::GetParamKind(job.m_nType)) {
    case CDAOReport::rpMember:
        return "member ID " + std::to_string(job.m_nParam);
    case CDAOReport::rpOptions:
        return OptionsText(job.m_nParam);
    case CDAOReport::rpNone:
        break;
    }
    return job.m_nParam == 0 ? "" : "parameter " + std::to_string(job.m_nParam);
}

std::string DatesText(CReportJob const& job)
{
    std::string text;
    for (auto const& [word, date] : {std::pair("from ", job.m_dtFrom), {"to ", job.m_dtTo}}) {
        if (!date.IsZero()) {
            text += (text.empty() ? "" : " ") + (word + date.Format("%Y-%m-%d %H:%M:%S"));
        }
    }
    return text;
}

std::string ClassText(CReportJob const& job)
{
    std::string text;
    std::string empty; // parts that a later one follows
    for (auto const* const part : {&job.m_strCategory, &job.m_strCourse, &job.m_strSection}) {
        if (part->empty()) {
            empty += " \"\"";
        } else {
            text += std::exchange(empty, "") + ' ' + ShortQuoted(*part);
        }
    }
    return text.empty() ? "" : "class" + text;
}

CReportJob JobOf(CDAOReport const& row)
{
    return {CDAOReport::rpttype(row.m_nRptType), row.m_nRptParam, row.m_dtRptFrom, row.m_dtRptTo,
        row.m_strRptCategory, row.m_strRptCourse, row.m_strRptSection};
}

void ShowJob(CReportJob const& job, std::string const& reason = {})
{
    std::string const name = CDAOReport::GetTypeStr(job.m_nType);
    std::cout << "    " << (name.empty() ? "unknown type " + std::to_string(job.m_nType) : name);
    char const* separator = ": ";
    for (auto const& part : {ParamText(job), DatesText(job), ClassText(job), Printable(reason)}) {
        if (!part.empty()) {
            std::cout << std::exchange(separator, ", ") << part;
        }
    }
    std::cout << "\n";
}

/// How many are shown of all.
void ShowRest(std::int64_t count)
{
    if (count > kMostJobs) {
        std::cout << "    ... and " << count - kMostJobs << " more\n";
    }
}

/// What the report server has to do with, if it has had anything.
CDbStatus ShowServed()
{
    CReportQueue queue;
    CQueueCounts counts;
    std::vector<CQueuedReport> jobs;
    auto status = queue.Count(counts);
    if (!status || counts.inHand + counts.done + counts.failed == 0) {
        return status;
    }
    status = queue.List(jobs);
    std::cout << "Report jobs being made: " << counts.inHand << ", done: " << counts.done
              << ", set aside: " << counts.failed << "\n";
    int shown = 0;
    for (auto const& job : jobs) {
        if (job.state == CQueuedReport::failed && shown++ < kMostJobs) {
            ShowJob(job.job, job.reason);
        }
    }
    ShowRest(counts.failed);
    return status;
}

} // namespace

CDbStatus ShowJobs()
{
    CDAOReport jobs;
    int const count = jobs.FindReports();
    if (!jobs.LastStatus()) {
        return jobs.LastStatus();
    }
    std::cout << "Queued report jobs: " << count << "\n";
    bool onRow = jobs.Op(CDAOEFSet::opMoveFirst);
    for (int row = 0; row < std::min(count, kMostJobs); ++row) {
        if (!jobs.LastStatus()) {
            return jobs.LastStatus();
        }
        if (onRow) { // a report server may take jobs meanwhile
            ShowJob(JobOf(jobs));
        }
        onRow = jobs.Op(CDAOEFSet::opMoveNext);
    }
    ShowRest(count);
    return ShowServed();
}
