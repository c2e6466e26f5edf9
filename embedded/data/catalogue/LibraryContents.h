#pragma once

#include "host/Records.h"

#include <vector>

namespace embedded {

/// A chapter or section of the bill library with the items that stand directly in it.
struct BillSection
{
    CString indexPath; ///< levels joined by backslashes, such as "0310\031001"
    CString title;
    std::vector<SQdInfo> items;
};

/// A quota item and the numbers of the bill items that it usually stands under.
struct QuotaItem
{
    SPickedDe record;
    CStringArray bills;
};

/// A chapter or section of the quota library with the items that stand directly in it.
struct QuotaSection
{
    CString code; ///< such as "示10-1"
    CString title;
    std::vector<QuotaItem> items;
};

/// What the libraries hold, in their own order: what a picker shows.
struct LibraryContents
{
    std::vector<BillSection> bills;
    std::vector<QuotaSection> quotas;
};

} // namespace embedded
