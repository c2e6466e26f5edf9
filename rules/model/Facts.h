#pragma once

#include "platform/Text.h"
#include "rules/Export.h"

#include <map>
#include <vector>

namespace rules {

/// What the catalogue knows of one attribute of a small category, handed in as plain values by whoever has a
/// catalogue. An attribute without facts can be matched all the same.
struct AttributeFacts
{
    CString name{};           ///< as conditions name it
    CString code{};           ///< its other name, which a take-off table may use; may be empty
    CString unit{};           ///< of its numbers, such as "mm"; empty for none
    CStringArray valueList{}; ///< the values that the editor offers
    bool allowsRange = true;  ///< whether the editor offers a range; matching does not look at it
};

using CategoryFacts = std::vector<AttributeFacts>;

/// The facts of all small categories, by category text: specialty, big and small category joined by
/// backslashes.
using CatalogueFacts = std::map<CString, CategoryFacts>;

/// The attribute that every component has without a column: its own name.
inline const CString OwnName = QStringLiteral("具体构件");

} // namespace rules
