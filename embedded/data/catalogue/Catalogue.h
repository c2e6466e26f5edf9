#pragma once

#include "embedded/data/catalogue/CatalogueData.h"
#include "embedded/data/catalogue/LibraryContents.h"
#include "host/Roles.h"

namespace embedded {

/// Specialties and categories of the catalogue. Full names and the ids of small categories are looked up in
/// hash tables, for every read of a rule file asks for every category. `data` must outlive this and must not
/// change; `libraries`, what the libraries in use hold, must outlive this, too.
class Catalogue : public host::ICategories
{
public:
    Catalogue(const CatalogueData& data, const LibraryContents& libraries);

    bool SpecNameToId(const CString& name, SNvKtSpecId& id) override;
    bool BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id) override;
    bool SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id) override;
    bool GetAllSpecNames(CStringArray& names) override;
    bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) override;
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                             CArray<SNvKtSmallCategoryId>& ids) override;
    bool GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) override;
    bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) override;
    /// Of a small category's places the first that is a section of the bill library in use. Big categories
    /// and specialties have none.
    CString GetIndexPath(const CString& treePath) override;

    /// The small category of a full name or of an id (only the level's own id counts); null when there is
    /// none.
    const SmallCategory* FindByName(const CString& fullName) const;
    const SmallCategory* FindById(const SNvKtSmallCategoryId& id) const;

private:
    const CatalogueData& m_data;
    const LibraryContents& m_libraries;
    QHash<CString, const Specialty*> m_specialtiesById;
    QHash<CString, const Specialty*> m_specialtiesByName;
    QHash<CString, const BigCategory*> m_bigCategoriesById;
    QHash<CString, const BigCategory*> m_bigCategoriesByName;
    QHash<CString, const SmallCategory*> m_smallCategoriesById;
    QHash<CString, const SmallCategory*> m_smallCategoriesByName;
};

} // namespace embedded
