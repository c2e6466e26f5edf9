#include "dialogs/template/DialogUnits.h"

#include <QtCore/QString>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace dialogs {

DialogUnits::DialogUnits(const QFontMetricsF& metrics) : m_y(metrics.height() / 8.0)
{
    const QString letters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"_s;
    m_x = metrics.horizontalAdvance(letters) / static_cast<double>(letters.size()) / 4.0;
}

void DialogUnits::GrowToFit(const DialogRect& rect, QSize pixels)
{
    if (rect.width > 0) m_x = std::max(m_x, pixels.width() / static_cast<double>(rect.width));
    if (rect.height > 0) m_y = std::max(m_y, pixels.height() / static_cast<double>(rect.height));
}

QRect DialogUnits::Map(const DialogRect& rect) const
{
    const auto position = [](double value) { return static_cast<int>(std::lround(value)); };
    const auto length = [](double value) { return static_cast<int>(std::ceil(value)); };
    return {position(rect.x * m_x), position(rect.y * m_y), length(rect.width * m_x),
            length(rect.height * m_y)};
}

} // namespace dialogs
