#include "embedded/data/catalogue/Attributes.h"
#include "host/AttributeGroups.h"

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

/// Which of a category's attributes has that code; -1 when none has, or when the extras are not those of the
/// category.
qsizetype PlaceOf(const CString& code, const CStringArray& attributes, const CStringArray& extras)
{
    if (attributes.size() != extras.size() * host::AttributeGroupSize) return -1;
    qsizetype place = -1;
    for (qsizetype i = 0; i < extras.size(); ++i) {
        if (attributes[i * host::AttributeGroupSize + host::AttributeExtraPlace] != extras[i]) return -1;
        if (place < 0 && attributes[i * host::AttributeGroupSize + host::AttributeCodePlace] == code)
            place = i;
    }
    return place;
}

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

/// What a category with these extras has for an attribute; nothing when there is no such category.
std::optional<CString> Attributes::ListNameOf(const CString& code, const CStringArray& extras) const
{
    for (const Specialty& specialty : m_data.specialties) {
        for (const BigCategory& big : specialty.bigCategories) {
            for (const SmallCategory& small : big.smallCategories) {
                const qsizetype place = PlaceOf(code, small.attributes, extras);
                if (place >= 0) return extras[place];
            }
        }
    }
    return std::nullopt;
}

bool Attributes::GetDropList(const CString& code, CStringArray& values, CStringArray& extras)
{
    const auto lists = m_data.lists.constFind(code);
    if (lists == m_data.lists.constEnd()) return false;
    const std::optional<CString> own = ListNameOf(code, extras);
    const auto named = std::find_if(lists->begin(), lists->end(), [&](const DropList& list) {
        return own ? list.name == *own : extras.contains(list.name);
    });
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
