#include "editor/files/FileCommands.h"

#include "editor/EditorFixture.h"
#include "editor/project/Project.h"
#include "embedded/data/history/History.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "support/SourceTree.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using editor::FileCommand;

namespace {

/// What a user does with the rule files of the sample project, which is open in the window.
class FileCommands : public test::EditorWindow
{
protected:
    FileCommands()
    {
        m_window.OpenSample(Folder(u"工程"_s));
        m_work = std::make_unique<editor::FileCommands>(&m_window, Project());
    }

    editor::Project& Project() const { return *m_window.OpenedProject(); }
    CString Path(const CString& name) const { return Project().RuleFolder() + u'\\' + name + u".xml"_s; }
    bool Stands(const CString& name) const { return platform::Files().Exists(Path(name)); }
    embedded::ProjectFolder ProjectFolder() const { return embedded::ProjectFolder(Project().Folder()); }

    /// Types a name and presses a button.
    static test::NextWindows::Step Name(const QString& name, const QString& button)
    {
        return [name, button](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText(name);
            test::PressButton(dialog, button);
        };
    }

    std::unique_ptr<editor::FileCommands> m_work;
};

} // namespace

TEST_F(FileCommands, ANewFileIsMadeFromTheTemplateUnderTheNameThatIsTyped)
{
    test::NextWindows user({Name(u"新的"_s, u"新建"_s)});
    const editor::FileEnd end = m_work->Run(FileCommand::New, {});
    EXPECT_TRUE(user.Done());
    EXPECT_TRUE(end.done);
    EXPECT_EQ(end.path, Path(u"新的"_s));
    EXPECT_EQ(end.told, u"已新建规则文件“新的”"_s);
    EXPECT_TRUE(Stands(u"新的"_s));
}

TEST_F(FileCommands, ANameThatIsTakenIsToldWhileItIsTypedAndCannotBeAccepted)
{
    test::NextWindows user({[](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(u"电气示例"_s);
        QStringList texts;
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            texts.append(label->text());
        EXPECT_TRUE(texts.contains(u"已经有叫“电气示例”的规则文件"_s));
        for (const QPushButton* button : dialog.findChildren<QPushButton*>())
            EXPECT_EQ(button->isEnabled(), button->text() == u"取消"_s) << button->text().toStdString();
        dialog.reject();
    }});
    EXPECT_FALSE(m_work->Run(FileCommand::Duplicate, Path(u"给排水示例"_s)).done);
    EXPECT_TRUE(user.Done());
}

TEST_F(FileCommands, TheCurrentConfigurationIsRenamedAndStaysCurrent)
{
    test::NextWindows user({Name(u"改过的"_s, u"重命名"_s)});
    EXPECT_TRUE(m_work->Run(FileCommand::Rename, Path(u"DefaultConfig"_s)).done);
    EXPECT_EQ(Project().CurrentRuleFile(), Path(u"改过的"_s));
    EXPECT_TRUE(m_messages.Texts().isEmpty());
}

TEST_F(FileCommands, DeletingAsksFirst)
{
    EXPECT_FALSE(m_work->Run(FileCommand::Delete, Path(u"电气示例"_s)).done);
    EXPECT_TRUE(Stands(u"电气示例"_s));
    EXPECT_TRUE(m_messages.Texts().value(0).contains(u"留一份历史副本"));
    m_messages.PresetAnswer(platform::Answer::Yes);
    EXPECT_TRUE(m_work->Run(FileCommand::Delete, Path(u"电气示例"_s)).done);
    EXPECT_FALSE(Stands(u"电气示例"_s));
    EXPECT_EQ(embedded::History(ProjectFolder()).List(Path(u"电气示例"_s)).size(), 1);
}

TEST_F(FileCommands, DeletingTheCurrentConfigurationAsksWhatComesInItsPlace)
{
    test::NextWindows user({[](QDialog& dialog) {
        auto* files = dialog.findChild<QComboBox*>();
        EXPECT_LT(files->findText(u"DefaultConfig"_s), 0);
        files->setCurrentText(u"电气示例"_s);
        test::PressButton(dialog, u"改用并删除"_s);
    }});
    EXPECT_TRUE(m_work->Run(FileCommand::Delete, Path(u"DefaultConfig"_s)).done);
    EXPECT_TRUE(user.Done());
    EXPECT_EQ(Project().CurrentRuleFile(), Path(u"电气示例"_s));
    EXPECT_FALSE(Stands(u"DefaultConfig"_s));
}

