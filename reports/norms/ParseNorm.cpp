#include "reports/norms/Norm.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>
#include <toml++/toml.h>

namespace
{

/// Takes one table of a norm file apart and keeps the first thing that is wrong with it.
class CNormReader
{
public:
    CNormReader(toml::table const& table, std::string& problem)
        : m_table(table)
        , m_problem(problem)
    {
    }

    void Refuse(toml::source_position const& where, std::string const& what)
    {
        if (m_problem.empty()) {
            m_problem = "Line " + std::to_string(where.line) + ": " + what;
        }
    }
    void Refuse(std::string const& what) { Refuse(m_table.source().begin, what); }

    bool Has(std::string_view key) const { return m_table.contains(key); }

    toml::node const* Node(std::string_view key)
    {
        m_known.emplace(key);
        auto const* const node = m_table.get(key);
        if (node == nullptr) {
            Refuse("\"" + std::string(key) + "\" is missing");
        }
        return node;
    }

    /// A value of a type, without converting; what is wrong about it reads as that type's zero.
    template <typename T>
    T Value(std::string_view key)
    {
        auto const* const node = Node(key);
        auto const value = node == nullptr ? std::optional<T>() : node->value_exact<T>();
        if (node != nullptr && !value) {
            Refuse(node->source().begin, "\"" + std::string(key) + "\" is of the wrong kind");
        }
        return value.value_or(T());
    }

    std::string Text(std::string_view key)
    {
        auto text = Value<std::string>(key);
        if (text.empty()) {
            Refuse("\"" + std::string(key) + "\" is empty");
        }
        return text;
    }

    std::vector<double> Numbers(std::string_view key)
    {
        std::vector<double> numbers;
        auto const* const node = Node(key);
        auto const* const list = node == nullptr ? nullptr : node->as_array();
        if (list != nullptr) {
            for (auto const& element : *list) {
                numbers.push_back(element.value<double>().value_or(NAN));
            }
        }
        if (node != nullptr && (list == nullptr || !std::ranges::all_of(numbers, [](double number) {
                return std::isfinite(number);
            }))) {
            Refuse(node->source().begin, "\"" + std::string(key) + "\" must be a list of numbers");
        }
        return numbers;
    }

    CNormReader Table(std::string_view key)
    {
        static toml::table const none;
        auto const* const node = Node(key);
        auto const* const table = node == nullptr ? nullptr : node->as_table();
        if (node != nullptr && table == nullptr) {
            Refuse(node->source().begin, "\"" + std::string(key) + "\" must be a table");
        }
        return {table == nullptr ? none : *table, m_problem};
    }

    std::vector<CNormReader> Tables(std::string_view key)
    {
        std::vector<CNormReader> readers;
        auto const* const node = Node(key);
        auto const* const list = node == nullptr ? nullptr : node->as_array();
        std::size_t const size = list == nullptr ? 0 : list->size();
        for (std::size_t i = 0; i < size; ++i) {
            if (auto const* const table = list->get(i)->as_table()) {
                readers.emplace_back(*table, m_problem);
            }
        }
        if (node != nullptr && (readers.empty() || readers.size() < size)) {
            Refuse(node->source().begin, "there must be tables [[" + std::string(key) + "]]");
        }
        return readers;
    }

