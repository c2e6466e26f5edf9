#include "dialogs/secondary/TipUser.h"

#include "support/Patience.h"
#include "support/PrintText.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::ComboUser;
using test::Tip;
using test::TipText;

// The tip over the edit field of a combo box.

TEST(CTTComboBoxEditTip, EditTextThatDoesNotFitIsShownOnRest)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(1);
    QLineEdit* edit = user.Combo().lineEdit();
    ComboUser::Rest(edit);
    EXPECT_EQ(TipText(), ComboUser::Wide);
    EXPECT_EQ(Tip()->Holder(), edit);
    EXPECT_EQ(Tip()->geometry().bottom(), edit->mapToGlobal(edit->rect().bottomLeft()).y() + 2);
}

TEST(CTTComboBoxEditTip, ComesByARealRestOfTheMouse)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(1);
    QTest::mouseMove(user.Combo().lineEdit(), QPoint(5, 5));
    QTest::mouseMove(user.Combo().lineEdit(), QPoint(7, 6));
    test::WaitInLoopFor(u"tip"_s, [] { return TipText() == ComboUser::Wide; });
}

TEST(CTTComboBoxEditTip, EditTextThatFitsShowsNone)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(0);
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_EQ(TipText(), CString());
}

TEST(CTTComboBoxEditTip, TypedTextIsShownToo)
{
    ComboUser user(true);
    user.Combo().clearEditText();
    QTest::keyClicks(user.Combo().lineEdit(), u"abcdefghijklmnopqrstuvwxyz"_s);
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_EQ(TipText(), u"abcdefghijklmnopqrstuvwxyz"_s);
}

TEST(CTTComboBoxEditTip, LeavingTheEditHidesAndForgets)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(user.Combo().lineEdit());
    Tip()->SetLastItem(1);
    user.MoveOut();
    EXPECT_EQ(TipText(), CString());
    EXPECT_EQ(Tip()->Holder(), nullptr);
    EXPECT_EQ(Tip()->LastItem(), -1);
}

TEST(CTTComboBoxEditTip, MouseOutsideTheEditCountsAsLeaving)
{
    ComboUser user(true);
    QLineEdit* edit = user.Combo().lineEdit(); // without a tip, which would notice by itself
    ComboUser::Rest(edit);
    ASSERT_EQ(TipText(), CString());
    Tip()->SetLastItem(1);
    const QPoint outside(-20, 5);
    QMouseEvent move(QEvent::MouseMove, outside, edit->mapToGlobal(outside), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(edit, &move);
    EXPECT_EQ(Tip()->LastItem(), -1);
}

TEST(CTTComboBoxEditTip, OneRestCountsPerVisit)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(user.Combo().lineEdit());
    Tip()->HideTip();
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_EQ(TipText(), CString());
    user.MoveOut();
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_EQ(TipText(), ComboUser::Wide);
}

TEST(CTTComboBoxEditTip, TypingIntoTheEditHidesIt)
{
    ComboUser user(true);
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(user.Combo().lineEdit());
    QTest::keyClick(user.Combo().lineEdit(), Qt::Key_A);
    EXPECT_EQ(TipText(), CString());
}

TEST(CTTComboBoxEditTip, EditFieldThatComesLaterIsWatchedToo)
{
    ComboUser user(false);
    user.Combo().setEditable(true);
    QCoreApplication::processEvents();
    user.Combo().setCurrentIndex(1);
    ComboUser::Rest(user.Combo().lineEdit());
    EXPECT_EQ(TipText(), ComboUser::Wide);
}

TEST(CTTComboBoxEditTip, EditFieldThatReplacesAnotherIsWatchedInItsPlace)
{
    ComboUser user(true);
    for (int time = 0; time < 3; ++time) {
        const QPointer<QLineEdit> former = user.Combo().lineEdit();
        user.Combo().setLineEdit(new QLineEdit);
        QCoreApplication::processEvents();
        EXPECT_TRUE(former.isNull());
        user.Combo().setCurrentIndex(1);
        ComboUser::Rest(user.Combo().lineEdit());
        EXPECT_EQ(TipText(), ComboUser::Wide);
        user.MoveOut();
        EXPECT_EQ(TipText(), CString());
        user.Combo().setCurrentIndex(0);
    }
}
