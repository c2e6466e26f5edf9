#pragma once

class QAction;
class QMainWindow;
class QMenu;

namespace editor {

/// What the state of the window allows.
struct Possible
{
    bool project = false;  ///< a project is open
    bool file = false;     ///< a rule file is selected, which may be missing
    bool existing = false; ///< and stands on disk
    bool rules = false;    ///< and can be read as a rule file
    bool office = false;   ///< the project has an office
};

/// The commands of the main window, in its menus. The window owns them; whoever connects them lets them do
/// something.
struct Actions
{
    explicit Actions(QMainWindow& window);

    /// Enables what is possible.
    void Enable(const Possible& possible) const;

    QAction* newProject;
    QAction* openProject;
    QAction* sampleProject;
    QMenu* recentProjects;
    QAction* closeProject;
    QAction* quit;

    QMenu* edit; ///< filled by whoever edits
    QMenu* view; ///< the same

    QAction* configure;
    QAction* wizard;
    QAction* refresh;
    QAction* refreshOther;
    QAction* attributes;
    QAction* writeHead;
    QAction* history;
    QAction* examine;

    QAction* importData;
    QAction* exportData;
    QAction* office;

    QAction* manual;
    QAction* tour;
    QAction* about;

private:
    void MakeProjectMenu(QMainWindow& window);
    void MakeRuleMenu(QMainWindow& window);
    void MakeDataMenu(QMainWindow& window);
    void MakeHelpMenu(QMainWindow& window);
};

} // namespace editor
