#include "reports/pages/TableFlow.h"

#include "reports/pages/PageFlow.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace
{

constexpr double kGapPoints = 6; ///< between columns
constexpr double kRowPoints = 2.5; ///< between rows
constexpr double kMostWider = 1.5; ///< than its letters ask for
constexpr int kWideLetters = 20; ///< from here on a column is for texts that may wrap
constexpr int kMostLines = 12; ///< of a cell
constexpr qsizetype kMostLetters = 600; ///< of a cell

class CTableFlow
{
public:
    CTableFlow(CPageFlow& flow, CReportTable const& table)
        : m_flow(flow)
        , m_table(table)
    {
        PlaceColumns();
    }

    bool Flow();

private:
    struct CPlace
    {
        double left;
        double width;
    };
    /// One row, ready to be drawn.
    struct CRow
    {
        std::vector<QString> texts;
        std::vector<std::unique_ptr<CParagraph>> wrapped; ///< those that need more lines
        double height = 0;
    };
    using Kind = CReportTable::Row;

    void PlaceColumns();
    Qt::Alignment AlignmentOf(std::size_t column, Kind kind) const
    {
        return kind != Kind::group && m_table.Columns()[column].m_bRight ? Qt::AlignRight
                                                                         : Qt::AlignLeft;
    }
    CFace const& FaceOf(Kind kind) const;
    void Prepare(std::size_t row);
    void Lay(CRow& row, Kind kind) const;
    double HeightOf(std::size_t row);
    double HeightKept(std::size_t row);
    void DrawHeadings();
    void DrawRow(CRow const& row, Kind kind);
    void DrawCell(CFace const& face, CRow const& row, std::size_t column, double y) const;
    bool Title();

    CPageFlow& m_flow;
    CReportTable const& m_table;
    std::vector<CPlace> m_places;
    CPlace m_whole = {}; ///< for a group's text
    std::vector<std::string_view> m_cells;
    // The row that is drawn next, and those after it that it must stand beside.
    std::size_t m_nPrepared = std::size_t(-1);
    CRow m_row;
    std::size_t m_nShaded = 0;
};

/// Over the width of the page, or less if they need much less. When there is too little room the
/// wide columns give way first: names go on below themselves, dates should not. No word of a
/// heading is broken where it can be helped.
void CTableFlow::PlaceColumns()
{
    auto const gap = m_flow.Points(kGapPoints);
    auto const& faces = m_flow.Faces();
    auto const digit = faces.m_cell.Width(QStringLiteral("0"));
    std::vector<double> widths;
    double fixed = 0;
    double wide = 0;
    for (auto const& column : m_table.Columns()) {
        bool const isWide = column.m_nLetters >= kWideLetters;
        auto width = std::max(column.m_nLetters, 1) * (isWide ? faces.m_cell.LetterWidth() : digit);
        for (auto const& word : ShownText(column.m_strHeading, 100).split(u' ')) {
            width = std::max(width, faces.m_cellBold.Width(word) + m_flow.Points(0.5));
        }
        widths.push_back(width);
        (isWide ? wide : fixed) += width;
    }
    auto const room = m_flow.Width() - gap * double(widths.size() - 1);
    auto const wideScale = wide > 0 ? std::clamp((room - fixed) / wide, 0.4, 1.0) : 1.0;
    auto const scale = std::min(room / (fixed + wide * wideScale), kMostWider);
    double left = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        bool const isWide = m_table.Columns()[i].m_nLetters >= kWideLetters;
        auto const width = widths[i] * scale * (isWide ? wideScale : 1.0);
        m_places.push_back({left, width});
        left += width + gap;
    }
    m_whole = {0, left - gap};
}

CFace const& CTableFlow::FaceOf(Kind kind) const
{
    return kind == Kind::plain ? m_flow.Faces().m_cell : m_flow.Faces().m_cellBold;
}

void CTableFlow::Prepare(std::size_t row)
{
    if (m_nPrepared == row) {
        return;
    }
    m_table.ReadRow(row, m_cells);
    m_row.texts.resize(m_cells.size());
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        m_row.texts[i] = ShownText(m_cells[i], kMostLetters);
    }
    Lay(m_row, m_table.KindOf(row));
    m_nPrepared = row;
}

void CTableFlow::Lay(CRow& row, Kind kind) const
{
    auto const& face = FaceOf(kind);
    row.wrapped.clear();
    int lines = 1;
    for (std::size_t i = 0; i < row.texts.size(); ++i) {
        auto const width = kind == Kind::group ? m_whole.width : m_places[i].width;
        if (face.Width(row.texts[i]) > width) {
            row.wrapped.resize(row.texts.size());
            row.wrapped[i] = std::make_unique<CParagraph>(
                face, m_flow.Device(), row.texts[i], width, kMostLines, AlignmentOf(i, kind));
            lines = std::max(lines, row.wrapped[i]->Lines());
        }
    }
    row.height = lines * face.LineHeight() + m_flow.Points(kRowPoints);
    if (kind != Kind::plain) {
        row.height += m_flow.Points(kRowPoints); // above it
    }
}

