#pragma once

#include "editor/files/RuleFileEntry.h"

#include <QtCore/QList>
#include <QtWidgets/QWidget>

#include <functional>
#include <map>
#include <optional>

class QAction;
class QMimeData;
class QTreeWidget;

namespace editor {

/// What can be asked for a rule file of the project.
enum class FileCommand {
    Open,
    MakeCurrent,
    New, ///< from the template or from a rule file; needs no selected one
    Duplicate,
    Rename,
    Delete,
    Unwrap,
    Compare,
    History,
    Reveal, ///< in the file manager of the desktop
};

/// The rule files among what is dragged, native; empty when something else is among it.
QStringList DraggedRuleFiles(const QMimeData& data);

/// The rule files of the project: a list with the state of each, and what can be done with them by double
/// click, key and context menu. A rule file that is dragged here from a file manager is offered to the
/// project. Decides and changes nothing itself.
class FilePanel : public QWidget
{
public:
    struct Wishes
    {
        /// `path` is the path text of the selected file; empty for `New` when none is selected.
        std::function<void(FileCommand command, const CString& path)> command;
        /// Native paths of the rule files that were dropped.
        std::function<void(const QStringList& files)> dropped;
        std::function<void()> selectionChanged;
    };

    explicit FilePanel(Wishes wishes);

    /// Shows the rule files, the first of which is the project's current configuration. It is selected unless
    /// the file that was selected is there again.
    void Show(const QList<RuleFileEntry>& files);
    /// Selects a file by its path text; nothing happens when it is not shown.
    void Select(const CString& path);
    /// What is known of the selected file; nothing when none is selected.
    std::optional<RuleFileEntry> Selected() const;

    /// For menus and buttons elsewhere. Enabled as the selection allows.
    QAction* Action(FileCommand command) const { return m_actions.at(command); }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildList();
    void MakeActions();
    void Ask(FileCommand command) const;
    void EnableActions() const;

    Wishes m_wishes;
    QTreeWidget* m_list;
    QList<RuleFileEntry> m_files;
    std::map<FileCommand, QAction*> m_actions;
};

} // namespace editor
