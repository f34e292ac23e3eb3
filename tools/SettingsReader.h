#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <toml++/toml.h>
#include <vector>

/// Keeps the first thing that is wrong with a settings text; what follows from it is not told.
class CFirstProblem
{
public:
    explicit CFirstProblem(std::string origin)
        : m_strOrigin(std::move(origin))
    {
    }

    void Add(toml::source_position const& where, std::string const& what);
    /// "ORIGIN:LINE:COLUMN: what", empty when all is well.
    std::string const& Text() const { return m_strText; }

private:
    std::string m_strOrigin;
    std::string m_strText;
};

/// Takes the values out of one table of a settings text and checks each. A wrong or missing value
/// goes to the problem and reads as zero or empty. Every key must be asked for before End(), which
/// refuses the others: they are misspelt.
class CSettingsReader
{
public:
    CSettingsReader(toml::table const& table, std::string path, CFirstProblem& problem)
        : m_table(table)
        , m_strPath(std::move(path))
        , m_problem(problem)
    {
    }

    /// Text without control characters and without blanks at its ends, of at most so many letters.
    /// A needed one is there and not empty.
    std::string Text(std::string_view key, std::size_t most, bool needed);
    std::vector<std::string> Texts(std::string_view key, std::size_t most);
    std::int64_t Integer(std::string_view key, std::int64_t least, std::int64_t most, bool needed);
    double Real(std::string_view key, double least, double most);
    bool Flag(std::string_view key);
    /// "#RRGGBB" as 0xBBGGRR.
    std::uint32_t Color(std::string_view key);
    /// The place of a text in a list of choices, 0 when the key is not there.
    std::uint8_t Choice(std::string_view key, std::vector<std::string> const& choices);

    /// The table "[key]"; an empty one when it is not there and not needed.
    CSettingsReader Table(std::string_view key, bool needed);
    /// The tables "[[key]]", so many at least and at most.
    std::vector<CSettingsReader> Tables(std::string_view key, std::size_t least, std::size_t most);

    /// Says that the value of this key is wrong.
    void Refuse(std::string_view key, std::string const& what);
    void End();

private:
    toml::node const* Node(std::string_view key, bool needed);
    std::string Place() const;
    std::string PathOf(std::string_view key) const;
    bool IsText(std::string_view text, std::size_t most, bool needed, toml::source_position where,
        std::string_view key);

    toml::table const& m_table;
    std::string m_strPath; ///< "center", "category.course"; empty for the whole text
    CFirstProblem& m_problem;
    std::set<std::string, std::less<>> m_known;
};
