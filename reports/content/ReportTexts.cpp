#include "reports/content/ReportTexts.h"

#include <array>
#include <charconv>
#include <cmath>

namespace
{

std::string Joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (auto const part : parts) {
        if (!part.empty()) {
            text += text.empty() ? "" : " ";
            text += part;
        }
    }
    return text;
}

} // namespace

std::string NameText(std::string_view last, std::string_view first, std::string_view middle)
{
    auto const given = Joined({first, middle});
    auto text = std::string(last);
    if (!given.empty()) {
        text += (text.empty() ? "" : ", ") + given;
    }
    return text;
}

std::string ClassText(std::string_view category, std::string_view course, std::string_view section)
{
    return Joined({category, course, section});
}

std::string DateText(CEFOleDateTime const& date)
{
    return date.IsZero() ? std::string() : date.DateStrLongYear();
}

std::string CountText(std::int64_t count)
{
    auto text = std::to_string(count);
    auto const first = std::ptrdiff_t(count < 0 ? 1 : 0);
    for (auto place = std::ssize(text) - 3; place > first; place -= 3) {
        text.insert(std::size_t(place), 1, ',');
    }
    return text;
}

std::string CountOf(std::int64_t count, std::string_view one, std::string_view many)
{
    return CountText(count) + ' ' + std::string(count == 1 ? one : many);
}

std::string HoursText(std::int64_t minutes)
{
    auto const rest = minutes % 60;
    return CountText(minutes / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

std::string NumberText(double number, int digits)
{
    constexpr double kMost = 1e12;
    if (!std::isfinite(number) || std::abs(number) > kMost) {
        return {};
    }
    std::array<char, 40> text; // NOLINT(cppcoreguidelines-pro-type-member-init): written below
    auto const end = std::to_chars(
        text.data(), text.data() + text.size(), number, std::chars_format::fixed, digits);
    return {text.data(), end.ptr};
}

std::string StatusScope(std::int32_t options)
{
    auto const condition
        = options & (CDAOReport::roAll | CDAOReport::roCurrent | CDAOReport::roPast);
    return condition == CDAOReport::roCurrent ? "Current members"
        : condition == CDAOReport::roPast     ? "Past members"
                                              : "Current and past members";
}

std::string ClassScope(CReportJob const& job)
{
    return "Class: " + ClassText(job.m_strCategory, job.m_strCourse, job.m_strSection)
        + (job.m_strCourse.empty()         ? " (all courses)"
                : job.m_strSection.empty() ? " (all sections)"
                                           : "");
}

std::string PeriodScope(CReportJob const& job)
{
    return (job.m_nParam & CDAOReport::roAllWorkouts) != 0
        ? "All workouts stored"
        : "Workouts from " + DateText(job.m_dtFrom) + " to " + DateText(job.m_dtTo);
}

void CRowTexts::Add(std::string_view text)
{
    if (m_nCells == m_texts.size()) {
        m_texts.emplace_back();
    }
    m_texts[m_nCells++].assign(text);
}

void CRowTexts::PutInto(CReportTable& table, CReportTable::Row kind)
{
    m_views.assign(m_texts.begin(), m_texts.begin() + std::ptrdiff_t(m_nCells));
    table.AddRow(m_views, kind);
}
