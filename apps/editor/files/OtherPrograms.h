#pragma once

#include "embedded/data/project/ProjectFolder.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <optional>

namespace editor {

/// Tells which other processes have a project open (see `OtherProgramWithProject`), and tells it again when
/// that is another answer: when one comes or goes by itself at once, when one has died at the next `Look`.
class OtherPrograms : public QObject
{
public:
    /// Called from the event loop, and once by the constructor; nothing when there is none.
    using Told = std::function<void(const std::optional<CString>& others)>;

    /// To be made behind the project's own mark, with which the folder of the marks comes.
    OtherPrograms(embedded::ProjectFolder project, Told told);

    /// Looks at once. To be called when the window becomes the active one: nobody says that a program has
    /// died, and some network folders say nothing.
    void Look();

private:
    void LookAgain();
    /// Sees to it that a mark that does not say yet whose it is is looked at again.
    void AwaitSignature();

    embedded::ProjectFolder m_project;
    Told m_told;
    std::optional<CString> m_others; ///< as told last
    QFileSystemWatcher m_watcher;
    QTimer m_quiet;      ///< runs while a mark may still be written
    int m_looksLeft = 0; ///< for a signature; its program may have died
};

} // namespace editor
