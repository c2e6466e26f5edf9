#include "editor/window/TypedAhead.h"

#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A dialog with a default button; a field has the focus, and the list of a combo has been open and is shut.
class KeysForAShutList : public ::testing::Test
{
protected:
    KeysForAShutList()
    {
        auto* lines = new QVBoxLayout(&m_window);
        lines->addWidget(&m_field);
        lines->addWidget(&m_combo);
        lines->addWidget(&m_button);
        m_button.setDefault(true);
        m_combo.addItems({u"甲"_s, u"乙"_s, u"丙"_s});
        m_window.show();
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
        m_combo.showPopup();
        m_list = m_combo.view()->window()->windowHandle();
        m_combo.hidePopup();
        m_field.setFocus();
    }

    /// A busy program hears that the list has the keyboard when it is shut already; the tests' platform tells
    /// it at once.
    void ShutListThatHasTheKeyboard()
    {
        m_combo.showPopup();
        test::WaitInLoopFor(u"the list"_s, [this] { return QGuiApplication::focusWindow() == m_list; });
        m_combo.hidePopup();
        ASSERT_EQ(QGuiApplication::focusWindow(), m_list);
        QT_WARNING_PUSH
        QT_WARNING_DISABLE_DEPRECATED
        QApplication::setActiveWindow(m_combo.view()->window());
        QT_WARNING_POP
    }

    void PressInList()
    {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_5, Qt::NoModifier, u"5"_s);
        QCoreApplication::sendEvent(m_list, &press);
    }

    QDialog m_window;
    QLineEdit m_field;
    QComboBox m_combo;
    QPushButton m_button;
    QWindow* m_list = nullptr;
};

} // namespace

TEST_F(KeysForAShutList, GoToWhereTheFocusIs)
{
    const editor::TypedAhead typedAhead;
    QTest::keyClicks(&m_field, u"6"_s);
    QTest::keyClick(m_list, Qt::Key_5);
    EXPECT_EQ(m_field.text(), u"65"_s);
}

TEST_F(KeysForAShutList, GoToItsWindowBeforeTheKeyboardHasComeBackFromIt)
{
    const editor::TypedAhead typedAhead;
    ShutListThatHasTheKeyboard();
    ASSERT_FALSE(m_field.hasFocus());
    PressInList();
    EXPECT_EQ(m_field.text(), u"5"_s);
    EXPECT_TRUE(m_field.hasFocus()); // which some widgets ask before they take a key
}

TEST_F(KeysForAShutList, DoNotMakeAWindowBehindAModalOneTheActiveOne)
{
    const editor::TypedAhead typedAhead;
    ShutListThatHasTheKeyboard();
    QDialog modal(&m_window);
    modal.setModal(true);
    modal.setAttribute(Qt::WA_ShowWithoutActivating);
    modal.show();
    PressInList();
    EXPECT_FALSE(m_window.isActiveWindow());
    EXPECT_EQ(m_field.text(), u""_s);
}

TEST_F(KeysForAShutList, LeaveTheFocusWhereItIsWhenItsWindowIsGone)
{
    const editor::TypedAhead typedAhead;
    ShutListThatHasTheKeyboard();
    m_window.hide();
    const QWidget* const active = QApplication::activeWindow();
    PressInList();
    EXPECT_EQ(QApplication::activeWindow(), active);
    EXPECT_FALSE(m_window.isActiveWindow());
}

TEST_F(KeysForAShutList, ChooseNothingInIt)
{
    const editor::TypedAhead typedAhead;
    QTest::keyClick(m_list, Qt::Key_Down);
    QTest::keyClick(m_list, Qt::Key_Return);
    EXPECT_EQ(m_combo.currentIndex(), 0);
}

TEST_F(KeysForAShutList, AreTheListsWhileItIsOpen)
{
    const editor::TypedAhead typedAhead;
    m_combo.showPopup();
    QTest::keyClick(m_list, Qt::Key_Down);
    QTest::keyClick(m_list, Qt::Key_Return);
    EXPECT_EQ(m_combo.currentIndex(), 1);
    EXPECT_EQ(m_field.text(), u""_s);
}

TEST_F(KeysForAShutList, DoNothingElseWhenTheyShutIt)
{
    const editor::TypedAhead typedAhead;
    int pressed = 0;
    QObject::connect(&m_button, &QPushButton::clicked, [&] { ++pressed; });
    m_combo.setFocus();
    m_combo.showPopup();
    QTest::keyClick(m_list, Qt::Key_Down);
    // Typed before the list was there, and so addressed to the window, which is asked for a shortcut first.
    QWindow* const window = m_window.windowHandle();
    QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &asked);
    test::WaitInLoopFor(u"the focus"_s, [&] { return QGuiApplication::focusWindow() == window; });
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &press);
    EXPECT_FALSE(m_list->isVisible());
    EXPECT_EQ(m_combo.currentIndex(), 1);
    EXPECT_EQ(pressed, 0);
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_EQ(pressed, 1);
}
