#pragma once

#include "platform/Text.h"
#include "rules/Export.h"

#include <vector>

namespace rules {

/// What is counted as it stands and yet worth a look.
enum class RemarkKind {
    NotInValueList, ///< a number written otherwise than all those on the attribute's value list: DN65, ６５
    Blanks,         ///< blanks around a text, read without them
    Negative,       ///< a negative value in a formula
    InPlaceOfRule,  ///< the column of a calculation item goes before the item's rule
};

struct Remark
{
    RemarkKind kind = RemarkKind::NotInValueList;
    CString column; ///< attribute or name in a formula
    CString cell;   ///< as the table has it

    bool operator==(const Remark&) const = default;
};

/// Adds a remark that is not there yet.
KTQDDE_RULES_EXPORT void AddRemark(std::vector<Remark>& remarks, Remark remark);

/// What there is to tell of the cell of an attribute that conditions look at. `listsNumbers` tells whether
/// the attribute's value list has plain numbers.
KTQDDE_RULES_EXPORT void RemarkOnCell(const CString& attribute, QStringView cell,
                                      const CStringArray& valueList, bool listsNumbers,
                                      std::vector<Remark>& remarks);

/// The remark as a sentence for people, without a final mark.
KTQDDE_RULES_EXPORT CString Describe(const Remark& remark);

} // namespace rules
