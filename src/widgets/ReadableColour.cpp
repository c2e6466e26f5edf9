#include "widgets/ReadableColour.h"

#include <algorithm>
#include <cmath>

namespace widgets {

namespace {

/// Up to here a colour that means something to the user is kept: below, text can hardly be made out.
constexpr double LeastContrast = 3.0;
/// A colour that is replaced anyway goes as far as small text needs it.
constexpr double GoodContrast = 4.5;
/// Black text and white text are told apart equally well from a background of this luminance.
constexpr double MiddleLuminance = 0.179;
/// From here on a grey of 0 to 255 counts as light.
constexpr int MiddleGrey = 128;
/// The share of white that is added from one attempt to the next.
constexpr double LightStep = 0.05;

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour)
{
    const QColor rgb = colour.toRgb();
    return 0.2126 * Linear(rgb.redF()) + 0.7152 * Linear(rgb.greenF()) + 0.0722 * Linear(rgb.blueF());
}

/// Adding the same share of white to each channel leaves the hue.
QColor Lightened(const QColor& colour, double share)
{
    const auto mixed = [share](double channel) {
        return static_cast<float>(channel + (1.0 - channel) * share);
    };
    return QColor::fromRgbF(mixed(colour.redF()), mixed(colour.greenF()), mixed(colour.blueF()));
}

} // namespace

double Contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor ReadableOn(const QColor& background, const QColor& wanted)
{
    const bool isDark = Luminance(background) < MiddleLuminance;
    if (!isDark || Contrast(wanted, background) >= LeastContrast) return wanted;
    QColor readable = wanted;
    for (double share = LightStep; share < 1.0 && Contrast(readable, background) < GoodContrast;
         share += LightStep)
        readable = Lightened(wanted, share);
    return readable;
}

QColor BlackOrWhiteOn(const QColor& background)
{
    return qGray(background.rgb()) >= MiddleGrey ? QColor(Qt::black) : QColor(Qt::white);
}

} // namespace widgets
