#include "editor/session/ProjectFacts.h"

#include "editor/project/Project.h"
#include "shared/GatherCheckFacts.h"
#include "shared/GatherPricingFacts.h"

namespace editor {

const rules::CategoryFacts& ProjectFacts::AttributesOf(const CString& category) const
{
    static const rules::CategoryFacts None;
    const auto found = attributes.find(category);
    return found == attributes.end() ? None : found->second;
}

ProjectFactsPtr FactsOf(Project& project)
{
    embedded::EmbeddedHost& host = project.Host();
    const embedded::CatalogueData& catalogue = host.CatalogueContents();
    auto facts = std::make_shared<ProjectFacts>();
    facts->isBillMode = project.Mode() == SQdDeInfo::BillMode;
    facts->offered = shared::WithinCatalogue(rules::Configuration({}), catalogue);
    facts->attributes = shared::OfferedAttributesOf(catalogue);
    facts->pricing = shared::PricingFactsOf(host, facts->isBillMode ? rules::PricingMode::Bill
                                                                    : rules::PricingMode::Quota);
    facts->measures = shared::MeasuresOf(catalogue);
    facts->checks = shared::CheckFactsOf(host, facts->isBillMode);
    return facts;
}

} // namespace editor
