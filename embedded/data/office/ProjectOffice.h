#pragma once

#include "embedded/data/catalogue/CatalogueCopy.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/office/Office.h"
#include "embedded/data/office/OfficeMemory.h"
#include "embedded/data/project/ProjectFolder.h"

#include <memory>

namespace embedded {

/// The office of a project, reachable or not. The project reads its catalogue from a local copy, which is
/// brought up to date whenever the office has another revision; without the server it goes on with the last
/// state that it saw.
class ProjectOffice
{
public:
    /// Tries to reach the office; that it cannot be reached raises nothing. Raises `Error` for everything
    /// else that is wrong: no such office, a newer one, no right to read.
    ProjectOffice(const ProjectFolder& folder, const CString& name);
    ~ProjectOffice();
    ProjectOffice(const ProjectOffice&) = delete;
    ProjectOffice& operator=(const ProjectOffice&) = delete;

    const CString& Name() const noexcept { return m_name; }

    /// The connection; null while the office cannot be reached.
    Office* Reached() noexcept { return m_office.get(); }
    /// Tries again when there is no connection, or when the one there was has broken. Whether there is one
    /// now.
    bool Reach();
    /// Why it was not reached, in words; empty when it was.
    const CString& Fault() const noexcept { return m_fault; }
    /// To be called when something has raised `UnreachableError`: gives up the connection.
    void Lose(const UnreachableError& error);

    OfficeMemory& Memory() noexcept { return m_memory; }

    /// What others know the project by, such as beside what it publishes: the name of its folder and the
    /// machine on which it lies.
    const CString& ProjectName() const noexcept { return m_projectName; }
    /// By what the office tells the project from others, see `ProjectDatabase::Id`. Raises `Error`.
    const CString& ProjectId();

    /// Brings the local copy of the catalogue to the office's state, in one transaction, when it is another
    /// one. Does nothing while the office cannot be reached. Whether the copy has changed. Raises `Error`.
    bool BringUpToDate(Database& copy);
    /// The same in a write transaction of the caller's, who commits it.
    bool BringUpToDateWithin(Database& copy);
    /// Raises `Error` when a database is no copy of this office's catalogue.
    void RequireCopy(Database& copy);

    /// For status bar and command line, without final mark: "办公室“NAME”", or with the time of the last
    /// state and the reason where it was not reached.
    CString InWords();

private:
    /// The office's state, with rows unless `held` is that state; nothing while the office cannot be reached.
    struct Present
    {
        CopiedState state;
        CatalogueRows rows;
    };
    std::optional<Present> Read(const std::optional<CopiedState>& held);
    /// Notes that the copy holds the office's present state.
    void Confirm(qint64 revision);

    CString m_name;
    CString m_projectName;
    CString m_projectFile;
    CString m_projectId; ///< empty until it was asked for
    OfficeMemory m_memory;
    std::unique_ptr<Office> m_office;
    CString m_fault;
};

} // namespace embedded
