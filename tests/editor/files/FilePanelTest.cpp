#include "editor/files/FilePanel.h"

#include "support/Patience.h"
#include "support/PrintText.h"
#include "support/WindowWaits.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QAction>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using editor::FileCommand;
using shared::RuleFileKind;

namespace {

/// The list with a current configuration, a wrapped and a readable file, in a window that has the focus.
class FilePanel : public ::testing::Test
{
protected:
    FilePanel()
        : m_panel({.command =
                       [this](FileCommand command, const CString& path) {
                           m_asked = {command, path};
                       },
                   .dropped = [this](const QStringList& files) { m_dropped = files; },
                   .selectionChanged = [this] { ++m_selections; }})
    {
        m_panel.resize(600, 300);
        m_panel.Show(Files());
        m_panel.show();
        m_panel.setFocus();
        test::WaitUntilActive(m_panel);
    }

    static QList<editor::RuleFileEntry> Files()
    {
        return {{{u"\\f\\甲.xml"_s, RuleFileKind::Rules}, {{u"给排水"_s, 1200}, {u"电气"_s, 34}}},
                {{u"\\f\\封装.xml"_s, RuleFileKind::Wrapped}},
                {{u"\\f\\乙.xml"_s, RuleFileKind::Rules}, {{u"给排水"_s, 5}}}};
    }
    QTreeWidget& List() const { return *m_panel.findChild<QTreeWidget*>(); }
    /// The middle of the name in a row.
    QPoint Place(int row) const { return List().visualItemRect(List().topLevelItem(row)).center(); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    std::optional<std::pair<FileCommand, CString>> m_asked;
    QStringList m_dropped;
    int m_selections = 0;
    editor::FilePanel m_panel;
};

} // namespace

TEST_F(FilePanel, ShowsTheCurrentConfigurationFirstWithItsRules)
{
    EXPECT_EQ(List().topLevelItem(0)->text(0), u"甲（当前配置）"_s);
    EXPECT_EQ(List().topLevelItem(0)->text(1), QLocale().toString(1234));
    EXPECT_TRUE(List().topLevelItem(0)->toolTip(0).contains(u"电气：34 条规则"));
    EXPECT_EQ(List().topLevelItem(1)->text(1), QString());
    EXPECT_EQ(List().topLevelItem(1)->text(2), u"已写文件头，不能再编辑"_s);
    EXPECT_EQ(m_panel.Selected()->state.Name(), u"甲"_s);
}

TEST_F(FilePanel, ADoubleClickOpens)
{
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, Place(2));
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, Place(2));
    EXPECT_EQ(m_asked, std::pair(FileCommand::Open, u"\\f\\乙.xml"_s));
}

TEST_F(FilePanel, FileThatAnAidForTheDisabledSelectsIsTheSelectedOne)
{
    const int before = m_selections;
    test::SelectByAid(List(), List().model()->index(1, 0));
    test::WaitInLoopFor(u"the file"_s, [&] { return m_selections == before + 1; });
    EXPECT_EQ(m_panel.Selected()->state.Name(), u"封装"_s);
    EXPECT_TRUE(m_panel.Action(FileCommand::Unwrap)->isEnabled());
}

TEST_F(FilePanel, KeysAskForTheSelectedFile)
{
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    const QList<std::tuple<Qt::Key, Qt::KeyboardModifiers, FileCommand>> keys{
        {Qt::Key_Return, Qt::NoModifier, FileCommand::Open},
        {Qt::Key_Enter, Qt::KeypadModifier, FileCommand::Open},
        {Qt::Key_Return, Qt::ControlModifier, FileCommand::MakeCurrent},
        {Qt::Key_Insert, Qt::NoModifier, FileCommand::New},
        {Qt::Key_D, Qt::ControlModifier, FileCommand::Duplicate},
        {Qt::Key_F2, Qt::ShiftModifier, FileCommand::Rename},
        {Qt::Key_Delete, Qt::NoModifier, FileCommand::Delete},
    };
    for (const auto& [key, modifiers, command] : keys) {
        m_asked.reset();
        Press(key, modifiers);
        EXPECT_EQ(m_asked, std::pair(command, u"\\f\\乙.xml"_s)) << key;
    }
}

TEST_F(FilePanel, TheMenuHoldsEveryCommandWithATip)
{
    qsizetype commands = 0;
    for (const QAction* action : List().actions()) {
        if (action->isSeparator()) continue;
        ++commands;
        EXPECT_FALSE(action->statusTip().isEmpty()) << action->text().toStdString();
    }
    EXPECT_EQ(commands, 10);
    EXPECT_EQ(List().contextMenuPolicy(), Qt::ActionsContextMenu);
    m_panel.Action(FileCommand::Compare)->trigger();
    EXPECT_EQ(m_asked, std::pair(FileCommand::Compare, u"\\f\\甲.xml"_s));
}

TEST_F(FilePanel, CommandsAreEnabledAsTheFileAllows)
{
    const auto enabled = [this](FileCommand command) { return m_panel.Action(command)->isEnabled(); };
    EXPECT_FALSE(enabled(FileCommand::MakeCurrent)); // it is already
    EXPECT_FALSE(enabled(FileCommand::Unwrap));
    m_panel.Select(u"\\f\\封装.xml"_s);
    EXPECT_FALSE(enabled(FileCommand::MakeCurrent));
    EXPECT_TRUE(enabled(FileCommand::Unwrap));
    m_panel.Select(u"\\f\\乙.xml"_s);
    EXPECT_TRUE(enabled(FileCommand::MakeCurrent));
    m_panel.Show({{{u"\\f\\新.xml"_s, RuleFileKind::Missing}}});
    EXPECT_FALSE(enabled(FileCommand::Delete));
    EXPECT_TRUE(enabled(FileCommand::Open)); // which makes it
    m_panel.Show({});
    EXPECT_FALSE(enabled(FileCommand::Open));
    EXPECT_TRUE(enabled(FileCommand::New));
}

TEST_F(FilePanel, KeepsTheSelectedFileWhenTheListIsShownAnew)
{
    m_panel.Select(u"\\f\\乙.xml"_s);
    auto files = Files();
    files.swapItemsAt(0, 2);
    m_selections = 0;
    m_panel.Show(files);
    EXPECT_EQ(m_panel.Selected()->state.Name(), u"乙"_s);
    EXPECT_EQ(m_selections, 1);
    files.removeFirst();
    m_panel.Show(files);
    EXPECT_EQ(m_panel.Selected()->state.Name(), u"封装"_s);
}

TEST_F(FilePanel, TakesDroppedRuleFilesAndNothingElse)
{
    const auto drop = [this](const QStringList& files) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& file : files)
            urls.append(QUrl::fromLocalFile(file));
        data.setUrls(urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&m_panel, &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&m_panel, &event);
        return true;
    };
    EXPECT_FALSE(drop({u"/x/表.csv"_s}));
    EXPECT_FALSE(drop({u"/x/规则.xml"_s, u"/x/表.csv"_s}));
    EXPECT_TRUE(drop({u"/x/规则.XML"_s, u"/x/另一个.xml"_s}));
    EXPECT_EQ(m_dropped, QStringList({u"/x/规则.XML"_s, u"/x/另一个.xml"_s}));
}
