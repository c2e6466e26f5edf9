#pragma once

#include "tree/QdDeRecords.h"

#include <functional>
#include <optional>

namespace rules {

/// The items of the libraries in use, by number, with the quantity that they usually have; nothing for a
/// number that a library has not.
struct SheetItems
{
    std::function<std::optional<QdStruct>(const CString& number)> bill;
    std::function<std::optional<DeStruct>(const CString& number)> quotaOfBills; ///< of those below bill items
    std::function<std::optional<DeStruct>(const CString& number)> quota;
};

} // namespace rules
