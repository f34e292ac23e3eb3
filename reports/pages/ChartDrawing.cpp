#include "reports/document/Report.h"
#include "reports/pages/Drawings.h"
#include "reports/pages/PageFlow.h"
#include "store/EFOleDateTime.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr double kPanelPoints = 84;
constexpr double kAxisPoints = 34; ///< for the numbers at the left
constexpr int kMostDates = 6; ///< below a panel

/// A scale of round numbers that holds all values.
struct CScale
{
    double m_dFrom = 0;
    double m_dTo = 1;
    double m_dStep = 1;
};

double RoundStep(double span)
{
    auto const raw = std::max(span, 1e-9) / 3;
    auto const power = std::pow(10.0, std::floor(std::log10(raw)));
    for (auto const factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= raw) {
            return factor * power;
        }
    }
    return 10 * power;
}

CScale ScaleOf(CReportChart::CSeries const& series, bool fromZero)
{
    auto low = fromZero ? 0.0 : series.m_lstPoints.front().m_dY;
    auto high = low;
    for (auto const& point : series.m_lstPoints) {
        low = std::min(low, point.m_dY);
        high = std::max(high, point.m_dY);
    }
    auto const step = RoundStep(high > low ? high - low : std::max(std::abs(high) / 10, 1.0));
    CScale scale{std::floor(low / step) * step, std::ceil(high / step) * step, step};
    if (scale.m_dTo <= scale.m_dFrom) {
        scale.m_dTo = scale.m_dFrom + step;
    }
    return scale;
}

/// Numbers that a chart can show.
bool IsDrawable(CReportChart::CSeries const& series)
{
    return !series.m_lstPoints.empty()
        && std::ranges::all_of(series.m_lstPoints,
            [](auto const& p) { return std::isfinite(p.m_dY) && std::abs(p.m_dY) < 1e12; });
}

class CPanel
{
public:
    CPanel(CPageFlow& flow, CReportChart::CSeries const& series, bool isBars)
        : m_flow(flow)
        , m_series(series)
        , m_bBars(isBars)
        , m_scale(ScaleOf(series, isBars))
    {
    }

    double Height() const
    {
        auto const& faces = m_flow.Faces();
        return faces.m_note.LineHeight() + faces.m_tiny.LineHeight()
            + m_flow.Points(kPanelPoints + 6);
    }
    void Draw(double y)
    {
        auto const& note = m_flow.Faces().m_note;
        m_flow.Text(note, 0, y + note.Ascent(), ShownText(m_series.m_strName, 80));
        m_area = QRectF(m_flow.Points(kAxisPoints), y + note.LineHeight() + m_flow.Points(4),
            m_flow.Width() - m_flow.Points(kAxisPoints + 6), m_flow.Points(kPanelPoints - 4));
        DrawAxis();
        if (m_bBars) {
            DrawBars();
        } else {
            DrawLine();
        }
    }

private:
    double YOf(double value) const
    {
        return m_area.bottom()
            - (value - m_scale.m_dFrom) / (m_scale.m_dTo - m_scale.m_dFrom) * m_area.height();
    }
    double XOf(std::size_t i) const
    {
        auto const first = m_series.m_lstPoints.front().m_nX;
        auto const span = double(m_series.m_lstPoints.back().m_nX) - double(first);
        auto const part
            = span > 0 ? (double(m_series.m_lstPoints[i].m_nX) - double(first)) / span : 0.5;
        auto const inset = m_flow.Points(8);
        return m_area.left() + inset + std::clamp(part, 0.0, 1.0) * (m_area.width() - 2 * inset);
    }
    void DrawAxis();
    void DrawLine();
    void DrawDates();
    void DrawBars();
    void Below(double x, QString const& text, double& free) const;

    CPageFlow& m_flow;
    CReportChart::CSeries const& m_series;
    bool const m_bBars;
    CScale const m_scale;
    QRectF m_area;
};

void CPanel::DrawAxis()
{
    auto& painter = *m_flow.Painter();
    auto const& tiny = m_flow.Faces().m_tiny;
    auto const steps = int(std::lround((m_scale.m_dTo - m_scale.m_dFrom) / m_scale.m_dStep));
    for (int i = 0; i <= steps; ++i) {
        auto const value = m_scale.m_dFrom + i * m_scale.m_dStep;
        auto const y = YOf(value);
        painter.setPen(QPen(i == 0 ? QColor(Qt::black) : QColor::fromRgb(0xB0B0B0),
            m_flow.Points(i == 0 ? 0.8 : 0.4)));
        painter.drawLine(QPointF(m_area.left(), y), QPointF(m_area.right(), y));
        painter.setPen(Qt::black);
        m_flow.TextRight(tiny, m_area.left() - m_flow.Points(4),
            y - tiny.LineHeight() / 2 + tiny.Ascent(), QString::number(value, 'g', 7));
    }
}

