#pragma once

#include "host/Records.h"
#include "platform/Text.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>

namespace embedded {

/// The bill items that the rule files of a folder hold, as far as they are written. Files are read when
/// something is looked up, and taken apart only after their bytes have become others. Neither size nor time
/// of change would tell: numbers are equally long, and a clock may stand between two changes.
class RuleNumbers
{
public:
    /// `folder` is a path text; it need not exist.
    explicit RuleNumbers(CString folder);

    /// The items of all files whose number is `baseNumber` and a suffix and whose library is `library` (a
    /// code) or is not told, in the order of the files' names and then of the document, each number once. A
    /// file that cannot be read, or is no XML, holds none. An empty base number has no items.
    CArray<SQdInfo> Find(const CString& baseNumber, const CString& library);

private:
    struct Bill
    {
        CString library;
        SQdInfo info;
    };
    struct File
    {
        QByteArray bytes;
        CArray<Bill> bills;
    };

    static CArray<Bill> ParseBills(const QByteArray& bytes);
    File Current(const CString& path) const;

    CString m_folder;
    QHash<CString, File> m_files;
};

} // namespace embedded
