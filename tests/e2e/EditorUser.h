#pragma once

#include "dialogs/AutoConfigIds.h"
#include "e2e/Desktop.h"
#include "host/Records.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <functional>

namespace test {

using namespace Qt::StringLiterals;

/// A user of the editor with a project, from the start of the program to the file on disk.
class EditorTest : public ::testing::Test
{
protected:
    /// By which windows are found: what matches a part of their titles.
    const QString MainTitle = u"规则编辑器"_s; ///< of its progress windows, too
    const QString ProjectTitle =
        u"^project - KtQdDeConfig"_s; ///< the main window's while the project is open
    const QString ConfigTitle = u"自动套配置"_s;
    const QString WizardTitle = u"自动套-云模板"_s;
    const QString BillPickerTitle = u"套清单"_s;
    const QString QuotaPickerTitle = u"套定额"_s;
    const QString NumberTitle = u"添加清单编号"_s;
    const QString CloudTitle = u"云盘 - "_s;
    const QString BoxTitle = u"Norvasoft"_s;        ///< the module's messages
    const QString OwnBoxTitle = u"^KtQdDeConfig"_s; ///< the editor's, while a project is open

    ~EditorTest() override;
    /// Tells what stood on the screen when the test failed.
    void TearDown() override;

    /// Makes a project and its rule file, as the module makes it at the first opening.
    void MakeProject(SQdDeInfo::EQdDeMode mode);
    /// Starts the editor with these words behind its name.
    void Start(const QStringList& words);
    /// Starts it on the project and waits for its window.
    void StartOnProject();
    /// Gives a command by a key of the main window, which has a project open, and waits for the window of
    /// that title that the command brings up.
    void Command(const QString& key, const QString& title);
    /// Opens the configuration dialog from the main window and waits until it stands in the middle of that,
    /// frames included.
    void OpenConfig();
    /// Closes it; every way out saves.
    void CloseConfig();
    /// Ends the editor by its command, and checks that it ended well.
    void Quit();
    /// Waits for the end of the program and of its windows; gives its exit status, -1 when it crashed or was
    /// killed.
    int WaitForEnd();

    // In the dialog of that title

    void Click(const QString& title, dialogs::autoconfig::ControlId control);
    /// Selects 给水管, the first small category.
    void SelectWaterPipes(const QString& title);
    /// Adds a rule to the selected small category with 15 and 50 as bounds of 公称直径.
    void AddRangeRule(const QString& title);
    /// Picks a bill item by its number, takes the proposed suffix, and picks the first quota item under it.
    void PickBillWithQuota(const QString& title, const QString& number);
    /// Picks a quota item that stands under no bill item.
    void PickQuota(const QString& title, const QString& number);

    // In the configuration dialog, with the file commands

    /// Calls a rule file and waits until the dialog is on it.
    void CallFile(const QString& configuration);
    /// The same when the dialog that asks for the file is there already.
    void ChooseFile(const QString& configuration);
    /// Makes a new rule file and waits until the dialog is on it.
    void NewFile(const QString& configuration);
    /// Saves the rules under another name, up to the message that follows.
    void SaveAs(const QString& configuration);
    /// Confirms a message.
    void ConfirmBox();

    QString ProjectFolder() const { return m_desktop.Home().Native(u"project"_s); }
    /// What stands behind the mode in the dialog's title while it is on that rule file.
    static QString TitleOn(const QString& configuration) { return u": %1 ]"_s.arg(configuration); }

    // Rule files by the names of their configurations

    static CString RuleFileName(const CString& configuration = u"DefaultConfig"_s);
    QByteArray RuleFile(const CString& configuration = u"DefaultConfig"_s) const;
    /// Presses a key in the window of that title until something comes of it.
    void PressUntil(const QString& title, const QString& key, const QString& what,
                    const std::function<bool()>& holds);
    /// The same with whatever else a user does there.
    void DoUntil(const QString& title, const std::function<void()>& act, const QString& what,
                 const std::function<bool()>& holds);
    /// Presses the key that closes a window until it is gone.
    void CloseBy(const QString& key, const QString& title);
    /// Makes the rule file "Other", which differs from the first one, and gives what it holds.
    QByteArray MakeOtherFile();
    /// Compares the rule file with what it was at first, with `rule` (XML) added to 给水管.
    void ExpectRuleInFile(const QByteArray& rule) const;
    /// Expects that the history can put these bytes back into the rule file, and leaves them there.
    void ExpectGivenBack(const CString& configuration, const QByteArray& bytes) const;

    Desktop m_desktop;
    QProcess m_editor;
    QByteArray m_firstRuleFile;
};

} // namespace test
