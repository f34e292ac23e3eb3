#include "reports/document/ReportTable.h"

#include <algorithm>
#include <utility>

CReportTable::CReportTable(std::vector<CColumn> columns)
    : m_columns(std::move(columns))
{
}

void CReportTable::AddRow(std::span<std::string_view const> cells, Row kind)
{
    m_rows.push_back({m_strCells.size(), kind});
    auto const count = kind == Row::group ? std::size_t(1) : m_columns.size();
    for (std::size_t i = 0; i < count; ++i) {
        auto const text = i < cells.size() ? cells[i] : std::string_view();
        m_strCells += text.substr(0, text.find('\0')); // what is stored may have any byte
        m_strCells += '\0';
    }
}

void CReportTable::ReadRow(std::size_t row, std::vector<std::string_view>& cells) const
{
    auto const end = row + 1 < m_rows.size() ? m_rows[row + 1].begin : m_strCells.size();
    cells.clear();
    for (auto begin = m_rows[row].begin; begin < end;) {
        auto const size = m_strCells.find('\0', begin) - begin;
        cells.push_back(std::string_view(m_strCells).substr(begin, size));
        begin += size + 1;
    }
}
