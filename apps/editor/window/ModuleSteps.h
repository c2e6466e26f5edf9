#pragma once

#include "editor/dialogs/WizardDialog.h"
#include "editor/project/Project.h"
#include "editor/steps/WatchedStep.h"

#include <functional>
#include <optional>

namespace editor {

/// How the wizard ended.
enum class WizardEnd : int { Next = 1, Back = -1, Cancelled = 0 };

/// How any other step ended.
enum class StepEnd {
    Done,
    Refused,   ///< by the user, who kept away from a file, or by the module; the reason has been shown
    Cancelled, ///< on the way; every file is as it was
};

/// What the editor lets the module do with the rule files of the open project. Before the module opens a
/// file, a file that cannot be read is reported with line, column and reason, for the first save would
/// replace it; and a copy of the file goes into the project's history. Raises what the module raises.
class ModuleSteps
{
public:
    /// Runs a step of the module; false when it was cancelled.
    using Runner = std::function<bool(const WatchedStep&)>;

    /// Both must outlive this; the project must be the host. `window` owns the boxes; it may be null. Steps
    /// are run by `RunWatched` unless another runner is given.
    ModuleSteps(QWidget* window, Project& project, Runner run = {});
    ModuleSteps(const ModuleSteps&) = delete;
    ModuleSteps& operator=(const ModuleSteps&) = delete;

    /// Runs the configuration dialog on the current configuration.
    StepEnd Configure();
    /// Runs the wizard; nothing when the user kept away from the file.
    std::optional<WizardEnd> RunWizard(const WizardStart& start);
    /// What the wizard is started with when nobody says otherwise.
    WizardStart ProposedStart(const CString& ruleFile);

    /// Makes a file the current configuration.
    StepEnd Refresh(const CString& ruleFile);
    /// Rebuilds the attribute configuration file.
    StepEnd RebuildAttributes();
    /// Finishes a rule file, or a copy of it that the user names.
    StepEnd WriteHead(const CString& ruleFile);

    /// Offers to leave only that in a file which is read, where a specialty stands twice in it. `Done` when
    /// nothing stands twice any more.
    StepEnd KeepFirst(const CString& ruleFile);

private:
    /// `Done` when the file may be opened.
    StepEnd AskToOpen(const CString& ruleFile);
    /// The same, with a copy in the history.
    StepEnd PrepareToOpen(const CString& ruleFile);
    CString AskForTarget(const CString& ruleFile);
    bool WriteHeadTo(const CString& ruleFile, const CString& target, const CString& draft);

    QWidget* m_window;
    Project& m_project;
    Runner m_run;
};

} // namespace editor
