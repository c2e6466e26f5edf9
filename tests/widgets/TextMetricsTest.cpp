#include "widgets/TextMetrics.h"

#include <QtGui/QFont>
#include <QtGui/QFontInfo>
#include <QtGui/QFontMetrics>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QFont OfPoints(double points)
{
    QFont font;
    font.setPointSizeF(points);
    return font;
}

} // namespace

TEST(TextMetrics, SmallFontsDoNotScaleAndLargeOnesDoInProportion)
{
    EXPECT_DOUBLE_EQ(widgets::FontScale(OfPoints(6)), 1);
    EXPECT_DOUBLE_EQ(widgets::FontScale(OfPoints(9)), 1);
    EXPECT_NEAR(widgets::FontScale(OfPoints(18)), 2, 0.1);
}

TEST(TextMetrics, ColumnHasRoomBesideItsText)
{
    const QFontMetrics metrics(OfPoints(9));
    const CString sample = u"风管展开面积"_s;
    EXPECT_GT(widgets::ColumnWidth(metrics, sample), metrics.horizontalAdvance(sample));
}

TEST(TextMetrics, WidthOfChineseGrowsWithTheCharacters)
{
    const QFontMetrics metrics(OfPoints(9));
    EXPECT_GT(widgets::ChineseWidth(metrics, 1), 0);
    EXPECT_EQ(widgets::ChineseWidth(metrics, 12), 12 * widgets::ChineseWidth(metrics, 1));
}
