#include "editor/window/MainWindow.h"

#include "editor/office/OfficeWindow.h"
#include "editor/project/Project.h"
#include "editor/workbench/ConflictDialog.h"

#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

// What goes to the project's office and comes from there.

namespace editor {

void MainWindow::ShowOffice()
{
    if (!MayLeaveRules()) return; // what is published is what stands in the file
    const CString current = m_project->CurrentRuleFile();
    bool hasChanged = false;
    RunOfficeWindow(this, hasChanged);
    if (!hasChanged) return;
    ExamineRuleFiles();
    FollowFiles(current);
}

void MainWindow::RunOfficeWindow(QWidget* parent, bool& hasChanged)
{
    OfficeWindow window(parent, *m_project, [this](const CString& configuration) -> shared::AnswerConflicts {
        return [this, configuration](const std::vector<rules::Conflict>& conflicts) {
            QWidget* const above = QApplication::activeWindow();
            return ConflictDialog::Ask(conflicts, ConflictDialog::WordsForOffice(configuration),
                                       above == nullptr ? this : above);
        };
    });
    window.exec();
    hasChanged = window.HasChangedFiles();
}

} // namespace editor
