#include "reports/pages/ReportPrinter.h"

#include "reports/pages/Drawings.h"
#include "reports/pages/PageFlow.h"
#include "reports/pages/TableFlow.h"

#include <QPagedPaintDevice>

namespace
{

bool FlowBlock(CPageFlow& flow, CReportText const& text)
{
    auto const& faces = flow.Faces();
    auto const shown = ShownText(text.m_strText, 20'000);
    switch (text.m_kind) {
    case CReportText::Kind::heading:
        flow.Gap(flow.Points(10));
        return flow.Need(5 * faces.m_heading.LineHeight())
            && FlowText(flow, faces.m_heading, shown);
    case CReportText::Kind::note:
        flow.Gap(flow.Points(3));
        return FlowText(flow, faces.m_note, shown);
    case CReportText::Kind::body:
        break;
    }
    flow.Gap(flow.Points(3));
    return FlowText(flow, faces.m_body, shown);
}

bool FlowBlock(CPageFlow& flow, CReportFacts const& facts)
{
    return FlowFacts(flow, facts);
}

bool FlowBlock(CPageFlow& flow, CReportTable const& table)
{
    return FlowTable(flow, table);
}

bool FlowBlock(CPageFlow& flow, CNormBar const& bar)
{
    return FlowNormBar(flow, bar);
}

bool FlowBlock(CPageFlow& flow, CReportChart const& chart)
{
    return FlowChart(flow, chart);
}

/// False when not all of it was to be drawn.
bool FlowReport(CPageFlow& flow, CReport const& report)
{
    if (!flow.Begin()) {
        return false;
    }
    for (auto const& block : report.m_lstBlocks) {
        if (!std::visit([&flow](auto const& content) { return FlowBlock(flow, content); }, block)) {
            return false;
        }
    }
    return true;
}

} // namespace

CPages::Outcome CReportPrinter::Print(
    QPagedPaintDevice& device, CReportWatch const& watch, int mostPages)
{
    m_nDone = 0;
    CPages pages(device, mostPages);
    if (!pages.Begin()) {
        return CPages::Outcome::notStarted;
    }
    CFaces const faces(device);
    CPageFlow counting(device, faces, m_report, nullptr, 0, watch);
    FlowReport(counting, m_report);
    m_nPages = counting.Page();
    CPageFlow drawing(device, faces, m_report, &pages, m_nPages, watch);
    auto const isWhole = FlowReport(drawing, m_report);
    m_nDone = drawing.Page();
    auto const outcome = pages.End();
    return !isWhole && m_nDone < std::min(mostPages, m_nPages) ? CPages::Outcome::stopped : outcome;
}
