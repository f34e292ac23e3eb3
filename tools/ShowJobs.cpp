#include "tools/ShowJobs.h"

#include "store/sets/DAOReport.h"
#include "tools/Printable.h"

#include <algorithm>
#include <iostream>
#include <utility>

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
std::string ParamText(CDAOReport const& job)
{
    switch (CDAOReport::GetParamKind(CDAOReport::rpttype(job.m_nRptType))) {
    case CDAOReport::rpMember:
        return "member ID " + std::to_string(job.m_nRptParam);
    case CDAOReport::rpOptions:
        return OptionsText(job.m_nRptParam);
    case CDAOReport::rpNone:
        break;
    }
    return job.m_nRptParam == 0 ? "" : "parameter " + std::to_string(job.m_nRptParam);
}

std::string DatesText(CDAOReport const& job)
{
    std::string text;
    for (auto const& [word, date] : {std::pair("from ", job.m_dtRptFrom), {"to ", job.m_dtRptTo}}) {
        if (!date.IsZero()) {
            text += (text.empty() ? "" : " ") + (word + date.Format("%Y-%m-%d %H:%M:%S"));
        }
    }
    return text;
}

std::string ClassText(CDAOReport const& job)
{
    std::string text;
    std::string empty; // parts that a later one follows
    for (auto const* const part :
        {&job.m_strRptCategory, &job.m_strRptCourse, &job.m_strRptSection}) {
        if (part->empty()) {
            empty += " \"\"";
        } else {
            text += std::exchange(empty, "") + ' ' + ShortQuoted(*part);
        }
    }
    return text.empty() ? "" : "class" + text;
}

void ShowJob(CDAOReport const& job)
{
    std::string const name = CDAOReport::GetTypeStr(CDAOReport::rpttype(job.m_nRptType));
    std::cout << "    " << (name.empty() ? "unknown type " + std::to_string(job.m_nRptType) : name);
    char const* separator = ": ";
    for (auto const& part : {ParamText(job), DatesText(job), ClassText(job)}) {
        if (!part.empty()) {
            std::cout << std::exchange(separator, ", ") << part;
        }
    }
    std::cout << "\n";
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
            ShowJob(jobs);
        }
        onRow = jobs.Op(CDAOEFSet::opMoveNext);
    }
    if (count > kMostJobs) {
        std::cout << "    ... and " << count - kMostJobs << " more\n";
    }
    return {};
}
