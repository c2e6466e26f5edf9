#include "editor/EditorFixture.h"

#include "editor/SampleFiles.h"
#include "editor/files/FilePanel.h"
#include "editor/project/Project.h"
#include "editor/session/DraftJournal.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QAction>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

using namespace Qt::StringLiterals;
using editor::DraftJournal;
using test::Pipes;

namespace {

/// The window on the sample project, in which a program that ended in the middle has left edits of a rule
/// file: of the one that the window has open, or of another one.
class LostDrafts : public test::EditorWindow
{
protected:
    LostDrafts() { m_window.OpenSample(Folder(u"project"_s)); }

    editor::WorkSession& Session() { return m_window.Session(); }
    QString NativePath(const QString& name) const
    {
        return Folder(u"project/app/自动套配置/"_s) + name + u".xml"_s;
    }
    CString Path(const CString& name) const
    {
        return m_window.OpenedProject()->RuleFolder() + u'\\' + name + u".xml"_s;
    }
    void Lose(const CString& name)
    {
        rules::Rule rule;
        rules::Condition condition;
        condition.attribute = u"材质"_s;
        condition.equalOperator = u"＝"_s;
        condition.value = u"铜管"_s;
        rule.conditions.push_back(condition);
        Session().Open(Path(name));
        DraftJournal journal(m_window.OpenedProject()->Folder(), Path(name), Session().File().Bytes());
        journal.Add(rules::InsertRules(Session().Draft(), Pipes, 0, {rule}, u"增加规则"_s));
        Session().Open(Path(u"DefaultConfig"_s));
    }
    bool HasRule() { return Session().Draft().Find(Pipes)->rules.front().Text() == u"材质＝铜管;"_s; }
    qsizetype Drafts() const
    {
        return QDir(Folder(u"project/history/drafts"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    }
    /// The window anew, with what a user does in the windows that come.
    void Reopen(std::vector<test::NextWindows::Step> steps)
    {
        const test::NextWindows user(std::move(steps));
        ASSERT_TRUE(m_window.OpenProject(Folder(u"project"_s)));
        EXPECT_TRUE(user.Done());
    }
    static test::NextWindows::Step Press(const QString& text)
    {
        return [text](QDialog& box) { test::PressButton(box, text); };
    }
    static test::NextWindows::Step Name(const QString& name, const QString& button)
    {
        return [=](QDialog& question) {
            question.findChild<QLineEdit*>()->setText(name);
            test::PressButton(question, button);
        };
    }
};

} // namespace

TEST_F(LostDrafts, AreOfferedUnderTheNewNameOfARenamedFile)
{
    Lose(u"DefaultConfig"_s);
    const test::NextWindows user({Name(u"新名"_s, u"重命名"_s), Press(u"接着改"_s)});
    test::PartOf<editor::FilePanel>(m_window).Action(editor::FileCommand::Rename)->trigger();
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(Session().File().Path(), Path(u"新名"_s));
    EXPECT_TRUE(HasRule());
}

TEST_F(LostDrafts, AreAskedAboutWithoutTheCursorOfAProgramThatIsBusy)
{
    Lose(u"DefaultConfig"_s);
    bool isBusy = true;
    Reopen({[&](QDialog& box) {
        isBusy = QGuiApplication::overrideCursor() != nullptr;
        test::PressButton(box, u"以后再说"_s);
    }});
    EXPECT_FALSE(isBusy);
}

TEST_F(LostDrafts, OfAFileThatIsGoneBringItBackUnderAName)
{
    Lose(u"给排水示例"_s);
    const QByteArray before = m_folder.ReadFile(u"project\\app\\自动套配置\\给排水示例.xml"_s);
    ASSERT_TRUE(QFile::remove(NativePath(u"给排水示例"_s)));
    QString asked;
    Reopen({[&](QDialog& box) {
                asked = static_cast<QMessageBox&>(box).text();
                test::PressButton(box, u"还原"_s);
            },
            Name(u"找回来的"_s, u"还原"_s)});
    EXPECT_TRUE(asked.contains(u"“给排水示例”"_s)) << asked.toStdString();
    EXPECT_EQ(m_folder.ReadFile(u"project\\app\\自动套配置\\找回来的.xml"_s), before);
    EXPECT_EQ(Session().File().Path(), Path(u"找回来的"_s));
    EXPECT_TRUE(HasRule());
    EXPECT_TRUE(Session().IsChanged()) << "nobody has saved them";
}

TEST_F(LostDrafts, OfAFileThatIsGoneStayUntilTheUserDecides)
{
    Lose(u"给排水示例"_s);
    ASSERT_TRUE(QFile::remove(NativePath(u"给排水示例"_s)));
    Reopen({Press(u"以后再说"_s)});
    EXPECT_EQ(Drafts(), 1);
    Reopen({Press(u"还原"_s), Press(u"取消"_s)});
    EXPECT_EQ(Drafts(), 1);
    EXPECT_FALSE(QFile::exists(NativePath(u"给排水示例"_s)));
    Reopen({Press(u"丢弃"_s)});
    EXPECT_EQ(Drafts(), 0);
    EXPECT_EQ(Session().File().Path(), Path(u"DefaultConfig"_s));
}

TEST_F(LostDrafts, OfAMovedFileAreOfferedWithoutTouchingIt)
{
    Lose(u"给排水示例"_s);
    ASSERT_TRUE(QFile::rename(NativePath(u"给排水示例"_s), NativePath(u"移走的"_s)));
    const QByteArray moved = m_folder.ReadFile(u"project\\app\\自动套配置\\移走的.xml"_s);
    Reopen({Press(u"还原"_s), Press(u"还原"_s)});
    EXPECT_TRUE(HasRule());
    EXPECT_EQ(Session().File().Path(), Path(u"给排水示例"_s)) << "its name is free, and proposed";
    EXPECT_EQ(m_folder.ReadFile(u"project\\app\\自动套配置\\移走的.xml"_s), moved);
}
