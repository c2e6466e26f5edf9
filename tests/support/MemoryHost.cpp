#include "support/MemoryHost.h"

#include <algorithm>
#include <stdexcept>

// What a test puts into the host; the roles are in MemoryHostRoles.cpp.
namespace test {

namespace {

/// The entry of that id in a list of categories; a test that names none has a mistake in it.
template <typename List, typename Field>
auto& Require(List& list, Field field, const CString& id)
{
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const auto& entry) { return entry.id.*field == id; });
    if (found == list.end()) throw std::invalid_argument("no category has the id " + id.toStdString());
    return *found;
}

} // namespace

void MemoryHost::AddSpec(const CString& id, const CString& name)
{
    m_specs.push_back({{id}, name});
}

void MemoryHost::AddBig(const CString& specId, const CString& id, const CString& name)
{
    Require(m_specs, &SNvKtSpecId::strSpecId, specId);
    m_bigs.push_back({{specId, id}, name});
}

void MemoryHost::AddSmall(const CString& bigId, const CString& id, const CString& name)
{
    const SNvKtBigCategoryId& big = Require(m_bigs, &SNvKtBigCategoryId::strBigCategoryId, bigId).id;
    m_smalls.push_back({{big.strSpecId, big.strBigCategoryId, id}, name});
}

void MemoryHost::RemoveSmall(const CString& id)
{
    std::erase_if(m_smalls, [&](const auto& entry) { return entry.id.strSmallCategoryId == id; });
}

void MemoryHost::RenameSmall(const CString& id, const CString& name)
{
    Require(m_smalls, &SNvKtSmallCategoryId::strSmallCategoryId, id).name = name;
}

void MemoryHost::AddAttribute(const CString& smallId, const CString& group, const CString& name,
                              const CString& extra, const CString& code)
{
    m_attributes[smallId] << group << name << extra << code;
}

void MemoryHost::AddCalItem(const CString& categoryText, const RuleCodeStruct& info)
{
    m_calItems[categoryText].append(info.strName);
    m_calItemInfos[info.strName] = info;
}

int MemoryHost::Calls(Operation operation) const
{
    const auto found = m_calls.find(operation);
    return found == m_calls.end() ? 0 : found->second;
}

bool MemoryHost::Fails(Operation operation)
{
    ++m_calls[operation];
    return m_failing.contains(operation);
}

host::Roles MemoryHost::Roles()
{
    return {this, this, this, this, this, this, this, m_windows};
}

} // namespace test
