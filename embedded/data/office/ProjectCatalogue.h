#pragma once

#include "embedded/data/office/ProjectOffice.h"

#include <memory>

namespace embedded {

/// The catalogue of a project as it stands now: its own, or the copy of its office's, which is brought up to
/// date as far as the office can be reached.
class ProjectCatalogue
{
public:
    /// `settings` are the project's. A missing catalogue of its own is made anew; the office is asked for the
    /// state of its own meanwhile. Raises `Error`.
    ProjectCatalogue(const ProjectFolder& folder, const ProjectDatabase::Settings& settings);
    ~ProjectCatalogue();
    ProjectCatalogue(const ProjectCatalogue&) = delete;
    ProjectCatalogue& operator=(const ProjectCatalogue&) = delete;

    /// Brings the copy of an office's catalogue up to date. To be called before anybody relies on what
    /// `Local` holds; what was read from it before has to be read again if this says so: the copy is another
    /// one than when this object was made. Raises `Error`, also when the office cannot be reached and there
    /// is no copy yet.
    bool BringUpToDate();

    /// The file. One that is a copy must not be written to but by `BringUpToDate`.
    Database& Local() noexcept { return m_local; }
    /// Null for a project without one.
    ProjectOffice* Office() noexcept { return m_office.get(); }

private:
    std::unique_ptr<ProjectOffice> m_office;
    Database m_local;
    std::optional<CopiedState> m_begun; ///< the state that the copy held when this was made
    int m_schema = 0;                   ///< and its schema
};

} // namespace embedded
