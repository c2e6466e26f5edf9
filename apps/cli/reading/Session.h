#pragma once

#include "cli/reading/Arguments.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "host/Installation.h"

#include <optional>

namespace cli {

/// The native folder of the project that `--project` or else the environment variable KTQDDE_PROJECT names.
/// Raises `UsageError` when neither does.
QString NamedProject(const Arguments& arguments);

/// The same; nothing when neither does.
std::optional<QString> FindNamedProject(const Arguments& arguments);

/// A project opened on the embedded host, which is installed for as long as this object lives.
class Session
{
public:
    /// Opens the project that `NamedProject` gives, with the
    /// specialty of `--spec`, if given, for this run only. Raises `UsageError` when no project is named,
    /// `Refusal` for an unknown specialty and `embedded::Error` when the project cannot be opened.
    explicit Session(const Arguments& arguments);
    /// Opens the project in a folder.
    explicit Session(const QString& nativeFolder);

    /// The project's current specialty, mode and native folder.
    CString Spec() const;
    bool IsBillMode() const;
    QString Folder() const { return m_folder; }
    const embedded::EmbeddedHost& Host() const noexcept { return m_host; }
    embedded::EmbeddedHost& Host() noexcept { return m_host; }
    embedded::History& History() { return m_host.History(); }

private:
    QString m_folder;
    embedded::EmbeddedHost m_host;
    host::Installation m_installed;
};

} // namespace cli
