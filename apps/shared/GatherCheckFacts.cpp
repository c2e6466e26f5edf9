#include "shared/GatherCheckFacts.h"

#include "embedded/data/catalogue/AttributeUnits.h"
#include "host/AttributeGroups.h"
#include "host/BillNumbering.h"
#include "shared/BillNumbers.h"
#include "shared/GatherPricingFacts.h"
#include "store/CXmlAttrConfig.h"

#include <utility>

namespace shared {

namespace {

rules::Dimension DimensionOf(int kind)
{
    switch (kind) {
    case 1:
        return rules::Dimension::Length;
    case 2:
        return rules::Dimension::Count;
    case 3:
        return rules::Dimension::Area;
    case 4:
        return rules::Dimension::Volume;
    case 5:
        return rules::Dimension::Weight;
    default:
        return rules::Dimension::Unknown;
    }
}

/// What the editor offers for a category, and which of its own attributes may have ranges.
rules::CategoryFacts AttributesOf(const embedded::SmallCategory& category,
                                  const embedded::CatalogueData& data, const CXmlAttrConfig& config)
{
    rules::CategoryFacts facts = OfferedAttributesOf(category, data);
    const auto own = static_cast<std::size_t>(category.attributes.size() / host::AttributeGroupSize);
    for (std::size_t i = 0; i < own; ++i) {
        AttrConfig record;
        facts[i].allowsRange =
            !config.GetAttConfig(category.fullName + facts[i].name, record) || record.compar != 0;
    }
    return facts;
}

void TakeCategories(const embedded::CatalogueData& data, rules::CheckFacts& facts)
{
    for (const embedded::Specialty& specialty : data.specialties) {
        facts.specialties.insert(specialty.name);
        const CXmlAttrConfig config(specialty.name);
        for (const embedded::BigCategory& big : specialty.bigCategories)
            for (const embedded::SmallCategory& small : big.smallCategories)
                facts.categories.emplace(small.fullName, AttributesOf(small, data, config));
    }
}

/// The items of the libraries, bill items by what their numbers have without a suffix.
void TakeItems(embedded::EmbeddedHost& host, rules::CheckFacts& facts)
{
    int codeLength = -1;
    int suffixLength = -1;
    host.Roles().libraries->GetEnCodeRule(codeLength, suffixLength);
    const auto numbering = host::BillNumbering::Of(codeLength, suffixLength);
    const auto baseOf = [&](const CString& number) { return numbering ? numbering->BaseOf(number) : number; };
    facts.bills.form = BillNumberFormOf(codeLength, suffixLength);
    const embedded::LibraryContents& contents = host.Contents();
    for (const embedded::BillSection& section : contents.bills)
        for (const SQdInfo& item : section.items)
            facts.bills.items.emplace(baseOf(item.strNumber),
                                      rules::LibraryItem{item.strName, item.strUnit, {}});
    for (const embedded::QuotaSection& section : contents.quotas)
        for (const embedded::QuotaItem& item : section.items) {
            rules::LibraryItem known{item.record.strName, item.record.strUnit, {}};
            for (const CString& bill : item.bills)
                known.bills.append(baseOf(bill));
            facts.quotas.items.emplace(item.record.strNumber, std::move(known));
        }
}

/// The calculation items, and the names that their expressions ask a take-off table for.
void TakeCalculation(const embedded::CatalogueData& data, rules::CheckFacts& facts)
{
    for (auto item = data.rules.constBegin(); item != data.rules.constEnd(); ++item) {
        facts.dimensions.emplace(item.key(), DimensionOf(item->nKind));
        if (const auto expression = rules::Formula::Parse(item->strRule))
            for (const CString& name : expression->Names())
                facts.names.insert(name);
    }
    for (const embedded::AttributeUnit& unit : embedded::ShippedAttributeUnits())
        facts.names.insert(unit.name);
}

} // namespace

rules::CheckFacts CheckFactsOf(embedded::EmbeddedHost& host, bool isBillMode)
{
    rules::PricingFacts pricing =
        PricingFactsOf(host, isBillMode ? rules::PricingMode::Bill : rules::PricingMode::Quota);
    rules::CheckFacts facts;
    facts.isBillMode = isBillMode;
    facts.bills.code = pricing.billLibrary;
    facts.quotas.code = pricing.quotaLibrary;
    facts.attributes = std::move(pricing.attributes);
    facts.calculationItems = std::move(pricing.calculationItems);
    TakeItems(host, facts);
    TakeCategories(host.CatalogueContents(), facts);
    TakeCalculation(host.CatalogueContents(), facts);
    return facts;
}

} // namespace shared
