#include "embedded/data/catalogue/AttributeUnits.h"

#include "embedded/data/engine/DataFile.h"

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

constexpr int FreeEntry = 0;
constexpr int FixedValues = 1;

} // namespace

CArray<AttributeUnit> ShippedAttributeUnits()
{
    const DataFile file = DataFile::Shipped(u"attribute_units"_s);
    const CStringArray names = file.Column(u"name"_s);
    const CStringArray codes = file.Column(u"code"_s);
    const CStringArray units = file.Column(u"unit"_s);
    CArray<AttributeUnit> result;
    for (qsizetype row = 0; row < names.size(); ++row)
        result.append({names[row], codes[row], units[row]});
    return result;
}

CString ShippedUnitOf(const CString& name)
{
    static const CArray<AttributeUnit> units = ShippedAttributeUnits();
    const auto found = std::find_if(units.begin(), units.end(),
                                    [&](const AttributeUnit& unit) { return unit.name == name; });
    return found == units.end() ? CString() : found->unit;
}

CStringArray ValuesOf(const CatalogueData& data, const CString& code, const CString& dropList)
{
    const auto source = data.cells.constFind(code);
    if (source == data.cells.constEnd() || source->kind == FreeEntry) return {};
    if (source->kind == FixedValues) return source->values;
    const auto lists = data.lists.constFind(code);
    if (lists == data.lists.constEnd()) return {};
    const auto named = std::find_if(lists->begin(), lists->end(),
                                    [&](const DropList& list) { return list.name == dropList; });
    return named == lists->end() ? lists->front().values : named->values;
}

} // namespace embedded
