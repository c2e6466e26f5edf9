#pragma once

#include "dialogs/AutoConfigIds.h"
#include "e2e/Desktop.h"
#include "host/Records.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace test {

using namespace Qt::StringLiterals;

/// A user of the editor with a project, from the start of the program to the file on disk.
class EditorTest : public ::testing::Test
{
protected:
    /// Titles, or parts of them, by which windows are found.
    const QString MainTitle = u"规则编辑器"_s;
    const QString ConfigTitle = u"自动套配置"_s;
    const QString WizardTitle = u"自动套-云模板"_s;
    const QString BillPickerTitle = u"套清单"_s;
    const QString QuotaPickerTitle = u"套定额"_s;
    const QString NumberTitle = u"添加清单编号"_s;
    const QString BoxTitle = u"Norvasoft"_s;

    ~EditorTest() override;

    /// Makes a project and its rule file, as the module makes it at the first opening.
    void MakeProject(SQdDeInfo::EQdDeMode mode);
    /// Starts the editor with these words behind its name.
    void Start(const QStringList& words);
    /// Starts it on the project and waits for its window.
    void StartOnProject();
    /// Opens the configuration dialog from the main window.
    void OpenConfig();
    /// Ends the editor by its command, and checks that it ended well.
    void Quit();
    /// Waits for the end of the program; gives its exit status, -1 when it crashed or was killed.
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

    QString ProjectFolder() const { return m_desktop.Home().Native(u"project"_s); }
    CString RuleFileName() const { return u"project\\app\\自动套配置\\DefaultConfig.xml"_s; }
    QByteArray RuleFile() const { return m_desktop.Home().ReadFile(RuleFileName()); }
    /// Compares the rule file with what it was at first, with `rule` (XML) added to 给水管.
    void ExpectRuleInFile(const QByteArray& rule) const;

    Desktop m_desktop;
    QProcess m_editor;
    QByteArray m_firstRuleFile;
};

} // namespace test