    /// What was not asked for is misspelt.
    void End()
    {
        for (auto const& [key, node] : m_table) {
            if (!m_known.contains(key.str())) {
                Refuse(key.source().begin, "unknown key \"" + std::string(key.str()) + "\"");
            }
        }
    }

private:
    toml::table const& m_table;
    std::string& m_problem;
    std::set<std::string, std::less<>> m_known;
};

template <std::size_t N>
std::size_t Choice(
    CNormReader& reader, std::string_view key, std::array<std::string_view, N> const& choices)
{
    auto const text = reader.Text(key);
    auto const found = std::ranges::find(choices, text);
    if (found == choices.end()) {
        reader.Refuse("\"" + std::string(key) + "\" is none of its choices");
        return 0;
    }
    return static_cast<std::size_t>(found - choices.begin());
}

void TakeSource(CNormReader reader, CNorm& norm)
{
    constexpr int kFirstYear = 1900;
    constexpr int kLastYear = 2100;
    norm.m_strAuthors = reader.Text("authors");
    norm.m_strSourceTitle = reader.Text("title");
    norm.m_strPublisher = reader.Text("publisher");
    norm.m_strPopulation = reader.Text("note");
    auto const year = reader.Value<std::int64_t>("year");
    if (year < kFirstYear || year > kLastYear) {
        reader.Refuse("\"year\" is none");
    }
    norm.m_nYear = static_cast<int>(std::clamp<std::int64_t>(year, 0, kLastYear));
    reader.End();
}

void TakeBand(CNormReader& reader, CNorm& norm)
{
    norm.m_lstBands.push_back({reader.Text("name"), reader.Text("remark")});
    reader.End();
}

bool IsWhole(double number)
{
    return number == std::floor(number);
}

void TakeRow(CNormReader& reader, CNorm& norm)
{
    constexpr double kOldest = 120;
    CNorm::CRow row;
    auto const sex = Choice<3>(reader, "sex", {std::string_view("both"), "men", "women"});
    row.m_bMen = sex != 2;
    row.m_bWomen = sex != 1;
    auto const ages = reader.Numbers("ages");
    if (ages.size() != 2 || !std::ranges::all_of(ages, IsWhole) || ages[0] < 0 || ages[1] < ages[0]
        || ages[1] > kOldest) {
        reader.Refuse("\"ages\" must be the first and the last year of age");
    } else {
        row.m_nFromAge = static_cast<int>(ages[0]);
        row.m_nToAge = static_cast<int>(ages[1]);
    }
    row.m_lstBorders = reader.Numbers("borders");
    auto const& borders = row.m_lstBorders;
    if (borders.size() + 1 != norm.m_lstBands.size()) {
        reader.Refuse("\"borders\" must lie between the bands, one less than there are");
    }
    if (std::ranges::adjacent_find(borders, std::greater_equal()) != borders.end()) {
        reader.Refuse("\"borders\" must rise");
    }
    if (!borders.empty()
        && (borders.front() <= norm.m_dScaleFrom || borders.back() >= norm.m_dScaleTo)) {
        reader.Refuse("\"borders\" must lie within the scale");
    }
    if (norm.m_bWhole && !std::ranges::all_of(borders, IsWhole)) {
        reader.Refuse("\"borders\" must be whole numbers");
    }
    reader.End();
    norm.m_lstRows.push_back(std::move(row));
}

/// The ages of each sex follow each other in the order of the file: none twice, none left out.
bool AgesFollow(CNorm const& norm, bool CNorm::CRow::*sex)
{
    int next = -1;
    for (auto const& row : norm.m_lstRows) {
        if (row.*sex) {
            if (next != -1 && row.m_nFromAge != next) {
                return false;
            }
            next = row.m_nToAge + 1;
        }
    }
    return next != -1;
}

void TakeTable(CNormReader& reader, CNorm& norm)
{
    if (auto const scale = reader.Numbers("scale"); scale.size() == 2 && scale[0] < scale[1]) {
        norm.m_dScaleFrom = scale[0];
        norm.m_dScaleTo = scale[1];
    } else {
        reader.Refuse("\"scale\" must be its two ends");
    }
    TakeSource(reader.Table("source"), norm);
    for (auto& band : reader.Tables("band")) {
        TakeBand(band, norm);
    }
    if (reader.Has("aim")) {
        auto const aim
            = std::ranges::find(norm.m_lstBands, reader.Text("aim"), &CNorm::CBand::m_strName);
        if (aim == norm.m_lstBands.end() || norm.m_better != CNorm::Better::neither) {
            reader.Refuse("\"aim\" must be a band, and only where neither side is better");
        }
        norm.m_nAim = static_cast<std::size_t>(aim - norm.m_lstBands.begin());
    }
    for (auto& row : reader.Tables("row")) {
        TakeRow(row, norm);
    }
    if (!AgesFollow(norm, &CNorm::CRow::m_bMen) || !AgesFollow(norm, &CNorm::CRow::m_bWomen)) {
        reader.Refuse("the ages of a sex overlap, leave a gap or are missing");
    }
}

void TakeAll(CNormReader reader, CNorm& norm)
{
    norm.m_strTest = reader.Text("test");
    norm.m_strTitle = reader.Text("title");
    norm.m_strUnit = reader.Value<std::string>("unit");
    norm.m_better = static_cast<CNorm::Better>(
        Choice<3>(reader, "better", {std::string_view("neither"), "higher", "lower"}));
    norm.m_bWhole = reader.Value<bool>("whole");
    if (reader.Has("no_norm")) {
        norm.m_strNone = reader.Text("no_norm");
    } else {
        TakeTable(reader, norm);
    }
    reader.End();
}

} // namespace

CDbStatus ParseNorm(std::string_view text, CNorm& norm)
{
    norm = {};
    std::string problem;
    try {
        auto const table = toml::parse(text);
        TakeAll(CNormReader(table, problem), norm);
    } catch (toml::parse_error const& error) {
        problem = "Line " + std::to_string(error.source().begin.line) + ": "
            + std::string(error.description());
    }
    return problem.empty() ? CDbStatus() : CDbStatus(DbError::failed, problem);
}
