#pragma once

#include "host/ConfigurationEntry.h"
#include "platform/Text.h"

namespace embedded {

/// Which configuration a project works on, and so which of its rule files, and what may be one. The module is
/// told by the same entry. Nothing is kept in memory.
class CurrentConfiguration
{
public:
    /// The entry gives back no more characters than this.
    static constexpr int LongestName = host::ConfigurationEntry::LongestName;

    /// `projectFile` is the path text of the project file.
    explicit CurrentConfiguration(const CString& projectFile);

    /// The name, which is that of a rule file without its ending; `DefaultName()` when none is stored.
    /// Whether there is such a file is not looked at.
    CString Name() const;
    /// Stores a name; whether it could be written.
    bool Use(const CString& name) const;
    /// What to tell, without its final mark, where `Use` could not write what a person chose.
    static CString NotWrittenText();

    /// Raises `Error`, naming the ini, when `Name()` cannot be the name of a configuration. The module builds
    /// a path from whatever stands there, so that a name with a separator leads out of the rule folder: to be
    /// asked before the module is let at the current configuration.
    void RequirePossible() const;

    /// A sentence, without its final mark, for a name that is longer than what the entry gives back, so that
    /// `Name()` is that of another configuration; else empty.
    CString CutNote() const;

    /// Whether a configuration may be given this name: a file can have it, the ini gives it back unchanged,
    /// and no blank at an end hides from whoever reads it.
    static bool IsPossibleName(const CString& name);
    /// Whether a file of the rule folder can have this name, as those that the module's own save-as dialog
    /// takes have. Less than `IsPossibleName`: configurations that are there already are worked on.
    static bool CanNameFile(const CString& name);

    /// The configuration of a project that has chosen none.
    static CString DefaultName();

private:
    host::ConfigurationEntry m_entry;
};

} // namespace embedded
