#pragma once

#include "tree/QdDeRecords.h"

#include <functional>
#include <optional>

namespace rules {

/// An item by its number, with the quantity that it usually has in a small category, told by its full text;
/// nothing for a number that the library has not.
template <typename Record>
using LookUp = std::function<std::optional<Record>(const CString& number, const CString& category)>;

/// The items of the libraries in use.
struct SheetItems
{
    LookUp<QdStruct> bill;
    LookUp<DeStruct> quotaOfBills; ///< of those below bill items
    LookUp<DeStruct> quota;
};

} // namespace rules
