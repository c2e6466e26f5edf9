#pragma once

#include "embedded/data/office/ProjectOffice.h"

#include <memory>

namespace embedded {

/// The catalogue of a project as it stands now: its own, or the copy of its office's, which is brought up to
/// date as far as the office can be reached.
class ProjectCatalogue
{
public:
    /// `office` is the one of the project's settings, empty for a project without. A missing catalogue of its
    /// own is made anew. Raises `Error`, also when the office cannot be reached and there is no copy yet.
    ProjectCatalogue(const ProjectFolder& folder, const CString& office);
    ~ProjectCatalogue();
    ProjectCatalogue(const ProjectCatalogue&) = delete;
    ProjectCatalogue& operator=(const ProjectCatalogue&) = delete;

    /// The file. One that is a copy must not be written to but by `BringUpToDate`.
    Database& Local() noexcept { return m_local; }
    /// Null for a project without one.
    ProjectOffice* Office() noexcept { return m_office.get(); }

private:
    std::unique_ptr<ProjectOffice> m_office;
    Database m_local;
};

} // namespace embedded
