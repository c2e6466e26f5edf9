#include "embedded/data/project/ProposedNumbers.h"

#include <QtCore/QSet>

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CString KeyOf(const CString& library, const CString& base)
{
    return library + u'\n' + base;
}

CStringArray NumbersOf(const CArray<SQdInfo>& items)
{
    CStringArray numbers;
    for (const SQdInfo& item : items)
        numbers.append(item.strNumber);
    return numbers;
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

CArray<SQdInfo> ProposedNumbers::Possible(const host::BillNumbering& numbering, const CString& base,
                                          const CArray<SQdInfo>& told, const CArray<SQdInfo>& ofLibrary)
{
    const CStringArray known = NumbersOf(told);
    const CStringArray library = NumbersOf(ofLibrary);
    const auto isInLibrary = [&](const CString& number) { return library.contains(number); };
    QSet<CString> taken(known.begin(), known.end());
    CArray<SQdInfo> items;
    const auto add = [&](SQdInfo item, const CString& suffix) {
        item.strNumber = base + suffix;
        if (suffix.size() != numbering.SuffixLength() || taken.contains(item.strNumber)) return;
        taken.insert(item.strNumber);
        items.append(std::move(item));
    };
    for (const SQdInfo& item : ofLibrary) {
        if (numbering.BaseOf(item.strNumber) != base) continue;
        add(item, ProposedSuffix(numbering, item.strNumber, known, isInLibrary));
        add(item, host::SuffixAfter(known, numbering.SuffixLength()));
    }
    return items;
}

void ProposedNumbers::Ask(const CString& library, const CString& base, const CArray<SQdInfo>& told)
{
    m_library = library;
    m_base = base;
    m_told = NumbersOf(told);
}

std::optional<SQdInfo> ProposedNumbers::LookUp(const CString& library, const host::BillNumbering& numbering,
                                               const SQdInfo& picked,
                                               const host::BillNumbering::Known& isInLibrary)
{
    const CString base = numbering.BaseOf(picked.strNumber);
    if (base.isEmpty() || base != m_base || library != m_library) return std::nullopt;
    m_base.clear();
    const CString suffix = ProposedSuffix(numbering, picked.strNumber, m_told, isInLibrary);
    SQdInfo taken = picked;
    taken.strNumber = base + suffix;
    if (suffix.size() != numbering.SuffixLength() || m_told.contains(taken.strNumber)) return std::nullopt;
    SQdInfo shown = taken;
    shown.strName += u"（打开配置以来给出的编号）"_s;
    m_items[KeyOf(library, base)].append(std::move(shown));
    return taken;
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
