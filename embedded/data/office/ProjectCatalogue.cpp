#include "embedded/data/office/ProjectCatalogue.h"

#include "embedded/data/catalogue/CatalogueSchema.h"

namespace embedded {

ProjectCatalogue::ProjectCatalogue(const ProjectFolder& folder, const CString& office)
    : m_office(office.isEmpty() ? nullptr : std::make_unique<ProjectOffice>(folder, office)),
      m_local(folder.CatalogueFile())
{
    if (m_office) {
        m_office->BringUpToDate(m_local);
        m_office->RequireCopy(m_local);
    }
    EnsureCatalogue(m_local);
}

ProjectCatalogue::~ProjectCatalogue() = default;

} // namespace embedded
