#include "reports/content/FitnessFacts.h"

#include <algorithm>

std::string ValuesOf(
    CFitnessCase const& of, std::function<std::string(CFitnessRecord const&)> const& value)
{
    std::vector<std::string> values;
    bool isAny = false;
    for (auto const& record : of.m_records) {
        values.push_back(value(record));
        isAny = isAny || !values.back().empty();
        if (values.back().empty()) {
            values.back() = "not known";
        }
    }
    return isAny ? InSentence(values) : "";
}

std::string ValueOf(CFitnessItem const& item)
{
    if (!item.IsMeasured()) {
        return "";
    }
    return item.WithUnit() + (item.m_strNote.empty() ? "" : " (" + item.m_strNote + ")");
}

void AddValues(
    CReportFacts& facts, CFitnessRecord const& record, std::initializer_list<char const*> titles)
{
    for (auto const* const title : titles) {
        facts.m_lstFacts.emplace_back(title, ValueOf(record.m_items[PlaceOf(record, title)]));
    }
}

CReportFacts FitnessFacts(CFitnessCase const& of)
{
    auto const& member = of.m_member;
    auto const age = [&](CFitnessRecord const& record) {
        auto const years = member.AgeOn(record.m_dtWhen);
        return years ? std::to_string(*years) : std::string();
    };
    bool const isOne = of.m_records.size() == 1;
    CReportFacts facts;
    facts.m_lstFacts = {{"Sex", member.SexText()},
        {isOne ? "Age on that day" : "Age on those days", ValuesOf(of, age)},
        {"Activity level",
            ValuesOf(of, [](CFitnessRecord const& record) { return record.m_strActivity; })}};
    return facts;
}

void ShowRemarks(CReport& report, CFitnessCase const& of)
{
    auto const& records = of.m_records;
    auto const isUnknown = [&](CFitnessRecord const& record) {
        return !of.m_member.m_isMale || !of.m_member.AgeOn(record.m_dtWhen);
    };
    if (std::ranges::any_of(records, isUnknown)) {
        report.Note("The member's sex or age is not known, so that nothing can be compared with "
                    "the norms for it.");
    }
    if (records.size() == 2 && records[0].m_dtWhen == records[1].m_dtWhen) {
        report.Note("Both dates are of the same record: it is compared with itself.");
    }
    if (std::ranges::any_of(records, &CFitnessRecord::m_bOneOfMany)) {
        report.Note("There are several records of the same second; this is the first of them.");
    }
}

bool IsExpected(CFitnessCase const& of, CFitnessItem const& item)
{
    auto const isOf = [&](auto method) {
        return item.m_section == std::string_view(CDAOBodyComp::GetMethodStr(method));
    };
    bool const isOfSome = std::ranges::any_of(kMeasuringMethods, isOf);
    bool const isOfTheirs = std::ranges::any_of(of.m_records,
        [&](CFitnessRecord const& record) { return item.m_section == record.m_strMethod; });
    return !item.m_bDerived && !item.IsLift() && (!isOfSome || isOfTheirs);
}

void ShowMissing(CReport& report, CFitnessCase const& of)
{
    std::vector<std::string> missing;
    std::vector<std::string> unusable;
    for (auto const& item : of.m_records.front().m_items) {
        if (item.m_strTitle.empty() || item.IsMeasured()) {
            continue;
        }
        if (!item.m_bUsable) {
            unusable.push_back(item.m_strTitle);
        } else if (IsExpected(of, item)) {
            missing.push_back(item.m_strTitle);
        }
    }
    if (!missing.empty()) {
        report.Body("Not measured: " + InSentence(missing) + ".");
    }
    if (!unusable.empty()) {
        report.Body("Left out, since the record holds a number that cannot be: "
            + InSentence(unusable) + ".");
    }
}
