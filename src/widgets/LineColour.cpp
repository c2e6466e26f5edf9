#include "widgets/LineColour.h"

#include <QtWidgets/QWidget>

namespace widgets {

namespace {

QColor Between(const QColor& paper, const QColor& ink, int percent)
{
    const auto mix = [percent](int from, int to) { return from + (to - from) * percent / 100; };
    return {mix(paper.red(), ink.red()), mix(paper.green(), ink.green()), mix(paper.blue(), ink.blue())};
}

} // namespace

QColor LineColour(const QPalette& palette, QPalette::ColorRole paper, QPalette::ColorRole ink)
{
    constexpr int OfInk = 35;
    return Between(palette.color(paper), palette.color(ink), OfInk);
}

QColor HintColour(const QPalette& palette)
{
    constexpr int OfInk = 62;
    return Between(palette.color(QPalette::Base), palette.color(QPalette::Text), OfInk);
}

void ColourHint(QWidget& field)
{
    QPalette colours = field.palette();
    const QColor wanted = HintColour(colours);
    if (colours.color(QPalette::PlaceholderText) == wanted) return;
    colours.setColor(QPalette::PlaceholderText, wanted);
    field.setPalette(colours);
}

} // namespace widgets
