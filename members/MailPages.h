#pragma once

#include "platform/qt/Pages.h"

#include <QFontMetricsF>
#include <QStringList>

#include <array>

/// Pages of mail: lines of text in a roman font at places in hundredths of an inch, from the left
/// and from the top of the printable area. Which font the system has for that changes the look of
/// the letters and nothing of their places, so that they meet the paper they are meant for.
class CMailPages
{
public:
    /// The height of the font is that of a line without the space to the next one.
    CMailPages(QPagedPaintDevice& device, int fontHeight, int mostPages);

    // Begins the document and its pages, and ends it, as CPages does.
    bool Begin();
    bool Next() { return m_pages.Next(); }
    CPages::Outcome End() { return m_pages.End(); }
    int Number() const { return m_pages.Number(); }

    int LineHeight() const { return m_nFontHeight + kExternalLeading; }
    int Width() const { return static_cast<int>(m_area.width() / m_unit.width()); }
    int Height() const { return static_cast<int>(m_area.height() / m_unit.height()); }

    /// One line of text, y being its upper edge. If there is not that much room for it, its letters
    /// are set narrower.
    void Draw(int x, int y, QString const& text, int room);
    /// A line of text in pieces that have that much room each, parted at blanks where there are
    /// any; what cannot be printed becomes blanks.
    QStringList Wrap(QString text, int room) const;

private:
    static constexpr int kExternalLeading = 1; // of roman fonts of such sizes
    static constexpr char16_t kEndOfLatin = 0x250;

    double WidthAtMost(QString const& text);

    QPagedPaintDevice& m_device;
    CPages m_pages;
    int const m_nFontHeight;
    QSizeF const m_area; ///< in dots of the device, as all that follows
    QSizeF const m_unit; ///< a hundredth of an inch
    QFont const m_font;
    QFontMetricsF const m_metrics;
    double const m_ascent;
    std::array<double, kEndOfLatin> m_widths = {}; ///< of letters that were printed
};
