#include "editor/window/AppIcon.h"

#include <QtGui/QPainter>
#include <QtGui/QPixmap>

#include <array>

namespace editor {

namespace {

constexpr double Grid = 16; ///< the drawing is made on a square of this many units
const QColor Ground(30, 96, 145);
const QColor Line(255, 255, 255);
const QColor Accent(255, 183, 3);

/// A rule as a branch: a condition, and the two items that apply when it holds.
QPixmap Draw(int size)
{
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / Grid, size / Grid);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Ground);
    painter.drawRoundedRect(QRectF(0, 0, Grid, Grid), 3, 3);
    painter.setPen(QPen(Line, 1.2));
    painter.drawPolyline(QPolygonF{{4.5, 6}, {4.5, 11.5}, {9, 11.5}});
    painter.drawLine(QPointF(4.5, 8), QPointF(9, 8));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Accent);
    painter.drawRect(QRectF(2.5, 2.8, 6, 3.2));
    painter.setBrush(Line);
    painter.drawRect(QRectF(8.7, 6.8, 5, 2.4));
    painter.drawRect(QRectF(8.7, 10.3, 5, 2.4));
    return picture;
}

} // namespace

QIcon AppIcon()
{
    QIcon icon;
    for (const int size : std::array{16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(Draw(size));
    return icon;
}

} // namespace editor
