#include "dialogs/process/MessageBoxes.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

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

QStringList Captions(const QMessageBox& box)
{
    QStringList captions;
    for (const QAbstractButton* button : box.buttons())
        captions.append(button->text());
    return captions;
}

QPushButton& Button(const QMessageBox& box, QMessageBox::ButtonRole role)
{
    for (QAbstractButton* button : box.buttons())
        if (box.buttonRole(button) == role) return *qobject_cast<QPushButton*>(button);
    throw std::out_of_range("no button of that role");
}

/// The style of a desktop on which standard buttons have icons.
class IconStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

TEST(MessageBoxes, WarningHasItsTextCaptionIconAndOneButton)
{
    ShowAndAct(
        [](QMessageBox& box) {
            EXPECT_EQ(box.text(), u"<b>不能</b>!"_s);
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.windowTitle(), u"Norvasoft"_s);
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            EXPECT_EQ(Captions(box), QStringList({u"确定"_s}));
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

TEST(MessageBoxes, AreWideEnoughForACaptionWithTheIconAndButtonsOfItsBar)
{
    const CString caption = u"KtQdDeConfig 规则编辑器"_s;
    const auto box = dialogs::MakeMessageBox({platform::MessageKind::Warning, u"短"_s, caption}, nullptr);
    box->show();
    QFont bold = box->font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    EXPECT_GE(box->width(), metrics.horizontalAdvance(caption) + 6 * metrics.height());
}

TEST(MessageBoxes, QuestionHasNoAsItsDefault)
{
    ShowAndAct(
        [](QMessageBox& box) {
            EXPECT_EQ(Captions(box), QStringList({u"是(&Y)"_s, u"否(&N)"_s}));
            EXPECT_EQ(box.defaultButton(), &Button(box, QMessageBox::NoRole));
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
        },
        [] { platform::AskYesNo(u"覆盖"_s); });
}

TEST(MessageBoxes, ButtonsHaveNoIconsWhateverTheDesktop)
{
    const QString former = QApplication::style()->name();
    QApplication::setStyle(new IconStyle);
    for (const auto kind : {platform::MessageKind::Warning, platform::MessageKind::Question})
        for (const QAbstractButton* button :
             dialogs::MakeMessageBox({kind, u"a"_s, u"b"_s}, nullptr)->buttons())
            EXPECT_TRUE(button->icon().isNull()) << button->text().toStdString();
    QApplication::setStyle(former);
}

TEST(MessageBoxes, QuestionGivesTheButtonThatWasClicked)
{
    EXPECT_TRUE(ShowAndAct(
        [](QMessageBox& box) { QTest::mouseClick(&Button(box, QMessageBox::YesRole), Qt::LeftButton); },
        [] { return platform::AskYesNo(u"覆盖"_s); }));
    EXPECT_FALSE(ShowAndAct(
        [](QMessageBox& box) { QTest::mouseClick(&Button(box, QMessageBox::NoRole), Qt::LeftButton); },
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
