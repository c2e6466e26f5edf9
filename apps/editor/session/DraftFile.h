#pragma once

#include "rules/merge/Merge.h"
#include "rules/model/Structure.h"
#include "rules/model/Configuration.h"

#include <QtCore/QByteArray>

#include <functional>
#include <optional>
#include <vector>

namespace editor {

class Project;

/// Asked when a file cannot be merged without an answer for each of these: the sides that are to count, in
/// the same order; nothing when the user does not save after all.
using AnswerConflicts =
    std::function<std::optional<std::vector<rules::Side>>(const std::vector<rules::Conflict>& conflicts)>;

/// The rule file that a draft belongs to: what it held when it was read, and how the draft gets into it.
/// Other programs may write it at any time; nothing of theirs is written over.
class DraftFile
{
public:
    /// Reads the file, or what the module would make where there is none. Raises `std::runtime_error` with
    /// the reason in words for one that cannot be read as a rule file. The project must outlive this.
    DraftFile(Project& project, CString path);

    const CString& Path() const noexcept { return m_path; }
    /// The name of the configuration: the file name without ".xml".
    CString Name() const;
    /// What the file held when it was read or saved last.
    const QByteArray& Bytes() const noexcept { return m_bytes; }
    const rules::ConfigurationPtr& Rules() const noexcept { return m_rules; }
    const rules::FileStructure& Structure() const noexcept { return m_structure; }
    /// Whether the file holds something else now. Asks the disk.
    bool HasChangedOnDisk() const;

    enum class SaveEnd {
        Saved,
        Merged,    ///< saved, together with what another program had saved meanwhile
        Cancelled, ///< by the user; the file is untouched
    };
    /// Writes the rules into the file: with the file locked, a copy of what it holds in the history first,
    /// and merged with what another program has saved since it was read. Afterwards `Rules` is what the file
    /// holds. Raises, with the file as it was, `embedded::Occupied`, `platform::FileError`, `xml::Error`,
    /// `embedded::Error`.
    SaveEnd Save(const rules::Configuration& wanted, const AnswerConflicts& answer);

private:
    Project& m_project;
    CString m_path;
    QByteArray m_bytes;
    rules::ConfigurationPtr m_rules;
    rules::FileStructure m_structure;
};

} // namespace editor
