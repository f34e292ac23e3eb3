#include "reports/pages/ReportPrinter.h"

#include "platform/qt/Printers.h"
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

/// What a block begins with at least, so that no heading stands alone at the end of a page.
double BeginningOf(CPageFlow const& flow, CReportBlock const& block)
{
    auto const line = flow.Faces().m_body.LineHeight();
    if (std::holds_alternative<CNormBar>(block)) {
        return 10 * line;
    }
    if (std::holds_alternative<CReportChart>(block)) {
        return 14 * line;
    }
    return (std::holds_alternative<CReportTable>(block) ? 5 : 2) * line;
}

/// With the headings that come before it.
bool NeedBlock(CPageFlow& flow, std::vector<CReportBlock> const& blocks, std::size_t first)
{
    double height = 0;
    for (auto i = first; i < blocks.size() && i < first + 3; ++i) {
        auto const* const text = std::get_if<CReportText>(&blocks[i]);
        if (text == nullptr || text->m_kind != CReportText::Kind::heading) {
            return i == first || flow.Need(height + BeginningOf(flow, blocks[i]));
        }
        height += flow.Points(10) + flow.Faces().m_heading.LineHeight();
    }
    return true;
}

/// False when not all of it was to be drawn.
bool FlowReport(CPageFlow& flow, CReport const& report)
{
    if (!flow.NextPage()) {
        return false;
    }
    for (std::size_t i = 0; i < report.m_lstBlocks.size(); ++i) {
        auto const& block = report.m_lstBlocks[i];
        if (!NeedBlock(flow, report.m_lstBlocks, i)
            || !std::visit(
                [&flow](auto const& content) { return FlowBlock(flow, content); }, block)) {
            return false;
        }
    }
    return true;
}

} // namespace

QPageLayout::Orientation OrientationOf(CReport const& report)
{
    return report.m_bLandscape ? QPageLayout::Landscape : QPageLayout::Portrait;
}

void SetReportPaper(QPagedPaintDevice& device, QPageSize::PageSizeId paper, CReport const& report)
{
    SetPaper(device, paper, OrientationOf(report), 2 * kLeastMargin);
}

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
