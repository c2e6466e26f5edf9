#include "editor/EditorFixture.h"

#include "editor/SampleFiles.h"
#include "editor/docks/details/ConditionTable.h"
#include "editor/files/DiskWatch.h"
#include "editor/files/FilePanel.h"
#include "editor/project/Project.h"
#include "editor/session/DraftJournal.h"
#include "editor/window/ProjectPanel.h"
#include "editor/workbench/CategoryPanel.h"
#include "editor/workbench/Workbench.h"
#include "platform/Paths.h"
#include "rules/document/RuleWriter.h"
#include "support/Patience.h"
#include "support/Watching.h"
#include "support/WindowWaits.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QMimeData>
#include <QtCore/QRegularExpression>
#include <QtCore/QUrl>
#include <QtGui/QAction>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>

#include <algorithm>

using namespace Qt::StringLiterals;
using editor::ConditionTable;
using editor::DraftJournal;
using test::CurrentFile;
using test::Pipes;
using ::testing::HasSubstr;

namespace {

/// The window on the sample project, with rules that are edited here and by other programs.
class MainWindowRules : public test::EditorWindow
{
protected:
    MainWindowRules()
    {
        m_window.OpenSample(Folder(u"project"_s));
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
        Session().ChooseCategory(Pipes);
    }

    editor::WorkSession& Session() { return m_window.Session(); }
    const rules::Rule& First() { return Session().Draft().Find(Pipes)->rules.front(); }
    CString Path() { return Session().File().Path(); }
    QString NativePath() const { return Folder(u"project/app/自动套配置/DefaultConfig.xml"_s); }
    QString Told() const { return m_window.statusBar()->currentMessage(); }

    /// The user comes back to the window.
    void BecomeActive()
    {
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
        QEvent activated(QEvent::ActivationChange);
        QApplication::sendEvent(&m_window, &activated);
    }
    static rules::Rule RuleFor(const CString& value)
    {
        rules::Rule rule;
        rules::Condition condition;
        condition.attribute = u"材质"_s;
        condition.equalOperator = u"＝"_s;
        condition.value = value;
        rule.conditions.push_back(condition);
        return rule;
    }
    void Insert(const CString& value)
    {
        Session().Do(rules::InsertRules(Session().Draft(), Pipes, 0, {RuleFor(value)}, u"增加规则"_s));
    }
    /// What another program does.
    void InsertOutside(const CString& value)
    {
        rules::Draft other(Session().File().Rules(), Session().Facts()->offered);
        other.Apply(rules::InsertRules(other, Pipes, 0, {RuleFor(value)}, {}));
        platform::RealFileSystem().WriteInPlace(Path(),
                                                rules::WriteRules(Session().File().Bytes(), other.Wanted()));
    }
    CString ElsewherePath() const { return m_window.OpenedProject()->RuleFolder() + u"\\又一个.xml"_s; }
    /// What another program does: another file with a rule for each value before those of the open one, made
    /// from the last to the first.
    void WriteElsewhere(const CStringArray& values)
    {
        rules::Draft other(Session().File().Rules(), Session().Facts()->offered);
        for (auto value = values.rbegin(); value != values.rend(); ++value)
            other.Apply(rules::InsertRules(other, Pipes, 0, {RuleFor(*value)}, {}));
        platform::RealFileSystem().WriteInPlace(ElsewherePath(),
                                                rules::WriteRules(Session().File().Bytes(), other.Wanted()));
    }
    /// Looks for a rule that only the other file has, and puts the cursor on it.
    void FindElsewhere()
    {
        WriteElsewhere({u"铜金合金"_s});
        m_window.Bench().Find(u"铜金合金"_s, editor::SearchScope::Project);
        auto& table = *static_cast<QTableView*>(m_window.Bench().RuleList());
        test::WaitInLoopFor(u"the rule of the other file"_s, [&] { return table.model()->rowCount() == 1; });
        table.setCurrentIndex(table.model()->index(0, 0));
    }
};

} // namespace

TEST_F(MainWindowRules, WhatIsBeingTypedIsInTheDraftBeforeSomethingIsUndone)
{
    Insert(u"铜管"_s);
    auto& table = test::PartOf<ConditionTable>(m_window);
    table.setFocus();
    table.setCurrentCell(0, ConditionTable::ValueColumn);
    QTest::keyClick(&table, Qt::Key_F2); // a command of the window elsewhere
    QLineEdit* field = nullptr;
    for (auto* combo : table.viewport()->findChildren<QComboBox*>())
        field = combo->lineEdit();
    ASSERT_NE(field, nullptr);
    field->selectAll();
    field->insert(u"金管"_s);
    ASSERT_EQ(First().Text(), u"材质＝铜管;"_s);
    m_window.Bench().UndoAction()->trigger();
    EXPECT_EQ(First().Text(), u"材质＝铜管;"_s) << "what was typed is undone, and nothing else";
    EXPECT_EQ(Session().Undo().index(), 1);
    m_window.Bench().RedoAction()->trigger();
    EXPECT_EQ(First().Text(), u"材质＝金管;"_s);
}

