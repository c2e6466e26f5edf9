#include "editor/docks/findings/SeverityMark.h"

#include "widgets/ReadableColour.h"

#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QPixmap>

#include <array>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

// On light backgrounds; on dark ones they become lighter.
constexpr QRgb ErrorColour = qRgb(176, 0, 32);
constexpr QRgb WarningColour = qRgb(180, 95, 6);
constexpr QRgb NoteColour = qRgb(46, 92, 158);

QColor ColourOf(rules::Severity severity)
{
    switch (severity) {
    case rules::Severity::Error:
        return ErrorColour;
    case rules::Severity::Warning:
        return WarningColour;
    case rules::Severity::Note:
        break;
    }
    return NoteColour;
}

/// Within a square of one: a disc for errors, a triangle for warnings, a ring for notes.
void Draw(QPainter& painter, rules::Severity severity, const QColor& colour)
{
    constexpr QRectF Disc(0.15, 0.15, 0.7, 0.7);
    constexpr QRectF Ring(0.22, 0.22, 0.56, 0.56);
    constexpr std::array Triangle{QPointF(0.5, 0.1), QPointF(0.92, 0.85), QPointF(0.08, 0.85)};
    constexpr double RingWidth = 0.14;
    if (severity == rules::Severity::Note) {
        painter.setPen(QPen(colour, RingWidth));
        painter.drawEllipse(Ring);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    if (severity == rules::Severity::Error)
        painter.drawEllipse(Disc);
    else
        painter.drawPolygon(Triangle.data(), static_cast<int>(Triangle.size()));
}

/// On `ground`, unless that is transparent, the mark is smaller.
QPixmap PixmapOf(rules::Severity severity, const QColor& colour, int size, const QColor& ground)
{
    constexpr double OnGround = 0.8;
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size, size);
    if (ground.alpha() > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawEllipse(QRectF(0, 0, 1, 1));
        painter.translate((1 - OnGround) / 2, (1 - OnGround) / 2);
        painter.scale(OnGround, OnGround);
        painter.setBrush(Qt::NoBrush);
    }
    Draw(painter, severity, colour);
    return pixmap;
}

} // namespace

CString SeverityText(rules::Severity severity)
{
    switch (severity) {
    case rules::Severity::Error:
        return u"错误"_s;
    case rules::Severity::Warning:
        return u"警告"_s;
    case rules::Severity::Note:
        break;
    }
    return u"提示"_s;
}

QIcon SeverityIcon(rules::Severity severity, const QPalette& palette)
{
    constexpr std::array Sizes{16, 24, 32, 48};
    QIcon icon;
    for (const int size : Sizes) {
        const QColor colour = widgets::ReadableOn(palette.color(QPalette::Base), ColourOf(severity));
        icon.addPixmap(PixmapOf(severity, colour, size, Qt::transparent));
        // A selection is strong or pale, by where the focus is, and the mark is seen on either.
        icon.addPixmap(PixmapOf(severity, colour, size, palette.color(QPalette::Base)), QIcon::Selected);
    }
    return icon;
}

} // namespace editor
