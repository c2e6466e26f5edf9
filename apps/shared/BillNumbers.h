#pragma once

#include "embedded/data/catalogue/LibraryContents.h"
#include "rules/check/BillNumberForm.h"

#include <QtCore/QHash>

namespace shared {

/// How rules number the items of a library with that coding rule.
rules::BillNumberForm BillNumberFormOf(int codeLength, int suffixLength);

/// The items of a bill library by the numbers that rules give them: a rule's number is that of a library's
/// item, or has another suffix, as the library's coding rule makes them.
class BillNumbers
{
public:
    /// `contents` must outlive this and not change. The lengths are those of the coding rule; an unknown rule
    /// makes no numbers beyond those of the library.
    BillNumbers(const embedded::LibraryContents& contents, int codeLength, int suffixLength);

    /// The first item of that number, else the first one of its base; null for none.
    const SQdInfo* Find(const CString& number) const;

private:
    rules::BillNumberForm m_form;
    QHash<CString, const SQdInfo*> m_byNumber;
    QHash<CString, const SQdInfo*> m_byBase;
};

} // namespace shared
