#pragma once

#include "embedded/data/engine/Error.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Text.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class QLockFile;

namespace embedded {

/// Another program holds a rule file. The text says which.
class Occupied : public Error
{
public:
    using Error::Error;
    ~Occupied() override;
};

/// The same, when whoever was asked did not want to wait for it.
class WaitEnded : public Occupied
{
public:
    using Occupied::Occupied;
    ~WaitEnded() override;
};

/// Keeps the other programs away from rule files for as long as it lives. A save of the module loads a file,
/// changes one specialty in it and writes it back, so two programs that do so at once lose what the first of
/// them wrote, or tear the file. Every program of this host therefore takes this around keeping a copy,
/// loading and writing. Reading alone needs none.
///
/// The mark is a small file in "history\locks" of the project; for a rule file outside the project it stands
/// beside that, where other projects see it, too. It is gone with this object; that of a program that has
/// died is taken over. What this process holds already is not waited for: the locks of one process share it.
class RuleFileLock
{
public:
    /// Asked again and again while another program holds a file, and gone when the wait is over: `text` says
    /// who holds which, `waited` for how long. False ends the wait. May handle events.
    using GoOn = std::function<bool(const CString& text, std::chrono::milliseconds waited)>;

    /// Takes the files of those path texts, whether they exist or not, each once however often and by
    /// whatever links it is named. Waits while another program holds one: ten seconds, or as many as the
    /// environment variable KTQDDE_LOCK_WAIT says. Raises `Occupied` when that is over, `WaitEnded` when
    /// `goOn` has ended it, and another `Error` at once where no mark can be written; nothing is held then.
    RuleFileLock(const ProjectFolder& project, const CStringArray& paths, GoOn goOn = {});
    /// The same for whoever works on files without a project: the marks stand beside the files, where the
    /// programs of projects that these do not belong to look for them. Where none can stand, none is taken.
    explicit RuleFileLock(const CStringArray& paths, GoOn goOn = {});
    ~RuleFileLock();
    RuleFileLock(RuleFileLock&&) noexcept;
    RuleFileLock& operator=(RuleFileLock&&) noexcept;

private:
    /// The marks and what they stand for, as native paths.
    using Marks = std::map<QString, CString>;

    void Take(const Marks& marks, GoOn goOn);

    std::vector<std::shared_ptr<QLockFile>> m_marks;
};

} // namespace embedded
