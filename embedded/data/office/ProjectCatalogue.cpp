#include "embedded/data/office/ProjectCatalogue.h"

#include "embedded/data/catalogue/CatalogueSchema.h"

namespace embedded {

ProjectCatalogue::ProjectCatalogue(const ProjectFolder& folder, const ProjectDatabase::Settings& settings)
    : m_office(settings.office.isEmpty() ? nullptr : std::make_unique<ProjectOffice>(folder, settings)),
      m_local(folder.CatalogueFile())
{
    if (!m_office) {
        EnsureCatalogue(m_local);
        return;
    }
    m_begun = StateOfCopy(m_local);
    m_schema = m_local.SchemaVersion();
}

ProjectCatalogue::~ProjectCatalogue() = default;

bool ProjectCatalogue::BringUpToDate()
{
    if (!m_office) return false;
    m_office->BringUpToDate(m_local);
    m_office->RequireCopy(m_local);
    EnsureCatalogue(m_local);
    return StateOfCopy(m_local) != m_begun || m_local.SchemaVersion() != m_schema;
}

} // namespace embedded
