#include "dialogs/secondary/TipUser.h"

#include "support/Patience.h"
#include "support/PrintText.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using test::ComboUser;
using test::Tip;
using test::TipText;

namespace {

TEST(CTTComboBoxTip, EntryThatDoesNotFitIsShownWhole)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    EXPECT_EQ(TipText(), ComboUser::Wide);
    EXPECT_EQ(Tip()->Holder(), user.List());
}

TEST(CTTComboBoxTip, EntryThatFitsShowsNone)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(0);
    EXPECT_EQ(TipText(), CString());
}

TEST(CTTComboBoxTip, EntryThatFitsHidesTheTipOfTheEntryBefore)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    user.MoveTo(2);
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->LastItem(), 2);
}

TEST(CTTComboBoxTip, NextEntryReplacesTheTip)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    user.MoveTo(3);
    EXPECT_EQ(TipText(), ComboUser::Wide + u"2"_s);
}

TEST(CTTComboBoxTip, LiesOverItsEntry)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    const QRect line = user.Combo().view()->visualRect(user.Combo().model()->index(1, 0));
    const QRect entry(user.List()->mapToGlobal(line.topLeft()), line.size());
    EXPECT_EQ(Tip()->geometry().top(), entry.top() - 2);
    EXPECT_LE(std::abs(Tip()->geometry().left() - entry.left()), 4);
    const QFontMetrics metrics(QToolTip::font());
    EXPECT_EQ(Tip()->width(), metrics.size(Qt::TextSingleLine, ComboUser::Wide).width() + 4);
}

TEST(CTTComboBoxTip, StaysOnTheScreen)
{
    ComboUser user(true);
    const QRect screen = user.Window().screen()->availableGeometry();
    user.Window().move(screen.right() - 260, screen.top() + 50);
    user.Open();
    user.MoveTo(1);
    ASSERT_EQ(TipText(), ComboUser::Wide);
    EXPECT_LE(Tip()->geometry().right(), screen.right());
}

TEST(CTTComboBoxTip, LeavingTheListForgetsTheEntry)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(user.List(), &leave);
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->LastItem(), -1);
    user.MoveTo(1, 1);
    EXPECT_EQ(TipText(), ComboUser::Wide);
}

TEST(CTTComboBoxTip, MouseOutsideTheListCountsAsLeaving)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    const QPoint outside(-20, 5);
    QMouseEvent move(QEvent::MouseMove, outside, user.List()->mapToGlobal(outside), Qt::NoButton,
                     Qt::NoButton, {});
    QApplication::sendEvent(user.List(), &move);
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->LastItem(), -1);
}

TEST(CTTComboBoxTip, GoesByItselfAndStaysAwayOnTheSameEntry)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    auto* timer = Tip()->findChild<QTimer*>();
    ASSERT_NE(timer, nullptr);
    EXPECT_EQ(timer->interval(), 9000);
    EXPECT_TRUE(timer->isActive());
    timer->start(1);
    test::WaitInLoopFor(u"end of the tip"_s, [] { return !Tip()->isVisible(); });
    EXPECT_EQ(Tip()->Holder(), nullptr);
    user.MoveTo(1, 3);
    EXPECT_EQ(TipText(), CString());
}

TEST(CTTComboBoxTip, TimeIsStartedAnewOnEveryTip)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    auto* timer = Tip()->findChild<QTimer*>();
    timer->start(1000000);
    user.MoveTo(3);
    EXPECT_EQ(timer->interval(), 9000);
    EXPECT_TRUE(timer->isActive());
}

TEST(CTTComboBoxTip, SeesTheMouseOnlyWhileItIsUp)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    Tip()->HideTip();
    QWidget other;
    QMouseEvent move(QEvent::MouseMove, QPoint(1, 1), QPoint(700, 500), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(&other, &move);
    EXPECT_EQ(Tip()->LastItem(), 1);
}

TEST(CTTComboBoxTip, MouseOverAnotherWindowOfTheProgramCountsAsLeaving)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    QWidget other;
    QMouseEvent move(QEvent::MouseMove, QPoint(1, 1), QPoint(700, 500), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(&other, &move);
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->LastItem(), -1);
}

TEST(CTTComboBoxTip, GoesWithTheList)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    user.Combo().hidePopup();
    QCoreApplication::processEvents();
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->Holder(), nullptr);
    EXPECT_EQ(Tip()->LastItem(), -1);
}

TEST(CTTComboBoxTip, FaceThatDoesNotFitIsShownOnRest)
{
    ComboUser user(false);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(&user.Combo());
    EXPECT_EQ(TipText(), ComboUser::Wide);
    EXPECT_EQ(Tip()->Holder(), &user.Combo());
}

TEST(CTTComboBoxTip, FaceDoesNotCountTheButtonAsRoom)
{
    ComboUser user(false);
    user.Combo().setCurrentIndex(0);
    const int room = user.Combo().width() - 8;
    CString text = u"i"_s;
    const QFontMetrics metrics(QToolTip::font());
    while (metrics.horizontalAdvance(text + u"i"_s) < room)
        text += u"i"_s;
    user.Combo().setItemText(0, text);
    ComboUser::Rest(&user.Combo());
    EXPECT_EQ(TipText(), text);
}

