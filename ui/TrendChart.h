#pragma once

#include "store/EFOleDateTime.h"

#include <QWidget>

#include <vector>

/// What a record adds to a trend; 0 = not measured.
struct CTrendPoint
{
    CEFOleDateTime m_dtDate;
    double m_dWeight = 0.0; ///< pounds
    double m_dPercentFat = 0.0;
};

/// A small chart of a member's weight and body fat over time, each in its own scale, with the first
/// and the last values beside it. Its description tells the same in words. Drawn in the colours of
/// the palette; the two lines differ in their strokes too.
class CTrendChart : public QWidget
{
    Q_OBJECT
public:
    /// The points in the order of time, two at least.
    explicit CTrendChart(std::vector<CTrendPoint> points, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void DrawLine(QPainter& painter, QRectF const& area, double CTrendPoint::*value) const;

    std::vector<CTrendPoint> const m_lstPoints;
};
