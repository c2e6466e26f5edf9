#include "shared/BillNumbers.h"

#include "host/BillNumbering.h"

namespace shared {

rules::BillNumberForm BillNumberFormOf(int codeLength, int suffixLength)
{
    const auto numbering = host::BillNumbering::Of(codeLength, suffixLength);
    if (!numbering) return {};
    // A picked number is a base, or brings the suffix that is to be replaced.
    return {numbering->BaseOf(CString(codeLength, u'0')).size(), suffixLength, numbering->KeepsFreeSuffix()};
}

BillNumbers::BillNumbers(const embedded::LibraryContents& contents, int codeLength, int suffixLength)
    : m_form(BillNumberFormOf(codeLength, suffixLength))
{
    const auto numbering = host::BillNumbering::Of(codeLength, suffixLength);
    const auto putFirst = [](QHash<CString, const SQdInfo*>& items, const CString& key, const SQdInfo& item) {
        if (!items.contains(key)) items.insert(key, &item);
    };
    for (const embedded::BillSection& section : contents.bills)
        for (const SQdInfo& item : section.items) {
            putFirst(m_byNumber, item.strNumber, item);
            if (numbering) putFirst(m_byBase, numbering->BaseOf(item.strNumber), item);
        }
}

const SQdInfo* BillNumbers::Find(const CString& number) const
{
    const SQdInfo* const item = m_byNumber.value(number);
    if (item != nullptr) return item;
    return m_form.HasLength(number) ? m_byBase.value(m_form.BaseOf(number)) : nullptr;
}

} // namespace shared
