#pragma once

#include "embedded/data/catalogue/CatalogueData.h"
#include "embedded/data/catalogue/LibraryContents.h"
#include "embedded/data/catalogue/LibraryName.h"
#include "embedded/data/history/History.h"
#include "embedded/data/office/ProjectOffice.h"
#include "host/Installation.h"

#include <QtCore/QSet>

#include <memory>

/// The default host: specialties, categories, attributes, libraries and one project in a folder on disk,
/// without any window. The application object must exist first, for the database driver is a plug-in.
namespace embedded {

/// A project, opened as host. To be used on the thread that made it. The roles live as long as this.
class EmbeddedHost
{
public:
    /// Opens the project in a folder; a missing catalogue is made anew. The copy of an office's catalogue is
    /// brought up to date first; without the server the project goes on with the last state. Raises `Error`
    /// when there is no project or it is damaged, locked or newer, and when there is neither the server nor a
    /// copy.
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

    /// The catalogue as it was when the project was opened, without its libraries. Lives as long as this.
    const CatalogueData& CatalogueContents() const;

    /// The libraries of the catalogue that a role can be given to, in the catalogue's order.
    CArray<LibraryName> LibrariesOf(LibraryRole role) const;
    /// The numbers of the items of a bill library, whether the project uses it or not; letter case of the
    /// code does not count. Empty for a code that no bill library of the catalogue has. Raises `Error`.
    QSet<CString> BillNumbersOf(const CString& library) const;
    /// The code of the library that the project uses in a role.
    CString LibraryInUse(LibraryRole role) const;
    /// Uses another library from now on and stores it in the project. Raises `Error` when the catalogue has
    /// no such library of that role or is being written by another program, or the project cannot be written;
    /// nothing has changed then.
    void SetLibrary(LibraryRole role, const CString& code);

    /// To be called when a dialog has ended and its rules stand in a rule file or are given up. Until then
    /// the bill numbers that it has proposed and that may have been taken are not proposed again.
    void ForgetProposedNumbers();

    /// The office of the project, null for a project without. Lives as long as this.
    ProjectOffice* Office();

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
    struct Ground;
    struct Holdings;

    void TellOffice();

    std::unique_ptr<Ground> m_ground;
    std::unique_ptr<Holdings> m_holdings;
};

} // namespace embedded
