#pragma once

#include "editor/project/Project.h"
#include "shared/RuleFileState.h"

#include <QtCore/QList>
#include <QtWidgets/QWidget>

#include <functional>
#include <optional>

class QComboBox;
class QGroupBox;
class QLabel;
class QTreeWidget;

namespace editor {

struct Actions;

/// What the window shows of the open project: its settings, its rule files with their states, and the
/// commands that work on them.
class ProjectPanel : public QWidget
{
public:
    /// What the user asks for.
    struct Wishes
    {
        std::function<void(SQdDeInfo::EQdDeMode)> setMode;
        std::function<void(const CString&)> setSpec;
        std::function<void(embedded::LibraryRole, const CString& code)> setLibrary;
        std::function<void()> selectionChanged;
    };

    ProjectPanel(const Actions& actions, Wishes wishes);

    /// Shows the project's settings. Asks for nothing back.
    void ShowProject(Project& project);
    /// Shows the rule files. The current configuration comes first and is selected unless the file that was
    /// selected is there again.
    void ShowRuleFiles(const QList<shared::RuleFileState>& files);

    /// The state of the selected rule file; nothing when none is selected. A copy: whoever shows the rule
    /// files anew replaces the states.
    std::optional<shared::RuleFileState> Selected() const;

private:
    QGroupBox* MakeSettings();
    void ConnectSettings();
    QWidget* MakeRuleFiles(const Actions& actions);

    Wishes m_wishes;
    QLabel* m_folder;
    QComboBox* m_mode;
    QComboBox* m_spec;
    QComboBox* m_billLibrary;
    QComboBox* m_quotaLibrary;
    QLabel* m_guideHint; ///< seen only while the two libraries do not match
    embedded::LibraryRole m_quotaRole = embedded::LibraryRole::QuotaOfBills;
    QTreeWidget* m_files;
    QList<shared::RuleFileState> m_states;
};

} // namespace editor
