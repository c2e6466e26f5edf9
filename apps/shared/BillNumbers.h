#pragma once

#include "embedded/data/catalogue/LibraryContents.h"

#include <QtCore/QHash>

namespace shared {

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
    /// The base of a number as rules have it; empty for one that the coding rule cannot have made.
    CString BaseOf(const CString& number) const;

    int m_codeLength;
    int m_suffixLength;
    QHash<CString, const SQdInfo*> m_byNumber;
    QHash<CString, const SQdInfo*> m_byBase;
};

} // namespace shared
