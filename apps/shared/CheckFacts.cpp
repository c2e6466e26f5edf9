#include "shared/CheckFacts.h"

#include "embedded/data/catalogue/AttributeUnits.h"
#include "presenter/DerivedAttributes.h"
#include "shared/PricingFacts.h"
#include "store/CXmlAttrConfig.h"

#include <utility>

namespace shared {

namespace {

/// Texts per attribute in a category's flat list, and which stands where.
constexpr qsizetype GroupSize = 4;
constexpr qsizetype NamePlace = 1;
constexpr qsizetype ListPlace = 2;
constexpr qsizetype CodePlace = 3;

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

/// What the editor offers for a category: its attributes, those that it derives from others, and the
/// component's own name.
rules::CategoryFacts AttributesOf(const embedded::SmallCategory& category,
                                  const embedded::CatalogueData& data, const CXmlAttrConfig& config)
{
    rules::CategoryFacts facts;
    for (qsizetype i = 0; i + GroupSize <= category.attributes.size(); i += GroupSize) {
        rules::AttributeFacts& fact = facts.emplace_back();
        fact.name = category.attributes[i + NamePlace];
        fact.code = category.attributes[i + CodePlace];
        fact.valueList = ValuesOf(data, fact.code, category.attributes[i + ListPlace]);
        AttrConfig record;
        fact.allowsRange = !config.GetAttConfig(category.fullName + fact.name, record) || record.compar != 0;
    }
    for (const DerivedAttribute& derived : DerivedAttributes(category.fullName)) {
        rules::AttributeFacts& fact = facts.emplace_back();
        fact.name = derived.name;
        fact.code = derived.code;
    }
    facts.emplace_back().name = rules::OwnName;
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

void TakeItems(const embedded::LibraryContents& contents, rules::CheckFacts& facts)
{
    for (const embedded::BillSection& section : contents.bills)
        for (const SQdInfo& item : section.items)
            facts.bills.items.emplace(item.strNumber, rules::LibraryItem{item.strName, item.strUnit, {}});
    for (const embedded::QuotaSection& section : contents.quotas)
        for (const embedded::QuotaItem& item : section.items)
            facts.quotas.items.emplace(
                item.record.strNumber,
                rules::LibraryItem{item.record.strName, item.record.strUnit, item.bills});
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
    host.Roles().libraries->GetEnCodeRule(facts.bills.numberLength, facts.bills.suffixLength);
    TakeItems(host.Contents(), facts);
    TakeCategories(host.CatalogueContents(), facts);
    TakeCalculation(host.CatalogueContents(), facts);
    return facts;
}

} // namespace shared
