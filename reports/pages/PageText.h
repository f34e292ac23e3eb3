#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <QTextLayout>

#include <array>
#include <memory>
#include <string_view>

class QPaintDevice;

/// What a record's text looks like on paper: one line, without anything that would turn, break or
/// hide what stands beside it, and cut where nobody would read on.
QString ShownText(std::string_view text, qsizetype most = 2000);

/// A font at its size on a device, with the widths of its letters.
class CFace
{
public:
    CFace(QPaintDevice& device, double points, bool bold = false);

    QFont const& Font() const { return m_font; }
    double LineHeight() const { return m_lineHeight; }
    double Ascent() const { return m_ascent; }
    /// In the units of the device. Latin letters cost a look into a table.
    double Width(QString const& text) const;
    double LetterWidth() const { return m_letterWidth; } ///< of a usual one

private:
    static constexpr std::size_t kTable = 0x250; ///< up to the end of the Latin letters

    QFont m_font;
    QFontMetricsF m_metrics;
    double m_lineHeight;
    double m_ascent;
    double m_letterWidth;
    std::array<float, kTable> m_widths;
};

/// A text in lines of a width.
class CParagraph
{
public:
    CParagraph(CFace const& face, QPaintDevice& device, QString const& text, double width,
        int mostLines = 200, Qt::Alignment alignment = Qt::AlignLeft);

    int Lines() const { return m_nLines; }
    double Height() const { return m_nLines * m_lineHeight; }
    /// Draws lines from first on, count of them, the first one at y.
    void Draw(QPainter& painter, double x, double y, int first, int count) const;
    void Draw(QPainter& painter, double x, double y) const { Draw(painter, x, y, 0, m_nLines); }

private:
    std::unique_ptr<QTextLayout> m_layout;
    double m_lineHeight;
    int m_nLines = 0;
};
