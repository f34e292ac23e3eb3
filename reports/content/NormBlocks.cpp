#include "reports/content/NormBlocks.h"

#include <algorithm>
#include <charconv>

namespace
{

CNorm const& Systolic()
{
    return NormOf(Measure::systolic);
}

/// The bands of the diastolic norm have the names of the systolic ones; one is left out.
std::size_t SystolicPlace(std::string const& name)
{
    auto const& bands = Systolic().m_lstBands;
    return static_cast<std::size_t>(
        std::ranges::find(bands, name, &CNorm::CBand::m_strName) - bands.begin());
}

/// With as many decimals as it takes to stand on its own side of a border.
int DecimalsOf(CFitnessItem const& item, CNorm::CRow const& row)
{
    constexpr int kMost = 6;
    int decimals = item.m_nDecimals;
    auto const shown = [&] {
        auto const text = Fixed(item.m_dValue, decimals);
        double value = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    };
    while (decimals < kMost && row.BandOf(shown()) != row.BandOf(item.m_dValue)) {
        ++decimals;
    }
    return decimals;
}

std::string GroupOf(CNorm::CRow const& row)
{
    constexpr int kOpenEnd = 120;
    auto const who = row.m_bMen && row.m_bWomen ? "people" : row.m_bMen ? "men" : "women";
    return "Norm for " + std::string(who) + " from " + std::to_string(row.m_nFromAge)
        + (row.m_nToAge == kOpenEnd ? " years on"
                                    : " to " + std::to_string(row.m_nToAge) + " years");
}

/// "135/79: ", which goes before what is said of it; empty when one of them is missing.
std::string Reading(CFitnessItem const& systolic, CFitnessItem const& diastolic)
{
    return systolic.IsMeasured() && diastolic.IsMeasured()
        ? systolic.Text() + "/" + diastolic.Text() + ": "
        : "";
}

std::string OnDay(CNormBlocks::CDay const& day)
{
    return day.m_strDay.empty() ? "" : " on " + day.m_strDay;
}

bool IsMeasured(std::vector<CNormBlocks::CDay> const& days, Measure measure)
{
    return std::ranges::any_of(
        days, [&](auto const& day) { return ItemFor(day.m_items, measure).IsMeasured(); });
}

} // namespace

void CNormBlocks::ShowSection(std::string heading, std::vector<CDay> const& days,
    std::initializer_list<Measure> const& measures)
{
    auto const isAny = [&](Measure measure) { return IsMeasured(days, measure); };
    if (!std::ranges::any_of(measures, isAny)) {
        return;
    }
    m_report.Heading(std::move(heading));
    for (auto const measure : measures) {
        if (measure == Measure::systolic) {
            ShowPressure(days);
        } else if (measure != Measure::diastolic) {
            Show(days, measure);
        }
    }
}

CNorm::CRow const* CNormBlocks::RowFor(CNorm const& norm, CDay const& day) const
{
    auto const age = m_member.AgeOn(day.m_dtDay);
    return age && m_member.m_isMale ? norm.Find(*m_member.m_isMale, *age) : nullptr;
}

std::string CNormBlocks::WhyNoNorm(CNorm const& norm, CDay const& day) const
{
    if (!norm.m_strNone.empty()) {
        return norm.m_strNone;
    }
    auto const age = m_member.AgeOn(day.m_dtDay);
    if (!m_member.m_isMale || !age) {
        return "Without the member's sex and age it cannot be compared with a norm.";
    }
    return "There is no norm for this age (" + std::to_string(*age) + ").";
}

void CNormBlocks::Show(std::vector<CDay> const& days, Measure measure)
{
    auto const& norm = NormOf(measure);
    std::vector<CResult> results;
    for (auto const& day : days) {
        if (auto const& item = ItemFor(day.m_items, measure); item.IsMeasured()) {
            results.push_back({&item, &day, RowFor(norm, day)});
        }
    }
    std::string remark;
    if (!results.empty() && results.back().m_pRow != nullptr) {
        auto const& last = results.back();
        remark = norm.m_lstBands[last.m_pRow->BandOf(last.m_pItem->m_dValue)].m_strRemark;
    }
    ShowResults(norm, results, remark);
    if (std::ranges::any_of(results, [](CResult const& one) { return one.m_pRow != nullptr; })) {
        m_used.insert(measure);
    }
}

/// Together when all are of the same row of the norm, or lack one for the same reason.
void CNormBlocks::ShowResults(
    CNorm const& norm, std::vector<CResult> const& results, std::string const& remark)
{
    auto const isAlike = [&](CResult const& one, CResult const& other) {
        return one.m_pRow == other.m_pRow
            && (one.m_pRow != nullptr
                || WhyNoNorm(norm, *one.m_pDay) == WhyNoNorm(norm, *other.m_pDay));
    };
    if (results.size() == 2 && !isAlike(results[0], results[1])) {
        ShowAlike(norm, {results[0]}, "");
        ShowAlike(norm, {results[1]}, remark);
    } else if (!results.empty()) {
        ShowAlike(norm, results, remark);
    }
}

