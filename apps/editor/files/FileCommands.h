#pragma once

#include "editor/files/FileDialogs.h"
#include "editor/files/FilePanel.h"
#include "editor/files/RuleFileSteps.h"

#include <QtCore/QStringList>

namespace editor {

class Project;

/// How a command on rule files ended.
struct FileEnd
{
    bool done = false; ///< false when the user decided otherwise
    QString told{};    ///< what was done, in words for the foot of the window
    CString path{};    ///< the file that was made or changed; empty when there is none
};

/// Asks what a command on rule files needs to know and carries it out. Raises what `RuleFileSteps` raises. To
/// be run as a step of the window, and the files to be examined again afterwards.
class FileCommands
{
public:
    /// Both must outlive this. `window` owns the questions.
    FileCommands(QWidget* window, Project& project);

    /// `path` is the path text of the selected file. `Open` and `History` are the window's own business and
    /// do nothing here.
    FileEnd Run(FileCommand command, const CString& path);
    /// Offers the project native rule files that were dropped, one after another. `path` is that of the last.
    FileEnd TakeIn(const QStringList& files);
    /// Makes a rule file that is gone anew, of what it held and by a name that is asked for.
    FileEnd Restore(const CString& formerName, const QByteArray& bytes);

private:
    FileEnd MakeCurrent(const CString& path);
    FileEnd New();
    FileEnd Duplicate(const CString& path);
    FileEnd Rename(const CString& path);
    FileEnd Delete(const CString& path);
    FileEnd Unwrap(const CString& path);
    FileEnd Compare(const CString& path);
    FileEnd Reveal(const CString& path) const;
    /// The rule files of the project that stand there, without `but`.
    FileChoices Choices(const CString& but = {}) const;

    QWidget* m_window;
    Project& m_project;
    RuleFileSteps m_steps;
};

} // namespace editor
