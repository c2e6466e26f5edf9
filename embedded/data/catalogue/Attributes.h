#pragma once

#include "embedded/data/catalogue/Catalogue.h"
#include "host/Roles.h"

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
    /// Of the lists of `code` the first whose name is among `extras`, else the first of all. `extras` stays
    /// as it is.
    bool GetDropList(const CString& code, CStringArray& values, CStringArray& extras) override;
    std::unique_ptr<host::CellData> CreateCellData(const CString& code) override;

private:
    const CatalogueData& m_data;
    const Catalogue& m_catalogue;
};

} // namespace embedded
