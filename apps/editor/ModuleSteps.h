#pragma once

#include "editor/Project.h"
#include "editor/RuleFileState.h"
#include "editor/WizardDialog.h"

#include <functional>
#include <optional>

namespace editor {

/// How the wizard ended.
enum class WizardEnd : int { Next = 1, Back = -1, Cancelled = 0 };

/// What the editor lets the module do with the rule files of the open project. Before the module opens a
/// file, a file that cannot be read is reported with line, column and reason, for the first save would
/// replace it; and a copy of the file goes into the project's history. Raises what the module raises.
class ModuleSteps
{
public:
    /// Both must outlive this; the project must be the host. `window` owns the boxes; it may be null.
    ModuleSteps(QWidget* window, Project& project);

    /// Runs the configuration dialog on the current configuration. False when the user kept away from a file
    /// that cannot be read.
    bool Configure();
    /// Runs the wizard; nothing when the user kept away.
    std::optional<WizardEnd> RunWizard(const WizardStart& start);
    /// What the wizard is started with when nobody says otherwise.
    WizardStart ProposedStart(const CString& ruleFile);

    /// Makes a file the current configuration. False when the user kept away from the present one or the
    /// module refused the file; the reason has been shown then.
    bool Refresh(const CString& ruleFile);
    /// Rebuilds the attribute configuration file.
    void RebuildAttributes();
    /// Finishes a rule file, or a copy of it that the user names. False when the user decided otherwise.
    bool WriteHead(const CString& ruleFile);

private:
    bool MayOpen(const CString& ruleFile);
    CString AskForCopy(const CString& ruleFile);

    QWidget* m_window;
    Project& m_project;
};

} // namespace editor
