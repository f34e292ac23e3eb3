#include "ui/ListPrinter.h"

#include <QCoreApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CListPrinter)
};

constexpr int kPoints = 8;
constexpr int kHeadingLine = 3; // two below the title, which stands one below the top
constexpr int kFirstRowLine = 5;
constexpr int kLastColumnLetters = 12; // that a column without a width is given room for

QFont FontOf(QPaintDevice const& device, double scale)
{
    QFont font(u"monospace"_s);
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    font.setWeight(QFont::Normal);
    font.setKerning(false);
    font.setPixelSize(std::max(1, int(std::lround(scale * kPoints * device.logicalDpiY() / 72.0))));
    return font;
}

/// Letters that a font of one width has, each of that width.
bool IsPlain(QString const& text)
{
    constexpr char16_t kEndOfLatin = 0x250;
    return std::ranges::all_of(
        text, [](QChar c) { return c.isPrint() && c.unicode() < kEndOfLatin; });
}

} // namespace

CListPrinter::CListPrinter(QString title, std::vector<CColumn> columns, int rowsPerPage)
    : m_strTitle(std::move(title))
    , m_columns(std::move(columns))
    , m_nRowsPerPage(rowsPerPage)
{
}

CListPrinter::Outcome CListPrinter::Print(
    QPagedPaintDevice& device, CNextRow const& next, int mostPages)
{
    m_nPage = 0;
    QStringList texts;
    if (!next(texts)) {
        return Outcome::printed;
    }
    CPages pages(device, mostPages);
    if (!pages.Begin()) {
        return Outcome::notStarted;
    }
    SetUp(pages.Painter());
    while (!texts.isEmpty() && pages.Next()) {
        DrawPage(pages, texts, next);
    }
    m_bCut = !texts.isEmpty();
    m_nPage = pages.Number();
    return pages.End();
}

void CListPrinter::SetUp(QPainter& painter)
{
    auto& device = *painter.device();
    int letters = 0;
    for (auto const& column : m_columns) {
        letters += column.m_nLetters != 0 ? column.m_nLetters : kLastColumnLetters;
    }
    painter.setFont(FontOf(device, 1));
    double const width = QFontMetricsF(painter.font(), &device).averageCharWidth();
    if (double const fitting = double(device.width()) / std::max(letters, 1); fitting < width) {
        painter.setFont(FontOf(device, fitting / width));
    }
    QFontMetricsF const metrics(painter.font(), &device);
    m_letterWidth = metrics.averageCharWidth();
    m_lineHeight = std::min(
        metrics.lineSpacing(), double(device.height()) / (kFirstRowLine + m_nRowsPerPage));
    m_ascent = metrics.ascent();
    m_bOneWidth = QFontInfo(painter.font()).fixedPitch();
}

void CListPrinter::DrawPage(CPages& pages, QStringList& texts, CNextRow const& next)
{
    auto& painter = pages.Painter();
    painter.drawText(QPointF(0, m_lineHeight + m_ascent),
        CTexts::tr("%1 - Page %2").arg(m_strTitle, QString::number(pages.Number())));
    QStringList headings;
    for (auto const& column : m_columns) {
        headings += column.m_strHeading;
    }
    DrawLine(painter, kHeadingLine, headings);
    for (int row = 0; row < m_nRowsPerPage && !texts.isEmpty(); ++row) {
        DrawLine(painter, kFirstRowLine + row, texts);
        if (!next(texts)) {
            texts.clear();
        }
    }
}

/// In one piece, as long as each text ends before the next one begins: that is several times as
/// fast.
void CListPrinter::DrawLine(QPainter& painter, double line, QStringList const& texts) const
{
    double const y = line * m_lineHeight + m_ascent;
    QString whole;
    bool isWhole = m_bOneWidth;
    for (std::size_t i = 0; i < m_columns.size() && isWhole; ++i) {
        auto const& text = texts[static_cast<qsizetype>(i)];
        auto const letters = m_columns[i].m_nLetters;
        isWhole = IsPlain(text) && (letters == 0 || text.size() <= letters);
        whole += text.leftJustified(letters);
    }
    if (isWhole) {
        painter.drawText(QPointF(0, y), whole);
        return;
    }
    int letters = 0;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        painter.drawText(QPointF(letters * m_letterWidth, y), texts[static_cast<qsizetype>(i)]);
        letters += m_columns[i].m_nLetters;
    }
}
