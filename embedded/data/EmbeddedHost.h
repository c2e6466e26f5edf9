#pragma once

#include "embedded/data/Error.h"
#include "embedded/data/History.h"
#include "embedded/data/LibraryContents.h"
#include "embedded/data/LibraryName.h"
#include "embedded/data/Progress.h"
#include "host/Installation.h"

#include <memory>

/// The default host: specialties, categories, attributes, libraries and one project in a folder on disk,
/// without any window. The application object must exist first, for the database driver is a plug-in.
namespace embedded {

/// What a new project is set to.
struct ProjectOptions
{
    SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode;
    /// Name of the current specialty; empty means the first of the catalogue.
    CString spec{};
    /// Code of the bill library; empty means the first of the catalogue.
    CString billLibrary{};
    /// Code of the quota library of that mode; empty means the first whose guide speaks of the bill library,
    /// or else the first of the catalogue.
    CString quotaLibrary{};
};

/// The libraries of a role that a new project can choose from, in the catalogue's order.
CArray<LibraryName> ShippedLibraries(LibraryRole role);

/// Creates a project: the folder (one level, unless it exists), in it "app" (the application folder with the
/// catalogue, the template "QdDeConfig.def" and "AttributeInformation.xml"), "SysRegedit.ini" and last the
/// project file "project.ktqd" with settings and history. Of several programs that create the same project at
/// once one succeeds. A catalogue that stands in "app" already is the project's, and the options choose from
/// what it offers. Raises `Error` when a project stands there already, the specialty or a library is not
/// known or something cannot be written. A creation that failed on the way can be repeated. Raises
/// `Cancelled` when `progress` asks for it; what it has made is gone again then.
void CreateProject(const QString& nativeFolder, const ProjectOptions& options, const Progress& progress = {});

/// Whether a project stands in the folder; it may still be damaged.
bool IsProject(const QString& nativeFolder);

/// A project, opened as host. To be used on the thread that made it. The roles live as long as this.
class EmbeddedHost
{
public:
    /// Opens the project in a folder; a missing catalogue is made anew. Raises `Error` when there is no
    /// project or it is damaged, locked or newer.
    explicit EmbeddedHost(const QString& nativeFolder);
    ~EmbeddedHost();
    EmbeddedHost(const EmbeddedHost&) = delete;
    EmbeddedHost& operator=(const EmbeddedHost&) = delete;

    /// All roles but the windows, which are null.
    host::Roles Roles();

    /// Path texts of the application folder, of the folder of the rule files in it and of the project file.
    CString AppFolder() const;
    CString RuleFolder() const;
    CString ProjectPath() const;

    /// What the bill library in use and the quota library in use for the present mode hold, for windows that
    /// let a person pick from them. The object lives as long as this; what it holds becomes something else
    /// when the mode or a library is changed.
    const LibraryContents& Contents() const;

    /// The libraries of the catalogue that a role can be given to, in the catalogue's order.
    CArray<LibraryName> LibrariesOf(LibraryRole role) const;
    /// The code of the library that the project uses in a role.
    CString LibraryInUse(LibraryRole role) const;
    /// Uses another library from now on and stores it in the project. Raises `Error` when the catalogue has
    /// no such library of that role or is being written by another program, or the project cannot be written;
    /// nothing has changed then.
    void SetLibrary(LibraryRole role, const CString& code);

    /// The dated copies of the project's rule files. Lives as long as this.
    embedded::History& History();

    /// Makes a specialty the current one for this process only. Raises `Error` when it is not known.
    void UseSpec(const CString& name);
    /// Make a specialty or a mode the current one and store it in the project. Raise `Error` when the
    /// specialty is not known, the mode's libraries cannot be read or the project cannot be written; nothing
    /// has changed then.
    void SetCurrentSpec(const CString& name);
    void SetMode(SQdDeInfo::EQdDeMode mode);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace embedded
