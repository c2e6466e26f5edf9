#pragma once

#include "e2e/EditorUser.h"

#include <vector>

namespace test {

/// A user of the page of rules. Keys that follow one another are told to the window at once; whatever needs a
/// window, a focus or a file that the keys before bring about waits for that.
class WorkbenchTest : public EditorTest
{
protected:
    const QString SeriesTitle = u"^规则系列$"_s;
    const QString MergeTitle = u"^合并$"_s;

    /// Starts the editor on the project and waits until it takes commands. The list of rules has the focus,
    /// on the first rule of 给水管.
    void StartOnWorkbench();
    /// Waits until the window, which has a file with a rule open, takes commands.
    void WaitUntilReady(const QString& title);

    /// The number of lines in what is kept of unsaved edits, all drafts together.
    int CountDraftEdits() const;
    /// Waits until as many edits are kept.
    void WaitForDraft(int edits) const;

    /// Saves the rules by the command, and waits until the file has other content.
    void SaveRules(const QString& title);
    /// In the window of a series, where all values of the attribute stand: takes out all but the first ones.
    void KeepFirstValues(int count);

    /// The rules of 给水管 as the list shows them.
    std::vector<CString> RulesInFile() const;
};

} // namespace test
