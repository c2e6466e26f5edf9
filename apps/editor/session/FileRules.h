#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Structure.h"

#include <QtCore/QByteArray>

#include <functional>
#include <memory>

namespace xml {
class Document;
}

namespace editor {

class WorkThread;

/// The rules that a rule file holds. Those of one category are there at once, so that they can be shown; the
/// others of a large file are read later, on a thread of their own. To be used on the thread of the windows.
class FileRules
{
public:
    /// Reads all of it. Raises `platform::FileError` for bytes that are no rule file; `path` is told with it.
    FileRules(const CString& path, const QByteArray& bytes);
    /// Reads the rules of the small category `first` from `document`, into which the bytes of a rule file
    /// have been loaded. Those of a small file are all read.
    FileRules(const QByteArray& bytes, const xml::Document& document, CString first);
    /// Waits until the thread has ended.
    ~FileRules();
    FileRules(const FileRules&) = delete;
    FileRules& operator=(const FileRules&) = delete;

    /// Begins to read the others, if they are not there and nobody has begun. `come` is called on the thread
    /// that has read them, also when it could not: whoever asks for them then gets the reason raised.
    void ReadOthers(std::function<void()> come);
    /// Without waiting: the first category alone (see `rules::ReadCategory`), or all of it. It stays the same
    /// object when the others come.
    const rules::ConfigurationPtr& SoFar() const noexcept { return m_rules; }
    /// Whether all rules are there, so that the next two need not wait.
    bool AreWhole() const noexcept { return m_rest == nullptr; }
    /// All rules, and how the file is built. Read what nobody has begun to read, wait for what is being read,
    /// and raise what reading it has raised, as for want of memory; who asks again has it read anew.
    const rules::ConfigurationPtr& Rules();
    const rules::FileStructure& Structure();

private:
    struct Rest;

    void TakeRest();

    rules::ConfigurationPtr m_rules;
    rules::FileStructure m_structure;
    std::unique_ptr<Rest> m_rest; ///< null when there is none, or it has been taken
};

} // namespace editor
