#pragma once

class QAction;
class QWidget;

namespace editor {

/// What the state of the workbench allows.
struct WorkPossible
{
    bool file = false;     ///< a rule file is open
    bool category = false; ///< a category is chosen
    bool rules = false;    ///< rules are chosen
    bool several = false;  ///< of them more than the default rule: something that may go or move
    bool changed = false;  ///< the draft differs from the file
    bool paste = false;    ///< the clipboard holds rules
};

/// The commands of the workbench. `owner` owns them; its window puts them into menus and tool bars.
struct WorkbenchActions
{
    explicit WorkbenchActions(QWidget& owner);

    void Enable(const WorkPossible& possible) const;

    QAction* save;
    QAction* discard;
    QAction* add;
    QAction* remove;
    QAction* up;
    QAction* down;
    QAction* copy;
    QAction* paste;
    QAction* copyTo;
    QAction* series;
    QAction* find;
    QAction* edit;
};

} // namespace editor
