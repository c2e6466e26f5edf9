#pragma once

#include "rules/bill/BillBuilder.h"
#include "rules/bill/Coverage.h"
#include "rules/check/CheckFacts.h"
#include "rules/model/Configuration.h"

#include <memory>

namespace editor {

class Project;

/// What the catalogue and the libraries of the project say, as plain values that nothing changes. May be read
/// on any thread.
struct ProjectFacts
{
    bool isBillMode = true;
    rules::ConfigurationPtr offered; ///< the host's categories, without rules; see `rules::Draft`. Never null
    rules::CatalogueFacts attributes; ///< that the editor offers for each category
    rules::PricingFacts pricing;
    rules::Measures measures;
    rules::CheckFacts checks;

    /// The attributes of a category; empty when it is not offered.
    const rules::CategoryFacts& AttributesOf(const CString& category) const;
};
using ProjectFactsPtr = std::shared_ptr<const ProjectFacts>;

/// Those of a project as they are now. It must be the host.
ProjectFactsPtr FactsOf(Project& project);

} // namespace editor
