#include "reports/content/FitnessCharts.h"
#include "reports/content/FitnessCompare.h"
#include "reports/content/FitnessFacts.h"
#include "reports/content/FitnessReports.h"

namespace
{

std::string MethodOf(CFitnessRecord const& record)
{
    return record.m_strMethod;
}

/// What was measured, by the method that it is for.
void ShowMeasurements(CReport& report, CFitnessRecord const& record)
{
    CReportTable table({{"Measurement", 30}, {"Value", 20, true}});
    table.m_strIfEmpty = "No measurements are recorded.";
    for (auto const method : kMeasuringMethods) {
        std::string const section = CDAOBodyComp::GetMethodStr(method);
        bool isFirst = true;
        for (auto const& item : record.m_items) {
            if (item.m_section != section || item.m_bDerived || !item.IsMeasured()) {
                continue;
            }
            if (isFirst) {
                table.AddGroup(section);
                isFirst = false;
            }
            table.AddRow({item.m_strTitle, item.WithUnit()});
        }
    }
    report.m_lstBlocks.emplace_back(std::move(table));
}

void ShowBodyCompNorms(CNormBlocks& norms, std::vector<CNormBlocks::CDay> const& days)
{
    norms.ShowSection("Beside the Norms", days,
        {Measure::percentFat, Measure::bodyMassIndex, Measure::waistHipRatio});
}

} // namespace

CDbStatus BodyCompInterpretation(CReportRequest const& request)
{
    auto& report = request.m_report;
    CFitnessCase found;
    if (auto status = ReadFitnessCase<CDAOBodyComp>(request, 1, found); !status) {
        return status;
    }
    auto const& record = found.m_records.front();
    auto facts = FitnessFacts(found);
    facts.m_lstFacts.emplace_back("Method", record.m_strMethod);
    AddValues(facts, record,
        {"Height", "Weight", "Body mass index", "Body fat", "Fat weight", "Lean weight",
            "Waist-to-hip ratio"});
    report.m_lstBlocks.emplace_back(std::move(facts));
    ShowRemarks(report, found);

    CNormBlocks norms(report, found.m_member);
    ShowBodyCompNorms(norms, found.Days());
    report.Heading("Measurements");
    ShowMeasurements(report, record);
    ShowMissing(report, found);
    norms.ShowSources();
    return {};
}

CDbStatus BodyCompComparison(CReportRequest const& request)
{
    auto& report = request.m_report;
    CFitnessCase found;
    if (auto status = ReadFitnessCase<CDAOBodyComp>(request, 2, found); !status) {
        return status;
    }
    auto facts = FitnessFacts(found);
    facts.m_lstFacts.emplace_back("Methods", ValuesOf(found, MethodOf));
    report.m_lstBlocks.emplace_back(std::move(facts));
    ShowRemarks(report, found);
    if (found.m_records.front().m_strMethod != found.m_records.back().m_strMethod) {
        report.Note("The body fat was measured by two methods, which can differ by several percent "
                    "for the same person: a change between them may be none of the member's.");
    }

    CNormBlocks norms(report, found.m_member);
    ShowComparison(report, found);
    ShowInWords(report, found, norms);
    ShowBodyCompNorms(norms, found.Days());

    auto const& record = found.m_records.back();
    CFitnessCharts charts(found);
    charts.Want("Weight and Body Fat", {PlaceOf(record, "Weight"), PlaceOf(record, "Body fat")});
    charts.Want(
        "Fat and Lean Weight", {PlaceOf(record, "Fat weight"), PlaceOf(record, "Lean weight")});
    auto status = ShowOverTime<CDAOBodyComp>(request, found, charts);
    norms.ShowSources();
    return status;
}
