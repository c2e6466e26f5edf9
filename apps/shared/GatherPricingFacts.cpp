#include "shared/GatherPricingFacts.h"

#include "embedded/data/catalogue/AttributeUnits.h"
#include "host/AttributeGroups.h"
#include "presenter/DerivedAttributes.h"

#include <map>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

rules::CategoryFacts FactsOf(const embedded::SmallCategory& category, const embedded::CatalogueData& data,
                             const CArray<embedded::AttributeUnit>& units)
{
    rules::CategoryFacts facts;
    std::set<CString> own;
    for (qsizetype i = 0; i + host::AttributeGroupSize <= category.attributes.size();
         i += host::AttributeGroupSize) {
        const CString& name = category.attributes[i + host::AttributeNamePlace];
        const CString& code = category.attributes[i + host::AttributeCodePlace];
        own.insert(name);
        facts.push_back(
            {.name = name,
             .code = code,
             .unit = category.units.value(i / host::AttributeGroupSize),
             .valueList = ValuesOf(data, code, category.attributes[i + host::AttributeExtraPlace])});
    }
    for (const embedded::AttributeUnit& unit : units)
        if (!own.contains(unit.name))
            facts.push_back({.name = unit.name,
                             .code = unit.code,
                             .unit = unit.unit,
                             .valueList = ValuesOf(data, unit.code, {})});
    return facts;
}

/// The unit of a calculation item of that kind.
CString UnitOf(int kind)
{
    static const CStringArray Units{CString(), u"m"_s, u"个"_s, u"m2"_s, u"m3"_s, u"kg"_s};
    return Units.value(kind);
}

rules::SmallCategoryPtr WithDefaultAlone(const embedded::SmallCategory& category)
{
    auto made = std::make_shared<rules::SmallCategory>();
    made->id = category.id.strSmallCategoryId.toInt();
    made->name = category.name;
    made->text = category.fullName;
    made->rules.push_back({.id = 1, .isDefault = true, .conditions = {}, .bills = {}, .quotas = {}});
    return made;
}

} // namespace

rules::CatalogueFacts CatalogueFactsOf(const embedded::CatalogueData& data)
{
    const CArray<embedded::AttributeUnit> units = embedded::ShippedAttributeUnits();
    rules::CatalogueFacts facts;
    for (const embedded::Specialty& specialty : data.specialties)
        for (const embedded::BigCategory& big : specialty.bigCategories)
            for (const embedded::SmallCategory& small : big.smallCategories)
                facts.emplace(small.fullName, FactsOf(small, data, units));
    return facts;
}

rules::CategoryFacts OfferedAttributesOf(const embedded::SmallCategory& category,
                                         const embedded::CatalogueData& data)
{
    rules::CategoryFacts facts = FactsOf(category, data, {});
    for (const DerivedAttribute& derived : DerivedAttributes(category.fullName))
        facts.push_back({.name = derived.name, .code = derived.code});
    facts.push_back({.name = rules::OwnName});
    return facts;
}

rules::CatalogueFacts OfferedAttributesOf(const embedded::CatalogueData& data)
{
    rules::CatalogueFacts facts;
    for (const embedded::Specialty& specialty : data.specialties)
        for (const embedded::BigCategory& big : specialty.bigCategories)
            for (const embedded::SmallCategory& small : big.smallCategories)
                facts.emplace(small.fullName, OfferedAttributesOf(small, data));
    return facts;
}

rules::PricingFacts PricingFactsOf(const embedded::EmbeddedHost& host, rules::PricingMode mode)
{
    const bool isBill = mode == rules::PricingMode::Bill;
    rules::PricingFacts facts;
    facts.mode = mode;
    facts.billLibrary = host.LibraryInUse(embedded::LibraryRole::Bill);
    facts.quotaLibrary =
        host.LibraryInUse(isBill ? embedded::LibraryRole::QuotaOfBills : embedded::LibraryRole::Quota);
    facts.attributes = CatalogueFactsOf(host.CatalogueContents());
    const QHash<CString, RuleCodeStruct>& items = host.CatalogueContents().rules;
    for (auto item = items.constBegin(); item != items.constEnd(); ++item)
        facts.calculationItems.emplace(item.key(), item->strRule);
    return facts;
}

rules::Measures MeasuresOf(const embedded::CatalogueData& data)
{
    rules::Measures measures;
    for (const embedded::Specialty& specialty : data.specialties)
        for (const embedded::BigCategory& big : specialty.bigCategories)
            for (const embedded::SmallCategory& small : big.smallCategories) {
                if (small.mainItems.isEmpty()) continue;
                const CString& item = small.mainItems.front();
                measures.emplace(small.fullName, rules::Measure{item, UnitOf(data.rules.value(item).nKind)});
            }
    return measures;
}

rules::ConfigurationPtr WithinCatalogue(const rules::Configuration& configuration,
                                        const embedded::CatalogueData& data)
{
    std::vector<rules::Specialty> specialties;
    for (const embedded::Specialty& specialty : data.specialties) {
        rules::Specialty made{specialty.id.strSpecId.toInt(), specialty.name, {}};
        for (const embedded::BigCategory& big : specialty.bigCategories) {
            rules::BigCategory& below = made.bigCategories.emplace_back();
            below.id = big.id.strBigCategoryId.toInt();
            below.name = big.name;
            for (const embedded::SmallCategory& small : big.smallCategories) {
                rules::SmallCategoryPtr known = configuration.Find(small.fullName);
                below.smallCategories.push_back(known ? std::move(known) : WithDefaultAlone(small));
            }
        }
        specialties.push_back(std::move(made));
    }
    return std::make_shared<const rules::Configuration>(std::move(specialties));
}

} // namespace shared
