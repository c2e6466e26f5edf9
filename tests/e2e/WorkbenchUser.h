#pragma once

#include "e2e/EditorUser.h"
#include "rules/model/Configuration.h"

#include <vector>

namespace test {

/// A user of the page of rules. Keys that follow one another are told to the window at once; whatever needs a
/// window, a focus or a file that the keys before bring about waits for that.
class WorkbenchTest : public EditorTest
{
protected:
    const QString SeriesTitle = u"^规则系列$"_s;
    const QString MergeTitle = u"^合并$"_s;
    const QString TableTitle = u"^打开构件表$"_s;
    const QString ExportTitle = u"^导出工程量清单$"_s;
    const QString SecondTitle = u"^twin - KtQdDeConfig"_s; ///< of the second editor's main window

    ~WorkbenchTest() override;

    /// Starts the editor on the project and waits until it takes commands. The list of rules has the focus,
    /// on the first rule of 给水管.
    void StartOnWorkbench();
    /// Starts another editor on the same project, under another name so that its title differs, and waits
    /// until it takes commands.
    void StartSecond();
    /// Ends it by its command.
    void QuitSecond();
    /// Waits until the window, which has a file with a rule open, takes commands.
    void WaitUntilReady(const QString& title);

    /// The number of lines in what is kept of unsaved edits, all drafts together.
    int CountDraftEdits() const;
    /// Waits until as many edits are kept.
    void WaitForDraft(int edits) const;

    /// Saves the rules by the command, and waits until the file has other content.
    void SaveRules(const QString& title);
    /// In the window of a series that comes up: leaves the first diameters alone of all that stand there, and
    /// makes the rules.
    void ChooseDiameters(int count);
    /// Picks a bill item by its number in the picker that comes up, and takes the proposed suffix.
    void PickBill(const QString& number);
    /// Goes to the panel of that number, counted from 1 as its key is, gives a command there by a key, and
    /// waits for the window of that title that the command brings up.
    void CommandIn(int panel, const QString& key, const QString& title);
    /// Names a file in the window that asks for it.
    void NameFile(const QString& title, const QString& file);
    /// Decides each conflict for what the own window shows, and lets the merged rules be saved.
    void DecideForOwn();

    /// Puts a rule for each diameter before the default rule of 给水管, each with that bill item, if one is
    /// named.
    void HaveDiameters(const QStringList& diameters, const QString& bill = {});

    /// The rules of 给水管 as the list shows them.
    std::vector<CString> RulesInFile() const;
    /// The numbers of all their bill items.
    std::vector<CString> BillsInFile() const;

private:
    QProcess m_second;

    /// The rules of 给水管.
    std::vector<rules::Rule> ReadRules() const;
};

} // namespace test
