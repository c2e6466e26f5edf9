#pragma once

#include "platform/Text.h"

namespace embedded {

/// Where the files of a project lie. All paths are path texts.
class ProjectFolder
{
public:
    /// Raises `Error` for an empty path and for one that has no path text (a name that holds a backslash).
    explicit ProjectFolder(const QString& nativeFolder);

    const CString& Path() const noexcept { return m_path; }
    /// The application folder: catalogue, template, attribute information and rule files.
    CString AppFolder() const;
    /// The folder of the rule files, below the application folder. Not created here.
    CString RuleFolder() const;
    /// The rule file that new ones are copied from.
    CString TemplateFile() const;
    CString CatalogueFile() const;
    /// What the project remembers of its office.
    CString OfficeFile() const;
    CString ProjectFile() const;
    CString ProfileFile() const;
    /// The dated copies of rule files, and what else programs keep of the work on these. Not created here.
    CString HistoryFolder() const;

    /// Folders below that of the project, as path texts that begin there: the marks of who works on a project
    /// or writes one of its files, and the drafts that were begun.
    static CString LocksBelow();
    static CString DraftsBelow();

    /// Whether a path text names a rule file of the project: an ".xml" file, wherever it lies, but for those
    /// that the application folder itself holds, which the module makes anew at will, and those in
    /// `DraftsBelow()`, on which a program has begun a draft and which nobody works on.
    bool IsRuleFile(const CString& path) const;

    /// Whether a project file stands here. It may still be damaged, or not be readable. An empty file is
    /// none: it is what an interrupted creation leaves.
    bool HoldsProject() const;
    /// The same, but raises `Error` when no project stands here, or its file cannot be read.
    void RequireProject() const;

private:
    CString m_path;
};

/// Whether a project stands in the folder; it may still be damaged.
bool IsProject(const QString& nativeFolder);

/// Sees to it that a folder stands at a path text, one level only. Raises `Error`.
void EnsureFolder(const CString& path);

} // namespace embedded
