#pragma once

#include "reports/content/ReportRequest.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// How reports write what is in records.

/// "Last, First M"; what is empty is left out.
std::string NameText(std::string_view last, std::string_view first, std::string_view middle);
template <typename Set>
std::string NameOf(Set const& set)
{
    return NameText(set.m_LastName, set.m_FirstName, set.m_MiddleInit);
}

/// The parts of a class that are not empty, with a blank between.
std::string ClassText(std::string_view category, std::string_view course, std::string_view section);
template <typename Set>
std::string ClassOf(Set const& set)
{
    return ClassText(set.m_Category, set.m_Course, set.m_Section);
}

/// "11/16/2026", empty for none.
std::string DateText(CEFOleDateTime const& date);
/// "12,345".
std::string CountText(std::int64_t count);
/// "1 workout", "12 workouts".
std::string CountOf(std::int64_t count, std::string_view one, std::string_view many);
/// "3:05" of minutes.
std::string HoursText(std::int64_t minutes);
/// With so many digits behind the point; empty when it is no finite number.
std::string NumberText(double number, int digits);

/// What the flags of a list leave out, for its head.
std::string StatusScope(std::int32_t options);
std::string ClassScope(CReportJob const& job);
/// The dates of the job, or all that are stored.
std::string PeriodScope(CReportJob const& job);

/// The texts of one row of a table, put together cell by cell; the memory is used again.
class CRowTexts
{
public:
    void Begin() { m_nCells = 0; }
    void Add(std::string_view text);
    /// Nothing when the condition is false, since there is no such column then.
    void AddIf(bool condition, std::string_view text)
    {
        if (condition) {
            Add(text);
        }
    }
    void PutInto(CReportTable& table, CReportTable::Row kind = CReportTable::Row::plain);

private:
    std::vector<std::string> m_texts;
    std::vector<std::string_view> m_views;
    std::size_t m_nCells = 0;
};
