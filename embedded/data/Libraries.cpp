#include "embedded/data/Libraries.h"

#include "embedded/data/Error.h"

namespace embedded {

Libraries::Libraries(const CatalogueData& data, ProjectDatabase& project) : m_data(data), m_project(project)
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
        items = m_project.History(number);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace embedded
