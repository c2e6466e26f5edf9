#include "shared/BillNumbers.h"

#include "host/BillNumbering.h"

namespace shared {

BillNumbers::BillNumbers(const embedded::LibraryContents& contents, int codeLength, int suffixLength)
    : m_codeLength(codeLength), m_suffixLength(suffixLength)
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

CString BillNumbers::BaseOf(const CString& number) const
{
    const auto numbering = host::BillNumbering::Of(m_codeLength, m_suffixLength);
    if (!numbering) return {};
    // What a picked number brings as its suffix is replaced; to one without a suffix one is added.
    const bool bringsSuffix = !numbering->SuffixOf(number).isEmpty();
    if (!bringsSuffix)
        return number.size() == m_codeLength + m_suffixLength ? number.left(m_codeLength) : CString();
    // A suffix that is counted up past 999 has one digit more.
    const qsizetype longest = m_codeLength + (numbering->KeepsFreeSuffix() ? 1 : 0);
    return number.size() >= m_codeLength && number.size() <= longest ? numbering->BaseOf(number) : CString();
}

const SQdInfo* BillNumbers::Find(const CString& number) const
{
    const SQdInfo* const item = m_byNumber.value(number);
    if (item != nullptr) return item;
    const CString base = BaseOf(number);
    return base.isEmpty() ? nullptr : m_byBase.value(base);
}

} // namespace shared