void CNormBlocks::ShowAlike(
    CNorm const& norm, std::vector<CResult> const& results, std::string const& remark)
{
    if (results.front().m_pRow != nullptr) {
        ShowBar(norm, results, remark);
        return;
    }
    std::vector<std::string> values;
    values.reserve(results.size());
    for (auto const& [item, day, none] : results) {
        values.push_back(item->WithUnit() + OnDay(*day));
    }
    m_report.Body(results.front().m_pItem->m_strTitle + ": " + InSentence(values) + ". "
        + WhyNoNorm(norm, *results.front().m_pDay) + (remark.empty() ? "" : " " + remark));
}

void CNormBlocks::ShowBar(
    CNorm const& norm, std::vector<CResult> const& results, std::string const& remark)
{
    auto const& row = *results.front().m_pRow;
    CNormBar bar;
    bar.m_strTitle = results.front().m_pItem->m_strTitle;
    for (auto const& [item, day, unused] : results) {
        int const decimals = DecimalsOf(*item, row);
        auto const on = OnDay(*day);
        bar.m_strValue += (bar.m_strValue.empty() ? "" : "; ") + item->WithUnit(decimals)
            + (item->m_strNote.empty() ? "" : " (" + item->m_strNote + ")") + on + ": "
            + norm.m_lstBands[row.BandOf(item->m_dValue)].m_strName;
        bar.m_lstMarks.push_back({item->m_dValue, item->Text(decimals) + on});
    }
    for (std::size_t i = 0; i < norm.m_lstBands.size(); ++i) {
        bar.m_lstBands.push_back(
            {norm.m_lstBands[i].m_strName, i == 0 ? norm.m_dScaleFrom : row.m_lstBorders[i - 1]});
    }
    bar.m_dEnd = norm.m_dScaleTo;
    bar.m_strRemark = remark;
    bar.m_strSource = GroupOf(row) + ": " + norm.ShortSource();
    m_report.m_lstBlocks.emplace_back(std::move(bar));
}

std::optional<std::size_t> CNormBlocks::PressureClass(CDay const& day) const
{
    auto const& systolic = ItemFor(day.m_items, Measure::systolic);
    auto const& diastolic = ItemFor(day.m_items, Measure::diastolic);
    auto const& lower = NormOf(Measure::diastolic);
    auto const* const row = RowFor(Systolic(), day);
    auto const* const lowerRow = RowFor(lower, day);
    if (!systolic.IsMeasured() || !diastolic.IsMeasured() || row == nullptr
        || lowerRow == nullptr) {
        return std::nullopt;
    }
    return std::max(row->BandOf(systolic.m_dValue),
        SystolicPlace(lower.m_lstBands[lowerRow->BandOf(diastolic.m_dValue)].m_strName));
}

std::optional<double> CNormBlocks::OutsideAim(CDay const& day, CFitnessItem const& item) const
{
    auto const* const norm = item.m_norm ? &NormOf(*item.m_norm) : nullptr;
    auto const* const row = norm == nullptr ? nullptr : RowFor(*norm, day);
    return row == nullptr || !item.IsMeasured() ? std::nullopt
                                                : norm->OutsideAim(*row, item.m_dValue);
}

void CNormBlocks::ShowPressure(std::vector<CDay> const& days)
{
    // What is urgent is said whatever the age, and of one pressure alone as well.
    auto const isVeryHigh = [](CFitnessItem const& item) {
        return item.m_dValue >= NormOf(*item.m_norm).m_lstRows.front().m_lstBorders.back();
    };
    std::string remark;
    bool isDiastolic = false; ///< that the remark is about
    for (auto const& day : days) {
        auto const& systolic = ItemFor(day.m_items, Measure::systolic);
        auto const& diastolic = ItemFor(day.m_items, Measure::diastolic);
        auto const highest = PressureClass(day);
        if (isVeryHigh(systolic) || isVeryHigh(diastolic)) {
            remark = Reading(systolic, diastolic) + Systolic().m_lstBands.back().m_strRemark;
        } else if (highest) {
            remark = Reading(systolic, diastolic) + Systolic().m_lstBands[*highest].m_strRemark;
        } else if (systolic.IsMeasured() != diastolic.IsMeasured()) {
            remark = "Only one of the two pressures was measured; the guideline goes by both.";
        } else if (systolic.IsMeasured()) {
            remark.clear();
        }
        isDiastolic = diastolic.IsMeasured();
    }
    for (auto const measure : {Measure::systolic, Measure::diastolic}) {
        auto const& norm = NormOf(measure);
        std::vector<CResult> results;
        for (auto const& day : days) {
            if (auto const& item = ItemFor(day.m_items, measure); item.IsMeasured()) {
                results.push_back({&item, &day, RowFor(norm, day)});
            }
        }
        // Below both of them.
        ShowResults(norm, results, (measure == Measure::diastolic) == isDiastolic ? remark : "");
        if (!results.empty() && results.back().m_pRow != nullptr) {
            m_used.insert(Measure::systolic);
        }
    }
}

void CNormBlocks::ShowSources()
{
    for (auto const measure : m_used) {
        m_report.Note(NormOf(measure).FullSource());
    }
    if (!m_used.empty()) {
        m_report.Note("A norm compares the member with other people; it is no diagnosis.");
    }
}
