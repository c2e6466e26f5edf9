#pragma once

#include "embedded/data/catalogue/Catalogue.h"
#include "host/Roles.h"

#include <optional>

namespace embedded {

/// Attributes of the catalogue's small categories. The third text of an attribute record names the drop list
/// that serves the attribute in that category. `data` and `catalogue` must outlive this.
class Attributes : public host::IAttributes
{
public:
    Attributes(const CatalogueData& data, const Catalogue& catalogue);

    bool GetAttributeList(const SNvKtSmallCategoryId& id, CStringArray& list) override;
    /// 0 as well for a category that is not known: the grid's form without the fittings column.
    int GetAttType(const SNvKtSmallCategoryId& id) override;
    /// `extras` are the third texts of all attributes of a small category, in their order. Among them the one
    /// of `code` names its list: those of other attributes may be names of its lists, too. Where no category
    /// has these extras, the first list of `code` whose name is among them, else the first of all. `extras`
    /// stays as it is.
    bool GetDropList(const CString& code, CStringArray& values, CStringArray& extras) override;
    std::unique_ptr<host::CellData> CreateCellData(const CString& code) override;

private:
    std::optional<CString> ListNameOf(const CString& code, const CStringArray& extras) const;

    const CatalogueData& m_data;
    const Catalogue& m_catalogue;
};

} // namespace embedded
