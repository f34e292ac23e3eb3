#include "members/MailPages.h"

#include <QPagedPaintDevice>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

// What Times has of the size of its letters. Other fonts leave more room above and below theirs,
// or less, and would be larger or smaller for it.
constexpr double kAscent = 0.891;
constexpr double kHeight = 1.107;

QSizeF UnitOf(QPaintDevice const& device)
{
    return {device.logicalDpiX() / 100.0, device.logicalDpiY() / 100.0};
}

int PixelsOf(QPaintDevice const& device, int fontHeight)
{
    return std::max(1, int(std::lround(fontHeight / kHeight * UnitOf(device).height())));
}

QFont FontOf(QPaintDevice const& device, int fontHeight)
{
    QFont font(u"Times"_s); // the name by which systems find the one they have
    font.setStyleHint(QFont::Serif);
    font.setWeight(QFont::Normal);
    font.setPixelSize(PixelsOf(device, fontHeight));
    return font;
}

} // namespace

CMailPages::CMailPages(QPagedPaintDevice& device, int fontHeight, int mostPages)
    : m_device(device)
    , m_pages(device, mostPages)
    , m_nFontHeight(fontHeight)
    , m_area(device.width(), device.height())
    , m_unit(UnitOf(device))
    , m_font(FontOf(device, fontHeight))
    , m_metrics(m_font, &device)
    , m_ascent(PixelsOf(device, fontHeight) * kAscent)
{
}

bool CMailPages::Begin()
{
    bool const isBegun = m_pages.Begin();
    if (isBegun) {
        m_pages.Painter().setFont(m_font);
    }
    return isBegun;
}

void CMailPages::Draw(int x, int y, QString const& text, int room)
{
    if (text.isEmpty()) {
        return;
    }
    auto& painter = m_pages.Painter();
    QPointF const at(x * m_unit.width(), y * m_unit.height() + m_ascent);
    double const width = room * m_unit.width();
    // Laying out each line to measure it, only to lay it out again, would cost as much as printing.
    double const needed = WidthAtMost(text) <= width ? 0 : m_metrics.horizontalAdvance(text);
    if (needed <= width) {
        painter.drawText(at, text);
        return;
    }
    painter.save();
    painter.translate(at);
    painter.scale(width / needed, 1);
    painter.drawText(QPointF(), text);
    painter.restore();
}

/// A width that the text does not exceed: the sum of its letters, which may stand closer together.
double CMailPages::WidthAtMost(QString const& text)
{
    double sum = 0;
    for (auto const letter : text) {
        if (letter.unicode() >= kEndOfLatin) {
            return std::numeric_limits<double>::max();
        }
        auto& width = m_widths[letter.unicode()];
        if (width == 0) {
            width = m_metrics.horizontalAdvance(letter);
        }
        sum += width;
    }
    return sum;
}

QStringList CMailPages::Wrap(QString text, int room) const
{
    std::ranges::replace_if(
        text, [](QChar letter) { return letter.category() == QChar::Other_Control; }, u' ');
    double const width = room * m_unit.width();
    if (m_metrics.horizontalAdvance(text) <= width) {
        return {text};
    }
    QTextLayout layout(text, m_font, &m_device);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines += text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}
