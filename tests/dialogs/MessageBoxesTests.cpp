#include "dialogs/MessageBoxes.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// Shows a message by the installed boxes and lets a user act at the box.
template <typename Shown>
auto ShowAndAct(const std::function<void(QMessageBox&)>& act, Shown show)
{
    const dialogs::MessageBoxes boxes;
    QTimer::singleShot(0, [&act] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        act(*box);
        box->close();
    });
    return show();
}

} // namespace

TEST(MessageBoxes, WarningHasItsTextCaptionIconAndOneButton)
{
    ShowAndAct(
        [](QMessageBox& box) {
            EXPECT_EQ(box.text(), u"<b>不能</b>!"_s);
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.windowTitle(), u"Norvasoft"_s);
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
            EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
        },
        [] { platform::ShowWarning(u"<b>不能</b>"_s); });
}

TEST(MessageBoxes, ReportHasTheInformationIcon)
{
    ShowAndAct([](QMessageBox& box) { EXPECT_EQ(box.icon(), QMessageBox::Information); },
               [] { platform::ShowReport(u"成功"_s); });
}

TEST(MessageBoxes, PlainBoxHasNoIcon)
{
    ShowAndAct([](QMessageBox& box) { EXPECT_EQ(box.icon(), QMessageBox::NoIcon); },
               [] {
                   platform::Show({platform::MessageKind::Plain, u"text"_s, u"caption"_s});
               });
}

TEST(MessageBoxes, QuestionHasNoAsItsDefault)
{
    ShowAndAct(
        [](QMessageBox& box) {
            EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
            EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
        },
        [] { platform::AskYesNo(u"覆盖"_s); });
}

TEST(MessageBoxes, QuestionGivesTheButtonThatWasClicked)
{
    EXPECT_TRUE(
        ShowAndAct([](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton); },
                   [] { return platform::AskYesNo(u"覆盖"_s); }));
    EXPECT_FALSE(
        ShowAndAct([](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton); },
                   [] { return platform::AskYesNo(u"覆盖"_s); }));
}

TEST(MessageBoxes, EnterEscapeAndTheCloseBoxAnswerNo)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        EXPECT_FALSE(ShowAndAct([key](QMessageBox& box) { QTest::keyClick(&box, key); },
                                [] { return platform::AskYesNo(u"覆盖"_s); }));
    }
    EXPECT_FALSE(ShowAndAct([](QMessageBox&) {}, [] { return platform::AskYesNo(u"覆盖"_s); }));
}

TEST(MessageBoxes, ActiveWindowOwnsTheBoxUnlessTheMessageWantsNoOwner)
{
    QWidget window;
    window.show();
    window.activateWindow();
    QApplication::setActiveWindow(&window);
    ShowAndAct([&window](QMessageBox& box) { EXPECT_EQ(box.parentWidget(), &window); },
               [] { platform::ShowWarning(u"a"_s); });
    QApplication::setActiveWindow(&window);
    ShowAndAct([](QMessageBox& box) { EXPECT_EQ(box.parentWidget(), nullptr); },
               [] {
                   platform::Show({platform::MessageKind::Plain, u"a"_s, u"b"_s, false});
               });
}

TEST(MessageBoxes, FormerHandlerIsBackWhenTheBoxesEnd)
{
    int handled = 0;
    const platform::ScopedMessageHandler former([&handled](const platform::Message&) {
        ++handled;
        return platform::Answer::Ok;
    });
    {
        const dialogs::MessageBoxes boxes;
    }
    platform::ShowWarning(u"a"_s);
    EXPECT_EQ(handled, 1);
}
