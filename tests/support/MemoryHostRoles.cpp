#include "support/MemoryHost.h"

#include "support/MemoryXmlTool.h"
#include "xml/RootAttribute.h"

#include <algorithm>

using namespace Qt::StringLiterals;

// The roles of the in-memory host; what a test puts in is in MemoryHost.cpp.
namespace test {

namespace {

class MemoryCell : public host::CellData
{
public:
    MemoryCell(int type, CStringArray values) : m_type(type), m_values(std::move(values)) {}
    CStringArray GetValues() const override { return m_values; }
    int GetType() const override { return m_type; }

private:
    int m_type;
    CStringArray m_values;
};

bool Same(const SNvKtSpecId& a, const SNvKtSpecId& b)
{
    return a.strSpecId == b.strSpecId;
}

bool Same(const SNvKtBigCategoryId& a, const SNvKtBigCategoryId& b)
{
    return a.strSpecId == b.strSpecId && a.strBigCategoryId == b.strBigCategoryId;
}

bool Same(const SNvKtSmallCategoryId& a, const SNvKtSmallCategoryId& b)
{
    return a.strSpecId == b.strSpecId && a.strBigCategoryId == b.strBigCategoryId &&
           a.strSmallCategoryId == b.strSmallCategoryId;
}

/// The levels above an id.
SNvKtSpecId Above(const SNvKtBigCategoryId& id)
{
    return {id.strSpecId};
}
SNvKtBigCategoryId Above(const SNvKtSmallCategoryId& id)
{
    return {id.strSpecId, id.strBigCategoryId};
}

/// The entry of that id, or null.
template <typename List, typename Id>
const typename List::value_type* Find(const List& list, const Id& id)
{
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const auto& entry) { return Same(entry.id, id); });
    return found == list.end() ? nullptr : &*found;
}

/// Copies the entry of that key into `value`; false, with `value` left alone, when there is none.
template <typename Map, typename Value>
bool Copy(const Map& map, const CString& key, Value& value)
{
    const auto found = map.find(key);
    if (found == map.end()) return false;
    value = found->second;
    return true;
}

} // namespace

bool MemoryHost::SpecNameToId(const CString& name, SNvKtSpecId& id)
{
    if (Fails(Operation::SpecNameToId)) return false;
    for (const auto& spec : m_specs) {
        if (spec.name != name) continue;
        id = spec.id;
        return true;
    }
    return false;
}

bool MemoryHost::BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id)
{
    if (Fails(Operation::BigCategoryNameToId)) return false;
    for (const auto& big : m_bigs) {
        if (Find(m_specs, Above(big.id))->name + u'\\' + big.name != fullName) continue;
        id = big.id;
        return true;
    }
    return false;
}

bool MemoryHost::SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id)
{
    if (Fails(Operation::SmallCategoryNameToId)) return false;
    for (const auto& small : m_smalls) {
        const auto& big = *Find(m_bigs, Above(small.id));
        const auto& spec = *Find(m_specs, Above(big.id));
        if (spec.name + u'\\' + big.name + u'\\' + small.name != fullName) continue;
        id = small.id;
        return true;
    }
    return false;
}

bool MemoryHost::GetAllSpecNames(CStringArray& names)
{
    if (Fails(Operation::GetAllSpecNames)) return false;
    names.clear();
    for (const auto& spec : m_specs)
        names.append(spec.name);
    return true;
}

bool MemoryHost::GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids)
{
    if (Fails(Operation::GetAllBigCategoryIdsBySpec) || !Find(m_specs, spec)) return false;
    ids.clear();
    for (const auto& big : m_bigs)
        if (Same(Above(big.id), spec)) ids.append(big.id);
    return true;
}

bool MemoryHost::GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                                     CArray<SNvKtSmallCategoryId>& ids)
{
    if (Fails(Operation::GetAllSmallCategoryIdsByBigCategory) || !Find(m_bigs, big)) return false;
    ids.clear();
    for (const auto& small : m_smalls)
        if (Same(Above(small.id), big)) ids.append(small.id);
    return true;
}

bool MemoryHost::GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name)
{
    if (Fails(Operation::GetBigCategoryName)) return false;
    const auto* big = Find(m_bigs, id);
    if (big != nullptr) name = big->name;
    return big != nullptr;
}

bool MemoryHost::GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name)
{
    if (Fails(Operation::GetSmallCategoryName)) return false;
    const auto* small = Find(m_smalls, id);
    if (small != nullptr) name = small->name;
    return small != nullptr;
}

CString MemoryHost::GetIndexPath(const CString& treePath)
{
    CString indexPath;
    Copy(m_indexPaths, treePath, indexPath);
    return indexPath;
}

bool MemoryHost::GetAttributeList(const SNvKtSmallCategoryId& id, CStringArray& list)
{
    if (Fails(Operation::GetAttributeList) || !Find(m_smalls, id)) return false;
    // A category without attributes is known all the same.
    if (!Copy(m_attributes, id.strSmallCategoryId, list)) list.clear();
    return true;
}

int MemoryHost::GetAttType(const SNvKtSmallCategoryId& id)
{
    int type = 0;
    Copy(m_attTypes, id.strSmallCategoryId, type);
    return type;
}

bool MemoryHost::GetDropList(const CString& code, CStringArray& values, CStringArray& extras)
{
    m_lastExtras = extras;
    return !Fails(Operation::GetDropList) && Copy(m_dropLists, code, values);
}

std::unique_ptr<host::CellData> MemoryHost::CreateCellData(const CString& code)
{
    Cell cell;
    if (!Copy(m_cells, code, cell)) return nullptr;
    return std::make_unique<MemoryCell>(cell.type, cell.values);
}

bool MemoryHost::GetQdInfo(const CString& number, SQdInfo& info)
{
    return !Fails(Operation::GetQdInfo) && Copy(m_billItems, number, info);
}

bool MemoryHost::IsInQdk(const CString& number)
{
    return !Fails(Operation::IsInQdk) && m_billItems.contains(number);
}

void MemoryHost::GetEnCodeRule(int& length, int& suffixLength)
{
    length = m_enCodeRule.first;
    suffixLength = m_enCodeRule.second;
}

bool MemoryHost::GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items)
{
    return !Fails(Operation::GetQdInfoByQdNum) && Copy(m_history, number, items);
}

SNvKtSpecId MemoryHost::GetCurrentSpecId()
{
    const auto found = std::find_if(m_specs.begin(), m_specs.end(),
                                    [this](const auto& spec) { return spec.name == m_currentSpec; });
    return found == m_specs.end() ? SNvKtSpecId{} : found->id;
}

bool MemoryHost::GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other)
{
    if (Fails(Operation::GetCalItems) || !Copy(m_calItems, categoryText, items)) return false;
    other.clear();
    return true;
}

bool MemoryHost::GetCalItemInfo(const CString& item, RuleCodeStruct& info)
{
    return !Fails(Operation::GetCalItemInfo) && Copy(m_calItemInfos, item, info);
}

std::unique_ptr<host::IXmlTool> MemoryHost::CreateXmlTool()
{
    return std::make_unique<MemoryXmlTool>(*this);
}

bool MemoryHost::SetXmlVersion(const CString& version, const CString& file)
{
    return !Fails(Operation::SetXmlVersion) && xml::SetRootAttribute(file, u"Version"_s, version);
}

} // namespace test
