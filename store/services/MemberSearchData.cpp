#include "store/services/MemberSearchData.h"

#include <algorithm>

namespace
{

/// Puts conditions together, each with its values.
class CConditions
{
public:
    explicit CConditions(std::vector<DbValue>& values)
        : m_values(values)
    {
    }

    template <typename... Values>
    void Add(std::string const& condition, Values const&... values)
    {
        m_strText += (m_strText.empty() ? "WHERE " : " AND ") + condition;
        (m_values.emplace_back(values), ...);
    }

    /// The column begins with the text, or equals it. The part of the text before its first letter
    /// beyond ASCII narrows the rows by an index; the function compares the whole. To equal a text
    /// that is ASCII alone is something that the index itself can tell.
    void AddText(std::string const& column, std::string const& text, bool whole)
    {
        auto const plain = std::find_if(
            text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
        if (whole && plain == text.end()) {
            Add(column + " = ? COLLATE NOCASE", text);
            return;
        }
        std::string const prefix(text.begin(), plain);
        if (!prefix.empty()) {
            // Every text that begins with the prefix lies between it and itself with the largest
            // character behind.
            Add(column + " COLLATE NOCASE >= ?", prefix);
            Add(column + " COLLATE NOCASE < ?", prefix + "\xF4\x8F\xBF\xBF");
        }
        Add((whole ? "equals_folded(" : "begins_folded(") + column + ", ?)", text);
    }

    std::string const& Text() const { return m_strText; }

private:
    std::vector<DbValue>& m_values;
    std::string m_strText;
};

void AddClass(CConditions& conditions, std::array<std::string, 3> const& texts)
{
    constexpr std::array kColumns = {"category", "course", "section"};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i == 0 || !texts[i].empty()) {
            conditions.AddText(kColumns[i], texts[i], true);
        }
    }
}

/// The first day on which nobody is of that age yet: birthdays before it are at least that old.
CEFOleDateTime FirstYounger(int age)
{
    auto const today = CEFOleDateTime::GetCurrentTime();
    return CEFOleDateTime::DayAfter(today.Year() - age, today.Month(), today.Day());
}

std::string const kNameOrder = " ORDER BY last_name COLLATE NOCASE, first_name COLLATE NOCASE, "
                               "middle_initial COLLATE NOCASE, id";

} // namespace

CMemberSearchData::Criterion& CMemberSearchData::Set(search criterion)
{
    return m_criteria[criterion] = {};
}

void CMemberSearchData::SetSearchCriteria(search criterion, std::int32_t number)
{
    Set(criterion).numbers = {number, number};
}

void CMemberSearchData::SetSearchCriteria(search criterion, std::uint8_t value)
{
    Set(criterion).numbers = {value, value};
}

void CMemberSearchData::SetSearchCriteria(search criterion, int from, int to)
{
    Set(criterion).numbers = {from, to};
}

void CMemberSearchData::SetSearchCriteria(
    search criterion, CEFOleDateTime const& from, CEFOleDateTime const& to)
{
    auto& dates = Set(criterion).dates;
    dates = {from, to};
    dates[0].Midnight();
    dates[1].PreMidnight();
}

void CMemberSearchData::SetSearchCriteria(
    search criterion, char const* first, char const* second, char const* third)
{
    auto const text = [](char const* given) { return std::string(given == nullptr ? "" : given); };
    Set(criterion).texts = {text(first), text(second), text(third)};
}

std::string CMemberSearchData::Clause(Over over, std::vector<DbValue>& values) const
{
    CConditions conditions(values);
    std::vector<DbValue> classValues;
    CConditions classes(classValues);
    for (auto const& [criterion, given] : m_criteria) {
        auto const number = given.numbers[0];
        auto const begins = [&, &text = given.texts[0]](
                                char const* column) { conditions.AddText(column, text, false); };
        auto const span = [&, &dates = given.dates](std::string const& column) {
            conditions.Add(column + " BETWEEN ? AND ?", dates[0].Seconds(), dates[1].Seconds());
        };
        auto const mask = [&](std::string const& column) {
            auto const bits = static_cast<std::int64_t>(static_cast<std::uint32_t>(number));
            conditions.Add("(" + column + " & ?) = ?", bits, bits);
        };
        auto const flag = [&](std::string const& column) {
            conditions.Add("(" + column + " <> 0) = ?", std::int64_t(number != 0));
        };
        switch (criterion) {
        case sMedicalHistory:
            mask("medical_history");
            break;
        case sGoals:
            mask("goals");
            break;
        case sSex:
            flag("sex");
            break;
        case sAge:
            conditions.Add("birthday < ?", FirstYounger(static_cast<int>(number)).Seconds());
            conditions.Add(
                "birthday >= ?", FirstYounger(static_cast<int>(given.numbers[1]) + 1).Seconds());
            break;
        case sEmployee:
            flag("employee");
            break;
        case sRelease:
            flag("release");
            break;
        case sPhysician:
            begins("physician");
            break;
        case sEmail:
            begins("email");
            break;
        case sPhone:
            begins("phone");
            break;
        case sZip:
            begins("zip");
            break;
        case sState:
            conditions.AddText("state", given.texts[0], true);
            break;
        case sCity:
            begins("city");
            break;
        case sAddress:
            begins("address");
            break;
        case sStatus:
            flag("status");
            break;
        case sLastName:
            begins("last_name");
            break;
        case sFirstName:
            begins("first_name");
            break;
        case sWorkoutNumber:
            conditions.Add("workout_number = ?", number);
            break;
        case sIncentive:
            flag("incentive");
            break;
        case sPeriod:
            conditions.Add("period = ?", number);
            break;
        case sExpireDate:
            span("expire_date");
            break;
        case sEnrollDate:
            span("enroll_date");
            break;
        case sMemberID:
            conditions.Add("member_id = ?", number);
            break;
        case sClass:
            AddClass(classes, given.texts);
            break;
        }
    }
    if (over == Over::classes) {
        // Not by a look at each class for an earlier one of its member: of two indexes that would
        // serve it, the engine takes the one that leads to all members of the class.
        conditions.Add(
            "id IN (SELECT min(id) FROM classes " + classes.Text() + " GROUP BY member_id)");
    } else if (Has(sClass)) {
        conditions.Add("member_id IN (SELECT member_id FROM classes " + classes.Text() + ")");
    }
    values.insert(values.end(), classValues.begin(), classValues.end());
    return conditions.Text() + kNameOrder;
}
