#include "reports/content/FitnessCompare.h"

#include "reports/content/FitnessFacts.h"

#include <algorithm>
#include <cmath>

namespace
{

using Better = CNorm::Better;

/// One measure at both times.
struct CPair
{
    CFitnessItem const& m_first;
    CFitnessItem const& m_second;

    bool IsLift() const { return m_first.IsLift(); }
    bool IsBoth() const { return m_first.IsMeasured() && m_second.IsMeasured(); }
    double Change() const { return m_second.m_dValue - m_first.m_dValue; }
    double Percent() const { return Change() / m_first.m_dValue * 100; }
    std::string ChangeText() const
    {
        if (!m_first.m_bTime) {
            return Signed(Change(), m_first.m_nDecimals);
        }
        return (Change() > 0          ? "+"
                       : Change() < 0 ? "-"
                                      : "")
            + MinutesAndSeconds(std::abs(Change()));
    }
    /// As far as the report shows it.
    bool IsSame() const { return ChangeText().find_first_not_of("0.:") == std::string::npos; }
};

CPair PairAt(CFitnessCase const& of, std::size_t place)
{
    return {of.m_records.front().m_items[place], of.m_records.back().m_items[place]};
}

std::size_t CountItems(CFitnessCase const& of)
{
    return of.m_records.front().m_items.size();
}

std::string CellOf(CFitnessItem const& item)
{
    return !item.m_bUsable ? "not usable" : item.IsMeasured() ? item.Text() : "-";
}

void AddRow(CReportTable& table, std::string const& name, CPair const& pair,
    CReportTable::Row kind = CReportTable::Row::plain)
{
    bool const isBoth = pair.IsBoth();
    table.AddRow(
        {name, CellOf(pair.m_first), CellOf(pair.m_second), isBoth ? pair.ChangeText() : "-",
            isBoth ? Signed(pair.Percent(), 1) + " %" : "-"},
        kind);
}

/// All lifts that were made both times, as if they were one.
void AddSum(CReportTable& table, CFitnessCase const& of)
{
    auto const lifts = LiftsByChange(of);
    if (lifts.size() < 2) {
        return;
    }
    auto first = PairAt(of, lifts.front()).m_first;
    auto second = first;
    first.m_dValue = second.m_dValue = 0.0;
    for (auto const place : lifts) {
        first.m_dValue += PairAt(of, place).m_first.m_dValue;
        second.m_dValue += PairAt(of, place).m_second.m_dValue;
    }
    AddRow(table, "All that were lifted both times, lb", {first, second}, CReportTable::Row::sum);
}

/// Names inside a sentence; of many lifts only how many.
class CNames
{
public:
    void Add(CPair const& pair, bool withValues)
    {
        auto name = pair.m_first.m_strTitle;
        if (!pair.IsLift() && name.front() >= 'A' && name.front() <= 'Z') {
            name.front() = static_cast<char>(name.front() - 'A' + 'a');
        }
        auto& names = pair.IsLift() ? m_lifts : m_names;
        names.push_back(name
            + (withValues ? " (" + pair.m_first.Text() + " to " + pair.m_second.WithUnit() + ")"
                          : ""));
    }
    void Add(std::string name) { m_names.push_back(std::move(name)); }
    /// Nothing when there are none.
    void Tell(CReport& report, std::string const& before) const
    {
        constexpr std::size_t kFewLifts = 4;
        auto all = m_names;
        if (m_lifts.size() > kFewLifts) {
            all.push_back(std::to_string(m_lifts.size()) + " of the progressive lifts");
        } else {
            all.insert(all.end(), m_lifts.begin(), m_lifts.end());
        }
        if (!all.empty()) {
            report.Body(before + InSentence(all) + ".");
        }
    }
    bool IsEmpty() const { return m_names.empty() && m_lifts.empty(); }

private:
    std::vector<std::string> m_names;
    std::vector<std::string> m_lifts;
};

/// By its class, when both readings have one.
bool TellPressure(CNormBlocks const& norms, std::vector<CNormBlocks::CDay> const& days,
    CNames& better, CNames& worse, CNames& same)
{
    auto const first = norms.PressureClass(days.front());
    auto const second = norms.PressureClass(days.back());
    if (!first || !second) {
        return false;
    }
    auto const& bands = NormOf(Measure::systolic).m_lstBands;
    auto const& name = bands[*second].m_strName;
    std::string const what = "class of the blood pressure (";
    if (*first == *second) {
        same.Add(what + name + ")");
    } else {
        (*second < *first ? better : worse)
            .Add(what + bands[*first].m_strName + " to " + name + ")");
    }
    return true;
}

/// Above 0 when the second is better, below when it is worse, 0 when neither can be said.
double GainOf(CNormBlocks const& norms, CFitnessCase const& of, CPair const& pair)
{
    switch (pair.m_first.m_better) {
    case Better::higher:
        return pair.Change();
    case Better::lower:
        return -pair.Change();
    case Better::neither:
        break;
    }
    auto const& records = of.m_records;
    if (pair.m_first.m_norm == Measure::percentFat
        && records.front().m_strMethod != records.back().m_strMethod) {
        return 0.0; // Methods differ by more than members change.
    }
    auto const days = of.Days();
    auto const first = norms.OutsideAim(days.front(), pair.m_first);
    auto const second = norms.OutsideAim(days.back(), pair.m_second);
    return first && second ? *first - *second : 0.0;
}

} // namespace

