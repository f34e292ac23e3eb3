#include "ui/ListMarks.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

namespace
{

QPixmap MarkOf(QColor const& color, int size, bool filled)
{
    constexpr double kPart = 0.15; // of the size, around the square
    double const ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, size / 8.0));
    auto const square = QRectF(0, 0, size, size)
                            .adjusted(kPart * size, kPart * size, -kPart * size, -kPart * size);
    if (filled) {
        painter.setBrush(color);
        painter.drawRect(square);
    } else {
        painter.drawRect(square);
        painter.drawLine(square.bottomLeft(), square.topRight());
    }
    return pixmap;
}

} // namespace

std::array<QIcon, 2> MakeListMarks(QPalette const& palette, int size)
{
    std::array<QIcon, 2> marks;
    for (bool const filled : {true, false}) {
        auto& mark = marks[filled ? 0 : 1];
        mark.addPixmap(MarkOf(palette.color(QPalette::Text), size, filled), QIcon::Normal);
        mark.addPixmap(
            MarkOf(palette.color(QPalette::HighlightedText), size, filled), QIcon::Selected);
    }
    return marks;
}
