#include "reports/document/Report.h"
#include "reports/pages/Drawings.h"
#include "reports/pages/PageFlow.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr double kBarPoints = 15;
constexpr double kHeadPoints = 2; ///< between the title and the marks
constexpr double kMarkPoints = 7;

/// Its border in no more digits than it has.
QString Border(double value)
{
    return QString::number(value, 'g', 6);
}

/// The place of a value on a bar whose bands are equally wide: 0 to 1. A scale may fall as well as
/// rise.
double PlaceOf(CNormBar const& bar, double value)
{
    auto const count = bar.m_lstBands.size();
    for (std::size_t i = 0; i < count; ++i) {
        auto const from = bar.m_lstBands[i].m_dFrom;
        auto const to = i + 1 < count ? bar.m_lstBands[i + 1].m_dFrom : bar.m_dEnd;
        auto const part = (value - from) / (to - from);
        if (std::isfinite(part) && part < 1) {
            return (double(i) + std::max(part, 0.0)) / double(count);
        }
    }
    return 1;
}

class CBar
{
public:
    CBar(CPageFlow& flow, CNormBar const& bar)
        : m_flow(flow)
        , m_bar(bar)
    {
    }

    double Height() const
    {
        auto const& faces = m_flow.Faces();
        return faces.m_tiny.LineHeight() * 2
            + m_flow.Points(kHeadPoints + kMarkPoints + kBarPoints + 2);
    }
    void Draw(double y)
    {
        auto const top
            = y + m_flow.Faces().m_tiny.LineHeight() + m_flow.Points(kHeadPoints + kMarkPoints);
        DrawBands(top);
        DrawMarks(top);
    }

private:
    struct CLabel
    {
        QString text;
        double left;
        double width;
    };

    void DrawBands(double top);
    void DrawName(QRectF const& area, QString const& name);
    void DrawMarks(double top);
    void PlaceLabels(std::vector<CLabel>& labels) const;

    CPageFlow& m_flow;
    CNormBar const& m_bar;
};

void CBar::DrawBands(double top)
{
    auto& painter = *m_flow.Painter();
    auto const& tiny = m_flow.Faces().m_tiny;
    auto const count = m_bar.m_lstBands.size();
    auto const width = m_flow.Width() / double(count);
    for (std::size_t i = 0; i < count; ++i) {
        QRectF const area(double(i) * width, top, width, m_flow.Points(kBarPoints));
        painter.setPen(QPen(Qt::black, m_flow.Points(0.6)));
        painter.setBrush(i % 2 == 0 ? QColor(Qt::white) : QColor::fromRgb(0xE4E4E4));
        painter.drawRect(area);
        DrawName(area, ShownText(m_bar.m_lstBands[i].m_strName, 60));
        if (i > 0) {
            auto const border = Border(m_bar.m_lstBands[i].m_dFrom);
            m_flow.Text(tiny, area.left() - tiny.Width(border) / 2,
                area.bottom() + m_flow.Points(1) + tiny.Ascent(), border);
        }
    }
}

void CBar::DrawName(QRectF const& area, QString const& name)
{
    auto const& tiny = m_flow.Faces().m_tiny;
    auto& painter = *m_flow.Painter();
    CParagraph const one(tiny, m_flow.Device(), name, area.width() - m_flow.Points(4), 2);
    if (one.Lines() > 1) {
        one.Draw(painter, area.left() + m_flow.Points(2), area.center().y() - one.Height() / 2);
        return;
    }
    m_flow.Text(tiny, area.center().x() - tiny.Width(name) / 2,
        area.center().y() - tiny.LineHeight() / 2 + tiny.Ascent(), name);
}

/// Triangles that point at the bar, the last one filled, with their labels above.
void CBar::DrawMarks(double top)
{
    auto& painter = *m_flow.Painter();
    auto const& tiny = m_flow.Faces().m_tiny;
    auto const half = m_flow.Points(kMarkPoints * 0.5);
    auto const head = top - m_flow.Points(kMarkPoints);
    std::vector<CLabel> labels;
    for (auto const& mark : m_bar.m_lstMarks) {
        auto const x = std::clamp(
            PlaceOf(m_bar, mark.m_dValue) * m_flow.Width(), half, m_flow.Width() - half);
        bool const isLast = &mark == &m_bar.m_lstMarks.back();
        painter.setPen(QPen(Qt::black, m_flow.Points(0.8)));
        painter.setBrush(isLast ? QBrush(QColor(Qt::black)) : QBrush(Qt::NoBrush));
        painter.drawPolygon(QPolygonF({{x - half, head}, {x + half, head}, {x, top}}));
        auto const text = ShownText(mark.m_strLabel, 40);
        labels.push_back({text, x - tiny.Width(text) / 2, tiny.Width(text)});
    }
    PlaceLabels(labels);
    for (auto const& label : labels) {
        m_flow.Text(tiny, label.left, head - m_flow.Points(1) - tiny.LineHeight() + tiny.Ascent(),
            label.text);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
}

/// In the order of their marks, side by side where they would touch, and on the page.
void CBar::PlaceLabels(std::vector<CLabel>& labels) const
{
    auto const gap = m_flow.Points(6);
    std::ranges::stable_sort(labels, {}, [](CLabel const& l) { return l.left + l.width / 2; });
    for (std::size_t i = 1; i < labels.size(); ++i) {
        auto& before = labels[i - 1];
        auto const excess = before.left + before.width + gap - labels[i].left;
        if (excess > 0) {
            before.left -= excess / 2;
            labels[i].left += excess / 2;
        }
    }
    auto const& last = labels.back();
    auto const shift = std::max(0.0, -labels.front().left)
        - std::max(0.0, last.left + last.width - m_flow.Width());
    for (auto& label : labels) {
        label.left += shift;
    }
}

} // namespace

bool FlowNormBar(CPageFlow& flow, CNormBar const& bar)
{
    auto const& faces = flow.Faces();
    CParagraph const title(
        faces.m_bold, flow.Device(), ShownText(bar.m_strTitle, 100), flow.Width() * 0.4, 2);
    CParagraph const value(
        faces.m_body, flow.Device(), ShownText(bar.m_strValue, 400), flow.Width() * 0.6, 4);
    CParagraph const remark(
        faces.m_body, flow.Device(), ShownText(bar.m_strRemark), flow.Width(), 12);
    CParagraph const source(
        faces.m_note, flow.Device(), ShownText(bar.m_strSource), flow.Width(), 6);
    auto const hasBar = !bar.m_lstBands.empty() && !bar.m_lstMarks.empty();
    CBar drawing(flow, bar);
    auto const head = std::max(title.Height(), value.Height());
    auto const height = head + (hasBar ? drawing.Height() : 0) + remark.Height() + source.Height();
    flow.Gap(flow.Points(6));
    if (!flow.Need(height)) {
        return false;
    }
    auto y = flow.Take(height);
    if (auto* const painter = flow.Painter(); painter != nullptr) {
        title.Draw(*painter, 0, y);
        value.Draw(*painter, flow.Width() * 0.4, y);
        y += head;
        if (hasBar) {
            drawing.Draw(y);
            y += drawing.Height();
        }
        remark.Draw(*painter, 0, y);
        source.Draw(*painter, 0, y + remark.Height());
    }
    return true;
}
