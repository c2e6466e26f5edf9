#pragma once

#include "embedded/data/history/History.h"
#include "embedded/data/history/RuleFileLock.h"
#include "embedded/data/project/ProjectFolder.h"

#include <QtCore/QByteArray>

#include <functional>

namespace editor {

/// What can be done with the rule files of a project, without any window. A step takes the locks of the files
/// that it turns to, looks again at what it was told, and keeps in the history what it is about to take away.
/// When it cannot be done it raises `embedded::Error` or `platform::FileError`, with words for a person, and
/// every file and the project's choice are as they were. Nothing is ever written over a file that stands
/// there: a name that is taken is refused, in any letter case. All paths are path texts.
class RuleFileSteps
{
public:
    /// Makes what is asked during one wait for another program; without it a wait lasts as long as it may.
    using Wait = std::function<embedded::RuleFileLock::GoOn()>;

    explicit RuleFileSteps(embedded::ProjectFolder project, Wait wait = {});

    /// The file that new rule files are made from. Whether it is there is not looked at.
    CString Template() const;
    /// Whether the project works on that file.
    bool IsCurrent(const CString& path) const;
    /// Why no rule file of that name (without ".xml") can be made, or the file `renamed` not be given it, as
    /// a sentence without its final mark; empty when it can.
    CString NameFault(const CString& name, const CString& renamed = {}) const;
    /// Raises `embedded::Error` for a file of the project's own, which need not be taken in.
    void RequireOutside(const CString& path) const;
    /// A name made of `name` that is not taken.
    CString FreeName(const CString& name) const;

    /// Lets the project work on a rule file from now on. Neither that file nor the one before is opened.
    void MakeCurrent(const CString& path);

    /// Make a rule file `name` with the bytes of `source`, and give its path. `Make` takes the template or a
    /// rule file that can be read, `Duplicate` any rule file of the project as it is, `TakeIn` a rule file
    /// from elsewhere, which may be wrapped.
    CString Make(const CString& source, const CString& name);
    CString Duplicate(const CString& path, const CString& name);
    CString TakeIn(const CString& source, const CString& name);

    /// The same with the bytes of a rule file that is gone.
    CString Restore(const QByteArray& bytes, const CString& name);

    /// Gives a rule file another name, and its new path. The copies in the history are found under the new
    /// name; when the project works on the file it goes on doing so.
    CString Rename(const CString& path, const CString& name);

    /// Deletes a rule file, whose content is in the history then, whatever number of copies that is limited
    /// to. When the project works on the file, `next` is what it works on from then on; without that it is
    /// refused.
    void Delete(const CString& path, const CString& next = {});

    /// Puts the rule file that is inside a wrapped one into its place. The wrapped file is in the history
    /// then.
    void Unwrap(const CString& path);

private:
    CString PathOf(const CString& name) const;
    embedded::RuleFileLock Lock(const CStringArray& paths) const;
    void RequireName(const CString& name, const CString& renamed = {}) const;
    CString WriteNew(const CString& name, const QByteArray& bytes) const;
    void Keep(const CString& path);
    void Use(const CString& path) const;
    void RequireReadable(const CString& path) const;

    embedded::ProjectFolder m_project;
    embedded::History m_history;
    Wait m_wait;
};

} // namespace editor
