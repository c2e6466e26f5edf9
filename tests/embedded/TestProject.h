#pragma once

#include "embedded/data/engine/Error.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "support/TempFolder.h"

namespace test {

/// A temporary folder with the place for one project, whose path holds Chinese characters and blanks.
class TestProject
{
public:
    /// The native path of the project's folder. It does not exist until a project is created there.
    QString Folder() const { return m_folder.Native(Name()); }
    /// The path text of a file below the project's folder.
    CString Path(const CString& file) const { return m_folder.Path(Below(file)); }
    QString Native(const CString& file) const { return m_folder.Native(Below(file)); }
    const TempFolder& Temp() const noexcept { return m_folder; }
    /// The name of the project's folder, and of a file in it, below the temporary folder.
    static CString Name();
    static CString Below(const CString& file);

    /// Creates the project there.
    void Create(const embedded::ProjectOptions& options = {}) const;
    /// Puts a new project there, where nothing stands yet; see `PutNewProject`.
    void Put(const embedded::ProjectOptions& options = {}) const;
    /// Runs one statement on a database of the project, through a connection of its own.
    void Sql(const CString& databaseFile, const CString& statement) const;

private:
    TempFolder m_folder;
};

/// The text of the `Error` that `action` raises; "no error" when it raises none.
template <typename Action>
CString ErrorOf(const Action& action)
{
    try {
        action();
    } catch (const embedded::Error& error) {
        return error.Message();
    }
    return QStringLiteral("no error");
}

} // namespace test