TEST_F(FileCommands, ComparingShowsWhatDiffersAndTurnsAround)
{
    QString forth;
    QString back;
    test::NextWindows user({[&](QDialog& dialog) {
        forth = dialog.findChild<QPlainTextEdit*>()->toPlainText();
        test::PressButton(dialog, u"对调"_s);
        back = dialog.findChild<QPlainTextEdit*>()->toPlainText();
        dialog.reject();
    }});
    m_work->Run(FileCommand::Compare, Path(u"电气示例"_s));
    EXPECT_TRUE(user.Done());
    EXPECT_TRUE(forth.contains(u"去掉条件 半周长(mm)≤500")) << forth.left(200).toStdString();
    EXPECT_TRUE(back.contains(u"加上条件 半周长(mm)≤500")) << back.left(200).toStdString();
}

TEST_F(FileCommands, MakingCurrentIsTold)
{
    const editor::FileEnd end = m_work->Run(FileCommand::MakeCurrent, Path(u"电气示例"_s));
    EXPECT_EQ(end.told, u"当前配置现在是“电气示例”"_s);
    EXPECT_EQ(Project().CurrentRuleFile(), Path(u"电气示例"_s));
}

TEST_F(FileCommands, DroppedFilesAreOfferedOneAfterAnother)
{
    const QByteArray rules = platform::Files().Read(Path(u"电气示例"_s)).value();
    m_folder.WriteFile(u"一.xml"_s, rules);
    m_folder.WriteFile(u"电气示例.xml"_s, rules);
    test::NextWindows user({[](QDialog& dialog) { dialog.reject(); },
                            [](QDialog& dialog) {
                                EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), u"电气示例 (2)"_s);
                                test::PressButton(dialog, u"复制"_s);
                            }});
    const editor::FileEnd end = m_work->TakeIn({Folder(u"一.xml"_s), Folder(u"电气示例.xml"_s)});
    EXPECT_TRUE(user.Done());
    EXPECT_TRUE(end.done);
    EXPECT_EQ(end.path, Path(u"电气示例 (2)"_s));
    EXPECT_FALSE(Stands(u"一"_s));
}

TEST_F(FileCommands, WhatIsRefusedIsShownAndAskedAgain)
{
    m_folder.WriteFile(u"表.xml"_s, "<table/>");
    test::NextWindows user({Name(u"表"_s, u"复制"_s), [](QDialog& dialog) {
                                EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), u"表"_s);
                                dialog.reject();
                            }});
    EXPECT_FALSE(m_work->TakeIn({Folder(u"表.xml"_s)}).done);
    EXPECT_TRUE(user.Done());
    EXPECT_TRUE(m_messages.Texts().value(0).contains(u"不是规则文件"));
}

TEST(RuleFileEntry, CountsTheRulesOfEachSpecialtyButDefaultsThatSayNothing)
{
    const CString path = platform::FromNative(test::InSourceTree(u"samples/ElectricalRules.xml"_s));
    const editor::RuleFileEntry entry = editor::ExamineEntry(path);
    ASSERT_EQ(entry.counts.size(), 1);
    EXPECT_EQ(entry.counts.first().specialty, u"电气"_s);
    constexpr int BareDefaults = 4; // that are alone in their category
    EXPECT_EQ(entry.Rules(), platform::Files().Read(path)->count("bDefault=") - BareDefaults);
}

TEST(RuleFileEntry, CountsNothingInWhatCannotBeRead)
{
    const test::TempFolder folder;
    const editor::RuleFileEntry entry = editor::ExamineEntry(folder.WriteFile(u"b.xml"_s, "<a"));
    EXPECT_EQ(entry.state.kind, shared::RuleFileKind::Unreadable);
    EXPECT_TRUE(entry.counts.isEmpty());
}
