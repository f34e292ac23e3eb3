#include "reports/content/FitnessCharts.h"

#include <algorithm>

namespace
{

std::string WithUnit(CFitnessItem const& like, double value)
{
    auto item = like;
    item.m_dValue = value;
    return item.WithUnit();
}

} // namespace

void CFitnessCharts::Want(std::string title, std::vector<std::size_t> const& places)
{
    CChart chart{std::move(title), {}};
    for (auto const place : places) {
        chart.m_lstSeries.push_back({place});
    }
    m_lstCharts.push_back(std::move(chart));
}

void CFitnessCharts::See(CFitnessRecord const& record)
{
    for (auto& chart : m_lstCharts) {
        for (auto& series : chart.m_lstSeries) {
            if (auto const& item = record.m_items[series.m_place]; item.IsMeasured()) {
                series.m_values.emplace_back(record.m_dtWhen, item.m_dValue);
            }
        }
    }
}

CFitnessItem const& CFitnessCharts::ItemOf(CSeries const& series) const
{
    return m_case.m_records.front().m_items[series.m_place];
}

std::string CFitnessCharts::LabelOf(CEFOleDateTime const& when) const
{
    bool const isFirst = when == m_case.m_records.front().m_dtWhen;
    bool const isSecond = when == m_case.m_records.back().m_dtWhen;
    return when.DateStrLongYear()
        + (isFirst && isSecond ? " (compared)"
                : isFirst      ? " (first)"
                : isSecond     ? " (second)"
                               : "");
}

std::string CFitnessCharts::ValueOn(CSeries const& series, std::size_t point) const
{
    auto const& [when, value] = series.m_values[point];
    return WithUnit(ItemOf(series), value) + " on " + when.DateStrLongYear();
}

/// The values of the two that are compared; empty when neither was measured.
std::string CFitnessCharts::Compared(CSeries const& series) const
{
    std::vector<std::string> values;
    for (auto const& record : m_case.m_records) {
        if (auto const& item = record.m_items[series.m_place]; item.IsMeasured()) {
            values.push_back(item.WithUnit() + " on " + record.m_dtWhen.DateStrLongYear());
        }
    }
    return values.empty() ? "" : " Compared here: " + InSentence(values) + ".";
}

std::string CFitnessCharts::InWords(CSeries const& series) const
{
    auto const& values = series.m_values;
    auto const title = ItemOf(series).m_strTitle + ": ";
    if (values.empty()) {
        return title + "never measured.";
    }
    if (values.size() == 1) {
        return title + "measured only once, " + ValueOn(series, 0) + ".";
    }
    auto const [low, high]
        = std::ranges::minmax_element(values, {}, [](auto const& one) { return one.second; });
    auto const at = [&](auto place) {
        return ValueOn(series, static_cast<std::size_t>(place - values.begin()));
    };
    return title + std::to_string(values.size()) + " values, first " + at(values.begin())
        + ", last " + at(values.end() - 1) + ", lowest " + at(low) + ", highest " + at(high) + "."
        + Compared(series);
}

CReportChart::CSeries CFitnessCharts::Drawn(CSeries const& series) const
{
    auto const& item = ItemOf(series);
    CReportChart::CSeries drawn;
    drawn.m_strName
        = item.m_strTitle + (*item.m_unit == '\0' ? "" : std::string(", ") + item.m_unit);
    drawn.m_lstPoints.reserve(series.m_values.size());
    for (auto const& [when, value] : series.m_values) {
        drawn.m_lstPoints.push_back({when.Seconds(), value, LabelOf(when)});
    }
    return drawn;
}

void CFitnessCharts::Show(CReport& report) const
{
    for (auto const& wanted : m_lstCharts) {
        CReportChart chart;
        chart.m_strTitle = wanted.m_strTitle;
        std::string words;
        for (auto const& series : wanted.m_lstSeries) {
            words += (words.empty() ? "" : " ") + InWords(series);
            if (series.m_values.size() > 1) {
                chart.m_lstSeries.push_back(Drawn(series));
            }
        }
        if (chart.m_lstSeries.empty()) {
            report.Body(words);
        } else {
            chart.m_strInWords = words;
            report.m_lstBlocks.emplace_back(std::move(chart));
        }
    }
}
