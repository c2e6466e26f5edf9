#pragma once

#include "embedded/data/project/ProjectFolder.h"
#include "platform/Text.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>

#include <functional>
#include <map>
#include <optional>

namespace embedded {

/// One dated copy of a rule file.
struct HistoryEntry
{
    CString id;     ///< seven hexadecimal digits by which a person names it; unique in the project
    CString path;   ///< path text of the rule file
    CString copy;   ///< path text of the copy
    QDateTime time; ///< when it was made by the clock of the machine, UTC; says nothing about the order
    qint64 number; ///< counts the copies of the project from 1; 0 in those of programs that did not count yet
};

/// Dated copies of rule files, in the folder "history" of the project. The module writes rule files in place
/// and keeps no backup; whoever is about to let it do so calls `Keep` first. A rule file has a folder of its
/// own there with "path.txt", which says where the file lies (relative to the project when it lies inside,
/// so that a project may be moved), and one ".xml" a copy, byte for byte what the file held, readable or not.
///
/// A copy gets its name only when all of it is on the disk, so that a copy that stands there is whole
/// whatever happened. Several programs may keep copies at once. The copies of a project are ordered by a
/// number that the name bears behind the time, one higher than any that is there: a clock may tick coarsely,
/// stand or be set back. Copies of before, which have none, are older than those that do, and stand among
/// themselves by their time. A file that has been renamed has "former.txt" in its folder, a line for each
/// name before: the number of the last copy that counts, a blank and the path as in "path.txt". All paths are
/// path texts. Failures raise `Error`.
class History
{
public:
    static constexpr int DefaultLimit = 50;
    static constexpr int LargestLimit = 100000;

    /// Tells the time, UTC.
    using Clock = std::function<QDateTime()>;

    explicit History(const ProjectFolder& project, Clock clock = QDateTime::currentDateTimeUtc);

    /// The project whose rule files these are.
    const ProjectFolder& Project() const noexcept { return m_project; }

    /// Keeps a copy of a rule file and then removes the oldest copies beyond the limit. Gives the new copy;
    /// nothing when the file does not exist, holds what the last copy holds, or the limit is 0. The file is
    /// not touched.
    std::optional<HistoryEntry> Keep(const CString& path);

    /// The same without regard to the limit, for what is about to be written over unseen. Gives the copy that
    /// holds what the file holds, be it one that stood there; nothing when the file does not exist.
    std::optional<HistoryEntry> KeepInAnyCase(const CString& path);

    /// The copies of one rule file, or all, the newest first. What in the folder is no copy is passed over.
    CArray<HistoryEntry> List(const CString& path) const;
    CArray<HistoryEntry> ListAll() const;
    /// The copy of that id (any letter case). Raises `Error` when there is none.
    HistoryEntry Find(const CString& id) const;

    QByteArray Read(const HistoryEntry& entry) const;
    /// Writes a copy back over its rule file in place. What the file held is kept first, without regard to
    /// the limit, and given back as `Keep` gives it. When the writing fails the file holds what it held.
    std::optional<HistoryEntry> Restore(const HistoryEntry& entry);
    /// Removes one copy; whether it could.
    bool Forget(const HistoryEntry& entry);

    /// To be called when the rule file `from` has got the name `to`: from then on the copies that `List`
    /// gives of the former name by now are listed as copies of the new one, too, and so can be compared with
    /// it and written back to it. `ListAll` and `Find` go on telling them by the name under which they were
    /// made.
    void Follow(const CString& from, const CString& to);

    /// How many copies of each file stay: "Copies" in section "History" of the project's ini, else
    /// `DefaultLimit`. 0 keeps no more copies and leaves those alone that are there.
    int Limit() const;
    void SetLimit(int limit);

private:
    CString Stored(const CString& path) const;
    CString Actual(const CString& stored) const;
    CString FolderOf(const CString& path) const;
    /// A name that a rule file had before, and the last of the copies that it had by then.
    struct FormerName
    {
        CString path;
        qint64 lastNumber;
    };

    CArray<HistoryEntry> ListFolder(const CString& name) const;
    CArray<FormerName> FormerNames(const CString& path) const;
    /// All names that a file has had, its own included.
    std::map<CString, qint64> AllNames(const CString& path) const;
    void MakeFolder(const CString& path) const;
    std::optional<HistoryEntry> Store(const CString& path);
    HistoryEntry StoreNext(const CString& path, const QByteArray& bytes);
    void Prune(const CString& path, int limit);

    ProjectFolder m_project;
    CString m_root;
    Clock m_clock;
};

} // namespace embedded
