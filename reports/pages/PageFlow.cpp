#include "reports/pages/PageFlow.h"

#include <QCoreApplication>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CReportPages)
};

constexpr double kFootPoints = 20;

} // namespace

CFaces::CFaces(QPaintDevice& device)
    : m_title(device, 16, true)
    , m_heading(device, 11, true)
    , m_body(device, 9)
    , m_bold(device, 9, true)
    , m_cell(device, 8)
    , m_cellBold(device, 8, true)
    , m_note(device, 7)
    , m_tiny(device, 6.5)
{
}

CPageFlow::CPageFlow(QPagedPaintDevice& device, CFaces const& faces, CReport const& report,
    CPages* pages, int pageCount, CReportWatch const& watch)
    : m_device(device)
    , m_faces(faces)
    , m_report(report)
    , m_pPages(pages)
    , m_nPageCount(pageCount)
    , m_fnWatch(watch)
    , m_point(device.logicalDpiY() / 72.0)
    , m_width(device.width())
    , m_bottom(device.height() - kFootPoints * m_point)
{
}

QPaintDevice& CPageFlow::Device() const
{
    return m_device;
}

QPainter* CPageFlow::Painter() const
{
    return m_pPages != nullptr ? &m_pPages->Painter() : nullptr;
}

bool CPageFlow::NextPage()
{
    if (m_pPages != nullptr) {
        if (m_fnWatch && !m_fnWatch(double(m_nPage) / std::max(m_nPageCount, 1))) {
            return false;
        }
        if (!m_pPages->Next()) {
            return false;
        }
    }
    ++m_nPage;
    m_y = 0;
    DrawFoot();
    if (m_nPage == 1) {
        DrawFirstHead();
    } else {
        DrawHead();
    }
    if (m_nPage > 1 && m_fnRepeated) {
        m_fnRepeated();
    }
    m_bFresh = true;
    return true;
}

bool CPageFlow::Need(double height)
{
    return height <= Room() || m_bFresh || NextPage();
}

double CPageFlow::Take(double height)
{
    m_bFresh = false;
    return std::exchange(m_y, m_y + height);
}

void CPageFlow::Gap(double height)
{
    if (!m_bFresh) {
        m_y += height;
    }
}

void CPageFlow::DrawFirstHead()
{
    auto const line = [this](CFace const& face, QString const& text) {
        CParagraph const paragraph(face, m_device, text, m_width, 3);
        auto const y = Take(paragraph.Height());
        if (Painter() != nullptr) {
            paragraph.Draw(*Painter(), 0, y);
        }
    };
    line(m_faces.m_bold, ShownText(m_report.m_strCenter));
    if (!m_report.m_strCenterLine.empty()) {
        line(m_faces.m_note, ShownText(m_report.m_strCenterLine));
    }
    Rule(Take(Points(6)) + Points(3), 1, 0, m_width);
    line(m_faces.m_title, ShownText(m_report.m_strTitle));
    for (auto const& scope : m_report.m_lstScope) {
        line(m_faces.m_body, ShownText(scope, 400));
    }
    Take(Points(8));
}

void CPageFlow::DrawHead()
{
    auto const y = Take(m_faces.m_note.LineHeight());
    auto const title = ShownText(m_report.m_strTitle);
    auto const room = m_width - m_faces.m_note.Width(title) - Points(20);
    auto const center = QFontMetricsF(m_faces.m_note.Font(), &m_device)
                            .elidedText(ShownText(m_report.m_strCenter, 200), Qt::ElideRight, room);
    Text(m_faces.m_note, 0, y + m_faces.m_note.Ascent(), center);
    TextRight(m_faces.m_note, m_width, y + m_faces.m_note.Ascent(), title);
    Rule(Take(Points(8)) + Points(3), 1, 0, m_width);
}

void CPageFlow::DrawFoot() const
{
    if (Painter() == nullptr) {
        return;
    }
    auto const& face = m_faces.m_note;
    auto const baseline = m_device.height() - face.LineHeight() + face.Ascent();
    Rule(m_device.height() - face.LineHeight() - Points(3), 0.5, 0, m_width);
    Text(face, 0, baseline,
        CTexts::tr("Made %1 from confidential records").arg(ShownText(m_report.m_strMade, 40)));
    TextRight(face, m_width, baseline,
        CTexts::tr("Page %1 of %2").arg(QString::number(m_nPage), QString::number(m_nPageCount)));
}

void CPageFlow::Text(CFace const& face, double x, double baseline, QString const& text) const
{
    if (auto* const painter = Painter(); painter != nullptr && !text.isEmpty()) {
        if (std::exchange(m_pFont, &face) != &face) {
            painter->setFont(face.Font()); // costs as much as a short text
        }
        painter->drawText(QPointF(x, baseline), text);
    }
}

void CPageFlow::TextRight(
    CFace const& face, double right, double baseline, QString const& text) const
{
    if (Painter() != nullptr) {
        Text(face, right - face.Width(text), baseline, text);
    }
}

void CPageFlow::Rule(double y, double points, double from, double to) const
{
    if (auto* const painter = Painter(); painter != nullptr) {
        painter->fillRect(QRectF(from, y, to - from, Points(points)), Qt::black);
    }
}

void CPageFlow::Fill(QRectF const& area, QColor const& color) const
{
    if (auto* const painter = Painter(); painter != nullptr) {
        painter->fillRect(area, color);
    }
}

bool FlowText(CPageFlow& flow, CFace const& face, QString const& text)
{
    CParagraph const paragraph(face, flow.Device(), text, flow.Width());
    for (int line = 0; line < paragraph.Lines();) {
        if (!flow.Need(face.LineHeight())) {
            return false;
        }
        auto const count
            = std::clamp(int(flow.Room() / face.LineHeight()), 1, paragraph.Lines() - line);
        auto const y = flow.Take(count * face.LineHeight());
        if (auto* const painter = flow.Painter(); painter != nullptr) {
            paragraph.Draw(*painter, 0, y, line, count);
        }
        line += count;
    }
    return true;
}
