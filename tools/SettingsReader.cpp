#include "tools/SettingsReader.h"

#include "store/text/Text.h"
#include "tools/Printable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace
{

std::string Quoted(std::string_view key)
{
    return "\"" + Printable(key) + "\"";
}

/// Without the zeros that std::to_string adds.
std::string Number(double value)
{
    std::array<char, 32> digits = {};
    return {digits.data(), std::to_chars(digits.begin(), digits.end(), value).ptr};
}

} // namespace

void CFirstProblem::Add(toml::source_position const& where, std::string const& what)
{
    if (m_strText.empty()) {
        m_strText = m_strOrigin + ":" + std::to_string(where.line) + ":"
            + std::to_string(where.column) + ": " + what;
    }
}

std::string CSettingsReader::Place() const
{
    return m_strPath.empty() ? "" : " in [" + m_strPath + "]";
}

std::string CSettingsReader::PathOf(std::string_view key) const
{
    return (m_strPath.empty() ? "" : m_strPath + ".") + std::string(key);
}

toml::node const* CSettingsReader::Node(std::string_view key, bool needed)
{
    m_known.emplace(key);
    auto const* const node = m_table.get(key);
    if (node == nullptr && needed) {
        m_problem.Add(m_table.source().begin, Quoted(key) + " is missing" + Place());
    }
    return node;
}

void CSettingsReader::Refuse(std::string_view key, std::string const& what)
{
    auto const* const node = m_table.get(key);
    m_problem.Add(
        (node == nullptr ? m_table.source() : node->source()).begin, Quoted(key) + " " + what);
}

bool CSettingsReader::IsText(std::string_view text, std::size_t most, bool needed,
    toml::source_position where, std::string_view key)
{
    std::string what;
    if (Printable(text) != text) {
        what = " must be one line without control characters";
    } else if (text.starts_with(' ') || text.ends_with(' ')) {
        what = " must not begin or end with a blank";
    } else if (text.empty() && needed) {
        what = " must not be empty";
    } else if (CountCharacters(text) > most) {
        what = " must have at most " + std::to_string(most) + " letters";
    } else {
        return true;
    }
    m_problem.Add(where, Quoted(key) + what);
    return false;
}

std::string CSettingsReader::Text(std::string_view key, std::size_t most, bool needed)
{
    auto const* const node = Node(key, needed);
    if (node == nullptr) {
        return {};
    }
    auto const* const text = node->as_string();
    if (text == nullptr) {
        Refuse(key, "must be a text in quotes");
        return {};
    }
    return IsText(text->get(), most, needed, node->source().begin, key) ? text->get() : "";
}

std::vector<std::string> CSettingsReader::Texts(std::string_view key, std::size_t most)
{
    std::vector<std::string> texts;
    auto const* const node = Node(key, false);
    if (node == nullptr) {
        return texts;
    }
    auto const* const list = node->as_array();
    if (list == nullptr) {
        Refuse(key, "must be a list of texts in brackets");
        return texts;
    }
    for (auto const& element : *list) {
        auto const* const text = element.as_string();
        if (text == nullptr) {
            m_problem.Add(element.source().begin, Quoted(key) + " must hold texts in quotes");
        } else if (!IsText(text->get(), most, true, element.source().begin, key)) {
            continue;
        } else if (std::find(texts.begin(), texts.end(), text->get()) != texts.end()) {
            m_problem.Add(element.source().begin, Quoted(key) + " names this one twice");
        } else {
            texts.push_back(text->get());
        }
    }
    return texts;
}

std::int64_t CSettingsReader::Integer(
    std::string_view key, std::int64_t least, std::int64_t most, bool needed)
{
    auto const* const node = Node(key, needed);
    if (node == nullptr) {
        return 0;
    }
    auto const* const number = node->as_integer();
    if (number == nullptr || number->get() < least || number->get() > most) {
        Refuse(key,
            "must be a whole number from " + std::to_string(least) + " to " + std::to_string(most));
        return 0;
    }
    return number->get();
}

