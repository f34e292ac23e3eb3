#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The rows of a table of a report, as texts. Kept in one piece, so that a hundred thousand rows
/// are a few megabytes and the report can be laid out, counted and drawn from the same rows.
class CReportTable
{
public:
    struct CColumn
    {
        std::string m_strHeading;
        int m_nLetters; ///< that it is made for; one for 20 or more gives way where room is short
        bool m_bRight = false; ///< numbers stand on the right
    };
    enum class Row : std::uint8_t
    {
        plain,
        group, ///< one text over the whole width; never the last thing on a page
        sum, ///< below a rule; never the first thing on a page, unless it is the first row
    };

    explicit CReportTable(std::vector<CColumn> columns);

    std::vector<CColumn> const& Columns() const { return m_columns; }
    std::size_t CountRows() const { return m_rows.size(); }

    /// One text for each column; more are left out, fewer leave the last ones empty.
    void AddRow(std::span<std::string_view const> cells, Row kind = Row::plain);
    void AddRow(std::initializer_list<std::string_view> cells, Row kind = Row::plain)
    {
        AddRow(std::span(cells.begin(), cells.size()), kind);
    }
    void AddGroup(std::string_view text) { AddRow({text}, Row::group); }

    Row KindOf(std::size_t row) const { return m_rows[row].kind; }
    /// The texts of a row, one a column; of a group its text alone. They stay valid until a row is
    /// added.
    void ReadRow(std::size_t row, std::vector<std::string_view>& cells) const;

    std::string m_strTitle; ///< above it; empty for none
    std::string m_strIfEmpty
        = "Nothing to report."; ///< in the place of the rows, if there are none

private:
    struct CPlace
    {
        std::size_t begin; ///< in m_strCells
        Row kind;
    };

    std::vector<CColumn> m_columns;
    std::string m_strCells; ///< each text ends with a NUL
    std::vector<CPlace> m_rows;
};
