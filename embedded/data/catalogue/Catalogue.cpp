#include "embedded/data/catalogue/Catalogue.h"

#include <algorithm>

namespace embedded {

Catalogue::Catalogue(const CatalogueData& data, const LibraryContents& libraries)
    : m_data(data), m_libraries(libraries)
{
    for (const Specialty& specialty : data.specialties) {
        m_specialtiesById.insert(specialty.id.strSpecId, &specialty);
        m_specialtiesByName.insert(specialty.name, &specialty);
        for (const BigCategory& big : specialty.bigCategories) {
            m_bigCategoriesById.insert(big.id.strBigCategoryId, &big);
            m_bigCategoriesByName.insert(big.fullName, &big);
            for (const SmallCategory& category : big.smallCategories) {
                m_smallCategoriesById.insert(category.id.strSmallCategoryId, &category);
                m_smallCategoriesByName.insert(category.fullName, &category);
            }
        }
    }
}

bool Catalogue::SpecNameToId(const CString& name, SNvKtSpecId& id)
{
    const Specialty* const specialty = m_specialtiesByName.value(name);
    if (specialty == nullptr) return false;
    id = specialty->id;
    return true;
}

bool Catalogue::BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id)
{
    const BigCategory* const big = m_bigCategoriesByName.value(fullName);
    if (big == nullptr) return false;
    id = big->id;
    return true;
}

bool Catalogue::SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id)
{
    const SmallCategory* const category = FindByName(fullName);
    if (category == nullptr) return false;
    id = category->id;
    return true;
}

bool Catalogue::GetAllSpecNames(CStringArray& names)
{
    names.clear();
    for (const Specialty& specialty : m_data.specialties)
        names.append(specialty.name);
    return true;
}

bool Catalogue::GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids)
{
    const Specialty* const specialty = m_specialtiesById.value(spec.strSpecId);
    if (specialty == nullptr) return false;
    ids.clear();
    for (const BigCategory& big : specialty->bigCategories)
        ids.append(big.id);
    return true;
}

bool Catalogue::GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                                    CArray<SNvKtSmallCategoryId>& ids)
{
    const BigCategory* const found = m_bigCategoriesById.value(big.strBigCategoryId);
    if (found == nullptr) return false;
    ids.clear();
    for (const SmallCategory& category : found->smallCategories)
        ids.append(category.id);
    return true;
}

bool Catalogue::GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name)
{
    const BigCategory* const big = m_bigCategoriesById.value(id.strBigCategoryId);
    if (big == nullptr) return false;
    name = big->name;
    return true;
}

bool Catalogue::GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name)
{
    const SmallCategory* const category = FindById(id);
    if (category == nullptr) return false;
    name = category->name;
    return true;
}

CString Catalogue::GetIndexPath(const CString& treePath)
{
    if (!treePath.endsWith(u'\\')) return {};
    const SmallCategory* const category = FindByName(treePath.chopped(1));
    if (category == nullptr) return {};
    const auto& bills = m_libraries.bills;
    for (const CString& place : category->indexPath.split(u'|', Qt::SkipEmptyParts)) {
        if (std::any_of(bills.begin(), bills.end(),
                        [&](const BillSection& section) { return section.indexPath == place; }))
            return place;
    }
    return {};
}

const SmallCategory* Catalogue::FindByName(const CString& fullName) const
{
    return m_smallCategoriesByName.value(fullName);
}

const SmallCategory* Catalogue::FindById(const SNvKtSmallCategoryId& id) const
{
    return m_smallCategoriesById.value(id.strSmallCategoryId);
}

} // namespace embedded
