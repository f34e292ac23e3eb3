#include "reports/pages/PageText.h"

#include <QPainter>
#include <QTextOption>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

/// Breaks a line, or turns the direction of what follows.
bool IsUnfit(QChar c)
{
    auto const u = c.unicode();
    auto const category = c.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph || u == 0x200E || u == 0x200F
        || (u >= 0x202A && u <= 0x202E) || (u >= 0x2066 && u <= 0x2069);
}

QFont FontOf(QPaintDevice const& device, double points, bool bold)
{
    QFont font(u"DejaVu Sans"_s);
    font.setStyleHint(QFont::SansSerif);
    font.setBold(bold);
    // The width of a text is the sum of its letters'.
    font.setKerning(false);
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setPixelSize(std::max(1, int(std::lround(points * device.logicalDpiY() / 72.0))));
    return font;
}

} // namespace

QString ShownText(std::string_view text, qsizetype most)
{
    // A letter has four bytes at most.
    auto const size = qsizetype(text.size());
    auto const bytes = std::min(size, 4 * (most + 1));
    auto shown = QString::fromUtf8(text.data(), bytes);
    std::ranges::replace_if(shown, IsUnfit, u' ');
    if (shown.size() > most || bytes < size) {
        shown.truncate(most);
        if (shown.back().isHighSurrogate()) {
            shown.chop(1);
        }
        shown += u'\u2026';
    }
    return shown;
}

CFace::CFace(QPaintDevice& device, double points, bool bold)
    : m_font(FontOf(device, points, bold))
    , m_metrics(m_font, &device)
    , m_lineHeight(m_metrics.lineSpacing())
    , m_ascent(m_metrics.ascent())
    , m_letterWidth(m_metrics.averageCharWidth())
    , m_widths()
{
    for (std::size_t i = 0; i < m_widths.size(); ++i) {
        m_widths[i] = float(m_metrics.horizontalAdvance(QChar(char16_t(i))));
    }
}

double CFace::Width(QString const& text) const
{
    double width = 0;
    for (auto const c : text) {
        if (c.unicode() >= kTable) {
            return m_metrics.horizontalAdvance(text);
        }
        width += double(m_widths[c.unicode()]);
    }
    return width;
}

CParagraph::CParagraph(CFace const& face, QPaintDevice& device, QString const& text, double width,
    int mostLines, Qt::Alignment alignment)
    : m_layout(std::make_unique<QTextLayout>(text, face.Font(), &device))
    , m_lineHeight(face.LineHeight())
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setAlignment(alignment);
    m_layout->setTextOption(option);
    m_layout->setCacheEnabled(true);
    m_layout->beginLayout();
    while (m_nLines < mostLines && !text.isEmpty()) {
        auto line = m_layout->createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        line.setPosition({0, m_nLines * m_lineHeight});
        ++m_nLines;
    }
    m_layout->endLayout();
}

void CParagraph::Draw(QPainter& painter, double x, double y, int first, int count) const
{
    for (int i = first; i < std::min(first + count, m_nLines); ++i) {
        m_layout->lineAt(i).draw(&painter, {x, y - first * m_lineHeight});
    }
}