std::vector<std::size_t> LiftsByChange(CFitnessCase const& of)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < CountItems(of); ++i) {
        auto const pair = PairAt(of, i);
        if (pair.IsLift() && pair.IsBoth() && !pair.m_first.m_strTitle.empty()) {
            places.push_back(i);
        }
    }
    std::ranges::stable_sort(places, std::ranges::greater(),
        [&](std::size_t place) { return std::abs(PairAt(of, place).Percent()); });
    return places;
}

void ShowComparison(CReport& report, CFitnessCase const& of)
{
    report.Heading("Comparison");
    auto const letters = static_cast<int>(of.m_days.front().size()) + 2;
    CReportTable table({{"Measure", 46}, {of.m_days.front(), letters, true},
        {of.m_days.back(), letters, true}, {"Change", 10, true}, {"In percent", 11, true}});
    table.m_strIfEmpty = "Nothing was measured either time.";
    std::string section;
    CNames never;
    for (std::size_t i = 0; i < CountItems(of); ++i) {
        auto const pair = PairAt(of, i);
        auto const& [first, second] = pair;
        if (first.m_strTitle.empty()) {
            continue;
        }
        if (CellOf(first) == "-" && CellOf(second) == "-") {
            if (IsExpected(of, first)) {
                never.Add(pair, false);
            }
            continue;
        }
        if (first.m_section != section) {
            section = first.m_section;
            table.AddGroup(section);
        }
        AddRow(table,
            first.m_strTitle + (*first.m_unit == '\0' ? "" : std::string(", ") + first.m_unit),
            pair);
    }
    AddSum(table, of);
    report.m_lstBlocks.emplace_back(std::move(table));
    never.Tell(report, "Not measured either time: ");
}

void ShowInWords(CReport& report, CFitnessCase const& of, CNormBlocks const& norms)
{
    report.Heading("In Words");
    CNames better;
    CNames worse;
    CNames same;
    CNames neither;
    auto const days = of.Days();
    bool const isPressed = TellPressure(norms, days, better, worse, same);
    for (std::size_t i = 0; i < CountItems(of); ++i) {
        auto const pair = PairAt(of, i);
        auto const& item = pair.m_first;
        bool const isPressure
            = item.m_norm == Measure::systolic || item.m_norm == Measure::diastolic;
        if (!pair.IsBoth() || item.m_strTitle.empty() || (isPressure && isPressed)) {
            continue;
        }
        auto const gain = isPressure ? 0.0 : GainOf(norms, of, pair);
        if (pair.IsSame()) {
            same.Add(pair, false);
        } else {
            (gain > 0 ? better : gain < 0 ? worse : neither).Add(pair, true);
        }
    }
    better.Tell(report, "Better than the first time: ");
    worse.Tell(report, "Not as good as the first time: ");
    same.Tell(report, "The same as the first time: ");
    neither.Tell(report, "Changed, which by itself is neither better nor worse: ");
    if (better.IsEmpty() && worse.IsEmpty() && same.IsEmpty() && neither.IsEmpty()) {
        report.Body("Nothing was measured both times, so nothing can be compared.");
    }
}
