#include "widgets/ControlText.h"

#include <QtWidgets/QLabel>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ControlText, BreakableTextFitsIntoAnyWidthAndLosesNothing)
{
    const CString path = CString(300, u'x') + u"𠮷"_s + CString(300, u'y');
    const CString breakable = widgets::Breakable(path);
    EXPECT_EQ(CString(breakable).remove(QChar(0x200B)), path);
    EXPECT_TRUE(breakable.contains(u"𠮷"_s)) << "a character is not broken";
    QLabel label(breakable);
    label.setWordWrap(true);
    EXPECT_LT(label.minimumSizeHint().width(), label.fontMetrics().horizontalAdvance(path) / 4);
    EXPECT_GT(label.heightForWidth(100), 5 * label.fontMetrics().height());
}
