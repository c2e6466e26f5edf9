#pragma once

#include "editor/session/FileRules.h"
#include "shared/RuleFileMerge.h"

#include <QtCore/QByteArray>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace editor {

class Project;

/// Asked when a draft and its file are merged: `Mine` is the draft, `Theirs` the file.
using shared::AnswerConflicts;

/// Asked when the file is gone that the draft was begun on: whether it is to be written anew.
using AskWhetherAnew = std::function<bool()>;

/// The rule file that a draft belongs to: what it held when it was read, and how the draft gets into it.
/// Other programs may write it at any time; nothing of theirs is written over.
class DraftFile
{
public:
    /// Reads the file; where there is none, what the module would make, which does not come to stand there
    /// before it is saved. Raises `std::runtime_error`, with the reason in words, for one that cannot be
    /// worked on (see `shared::RuleFileState`). The project must outlive this and be the host.
    DraftFile(Project& project, CString path);
    /// The same, but of a large file only the rules of the category `first` (see `FileRules`).
    DraftFile(Project& project, CString path, const CString& first);
    /// The same for a draft that was begun on other bytes than the file may hold now.
    DraftFile(Project& project, CString path, const QByteArray& begunOn);
    ~DraftFile();

    const CString& Path() const noexcept { return m_path; }
    /// The name of the configuration: the file name without ".xml".
    CString Name() const;
    /// What the file held when it was read or saved last.
    const QByteArray& Bytes() const noexcept { return m_bytes; }
    /// Its rules, and how it is built. Wait for what has not come yet.
    const rules::ConfigurationPtr& Rules() const { return m_rules->Rules(); }
    const rules::FileStructure& Structure() const { return m_rules->Structure(); }
    /// What is there of its rules, without waiting (see `FileRules::SoFar`), and whether that is all.
    const rules::ConfigurationPtr& RulesSoFar() const noexcept { return m_rules->SoFar(); }
    bool IsWhole() const noexcept { return m_rules->AreWhole(); }
    /// Begins to read the others (see `FileRules::ReadOthers`).
    void ReadOthers(std::function<void()> come) { m_rules->ReadOthers(std::move(come)); }
    /// Whether the file holds something else now. Asks the disk.
    bool HasChangedOnDisk() const;

    enum class SaveEnd {
        Saved,
        Merged,    ///< saved, together with what another program had saved meanwhile
        Cancelled, ///< by the user; the file is untouched
    };
    /// Brings the rules into the file: a copy of what it holds goes into the history, what another program
    /// has saved since it was read is merged, and the file is written with the host's version, as the
    /// module's own save does. A file that has been removed since, or given another name, is written anew
    /// only when `mayWriteAnew` says so. Afterwards `Rules` is what the file holds. Raises, with the file as
    /// it was, `embedded::Error` when another program does not give it back, `platform::FileError`, and
    /// `xml::Error` for texts that no file can hold.
    SaveEnd Save(const rules::Configuration& wanted, const AnswerConflicts& answer,
                 const AskWhetherAnew& mayWriteAnew = {});

private:
    void Write(const QByteArray& bytes);

    Project& m_project;
    CString m_path;
    QByteArray m_bytes;
    std::unique_ptr<FileRules> m_rules; ///< never null
    bool m_stood = true;                ///< a file that was missing then is made without asking
};

} // namespace editor
