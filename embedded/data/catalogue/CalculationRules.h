#pragma once

#include "embedded/data/catalogue/Catalogue.h"
#include "host/Roles.h"

namespace embedded {

/// Calculation items of the catalogue's small categories. `data` and `catalogue` must outlive this.
class CalculationRules : public host::ICalculationRules
{
public:
    CalculationRules(const CatalogueData& data, const Catalogue& catalogue);

    bool GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other) override;
    bool GetCalItemInfo(const CString& item, RuleCodeStruct& info) override;

private:
    const CatalogueData& m_data;
    const Catalogue& m_catalogue;
};

} // namespace embedded
