#pragma once

#include "platform/qt/Pages.h"
#include "reports/content/BuildReport.h"
#include "reports/pages/PageText.h"

#include <functional>

/// The fonts of a report.
struct CFaces
{
    explicit CFaces(QPaintDevice& device);

    CFace m_title;
    CFace m_heading;
    CFace m_body;
    CFace m_bold;
    CFace m_cell;
    CFace m_cellBold;
    CFace m_note;
    CFace m_tiny;
};

/// The pages of a report, filled from top to bottom: once without a painter, which counts them, and
/// once on the device. Heads each with the centre and the report, and numbers it below. Lengths are
/// in the units of the device.
class CPageFlow
{
public:
    /// Without pages it only counts. Of any number of pages that are counted, as many are drawn as
    /// CPages takes.
    CPageFlow(QPagedPaintDevice& device, CFaces const& faces, CReport const& report, CPages* pages,
        int pageCount, CReportWatch const& watch);

    /// Begins the first page, or the next one. False, here and below, when no more is to be drawn.
    bool NextPage();
    /// Goes to the next page when less than that is left on this one, unless nothing stands on it:
    /// what is higher than a page gets one of its own.
    bool Need(double height);
    /// Moves on, and gives the place before it.
    double Take(double height);
    /// The same for a gap, which falls away at the top of a page.
    void Gap(double height);
    /// What is drawn at the top of each further page, below its head, and its height; empty for
    /// nothing.
    void SetRepeated(std::function<void()> repeated) { m_fnRepeated = std::move(repeated); }

    double Width() const { return m_width; }
    double Room() const { return m_bottom - m_y; }
    double Points(double points) const { return points * m_point; }
    int Page() const { return m_nPage; }

    CFaces const& Faces() const { return m_faces; }
    QPaintDevice& Device() const;
    QPainter* Painter() const; ///< null while pages are only counted

    // Drawn only when there is a painter.
    void Text(CFace const& face, double x, double baseline, QString const& text) const;
    void TextRight(CFace const& face, double right, double baseline, QString const& text) const;
    void Rule(double y, double points, double from, double to) const;
    void Fill(QRectF const& area, QColor const& color) const;

private:
    void DrawFirstHead();
    void DrawHead();
    void DrawFoot() const;

    QPagedPaintDevice& m_device;
    CFaces const& m_faces;
    CReport const& m_report;
    CPages* const m_pPages;
    int const m_nPageCount;
    CReportWatch const& m_fnWatch;
    std::function<void()> m_fnRepeated;
    double const m_point;
    double const m_width;
    double const m_bottom;
    double m_y = 0;
    int m_nPage = 0;
    mutable CFace const* m_pFont = nullptr; ///< that the painter has
    bool m_bFresh = true;
};

/// Lines of a text that may go on to the next page.
bool FlowText(CPageFlow& flow, CFace const& face, QString const& text);
