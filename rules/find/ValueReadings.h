#pragma once

#include "rules/match/CellText.h"
#include "rules/model/Configuration.h"

namespace rules {

/// A value that somebody has typed for an attribute, in all the ways in which a rule file or a component may
/// have it written.
class ValueReadings
{
public:
    /// `numbers` is that of the attribute, and must outlive this.
    ValueReadings(const CString& value, const NumberReader& numbers);

    /// Whether the condition is one that a search for the value is to find. `foldedValue` is that of the
    /// condition.
    bool Finds(const Condition& condition, const CString& foldedValue) const;

private:
    CString NumberIn(const CString& value) const;

    const NumberReader& m_numbers;
    CString m_folded;        ///< the value
    CStringArray m_readings; ///< the value, and a number in each of the ways of the attribute
    bool m_isNumber = false;
};

} // namespace rules
