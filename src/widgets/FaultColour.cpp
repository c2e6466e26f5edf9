#include "widgets/FaultColour.h"

#include <QtGui/QPalette>
#include <QtWidgets/QLabel>

namespace widgets {

namespace {

constexpr QRgb RedOnLight = qRgb(176, 0, 32);
constexpr QRgb RedOnDark = qRgb(255, 138, 128);
constexpr int HalfLightness = 128;

} // namespace

void MarkAsFault(QLabel& label, bool fault)
{
    QPalette palette; // what is not set here comes from the label's parent
    if (fault) {
        const bool dark = label.palette().color(QPalette::Window).lightness() < HalfLightness;
        palette.setColor(QPalette::WindowText, QColor(dark ? RedOnDark : RedOnLight));
    }
    label.setPalette(palette);
}

} // namespace widgets
