#pragma once

#include <QtGui/QColor>
#include <QtGui/QPalette>

class QWidget;

namespace widgets {

/// The colour of thin lines that are drawn on `paper`, a background: between it and `ink`, what is written on
/// it, so that they are seen in light and dark palettes and stay behind the texts.
QColor LineColour(const QPalette& palette, QPalette::ColorRole paper, QPalette::ColorRole ink);

/// The same for a hint in an empty field: as pale as it can be while it is read.
QColor HintColour(const QPalette& palette);

/// Gives the hint of an empty field that colour: what the toolkit takes for hints can hardly be read in dark
/// palettes. For the palette that the field has now.
void ColourHint(QWidget& field);

} // namespace widgets
