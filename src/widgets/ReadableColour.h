#pragma once

#include <QtGui/QColor>

namespace widgets {

/// How well two colours are told apart, from 1 for the same to 21 for black and white: the ratio of their
/// relative luminances as the accessibility guidelines define it.
double Contrast(const QColor& one, const QColor& other);

/// A text colour to be used on `background`: `wanted` itself on a light background, and on a dark one as long
/// as it can be made out there; otherwise a lighter one of the same hue.
QColor ReadableOn(const QColor& background, const QColor& wanted);

/// Black or white, whichever reads better on a background that no palette changes.
QColor BlackOrWhiteOn(const QColor& background);

} // namespace widgets
