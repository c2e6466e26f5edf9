#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QTimer>

#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace editor {

/// What another program has done to a rule file.
struct DiskChange
{
    enum class Kind { Appeared, Changed, Gone };

    CString path; ///< path text
    Kind kind = Kind::Changed;

    bool operator==(const DiskChange&) const = default;
};

/// Tells when another program makes, changes or removes a rule file of the open project. Goes by what the
/// files hold, so that touching one tells nothing, and neither does what this program writes: a file system
/// stands in front of the one in force from the making of this to its end and notes what passes there. So
/// this must be made behind `Project::BecomeHost` and end before the project does.
class DiskWatch : public QObject
{
public:
    /// Called from the event loop, perhaps while a modal window is open, but in no long piece of work.
    using Told = std::function<void(const QList<DiskChange>& changes)>;

    /// Watches the ".xml" files of a folder given by its path text, which may be missing for now. What they
    /// hold now is known.
    DiskWatch(CString folder, Told told);
    ~DiskWatch() override;

    /// Looks at once and tells what is found. In no long piece of work.
    void Look();
    /// Looks when nothing has been said to change for a moment, and not in the middle of long work. To be
    /// called when the window becomes the active one: some network folders do not say when something changes
    /// in them, and a system that watches too much already says nothing of any.
    void LookSoon() { m_quiet.start(); }

private:
    class OwnWrites;

    /// What a file is known to hold, and by what it is seen that it may hold something else.
    struct Known
    {
        QByteArray hash;
        qint64 size = 0;
        QDateTime time{};
    };

    bool IsWatched(const CString& path) const;
    void NoteOwnWrite(const CString& path);
    /// What a file holds now is known, and not told.
    void Learn(const CString& path);
    /// What came of a file since it was known; it is known then.
    std::optional<DiskChange> Compare(const CString& path);
    /// The rule files that are there, each watched before somebody looks what it holds.
    QSet<CString> Find();
    void Watch(const QStringList& paths);
    void LookWhenQuiet();

    CString m_folder;
    Told m_told;
    std::map<CString, Known> m_known;
    QSet<CString> m_touched; ///< which the system says have changed
    QFileSystemWatcher m_watcher;
    QTimer m_quiet; ///< runs while more changes may come
    std::unique_ptr<OwnWrites> m_ownWrites;
};

} // namespace editor