TEST(CTTComboBoxTip, FaceThatFitsShowsNone)
{
    ComboUser user(false);
    user.Combo().setCurrentIndex(2);
    ComboUser::Rest(&user.Combo());
    EXPECT_EQ(TipText(), CString());
}

TEST(CTTComboBoxTip, LeavingTheFaceHidesButRemembersTheEntry)
{
    ComboUser user(false);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(&user.Combo());
    Tip()->SetLastItem(1);
    user.MoveOut();
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->LastItem(), 1);
}

TEST(CTTComboBoxTip, ClickOnTheFaceHidesIt)
{
    ComboUser user(false);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(&user.Combo());
    ASSERT_EQ(TipText(), ComboUser::Wide);
    QTest::mousePress(&user.Combo(), Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->Holder(), nullptr);
    QTest::mouseRelease(&user.Combo(), Qt::LeftButton, {}, QPoint(10, 10));
}

TEST(CTTComboBoxTip, NoneWhenSwitchedOff)
{
    ComboUser user(true);
    user.Combo().SetTipsEnabled(false);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_EQ(TipText(), CString());
    user.MoveOut();
    ComboUser::Rest(&user.Combo());
    EXPECT_EQ(TipText(), CString());
    user.MoveOut();
    user.Open();
    user.MoveTo(1);
    EXPECT_EQ(TipText(), CString());
    user.Combo().hidePopup();
    user.MoveOut();
    user.Combo().SetTipsEnabled(true);
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_EQ(TipText(), ComboUser::Wide);
}

// Over a combo that can be edited the mouse is over the field and never over the face.
TEST(CTTComboBoxTip, FaceShowsNoneWhenSwitchedOff)
{
    ComboUser user(false);
    user.Combo().SetTipsEnabled(false);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(&user.Combo());
    EXPECT_EQ(TipText(), CString());
    user.MoveOut();
    user.Combo().SetTipsEnabled(true);
    ComboUser::Rest(&user.Combo());
    EXPECT_EQ(TipText(), ComboUser::Wide);
}

TEST(CTTComboBoxTip, SwitchingOffHidesTheOneThatIsUp)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(user.Combo().lineEdit());
    user.Combo().SetTipsEnabled(false);
    EXPECT_EQ(TipText(), CString());
}

TEST(CTTComboBoxTip, ShowsInTheDesktopsTipColoursWithABlackFrame)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    const QImage image = Tip()->grab().toImage();
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(1, 1), QToolTip::palette().color(QPalette::Inactive, QPalette::ToolTipBase));
}

// Each letter of the text leaves ink in its own part of the tip: a blank picture and a clipped text do not.
TEST(CTTComboBoxTip, DrawsItsText)
{
    ComboUser user(true);
    user.Open();
    user.MoveTo(1);
    const QImage image = Tip()->grab().toImage();
    const QColor paper = QToolTip::palette().color(QPalette::Inactive, QPalette::ToolTipBase);
    const auto hasInk = [&](int from, int to) {
        for (int x = from; x < to; ++x)
            for (int y = 2; y < image.height() - 2; ++y)
                if (image.pixelColor(x, y) != paper) return true;
        return false;
    };
    const int inner = image.width() - 4; // less the margin on either side
    constexpr int parts = 6;
    for (int part = 0; part < parts; ++part)
        EXPECT_TRUE(hasInk(2 + inner * part / parts, 2 + inner * (part + 1) / parts)) << part;
}

TEST(CTTComboBoxTip, DoesNotTakeMouseFocusOrActivation)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_TRUE(Tip()->windowFlags().testFlag(Qt::WindowTransparentForInput));
    EXPECT_TRUE(user.Window().isActiveWindow());
}

TEST(CTTComboBoxTip, WindowIsSharedAndGoesWithTheLastCombo)
{
    ASSERT_EQ(Tip(), nullptr);
    auto first = std::make_unique<CTTComboBox>();
    const QPointer<TipWindow> window = Tip();
    auto second = std::make_unique<CTTComboBox>();
    ASSERT_FALSE(window.isNull());
    EXPECT_EQ(Tip(), window);
    first.reset();
    EXPECT_FALSE(window.isNull());
    second.reset();
    EXPECT_TRUE(window.isNull());
}

TEST(CTTComboBoxTip, GoesWithAComboThatIsDestroyedUnderIt)
{
    auto keeper = std::make_unique<CTTComboBox>();
    auto user = std::make_unique<ComboUser>(true);
    user->Combo().setCurrentIndex(1);
    ComboUser::Rest(user->Combo().lineEdit());
    ASSERT_EQ(TipText(), ComboUser::Wide);
    user.reset();
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->Holder(), nullptr);
}

TEST(CTTComboBoxTip, ThousandCombosLeaveNothingBehind)
{
    const auto before = QApplication::allWidgets().size();
    for (int round = 0; round < 1000; ++round) {
        CTTComboBox combo;
        combo.setEditable(round % 2 == 0);
        combo.addItems({u"短"_s, ComboUser::Wide});
        const QPointer<QWidget> list = combo.view();
        if (round % 100 == 0) combo.showPopup();
    }
    EXPECT_EQ(QApplication::allWidgets().size(), before);
    EXPECT_EQ(Tip(), nullptr);
}

} // namespace
