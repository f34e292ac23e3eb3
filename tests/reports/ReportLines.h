#pragma once

#include "reports/document/Report.h"

#include <string>
#include <variant>
#include <vector>

/// What a report says, line by line, to look for what it must say.
namespace ReportLines
{

inline void Tell(CReportText const& text, std::string& lines)
{
    bool const isHeading = text.m_kind == CReportText::Kind::heading;
    lines += (isHeading ? "# " : "") + text.m_strText + "\n";
}
inline void Tell(CReportFacts const& facts, std::string& lines)
{
    for (auto const& [label, value] : facts.m_lstFacts) {
        lines.append(label).append(": ").append(value).append("\n");
    }
}
inline void Tell(CReportTable const& table, std::string& lines)
{
    std::vector<std::string_view> cells;
    for (auto const& column : table.Columns()) {
        lines += "|" + column.m_strHeading;
    }
    lines += "\n";
    for (std::size_t row = 0; row < table.CountRows(); ++row) {
        table.ReadRow(row, cells);
        for (auto const cell : cells) {
            lines += "|" + std::string(cell);
        }
        lines += "\n";
    }
    lines += table.CountRows() == 0 ? table.m_strIfEmpty + "\n" : "";
}
inline void Tell(CNormBar const& bar, std::string& lines)
{
    lines += "[" + bar.m_strTitle + "] " + bar.m_strValue + " <" + bar.m_strSource + "> "
        + bar.m_strRemark + "\n";
}
inline void Tell(CReportChart const& chart, std::string& lines)
{
    lines += "(" + chart.m_strTitle + ") " + chart.m_strInWords + "\n";
}

inline std::string Of(CReport const& report)
{
    std::string lines = report.m_strTitle + "\n";
    for (auto const& line : report.m_lstScope) {
        lines += line + "\n";
    }
    for (auto const& block : report.m_lstBlocks) {
        std::visit([&](auto const& one) { Tell(one, lines); }, block);
    }
    return lines;
}

/// The blocks of one kind.
template <typename Block>
std::vector<Block> Blocks(CReport const& report)
{
    std::vector<Block> found;
    for (auto const& block : report.m_lstBlocks) {
        if (auto const* const one = std::get_if<Block>(&block)) {
            found.push_back(*one);
        }
    }
    return found;
}

} // namespace ReportLines
