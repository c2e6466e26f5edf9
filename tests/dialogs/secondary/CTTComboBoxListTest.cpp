#include "dialogs/secondary/TipUser.h"

#include "support/PrintText.h"

#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

// What is switched off at first: refused entries, alignment, own drawing.

using namespace Qt::StringLiterals;
using test::ComboUser;

namespace {

TEST(CTTComboBox, ClickChoosesAnEntry)
{
    ComboUser user(true);
    user.Open();
    user.ClickEntry(2);
    EXPECT_EQ(user.Chosen(), CStringArray{u"m"_s});
    EXPECT_FALSE(user.List()->isVisible());
}

TEST(CTTComboBox, ClickOnARefusedEntryIsSwallowed)
{
    ComboUser user(true);
    user.Combo().SetDisabledItems({2});
    user.Open();
    user.ClickEntry(2);
    EXPECT_EQ(user.Chosen(), CStringArray());
    EXPECT_TRUE(user.List()->isVisible());
    user.ClickEntry(0);
    EXPECT_EQ(user.Chosen(), CStringArray{u"短"_s});
}

TEST(CTTComboBox, DoubleClickOnARefusedEntryIsSwallowed)
{
    ComboUser user(true);
    int reached = 0;
    QObject::connect(user.Combo().view(), &QAbstractItemView::doubleClicked, &user.Window(),
                     [&reached](const QModelIndex& entry) { reached += entry.row() == 2 ? 1 : 0; });
    user.Open();
    const QRect line = user.Combo().view()->visualRect(user.Combo().model()->index(2, 0));
    // The toolkit counts a double click only on the entry it has seen pressed before.
    user.Combo().SetDisabledItems({});
    QTest::mousePress(user.List(), Qt::LeftButton, {}, line.topLeft() + QPoint(6, 6));
    user.Combo().SetDisabledItems({2});
    QTest::mouseDClick(user.List(), Qt::LeftButton, {}, line.topLeft() + QPoint(6, 6));
    QTest::mouseRelease(user.List(), Qt::LeftButton, {}, line.topLeft() + QPoint(6, 6));
    EXPECT_EQ(reached, 0);
    EXPECT_EQ(user.Chosen(), CStringArray());
    EXPECT_TRUE(user.List()->isVisible());
}

struct WheelCase
{
    const char* name;
    CArray<int> refused;
    int start;
    int delta;
    int expected;
};

class CTTComboBoxWheel : public ::testing::TestWithParam<WheelCase>
{
};

TEST_P(CTTComboBoxWheel, StepsOverRefusedEntriesInTheirOrder)
{
    ComboUser user(false);
    user.Combo().SetDisabledItems(GetParam().refused);
    user.Combo().setCurrentIndex(GetParam().start);
    user.Wheel(GetParam().delta);
    EXPECT_EQ(user.Combo().currentIndex(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CTTComboBoxWheel,
    ::testing::Values(WheelCase{"NoneRefusedDown", {}, 0, -120, 1}, WheelCase{"NoneRefusedUp", {}, 2, 120, 1},
                      WheelCase{"NoneRefusedAtTheEnd", {}, 3, -120, 3}, WheelCase{"OneDown", {1}, 0, -120, 2},
                      WheelCase{"OneUp", {2}, 3, 120, 1},
                      WheelCase{"NeighboursInTheWheelsOrder", {1, 2}, 0, -120, 3},
                      WheelCase{"NeighboursAgainstTheWheelsOrderStop", {2, 1}, 0, -120, 2},
                      WheelCase{"PastTheLastSelectsNothing", {3}, 2, -120, -1},
                      WheelCase{"PastTheFirstSelectsNothing", {0}, 1, 120, -1}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(CTTComboBoxWheel, WithoutSelectionRefusesNothing)
{
    ComboUser user(false);
    user.Combo().SetDisabledItems({0});
    user.Combo().setCurrentIndex(-1);
    user.Wheel(120);
    EXPECT_EQ(user.Combo().currentIndex(), -1);
}

struct AlignCase
{
    const char* name;
    int alignment;
    int numerator; ///< of the halves of the excess width by which the list is moved to the left
};

class CTTComboBoxAlignment : public ::testing::TestWithParam<AlignCase>
{
};

TEST_P(CTTComboBoxAlignment, PlacesAWiderList)
{
    ComboUser user(true);
    user.Combo().SetDroppedWidth(181);
    user.Open();
    const QWidget* list = user.Combo().view()->window();
    const QPoint plain = list->pos();
    const int excess = list->width() - user.Combo().width();
    ASSERT_GE(excess, 90);
    user.Combo().hidePopup();
    user.Combo().SetListAlignment(GetParam().alignment);
    user.Open();
    EXPECT_EQ(list->pos(), plain - QPoint(excess * GetParam().numerator / 2, 0));
}

INSTANTIATE_TEST_SUITE_P(Cases, CTTComboBoxAlignment,
                         ::testing::Values(AlignCase{"Left", 0, 0}, AlignCase{"Right", 1, 2},
                                           AlignCase{"Centre", 2, 1}, AlignCase{"AnythingElse", 7, 0}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(CTTComboBox, DroppedWidthIsAtLeastTheControls)
{
    ComboUser user(true);
    EXPECT_EQ(user.Combo().GetDroppedWidth(), user.Combo().width());
    user.Combo().SetDroppedWidth(30);
    EXPECT_EQ(user.Combo().GetDroppedWidth(), user.Combo().width());
    user.Combo().SetDroppedWidth(200);
    EXPECT_EQ(user.Combo().GetDroppedWidth(), 200);
    user.Open();
    EXPECT_GE(user.List()->width(), 200);
}

/// The colour that most pixels of an entry have when the combo's delegate draws it in that state.
QColor BackgroundOf(CTTComboBox& combo, int entry, QStyle::State state)
{
    QImage image(80, 20, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = state;
    option.palette = combo.palette();
    combo.itemDelegate()->paint(&painter, option, combo.model()->index(entry, 0));
    painter.end();
    return image.pixelColor(78, 1);
}

/// Whether any pixel of a drawn entry has `ink`.
bool Shows(CTTComboBox& combo, int entry, QStyle::State state, const QColor& ink)
{
    QImage image(80, 20, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = state;
    option.palette = combo.palette();
    option.font = combo.font();
    option.font.setStyleStrategy(QFont::NoAntialias);
    combo.itemDelegate()->paint(&painter, option, combo.model()->index(entry, 0));
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == ink) return true;
        }
    }
    return false;
}

TEST(CTTComboBoxDrawing, SelectedEntryHasTheHighlightColours)
{
    ComboUser user(true);
    user.Combo().SetOwnerDrawn(true);
    const QPalette colours = user.Combo().palette();
    const QStyle::State selected = QStyle::State_Enabled | QStyle::State_Selected;
    EXPECT_EQ(BackgroundOf(user.Combo(), 1, selected), colours.color(QPalette::Highlight));
    EXPECT_TRUE(Shows(user.Combo(), 1, selected, colours.color(QPalette::HighlightedText)));
    EXPECT_EQ(BackgroundOf(user.Combo(), 1, QStyle::State_Enabled), colours.color(QPalette::Base));
}

TEST(CTTComboBoxDrawing, RefusedEntryNeverShowsAsSelected)
{
    ComboUser user(true);
    user.Combo().SetOwnerDrawn(true);
    user.Combo().SetDisabledItems({1});
    EXPECT_EQ(BackgroundOf(user.Combo(), 1, QStyle::State_Enabled | QStyle::State_Selected),
              user.Combo().palette().color(QPalette::Base));
}

TEST(CTTComboBoxDrawing, EntryInDisabledStateHasGrayText)
{
    ComboUser user(true);
    user.Combo().SetOwnerDrawn(true);
    const QColor gray = user.Combo().palette().color(QPalette::Disabled, QPalette::Text);
    EXPECT_TRUE(Shows(user.Combo(), 1, QStyle::State_None, gray));
    EXPECT_FALSE(Shows(user.Combo(), 1, QStyle::State_Enabled, gray));
}

TEST(CTTComboBoxDrawing, CanBeSwitchedOffAgain)
{
    ComboUser user(true);
    user.Combo().SetOwnerDrawn(true);
    user.Combo().SetOwnerDrawn(false);
    user.Combo().SetDisabledItems({1});
    EXPECT_NE(BackgroundOf(user.Combo(), 1, QStyle::State_Enabled | QStyle::State_Selected),
              user.Combo().palette().color(QPalette::Base));
}

} // namespace