/// A text below the panel, unless it would touch the one before it.
void CPanel::Below(double x, QString const& text, double& free) const
{
    auto const& tiny = m_flow.Faces().m_tiny;
    auto const width = tiny.Width(text);
    auto const left = std::clamp(x - width / 2, 0.0, std::max(0.0, m_flow.Width() - width));
    if (left >= free) {
        m_flow.Text(tiny, left, m_area.bottom() + m_flow.Points(2) + tiny.Ascent(), text);
        free = left + width + m_flow.Points(5);
    }
}

void CPanel::DrawLine()
{
    auto& painter = *m_flow.Painter();
    auto const& points = m_series.m_lstPoints;
    QPainterPath path(QPointF(XOf(0), YOf(points[0].m_dY)));
    for (std::size_t i = 1; i < points.size(); ++i) {
        path.lineTo(XOf(i), YOf(points[i].m_dY));
    }
    painter.setPen(QPen(Qt::black, m_flow.Points(1.2), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
    painter.setBrush(Qt::black);
    auto const radius = m_flow.Points(points.size() > 60 ? 1 : 2);
    for (std::size_t i = 0; i < points.size(); ++i) {
        painter.drawEllipse(QPointF(XOf(i), YOf(points[i].m_dY)), radius, radius);
    }
    DrawDates();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
}

/// The first and the last one, and of those between as many as there is room for.
void CPanel::DrawDates()
{
    auto const& points = m_series.m_lstPoints;
    auto const each = std::max<std::size_t>(1, points.size() / kMostDates);
    auto const label = [&](std::size_t i) {
        return ShownText(points[i].m_strLabel.empty()
                ? CEFOleDateTime::FromSeconds(points[i].m_nX).DateStrShortYear()
                : points[i].m_strLabel,
            30);
    };
    auto const last = points.size() - 1;
    auto const width = m_flow.Faces().m_tiny.Width(label(last)) + m_flow.Points(5);
    double free = 0;
    for (std::size_t i = 0; i < last; i += each) {
        auto const half = m_flow.Faces().m_tiny.Width(label(i)) / 2;
        auto const end = std::min(XOf(last) + width / 2, m_flow.Width()) - width;
        if (i == 0 || XOf(i) + half < end) {
            Below(XOf(i), label(i), free);
        }
    }
    Below(XOf(last), label(last), free);
}

void CPanel::DrawBars()
{
    auto& painter = *m_flow.Painter();
    auto const& tiny = m_flow.Faces().m_tiny;
    auto const& points = m_series.m_lstPoints;
    auto const each = m_area.width() / double(points.size());
    double free = 0;
    double freeAbove = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        auto const middle = m_area.left() + (double(i) + 0.5) * each;
        auto const top = YOf(std::max(points[i].m_dY, 0.0));
        auto const half = std::min(each * 0.38, m_flow.Points(14));
        painter.setPen(QPen(Qt::black, m_flow.Points(0.5)));
        painter.setBrush(QColor::fromRgb(0x909090));
        painter.drawRect(QRectF(middle - half, top, 2 * half, YOf(0) - top));
        painter.setPen(Qt::black);
        auto const number = QString::number(points[i].m_dY, 'g', 7);
        if (auto const width = tiny.Width(number); middle - width / 2 >= freeAbove) {
            m_flow.Text(
                tiny, middle - width / 2, std::max(top, m_area.top()) - m_flow.Points(1.5), number);
            freeAbove = middle + width / 2 + m_flow.Points(1);
        }
        Below(middle, ShownText(points[i].m_strLabel, 30), free);
    }
    painter.setBrush(Qt::NoBrush);
}

} // namespace

bool FlowChart(CPageFlow& flow, CReportChart const& chart)
{
    auto const& faces = flow.Faces();
    CParagraph const words(
        faces.m_note, flow.Device(), ShownText(chart.m_strInWords), flow.Width(), 30);
    std::vector<CPanel> panels;
    for (auto const& series : chart.m_lstSeries) {
        if (IsDrawable(series)) {
            panels.emplace_back(flow, series, chart.m_kind == CReportChart::Kind::bars);
        }
    }
    flow.Gap(flow.Points(8));
    auto const room = panels.empty() ? words.Height() : panels.front().Height();
    if (!flow.Need(faces.m_bold.LineHeight() + room + (panels.size() == 1 ? words.Height() : 0))
        || !FlowText(flow, faces.m_bold, ShownText(chart.m_strTitle, 200))) {
        return false;
    }
    for (std::size_t i = 0; i < panels.size(); ++i) {
        auto const isLast = i + 1 == panels.size();
        if (!flow.Need(panels[i].Height() + (isLast ? words.Height() : 0))) {
            return false;
        }
        auto const y = flow.Take(panels[i].Height());
        if (flow.Painter() != nullptr) {
            panels[i].Draw(y);
        }
    }
    if (!flow.Need(words.Height())) {
        return false;
    }
    auto const y = flow.Take(words.Height());
    if (auto* const painter = flow.Painter(); painter != nullptr) {
        words.Draw(*painter, 0, y);
    }
    return true;
}
