#include "widgets/TextMetrics.h"

#include <QtGui/QFontInfo>
#include <QtGui/QFontMetrics>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace widgets {

namespace {

/// Up to this size of font, in points, widths are pixels as given.
constexpr double PlainFontSize = 9;

} // namespace

CString ChineseLine()
{
    return u"国"_s;
}

int ChineseWidth(const QFontMetrics& metrics, int characters)
{
    return metrics.horizontalAdvance(u'名') * characters;
}

int ColumnWidth(const QFontMetrics& metrics, const CString& sample)
{
    return metrics.horizontalAdvance(sample) + metrics.height();
}

double FontScale(const QFont& font)
{
    return std::max(1.0, QFontInfo(font).pointSizeF() / PlainFontSize);
}

} // namespace widgets
