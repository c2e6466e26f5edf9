#pragma once

#include "embedded/data/catalogue/CatalogueData.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "rules/bill/BillBuilder.h"
#include "rules/bill/Coverage.h"

/// Where the library of the rules meets the embedded host: what pricing goes by, as plain values.
namespace shared {

/// What the catalogue knows of every small category: its attributes, and behind them the names that may stand
/// in any table.
rules::CatalogueFacts CatalogueFactsOf(const embedded::CatalogueData& data);

/// What the editor offers conditions of every small category: its attributes, those that are derived from
/// others, and the component's own name.
rules::CatalogueFacts OfferedAttributesOf(const embedded::CatalogueData& data);
/// The same of one category.
rules::CategoryFacts OfferedAttributesOf(const embedded::SmallCategory& category,
                                         const embedded::CatalogueData& data);

/// All that pricing goes by in the project: mode, libraries in use, attributes, calculation items.
rules::PricingFacts PricingFactsOf(const embedded::EmbeddedHost& host, rules::PricingMode mode);

/// What the components of every small category are measured by: the first of its main calculation items.
rules::Measures MeasuresOf(const embedded::CatalogueData& data);

/// The rules of every small category of the catalogue as the module sees them: those of the configuration, or
/// an empty default rule where it has none. What the catalogue does not know is left out.
rules::ConfigurationPtr WithinCatalogue(const rules::Configuration& configuration,
                                        const embedded::CatalogueData& data);

} // namespace shared
