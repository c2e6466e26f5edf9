#include "embedded/data/catalogue/Attributes.h"

#include <algorithm>
#include <utility>

namespace embedded {

namespace {

class ListedCellData : public host::CellData
{
public:
    explicit ListedCellData(CellSource source) : m_source(std::move(source)) {}
    CStringArray GetValues() const override { return m_source.values; }
    int GetType() const override { return m_source.kind; }

private:
    CellSource m_source;
};

} // namespace

Attributes::Attributes(const CatalogueData& data, const Catalogue& catalogue)
    : m_data(data), m_catalogue(catalogue)
{
}

bool Attributes::GetAttributeList(const SNvKtSmallCategoryId& id, CStringArray& list)
{
    const SmallCategory* const category = m_catalogue.FindById(id);
    if (category == nullptr) return false;
    list = category->attributes;
    return true;
}

int Attributes::GetAttType(const SNvKtSmallCategoryId& id)
{
    const SmallCategory* const category = m_catalogue.FindById(id);
    return category == nullptr ? 0 : category->attType;
}

bool Attributes::GetDropList(const CString& code, CStringArray& values, CStringArray& extras)
{
    const auto lists = m_data.lists.constFind(code);
    if (lists == m_data.lists.constEnd()) return false;
    const auto named = std::find_if(lists->begin(), lists->end(),
                                    [&](const DropList& list) { return extras.contains(list.name); });
    values = named == lists->end() ? lists->front().values : named->values;
    return true;
}

std::unique_ptr<host::CellData> Attributes::CreateCellData(const CString& code)
{
    const auto source = m_data.cells.constFind(code);
    if (source == m_data.cells.constEnd()) return nullptr;
    return std::make_unique<ListedCellData>(*source);
}

} // namespace embedded