double CTableFlow::HeightOf(std::size_t row)
{
    Prepare(row);
    return m_row.height;
}

/// Of a row with those that stay on its page.
double CTableFlow::HeightKept(std::size_t row)
{
    double height = 0;
    auto last = row;
    while (last + 1 < m_table.CountRows()
        && (m_table.KindOf(last) == Kind::group || m_table.KindOf(last + 1) == Kind::sum)
        && last < row + 3) {
        height += HeightOf(++last);
    }
    return height + HeightOf(row);
}

void CTableFlow::DrawHeadings()
{
    CRow row;
    for (auto const& column : m_table.Columns()) {
        row.texts.push_back(ShownText(column.m_strHeading, kMostLetters));
    }
    Lay(row, Kind::sum);
    auto const y = m_flow.Take(row.height);
    for (std::size_t i = 0; i < row.texts.size(); ++i) {
        DrawCell(m_flow.Faces().m_cellBold, row, i, y);
    }
    m_flow.Rule(m_flow.Take(m_flow.Points(3)) - m_flow.Points(1), 0.75, m_whole.left,
        m_whole.left + m_whole.width);
    m_nShaded = 0;
}

void CTableFlow::DrawCell(CFace const& face, CRow const& row, std::size_t column, double y) const
{
    auto const& place = m_places[column];
    auto const& text = row.texts[column];
    if (column < row.wrapped.size() && row.wrapped[column] != nullptr) {
        if (auto* const painter = m_flow.Painter(); painter != nullptr) {
            row.wrapped[column]->Draw(*painter, place.left, y);
        }
    } else if (m_table.Columns()[column].m_bRight) {
        m_flow.TextRight(face, place.left + place.width, y + face.Ascent(), text);
    } else {
        m_flow.Text(face, place.left, y + face.Ascent(), text);
    }
}

void CTableFlow::DrawRow(CRow const& row, Kind kind)
{
    auto const& face = FaceOf(kind);
    auto const room = m_flow.Points(kRowPoints);
    auto y = m_flow.Take(row.height);
    if (m_flow.Painter() == nullptr) {
        return;
    }
    if (kind == Kind::plain) {
        if (m_nShaded++ % 2 == 1) {
            m_flow.Fill(
                {m_whole.left, y - room / 2, m_whole.width, row.height}, QColor::fromRgb(0xF0F0F0));
        }
    } else {
        if (kind == Kind::sum) {
            m_flow.Rule(y, 0.75, m_whole.left, m_whole.left + m_whole.width);
        }
        y += room;
        m_nShaded = 0;
    }
    if (kind == Kind::group) {
        if (row.wrapped.empty()) {
            m_flow.Text(face, m_whole.left, y + face.Ascent(), row.texts.front());
        } else {
            row.wrapped.front()->Draw(*m_flow.Painter(), m_whole.left, y);
        }
        return;
    }
    for (std::size_t i = 0; i < row.texts.size(); ++i) {
        DrawCell(face, row, i, y);
    }
}

bool CTableFlow::Title()
{
    if (m_table.m_strTitle.empty()) {
        return true;
    }
    auto const& face = m_flow.Faces().m_bold;
    // With the headings and a row.
    if (!m_flow.Need(6 * face.LineHeight())) {
        return false;
    }
    return FlowText(m_flow, face, ShownText(m_table.m_strTitle, kMostLetters));
}

bool CTableFlow::Flow()
{
    if (m_table.Columns().empty()) {
        return true;
    }
    m_flow.Gap(m_flow.Points(6));
    if (!Title()) {
        return false;
    }
    if (m_table.CountRows() == 0) {
        return FlowText(m_flow, m_flow.Faces().m_body, ShownText(m_table.m_strIfEmpty));
    }
    if (!m_flow.Need(4 * m_flow.Faces().m_cell.LineHeight() + HeightKept(0))) {
        return false;
    }
    DrawHeadings();
    m_flow.SetRepeated([this] { DrawHeadings(); });
    for (std::size_t row = 0; row < m_table.CountRows(); ++row) {
        auto const kind = m_table.KindOf(row);
        auto const isKept = kind == Kind::group
            || (row + 1 < m_table.CountRows() && m_table.KindOf(row + 1) == Kind::sum);
        if (!m_flow.Need(isKept ? HeightKept(row) : HeightOf(row))) {
            return false;
        }
        Prepare(row);
        DrawRow(m_row, kind);
    }
    m_flow.SetRepeated({});
    m_flow.Gap(m_flow.Points(4));
    return true;
}

} // namespace

bool FlowTable(CPageFlow& flow, CReportTable const& table)
{
    CTableFlow drawing(flow, table);
    auto const goesOn = drawing.Flow();
    flow.SetRepeated({});
    return goesOn;
}
