#pragma once

#include "xml/Dom.h"

namespace shared {

enum class RuleFileKind {
    Missing,    ///< nothing stands there; whoever opens it makes it
    Rules,      ///< a rule file
    Repeated,   ///< a rule file in which a specialty stands twice
    Wrapped,    ///< finished by a head and no XML any more
    Foreign,    ///< XML with another document element
    Unreadable, ///< anything else
};

/// What a file is worth as a rule file. To be asked before a dialog opens on a file or a script works on it:
/// the module takes a file that it cannot read for an empty one without a word, and its next save replaces
/// it.
struct RuleFileState
{
    CString path; ///< path text
    RuleFileKind kind = RuleFileKind::Missing;
    /// Why it is no rule file that can be read, and where; no text for what is safe.
    xml::LoadReason reason{};

    /// Whether work on it loses nothing: an editor opens any other file with default rules or none at all,
    /// and its first save replaces or damages what stood there.
    bool IsSafe() const { return kind == RuleFileKind::Rules || kind == RuleFileKind::Missing; }
    /// The configuration's name: the file name without ".xml".
    CString Name() const;
    /// The state in words for a person, with line, column and reason.
    CString Describe() const;
};

/// Takes every further element of a specialty that stands more than once out of a rule file and leaves the
/// first, which is the one that the module reads: its next save would append that behind the others, and the
/// opening after that would read another one. To be done with the file locked and a copy kept. Raises
/// `xml::Error` when the file cannot be read or written.
void KeepFirstSpecialties(const CString& path);

/// Reads a file and says what it is. Asks no host, so it may run on any thread. Raises nothing for what the
/// file holds.
RuleFileState ExamineRuleFile(const CString& path);

/// The same of bytes that have been read already; `path` is told with the state.
RuleFileState ExamineRuleBytes(const CString& path, const QByteArray& bytes);

/// The same of bytes that a document has been asked to load, whether it took them or not.
RuleFileState ExamineLoaded(const CString& path, const QByteArray& bytes, const xml::Document& document);

/// How many bytes a file holds; 0 when there is none.
qint64 FileSize(const CString& path);

/// Whether a step that reads or writes the file may take long without a piece of work in between at which a
/// window could come. Up to this size that is about a tenth of a second.
bool IsLarge(const CString& path);

} // namespace shared
