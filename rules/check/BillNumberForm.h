#pragma once

#include "platform/Text.h"

namespace rules {

/// How a bill number of a rule is built: a base of letters and digits, and a suffix that tells the items of
/// one base apart.
struct BillNumberForm
{
    qsizetype base = 0;   ///< characters of the base; 0 when the library has no rule that is known
    qsizetype suffix = 0; ///< characters of the suffix
    /// Whether the library's own numbers end in a suffix that stays while it is free. It may then hold
    /// letters, and one that is counted up past the last has a digit more. Else it is made of digits.
    bool keepsSuffix = false;

    bool IsKnown() const noexcept { return base > 0; }
    /// The lengths that a number may have, of a known form.
    qsizetype Shortest() const noexcept { return base + suffix; }
    qsizetype Longest() const noexcept { return Shortest() + (keepsSuffix ? 1 : 0); }
    bool HasLength(const CString& number) const noexcept
    {
        return IsKnown() && number.size() >= Shortest() && number.size() <= Longest();
    }
    /// The number without its suffix, of a known form; else the number.
    CString BaseOf(const CString& number) const { return IsKnown() ? number.left(base) : number; }
};

} // namespace rules
