#pragma once

#include "embedded/data/history/KeepingFiles.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/windows/EmbeddedWindows.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace editor {

/// The open project: the embedded host with its windows, and the module's host from `BecomeHost` to the end
/// of this object. For as long, every rule file is kept in the history right before anything writes it. To be
/// used on the thread of the windows.
class Project
{
public:
    /// Opens a project without installing it yet, so that the former project stays when this one cannot be
    /// opened. Raises `embedded::Error`, also when its current configuration cannot be one.
    explicit Project(const QString& nativeFolder);

    /// Installs this host. The former one must have ended. `frame` is the window on which the module centres
    /// its dialogs; it may be null and must outlive this.
    void BecomeHost(QWidget* frame);

    /// What the module's cloud disk runs for this project in place of the one over a folder.
    void SetNetDisk(std::function<void()> run) { m_windows.SetNetDisk(std::move(run)); }

    /// All roles of this host.
    host::Roles Roles();
    /// The host itself, for what it knows besides.
    embedded::EmbeddedHost& Host() noexcept { return m_host; }

    /// Keeps a copy of a rule file in the history now. False when none could be kept and the user does not go
    /// on without. Waits as `WaitInWindow` tells while another program holds the file, and raises
    /// `embedded::Occupied` when it does not give it back, `embedded::WaitEnded` when the user did not want
    /// to wait. Needs `BecomeHost`.
    bool KeepCopy(const CString& ruleFile);
    /// Keeps other programs from writing a rule file while it is looked at; nothing where the project cannot
    /// be written at all. Waits and raises as `KeepCopy` does.
    std::optional<embedded::RuleFileLock> Lock(const CString& ruleFile);
    /// Keeps the rule files that a step reads until it has written them, whatever events it handles. Needs
    /// `BecomeHost`.
    embedded::KeepingFiles::Step HoldFiles() { return embedded::KeepingFiles::Step(*m_files); }

    /// The project's folder, native and absolute, and its last part.
    QString Folder() const { return m_folder; }
    QString Name() const;

    SQdDeInfo::EQdDeMode Mode();
    CString Spec();
    CStringArray Specs();
    /// How many small categories some specialties have.
    qint64 CountCategories(const CStringArray& specs);
    /// Change the project on disk, too. Raise `embedded::Error`; nothing has changed then.
    void SetMode(SQdDeInfo::EQdDeMode mode) { m_host.SetMode(mode); }
    void SetSpec(const CString& name) { m_host.SetCurrentSpec(name); }

    /// The role of the present mode's quota library.
    embedded::LibraryRole QuotaRole();
    /// The libraries of the project's catalogue for a role, and the code of the one in use.
    CArray<embedded::LibraryName> Libraries(embedded::LibraryRole role) const;
    CString LibraryInUse(embedded::LibraryRole role) const;
    /// Changes the project on disk, too. Raises `embedded::Error`; nothing has changed then.
    void SetLibrary(embedded::LibraryRole role, const CString& code) { m_host.SetLibrary(role, code); }
    /// What a person should know when the guide of the mode's quota library is of another bill library than
    /// the one in use, as a sentence without its final mark; empty when the two match.
    CString GuideHint();
    /// Names of the bill library and of the quota library of the mode.
    CString BillLibrary();
    CString QuotaLibrary();

    /// To be called when a dialog of the module has ended.
    void ForgetProposedNumbers() { m_host.ForgetProposedNumbers(); }

    /// Path text of the folder of the rule files, which may be missing.
    CString RuleFolder() const;
    /// Path text of the current configuration's rule file, which may be missing. Found without opening it.
    /// Raises `embedded::Error` when the ini names what cannot be one.
    CString CurrentRuleFile() const;
    /// Path texts of the rule files: the current one first, whether it exists or not, then the others by
    /// name.
    CStringArray RuleFiles() const;

private:
    void TellWrittenOver(const CString& ruleFile, const embedded::HistoryEntry& copy);

    QString m_folder;
    embedded::EmbeddedHost m_host;
    embedded::EmbeddedWindows m_windows;
    std::optional<host::Installation> m_installed;
    std::optional<embedded::KeepingFiles> m_files;
};

} // namespace editor