TEST_F(MainWindowRules, ChangeOfWhichTheSystemSaysNothingIsFollowedWhenTheWindowBecomesActive)
{
    InsertOutside(u"铜管"_s);
    BecomeActive();
    test::WaitInLoopFor(u"the rules of the other program"_s,
                        [&] { return First().Text() == u"材质＝铜管;"_s; });
    // A file that is written through memory is told to nobody who watches it.
    QFile file(platform::ToNative(Path()));
    const QDateTime former = QFileInfo(file).lastModified();
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const qint64 place = file.readAll().indexOf(u"铜管"_s.toUtf8());
    ASSERT_GE(place, 0);
    const QByteArray other = u"铝管"_s.toUtf8();
    uchar* const bytes = file.map(place, other.size());
    ASSERT_NE(bytes, nullptr);
    std::copy(other.begin(), other.end(), bytes);
    ASSERT_TRUE(file.unmap(bytes));
    file.close();
    if (QFileInfo(file.fileName()).lastModified() == former) GTEST_SKIP() << "the disk's clock is too coarse";
    BecomeActive();
    test::WaitInLoopFor(u"the other rule"_s, [&] { return First().Text() == u"材质＝铝管;"_s; });
}

TEST_F(MainWindowRules, ChangeOnDiskIsFollowedWhenNoModalWindowIsOpenAnyMore)
{
    if (test::WatchingHere() == test::Watching::Nothing) GTEST_SKIP() << test::NoWatching;
    bool isSeen = false;
    QDialog dialog(&m_window);
    dialog.setModal(true);
    dialog.show();
    {
        const editor::DiskWatch seen(m_window.OpenedProject()->RuleFolder(),
                                     [&](const auto&) { isSeen = true; });
        InsertOutside(u"铝管"_s);
        test::WaitInLoopFor(u"the change on disk"_s, [&] { return isSeen; });
        QCoreApplication::processEvents();
    }
    EXPECT_NE(First().Text(), u"材质＝铝管;"_s) << "the dialog asks about the rules as they stood";
    EXPECT_FALSE(m_window.close()) << "nor may the window go";
    dialog.close();
    test::WaitInLoopFor(u"the rules of the other program"_s,
                        [&] { return First().Text() == u"材质＝铝管;"_s; });
    EXPECT_THAT(Told().toStdString(), HasSubstr("已换成新的内容"));
}

TEST_F(MainWindowRules, FileThatCannotBeTakenOverIsNotToldAsTakenOver)
{
    if (test::WatchingHere() == test::Watching::Nothing) GTEST_SKIP() << test::NoWatching;
    platform::RealFileSystem().WriteInPlace(Path(), "<broken");
    test::WaitInLoopFor(u"the change on disk"_s, [&] { return !Session().IsOpen(); });
    EXPECT_THAT(Told().toStdString(), ::testing::Not(HasSubstr("已换成新的内容")));
}

TEST_F(MainWindowRules, ClosingWithChangesAsksAndStaysWhenTheUserSaysSo)
{
    Insert(u"铜管"_s);
    const test::NextWindows user({[](QDialog& box) { test::PressButton(box, u"取消"_s); }});
    EXPECT_FALSE(m_window.close());
    EXPECT_TRUE(user.Done());
    EXPECT_TRUE(m_window.isVisible());
    EXPECT_TRUE(Session().IsChanged());
}

TEST_F(MainWindowRules, ClosingWithChangesSavesThemWhenTheUserSaysSo)
{
    Insert(u"铜金合金"_s);
    const test::NextWindows user({[](QDialog& box) { test::PressButton(box, u"保存"_s); }});
    EXPECT_TRUE(m_window.close());
    EXPECT_TRUE(user.Done());
    EXPECT_TRUE(m_folder.ReadFile(CurrentFile).contains(u"铜金合金"_s.toUtf8()));
}

TEST_F(MainWindowRules, ClosingWithChangesDropsThemWhenTheUserSaysSo)
{
    const QByteArray before = m_folder.ReadFile(CurrentFile);
    Insert(u"铜管"_s);
    const test::NextWindows user({[](QDialog& box) { test::PressButton(box, u"放弃修改"_s); }});
    EXPECT_TRUE(m_window.close());
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(m_folder.ReadFile(CurrentFile), before);
}

TEST_F(MainWindowRules, EditsAreTakenBackBehindAChangeOfTheMode)
{
    const CString before = First().Text();
    Insert(u"铜管"_s);
    for (QComboBox* combo : test::PartOf<editor::ProjectPanel>(m_window).findChildren<QComboBox*>())
        if (const int quota = combo->findText(u"定额模式"_s); quota >= 0) combo->setCurrentIndex(quota);
    ASSERT_FALSE(Session().Facts()->isBillMode);
    EXPECT_EQ(First().Text(), u"材质＝铜管;"_s);
    m_window.Bench().UndoAction()->trigger();
    EXPECT_EQ(First().Text(), before);
    EXPECT_FALSE(Session().IsChanged());
}

