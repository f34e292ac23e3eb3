#pragma once

#include "platform/qt/Pages.h"
#include "reports/content/BuildReport.h"

#include <QPageLayout>
#include <QPageSize>

#include <limits>

QPageLayout::Orientation OrientationOf(CReport const& report);
/// Paper as the report needs it, with margins that a page to be handed out has.
void SetReportPaper(QPagedPaintDevice& device, QPageSize::PageSizeId paper, CReport const& report);

/// Draws a report on the pages of a device, as its page layout and paper are set.
class CReportPrinter
{
public:
    explicit CReportPrinter(CReport const& report)
        : m_report(report)
    {
    }

    /// Draws at most so many pages. Stops between two of them when watch says so, or when the
    /// device takes no more: then the outcome is "stopped".
    CPages::Outcome Print(QPagedPaintDevice& device, CReportWatch const& watch = {},
        int mostPages = std::numeric_limits<int>::max());
    int Pages() const { return m_nPages; } ///< that the whole report takes on the device
    int Done() const { return m_nDone; } ///< pages drawn

private:
    CReport const& m_report;
    int m_nPages = 0;
    int m_nDone = 0;
};
