#pragma once

#include "reports/content/FitnessRecord.h"

#include <string>
#include <vector>

/// Results of a member over time, with the two that are compared among them. Keeps the values that
/// are drawn and nothing else of the records.
class CFitnessCharts
{
public:
    explicit CFitnessCharts(CFitnessCase const& of)
        : m_case(of)
    {
    }

    /// One more chart, of these items of the records, each in its own panel.
    void Want(std::string title, std::vector<std::size_t> const& places);
    /// Records come in the order of time.
    void See(CFitnessRecord const& record);
    /// A series of fewer than two values is told and not drawn.
    void Show(CReport& report) const;

private:
    struct CSeries
    {
        std::size_t m_place;
        std::vector<std::pair<CEFOleDateTime, double>> m_values = {};
    };
    struct CChart
    {
        std::string m_strTitle;
        std::vector<CSeries> m_lstSeries;
    };

    /// The item in one of the compared records, for its name and unit.
    CFitnessItem const& ItemOf(CSeries const& series) const;
    std::string LabelOf(CEFOleDateTime const& when) const;
    std::string ValueOn(CSeries const& series, std::size_t point) const;
    std::string InWords(CSeries const& series) const;
    std::string Compared(CSeries const& series) const;
    CReportChart::CSeries Drawn(CSeries const& series) const;

    CFitnessCase const& m_case;
    std::vector<CChart> m_lstCharts;
};

/// Fills the charts with all records up to the later of the two and shows them. Set is CDAOEval or
/// CDAOBodyComp.
template <typename Set>
CDbStatus ShowOverTime(
    CReportRequest const& request, CFitnessCase const& of, CFitnessCharts& charts)
{
    request.m_report.Heading("Over Time");
    int withoutDate = 0;
    auto const status = ReadFitnessHistory<Set>(
        request, of, of.m_records.back().m_dtWhen,
        [&](CFitnessRecord const& record) { charts.See(record); }, withoutDate);
    charts.Show(request.m_report);
    if (withoutDate != 0) {
        request.m_report.Note("Records without a date that can be, which are left out: "
            + std::to_string(withoutDate) + ".");
    }
    return status;
}