double CSettingsReader::Real(std::string_view key, double least, double most)
{
    auto const* const node = Node(key, true);
    if (node == nullptr) {
        return 0.0;
    }
    // A number without a point is as good; "nan" compares with nothing.
    auto const number = node->is_number() ? node->value<double>().value_or(NAN) : NAN;
    if (!(number >= least && number <= most)) {
        Refuse(key, "must be a number from " + Number(least) + " to " + Number(most));
        return 0.0;
    }
    return number;
}

bool CSettingsReader::Flag(std::string_view key)
{
    auto const* const node = Node(key, false);
    if (node == nullptr) {
        return false;
    }
    if (!node->is_boolean()) {
        Refuse(key, "must be true or false");
        return false;
    }
    return node->as_boolean()->get();
}

std::uint32_t CSettingsReader::Color(std::string_view key)
{
    auto const* const node = Node(key, true);
    if (node == nullptr) {
        return 0;
    }
    auto const text = node->value_exact<std::string>().value_or("");
    std::uint32_t color = 0;
    auto const* const end = text.data() + text.size();
    // A sign is no hexadecimal digit for an unsigned number, so all six must be digits.
    if (text.size() != 7 || text[0] != '#'
        || std::from_chars(text.data() + 1, end, color, 16).ptr != end) {
        Refuse(key, "must be a colour such as \"#1E90FF\": red, green and blue");
        return 0;
    }
    return (color & 0xFFU) << 16U | (color & 0xFF00U) | color >> 16U;
}

std::uint8_t CSettingsReader::Choice(std::string_view key, std::vector<std::string> const& choices)
{
    auto const* const node = Node(key, false);
    if (node == nullptr) {
        return 0;
    }
    auto const text = node->value_exact<std::string>().value_or("");
    auto const found = std::find(choices.begin(), choices.end(), text);
    if (found == choices.end()) {
        std::string list;
        for (auto const& choice : choices) {
            list += (list.empty() ? "\"" : ", \"") + choice + "\"";
        }
        Refuse(key, "must be one of " + list);
        return 0;
    }
    return static_cast<std::uint8_t>(found - choices.begin());
}

CSettingsReader CSettingsReader::Table(std::string_view key, bool needed)
{
    static toml::table const none;
    auto const* const node = Node(key, needed);
    auto const* const table = node == nullptr ? nullptr : node->as_table();
    if (node != nullptr && table == nullptr) {
        Refuse(key, "must be a table: [" + PathOf(key) + "]");
    }
    return {table == nullptr ? none : *table, PathOf(key), m_problem};
}

std::vector<CSettingsReader> CSettingsReader::Tables(
    std::string_view key, std::size_t least, std::size_t most)
{
    std::vector<CSettingsReader> readers;
    auto const name = "[[" + PathOf(key) + "]]";
    auto const* const node = Node(key, false);
    auto const* const list = node == nullptr ? nullptr : node->as_array();
    if (node != nullptr && list == nullptr) {
        Refuse(key, "must be a list of tables: " + name);
        return readers;
    }
    for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
        auto const* const table = list->get(i)->as_table();
        if (table == nullptr) {
            Refuse(key, "must be a list of tables: " + name);
        } else if (i == most) {
            m_problem.Add(table->source().begin,
                "there can be at most " + std::to_string(most) + " tables " + name);
        } else if (i < most) {
            readers.emplace_back(*table, PathOf(key), m_problem);
        }
    }
    if (readers.size() < least) {
        m_problem.Add(m_table.source().begin,
            "there must be at least " + std::to_string(least) + " table " + name);
    }
    return readers;
}

void CSettingsReader::End()
{
    for (auto const& [key, node] : m_table) {
        if (!m_known.contains(key.str())) {
            m_problem.Add(key.source().begin, "unknown key " + Quoted(key.str()) + Place());
        }
    }
}
