#include "reports/content/FitnessCharts.h"
#include "reports/content/FitnessCompare.h"
#include "reports/content/FitnessFacts.h"
#include "reports/content/FitnessReports.h"
#include "store/fitness/HeartRate.h"

namespace
{

/// What the equations give, truncated as the forms show it.
std::string Beats(double rate)
{
    return std::to_string(static_cast<int>(rate));
}

/// The heart rates to train at, when all that they follow from is known.
void AddTrainingRange(CReportFacts& facts, CFitnessCase const& of)
{
    auto const& record = of.m_records.front();
    auto const& rest = ItemFor(record.m_items, Measure::restingHeartRate);
    auto const age = of.m_member.AgeOn(record.m_dtWhen);
    if (!rest.IsMeasured() || !age || !of.m_member.m_isMale) {
        facts.m_lstFacts.emplace_back("Training range", "");
        return;
    }
    CHeartRate const rates(
        *of.m_member.m_isMale ? CHeartRate::sMale : CHeartRate::sFemale, *age, rest.m_dValue);
    facts.m_lstFacts.insert(facts.m_lstFacts.end(),
        {{"Predicted maximum", Beats(rates.PredictedMaximum()) + " beats a minute"},
            {"Training range",
                Beats(rates.LowerLevel()) + " to " + Beats(rates.UpperLevel()) + " beats a minute"},
            {"Safe maximum", Beats(rates.SafeMaximum()) + " beats a minute"},
            {"Heart rates by", rates.Source()}});
}

/// Each station that has a name and was lifted at.
void ShowWorkWeights(CReport& report, CFitnessCase const& of)
{
    CReportTable table({{"Station", 30}, {"Prog. Lift, lb", 14, true}, {"40 %", 8, true},
        {"50 %", 8, true}, {"70 %", 8, true}});
    table.m_strIfEmpty = "No progressive lifts were made.";
    auto const& items = of.m_records.front().m_items;
    auto const lifts = items.end() - of.m_circuit.m_nNumStations;
    for (int i = 0; i < of.m_circuit.m_nNumStations; ++i) {
        auto const& item = lifts[i];
        if (item.m_strTitle.empty() || !item.IsMeasured()) {
            continue;
        }
        // As the form: of whole pounds, in whole pounds.
        auto const weight = [&](int percentage) {
            double const lift = static_cast<int>(item.m_dValue);
            return std::to_string(
                static_cast<int>(of.m_circuit.GetWorkWeight(i, lift, percentage)));
        };
        table.AddRow({item.m_strTitle, item.Text(), weight(40), weight(50), weight(70)});
    }
    report.m_lstBlocks.emplace_back(std::move(table));
}

void ShowEvalNorms(CNormBlocks& norms, std::vector<CNormBlocks::CDay> const& days)
{
    norms.ShowSection("Profile", days, {Measure::bodyMassIndex});
    norms.ShowSection(
        "Training Range", days, {Measure::restingHeartRate, Measure::systolic, Measure::diastolic});
    norms.ShowSection("Fitness Tests", days,
        {Measure::trunkFlexion, Measure::sitUps, Measure::abCrunches, Measure::stepTest,
            Measure::aerobicCapacity, Measure::ergometer});
    norms.ShowSection("Body Composition", days, {Measure::percentFat});
}

} // namespace

CDbStatus TestInterpretation(CReportRequest const& request)
{
    auto& report = request.m_report;
    CFitnessCase found;
    if (auto status = ReadFitnessCase<CDAOEval>(request, 1, found); !status) {
        return status;
    }
    auto const& record = found.m_records.front();
    auto facts = FitnessFacts(found);
    AddValues(facts, record, {"Height", "Weight", "Body mass index", "Body fat"});
    AddTrainingRange(facts, found);
    report.m_lstBlocks.emplace_back(std::move(facts));
    ShowRemarks(report, found);

    CNormBlocks norms(report, found.m_member);
    ShowEvalNorms(norms, found.Days());
    report.Heading("Work Weights");
    ShowWorkWeights(report, found);
    ShowMissing(report, found);
    norms.ShowSources();
    return {};
}

CDbStatus EvaluationComparison(CReportRequest const& request)
{
    auto& report = request.m_report;
    CFitnessCase found;
    if (auto status = ReadFitnessCase<CDAOEval>(request, 2, found); !status) {
        return status;
    }
    report.m_lstBlocks.emplace_back(FitnessFacts(found));
    ShowRemarks(report, found);

    CNormBlocks norms(report, found.m_member);
    ShowComparison(report, found);
    ShowInWords(report, found, norms);
    ShowEvalNorms(norms, found.Days());

    auto const& record = found.m_records.back();
    CFitnessCharts charts(found);
    charts.Want("Weight and Body Fat", {PlaceOf(record, "Weight"), PlaceOf(record, "Body fat")});
    constexpr std::size_t kMostLifts = 4;
    auto lifts = LiftsByChange(found);
    if (lifts.size() > kMostLifts) {
        lifts.resize(kMostLifts);
    }
    charts.Want("Progressive Lifts That Changed Most", lifts);
    auto status = ShowOverTime<CDAOEval>(request, found, charts);
    norms.ShowSources();
    return status;
}
