#include "editor/messages/Boxes.h"

#include <QtWidgets/QMessageBox>

#include <gtest/gtest.h>

#include <array>

using namespace Qt::StringLiterals;

TEST(EditorBoxes, AreWideEnoughForTheirCaptionWithTheIconAndButtonsOfItsBar)
{
    const std::array boxes{editor::MakeOpenAnywayBox(nullptr, u"a"_s, u"b"_s),
                           editor::MakeHeadTargetBox(nullptr, u"a"_s)};
    for (const auto& box : boxes) {
        box->setText(u"短"_s);
        box->setInformativeText({});
        box->show();
        QFont bold = box->font();
        bold.setBold(true);
        const QFontMetrics metrics(bold);
        EXPECT_GE(box->width(), metrics.horizontalAdvance(box->windowTitle()) + 6 * metrics.height());
    }
}
