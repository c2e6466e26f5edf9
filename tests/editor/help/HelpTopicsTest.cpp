#include "editor/help/HelpTopics.h"

#include "editor/EditorFixture.h"
#include "editor/help/ManualPages.h"
#include "editor/help/ManualWindow.h"
#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtGui/QAction>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A window with two fields and F1, which says what was asked for.
class HelpTopics : public ::testing::Test
{
protected:
    HelpTopics()
    {
        auto* column = new QVBoxLayout(&m_window);
        column->addWidget(m_first);
        column->addWidget(m_second);
        m_window.show();
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
    }

    static void PressHelp(QWidget& widget)
    {
        widget.setFocus();
        QTest::keyClick(&widget, Qt::Key_F1);
    }

    QWidget m_window;
    QLineEdit* m_first = new QLineEdit;
    QLineEdit* m_second = new QLineEdit;
    QStringList m_shown;
    editor::HelpTopics m_help{editor::TopicsOfWindows(), u"manual.zh-CN.md"_s,
                              [this](const QString& topic) { m_shown.append(topic); }};
};

/// The same with the manual itself.
class HelpInDialogs : public test::EditorWindow
{
protected:
    /// Clicks until the first chapter is shown. A click comes as from the desktop: one that a modal window
    /// shuts out does nothing.
    void ClickFirstChapter()
    {
        const auto trees = m_manual.findChildren<QTreeWidget*>();
        const auto* contents = *std::find_if(trees.begin(), trees.end(), [](const QTreeWidget* tree) {
            return tree->accessibleName() == u"目录";
        });
        test::WaitInLoopFor(u"the manual to be used"_s, [&] {
            const QPoint place = contents->visualItemRect(contents->topLevelItem(0)).center();
            QTest::mouseClick(m_manual.windowHandle(), Qt::LeftButton, {},
                              contents->viewport()->mapTo(&m_manual, place));
            return m_manual.Place().path == u"manual.zh-CN.md";
        });
    }

    editor::ManualWindow m_manual;
    editor::HelpTopics m_help{editor::TopicsOfWindows(), u"manual.zh-CN.md"_s,
                              [this](const QString& topic) { m_manual.Show(topic); }};
};

} // namespace

TEST_F(HelpTopics, F1ShowsTheTopicOfTheFocusedWidgetOrTheNearestAroundIt)
{
    PressHelp(*m_first);
    editor::SetHelpTopic(m_window, u"editor.md"_s);
    PressHelp(*m_first);
    editor::SetHelpTopic(*m_second, u"config.md#取值设置"_s);
    PressHelp(*m_second);
    PressHelp(*m_first);
    EXPECT_EQ(m_shown,
              QStringList({u"manual.zh-CN.md"_s, u"editor.md"_s, u"config.md#取值设置"_s, u"editor.md"_s}));
}

TEST_F(HelpTopics, AWindowIsKnownByItsTitle)
{
    m_window.setWindowTitle(u"自动套配置-[ 清单模式DefaultConfig ]"_s);
    PressHelp(*m_first);
    EXPECT_EQ(m_shown, QStringList({u"config.md"_s}));
}

TEST_F(HelpTopics, AKeyWithModifiersIsNotForTheManual)
{
    QTest::keyClick(m_first, Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClick(m_first, Qt::Key_F2);
    EXPECT_TRUE(m_shown.isEmpty());
}

TEST_F(HelpTopics, AMenuAsksForWhatHasTheFocus)
{
    editor::SetHelpTopic(*m_second, u"data.md"_s);
    m_second->setFocus();
    m_help.ShowForFocus();
    EXPECT_EQ(m_shown, QStringList({u"data.md"_s}));
}

TEST(TopicsOfWindows, NamePlacesOfTheManual)
{
    const editor::ManualPages pages;
    for (const editor::HelpTopics::Title& window : editor::TopicsOfWindows()) {
        const auto place = pages.PlaceOf(window.topic);
        ASSERT_TRUE(place.has_value()) << window.topic.toStdString();
        EXPECT_EQ(place->anchor, window.topic.section(u'#', 1)) << window.topic.toStdString();
    }
}

TEST_F(HelpInDialogs, F1InTheConfigurationDialogShowsItsPageAndTheManualCanBeUsedBesideIt)
{
    m_window.OpenSample(Folder(u"project"_s));
    QString page;
    test::NextWindows user({[&](QDialog& dialog) {
        dialog.activateWindow();
        test::WaitUntilActive(dialog);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
        page = m_manual.Place().path;
        ClickFirstChapter();
        m_manual.close();
        dialog.close();
    }});
    m_window.Commands().configure->trigger();
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(page, u"manual.zh-CN/config.md"_s);
}

TEST_F(HelpInDialogs, AManualThatIsOpenCanBeUsedWhenADialogComes)
{
    m_manual.Show(u"config.md"_s);
    QDialog dialog;
    QTimer::singleShot(0, &dialog, [&] {
        ClickFirstChapter();
        dialog.reject();
    });
    dialog.exec();
    EXPECT_TRUE(m_manual.isVisible()); // the end of the dialog is not its end
    m_manual.close();
}
