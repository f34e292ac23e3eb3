#pragma once

#include "platform/qt/Pages.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <limits>
#include <vector>

class QPagedPaintDevice;
class QPainter;

/// Prints a table, one line of text a row, with a title and the columns' headings on each page.
///
/// The font has 8 points and letters of one width, if the system has such a font. A column takes
/// whole letters; a text wider than its column runs into the next one rather than being cut. Lines
/// and letters come closer only when the rows of a page, or the columns, would not fit otherwise.
class CListPrinter
{
public:
    struct CColumn
    {
        QString m_strHeading;
        int m_nLetters; ///< 0 for the rest of the line
    };
    /// Gives the texts of the next row, one a column; false when there are no more.
    using CNextRow = std::function<bool(QStringList& texts)>;
    using Outcome = CPages::Outcome;

    /// The title is followed by the number of the page.
    CListPrinter(QString title, std::vector<CColumn> columns, int rowsPerPage);

    /// Prints pages until there are no more rows, or so many pages are done. Without any row no
    /// document is begun.
    Outcome Print(QPagedPaintDevice& device, CNextRow const& next,
        int mostPages = std::numeric_limits<int>::max());
    int Pages() const { return m_nPage; } ///< done, or at which printing stopped
    bool IsCut() const { return m_bCut; } ///< whether rows are left

private:
    void SetUp(QPainter& painter);
    void DrawPage(CPages& pages, QStringList& texts, CNextRow const& next);
    void DrawLine(QPainter& painter, double line, QStringList const& texts) const;

    QString const m_strTitle;
    std::vector<CColumn> const m_columns;
    int const m_nRowsPerPage;
    double m_lineHeight = 0;
    double m_letterWidth = 0;
    double m_ascent = 0;
    bool m_bOneWidth = false; ///< all letters of the font are of one width
    int m_nPage = 0;
    bool m_bCut = false;
};