TEST_F(MainWindowRules, RuleFileDroppedOnTheWindowIsOfferedToTheProject)
{
    m_folder.WriteFile(u"别处.xml"_s, m_folder.ReadFile(CurrentFile));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Folder(u"别处.xml"_s))});
    QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    const test::NextWindows user({[](QDialog& question) {
        question.findChild<QLineEdit*>()->setText(u"拖来的"_s);
        test::PressButton(question, u"复制"_s);
    }});
    QDropEvent drop({}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_window, &drop);
    EXPECT_TRUE(user.Done());
    EXPECT_TRUE(m_folder.Exists(u"project\\app\\自动套配置\\拖来的.xml"_s));
    EXPECT_TRUE(m_window.OpenedProject()->RuleFiles().contains(m_window.OpenedProject()->RuleFolder() +
                                                               u"\\拖来的.xml"_s));
    EXPECT_THAT(Told().toStdString(), HasSubstr("拖来的"));
}

TEST_F(MainWindowRules, ListOfFilesAndSpecialtiesCountTheSameRules)
{
    const auto& files = *test::PartOf<editor::FilePanel>(m_window).findChild<QTreeWidget*>();
    const auto& specialties = *test::PartOf<editor::CategoryPanel>(m_window).findChild<QComboBox*>();
    int sum = 0;
    for (int i = 0; i < specialties.count(); ++i) {
        const auto count = QRegularExpression(u"（(\\d+) 条）"_s).match(specialties.itemText(i));
        ASSERT_TRUE(count.hasMatch()) << specialties.itemText(i).toStdString();
        sum += count.captured(1).toInt();
    }
    EXPECT_GT(sum, 0);
    EXPECT_EQ(files.topLevelItem(0)->text(1), QLocale().toString(sum));
}

TEST_F(MainWindowRules, SearchInTheOtherFilesFollowsWhatChangesOnDisk)
{
    m_window.Bench().Find(u"铜金合金"_s, editor::SearchScope::Project);
    const auto& lines = *static_cast<QTableView*>(m_window.Bench().RuleList())->model();
    ASSERT_EQ(lines.rowCount(), 0);
    rules::Draft other(Session().File().Rules(), Session().Facts()->offered);
    other.Apply(rules::InsertRules(other, Pipes, 0, {RuleFor(u"铜金合金"_s)}, {}));
    platform::RealFileSystem().WriteInPlace(m_window.OpenedProject()->RuleFolder() + u"\\又一个.xml"_s,
                                            rules::WriteRules(Session().File().Bytes(), other.Wanted()));
    test::WaitInLoopFor(u"the rule of the new file"_s, [&] { return lines.rowCount() == 1; });
}

TEST_F(MainWindowRules, RuleFoundInAnotherFileIsGoneToWhereItStandsNow)
{
    FindElsewhere();
    WriteElsewhere({u"铝管"_s, u"铜金合金"_s}); // not told yet
    m_window.Bench().Commands().edit->trigger();
    EXPECT_EQ(Session().File().Name(), u"又一个"_s);
    ASSERT_TRUE(Session().CurrentRule());
    EXPECT_EQ(Session().Category()->rules[*Session().CurrentRule()].Text(), u"材质＝铜金合金;"_s);
}

TEST_F(MainWindowRules, RuleFoundInAnotherFileThatIsGoneIsToldAndNotTakenForAnother)
{
    FindElsewhere();
    platform::RealFileSystem().WriteInPlace(ElsewherePath(), Session().File().Bytes());
    m_window.Bench().Commands().edit->trigger();
    EXPECT_EQ(Session().File().Name(), u"又一个"_s);
    EXPECT_EQ(Session().CategoryText(), Pipes);
    EXPECT_THAT(Told().toStdString(), HasSubstr("找到的规则已经不在 又一个 中"));
}

TEST_F(MainWindowRules, ClosedWindowLeavesNoDraftToBeOfferedAgain)
{
    Insert(u"铜管"_s);
    m_window.Bench().UndoAction()->trigger();
    const QString folder = m_window.OpenedProject()->Folder();
    const CString path = Path();
    ASSERT_TRUE(QDir(folder + u"/history/drafts"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() == 1);
    EXPECT_TRUE(m_window.close());
    EXPECT_TRUE(QDir(folder + u"/history/drafts"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
    EXPECT_TRUE(DraftJournal::FindLost(folder, path).empty());
}

TEST_F(MainWindowRules, SaveOfAFileThatIsGoneAsksBeforeItWritesItAnew)
{
    Insert(u"铜管"_s);
    ASSERT_TRUE(QFile::remove(NativePath()));
    m_window.Bench().Commands().save->trigger(); // answered No
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts().first().toStdString(), HasSubstr("重新写出"));
    EXPECT_FALSE(QFile::exists(NativePath()));
    EXPECT_TRUE(Session().IsChanged());
    m_messages.PresetAnswer(platform::Answer::Yes);
    m_window.Bench().Commands().save->trigger();
    EXPECT_TRUE(QFile::exists(NativePath()));
    EXPECT_FALSE(Session().IsChanged());
    EXPECT_THAT(Told().toStdString(), HasSubstr("已保存"));
}
