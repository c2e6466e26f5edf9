#pragma once

#include <QtGui/QColor>
#include <QtGui/QPalette>

class QImage;
class QRect;

namespace test {

/// A palette as dark desktops have it.
QPalette DarkPalette();

/// How well the colour in `place` of a picture that stands out most can be told from `paper`, as
/// `widgets::Contrast` counts.
double MostContrast(const QImage& image, const QRect& place, const QColor& paper);

/// Gives the program another palette until its end.
class ScopedPalette
{
public:
    explicit ScopedPalette(const QPalette& palette);
    ~ScopedPalette();
    ScopedPalette(const ScopedPalette&) = delete;
    ScopedPalette& operator=(const ScopedPalette&) = delete;

private:
    QPalette m_former;
};

} // namespace test
