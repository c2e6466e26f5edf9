#pragma once

#include "dialogs/template/DialogTemplate.h"

#include <QtCore/QRect>
#include <QtGui/QFontMetricsF>

namespace dialogs {

/// Pixels per dialog unit. One unit is a quarter of the average letter's width, or an eighth of the line's
/// height.
class DialogUnits
{
public:
    /// The units of a font, from its letters A to Z and a to z.
    explicit DialogUnits(const QFontMetricsF& metrics);

    /// Widens the units as far as a control of that size in units needs to be `pixels` large. Tables drawn
    /// for one toolkit's margins so hold another toolkit's without being drawn anew, and keep their
    /// proportions.
    void GrowToFit(const DialogRect& rect, QSize pixels);

    /// In pixels; never smaller than the units say.
    QRect Map(const DialogRect& rect) const;

private:
    double m_x;
    double m_y;
};

} // namespace dialogs
