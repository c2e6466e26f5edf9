#pragma once

#include "platform/Text.h"

namespace embedded {

/// Which configuration a project works on, and so which of its rule files. The module is told by the same
/// entry: section "QdDeConfigInfo", key "ConfigName" of the ini beside the project file. Nothing is kept in
/// memory.
class CurrentConfiguration
{
public:
    /// The entry gives back no more characters than this.
    static constexpr int LongestName = 99;

    /// `projectFile` is the path text of the project file.
    explicit CurrentConfiguration(const CString& projectFile);

    /// The name, which is that of a rule file without its ending; `DefaultName()` when none is stored.
    /// Whether there is such a file is not looked at.
    CString Name() const;
    /// Stores a name; whether it could be written.
    bool Use(const CString& name) const;

    /// Raises `Error`, naming the ini, when `Name()` cannot be the name of a configuration. The module builds
    /// a path from whatever stands there, so that a name with a separator leads out of the rule folder: to be
    /// asked before the module is let at the current configuration.
    void RequirePossible() const;

    /// Whether a text can name a configuration: it becomes a file name, and the ini must give it back
    /// unchanged.
    static bool IsPossibleName(const CString& name);

    /// The configuration of a project that has chosen none.
    static CString DefaultName();

private:
    CString m_ini;
};

} // namespace embedded
