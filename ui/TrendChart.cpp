#include "ui/TrendChart.h"

#include "ui/Convert.h"

#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

struct CSeries
{
    double CTrendPoint::*m_pValue;
    Qt::PenStyle m_stroke;
    QPalette::ColorRole m_colour;
};

constexpr CSeries kWeight = {&CTrendPoint::m_dWeight, Qt::SolidLine, QPalette::Highlight};
constexpr CSeries kFat = {&CTrendPoint::m_dPercentFat, Qt::DashLine, QPalette::WindowText};

/// Those that were measured.
std::vector<CTrendPoint> Measured(std::vector<CTrendPoint> points, double CTrendPoint::*value)
{
    std::erase_if(points, [value](CTrendPoint const& point) { return point.*value == 0.0; });
    return points;
}

/// "Weight 181.5 to 190.2"; empty when nothing was measured.
QString RangeText(
    QString const& name, std::vector<CTrendPoint> const& points, double CTrendPoint::*value)
{
    auto const measured = Measured(points, value);
    return measured.empty() ? QString()
                            : CTrendChart::tr("%1: %2 to %3")
                                  .arg(name, QString::number(measured.front().*value, 'f', 1),
                                      QString::number(measured.back().*value, 'f', 1));
}

} // namespace

CTrendChart::CTrendChart(std::vector<CTrendPoint> points, QWidget* parent)
    : QWidget(parent)
    , m_lstPoints(std::move(points))
{
    setObjectName(u"trendChart"_s);
    setAccessibleName(tr("Weight and body fat over time"));
    auto const dates = tr("%1 to %2")
                           .arg(ToQt(m_lstPoints.front().m_dtDate.DateStrLongYear()),
                               ToQt(m_lstPoints.back().m_dtDate.DateStrLongYear()));
    QStringList texts{dates, RangeText(tr("weight in pounds"), m_lstPoints, kWeight.m_pValue),
        RangeText(tr("body fat in percent"), m_lstPoints, kFat.m_pValue)};
    texts.removeAll(QString());
    setAccessibleDescription(texts.join(u"; "_s));
    setToolTip(accessibleDescription());
}

QSize CTrendChart::sizeHint() const
{
    auto const line = fontMetrics().lineSpacing();
    return {32 * line, 8 * line};
}

void CTrendChart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::WindowText));
    int const line = fontMetrics().lineSpacing();
    // Above the lines what they are, below them the dates.
    for (auto const& [series, text, flags] :
        {std::tuple(kWeight, RangeText(tr("Weight"), m_lstPoints, kWeight.m_pValue), Qt::AlignLeft),
            {kFat, RangeText(tr("Body fat"), m_lstPoints, kFat.m_pValue), Qt::AlignRight}}) {
        if (text.isEmpty()) {
            continue;
        }
        QRect const place = rect().adjusted(2 * line, 0, 0, 0);
        painter.drawText(place, int(flags | Qt::AlignTop), text);
        painter.save();
        painter.setPen(QPen(palette().color(series.m_colour), 2, series.m_stroke));
        int const textWidth = fontMetrics().horizontalAdvance(text);
        int const end = (flags == Qt::AlignLeft ? place.left() : place.right() - textWidth) - 4;
        painter.drawLine(end - 2 * line + 6, line / 2, end, line / 2);
        DrawLine(painter, QRectF(rect()).adjusted(3, 1.5 * line, -3, -1.5 * line), series.m_pValue);
        painter.restore();
    }
    painter.drawText(rect(), int(Qt::AlignLeft | Qt::AlignBottom),
        ToQt(m_lstPoints.front().m_dtDate.DateStrShortYear()));
    painter.drawText(rect(), int(Qt::AlignRight | Qt::AlignBottom),
        ToQt(m_lstPoints.back().m_dtDate.DateStrShortYear()));
}

void CTrendChart::DrawLine(QPainter& painter, QRectF const& area, double CTrendPoint::*value) const
{
    auto const points = Measured(m_lstPoints, value);
    auto const [least, greatest] = std::ranges::minmax_element(points, {}, value);
    double const span = std::max(1.0, (*greatest).*value - (*least).*value);
    auto const first = m_lstPoints.front().m_dtDate.Seconds();
    double const time = std::max(1.0, double(m_lstPoints.back().m_dtDate.Seconds() - first));
    QPolygonF polygon;
    for (auto const& point : points) {
        polygon
            += QPointF(area.left() + area.width() * double(point.m_dtDate.Seconds() - first) / time,
                area.bottom() - area.height() * (point.*value - (*least).*value) / span);
    }
    painter.drawPolyline(polygon);
    painter.setPen(QPen(painter.pen().color(), 2));
    painter.setBrush(painter.pen().color());
    for (auto const& point : polygon) {
        painter.drawEllipse(point, 2, 2);
    }
}
