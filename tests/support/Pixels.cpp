#include "support/Pixels.h"

#include "widgets/ReadableColour.h"

#include <QtGui/QImage>
#include <QtWidgets/QApplication>

#include <algorithm>

namespace test {

QPalette DarkPalette()
{
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    return dark;
}

double MostContrast(const QImage& image, const QRect& place, const QColor& paper)
{
    double most = 1;
    const QRect seen = place & image.rect();
    for (int y = seen.top(); y <= seen.bottom(); ++y)
        for (int x = seen.left(); x <= seen.right(); ++x)
            most = std::max(most, widgets::Contrast(image.pixelColor(x, y), paper));
    return most;
}

ScopedPalette::ScopedPalette(const QPalette& palette) : m_former(QApplication::palette())
{
    QApplication::setPalette(palette);
}

ScopedPalette::~ScopedPalette()
{
    QApplication::setPalette(m_former);
}

} // namespace test
