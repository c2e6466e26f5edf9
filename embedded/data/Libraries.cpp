#include "embedded/data/Libraries.h"

#include "embedded/data/Error.h"

#include <QtCore/QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace embedded {

namespace {

/// Adds the items whose numbers are not there yet, and brings all into the order of their numbers.
void Merge(CArray<SQdInfo>& items, const CArray<SQdInfo>& others)
{
    QSet<CString> known;
    for (const SQdInfo& item : std::as_const(items))
        known.insert(item.strNumber);
    std::copy_if(others.begin(), others.end(), std::back_inserter(items),
                 [&](const SQdInfo& item) { return !known.contains(item.strNumber); });
    std::sort(items.begin(), items.end(),
              [](const SQdInfo& left, const SQdInfo& right) { return left.strNumber < right.strNumber; });
}

} // namespace

Libraries::Libraries(const CatalogueData& data, ProjectDatabase& project, const CString& ruleFolder)
    : m_data(data), m_project(project), m_ruleNumbers(ruleFolder)
{
    for (const BillSection& section : data.contents.bills) {
        for (const SQdInfo& item : section.items)
            m_bills.insert(item.strNumber, &item);
    }
}

bool Libraries::GetQdInfo(const CString& number, SQdInfo& info)
{
    const SQdInfo* const item = m_bills.value(number);
    if (item == nullptr) return false;
    info = *item;
    return true;
}

bool Libraries::IsInQdk(const CString& number)
{
    return m_bills.contains(number);
}

void Libraries::GetEnCodeRule(int& length, int& suffixLength)
{
    length = m_data.billLibrary.codeLength;
    suffixLength = m_data.billLibrary.suffixLength;
}

bool Libraries::GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items)
{
    try {
        CArray<SQdInfo> found = m_project.History(number);
        Merge(found, m_ruleNumbers.Find(number));
        items = std::move(found);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace embedded
