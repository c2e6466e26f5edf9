#include "embedded/data/project/ProposedNumbers.h"

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CString KeyOf(const CString& library, const CString& base)
{
    return library + u'\n' + base;
}

/// What the dialog proposes first. What it proposes after it has refused a suffix of a wrong length is not
/// known here.
CString ProposedSuffix(const host::BillNumbering& numbering, const CString& picked, const CStringArray& told,
                       const host::BillNumbering::Known& isInLibrary)
{
    if (!numbering.KeepsFreeSuffix()) return host::SuffixAfter(told, numbering.SuffixLength());
    return host::BillNumbering::FreeSuffix(numbering.BaseOf(picked), numbering.SuffixOf(picked), told,
                                           isInLibrary);
}

} // namespace

void ProposedNumbers::Ask(const CString& library, const CString& base, const CArray<SQdInfo>& told)
{
    m_library = library;
    m_base = base;
    m_told.clear();
    for (const SQdInfo& item : told)
        m_told.append(item.strNumber);
}

void ProposedNumbers::LookUp(const CString& library, const host::BillNumbering& numbering,
                             const SQdInfo& picked, const host::BillNumbering::Known& isInLibrary)
{
    const CString base = numbering.BaseOf(picked.strNumber);
    if (base.isEmpty() || base != m_base || library != m_library) return;
    m_base.clear();
    const CString suffix = ProposedSuffix(numbering, picked.strNumber, m_told, isInLibrary);
    SQdInfo item = picked;
    item.strNumber = base + suffix;
    item.strName += u"（打开配置以来给出的编号）"_s;
    if (suffix.size() == numbering.SuffixLength() && !m_told.contains(item.strNumber))
        m_items[KeyOf(library, base)].append(std::move(item));
}

CArray<SQdInfo> ProposedNumbers::Find(const CString& library, const CString& base) const
{
    return m_items.value(KeyOf(library, base));
}

void ProposedNumbers::Forget()
{
    m_base.clear();
    m_items.clear();
}

} // namespace embedded
