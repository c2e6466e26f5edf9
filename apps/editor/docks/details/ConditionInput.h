#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"

#include <array>
#include <optional>

/// Conditions as a person enters them, field by field.
namespace editor {

/// How a condition compares: an operator, or those of two bounds.
struct ConditionForm
{
    CString sign;  ///< as the list shows it: ＝, ＞, ＜..≤
    CString words; ///< the same in words
    CString equal; ///< the operators that it gives a condition; empty where it has none
    CString lower;
    CString upper;

    bool IsValue() const noexcept { return !equal.isEmpty(); }
    bool HasTwoBounds() const noexcept { return !lower.isEmpty() && !upper.isEmpty(); }
};

inline constexpr int FormCount = 10;
/// ＝ and ≠ first, then one bound, then two.
const std::array<ConditionForm, FormCount>& ConditionForms();

/// The fields of one condition while they are being filled in.
struct ConditionInput
{
    CString attribute{};
    int form = 0;     ///< index of `ConditionForms`; -1 for operators that none of them has
    CString first{};  ///< the value, the only bound, or the lower one of two
    CString second{}; ///< the upper bound of two

    bool operator==(const ConditionInput&) const = default;
};

ConditionInput InputOf(const rules::Condition& condition);

/// The facts of an attribute; null when it has none.
const rules::AttributeFacts* FindFacts(const rules::CategoryFacts& attributes, const CString& name);

/// The reason why the fields make no condition; empty when they make one. `attributes` are those of the
/// category; when there are none the name is not looked at.
CString FaultOf(const ConditionInput& input, const rules::CategoryFacts& attributes);
/// The condition that fields without a fault make, without an id.
rules::Condition ConditionFrom(const ConditionInput& input);

// What becomes of the fields when one of them is filled in

/// A value that the attribute has not goes, and so does a comparison that it does not allow.
ConditionInput WithAttribute(ConditionInput input, const CString& name,
                             const rules::CategoryFacts& attributes);
/// Bounds go to the side on which the form has them.
ConditionInput WithForm(ConditionInput input, int form);
/// What was typed as the value or first bound, be it the whole condition as tables write it (see
/// rules/sheet/ConditionCell.h), which then fills the other fields, too.
ConditionInput WithText(ConditionInput input, const CString& typed, const rules::CategoryFacts& attributes);

/// A number in full-width characters as the same in ASCII; any other text as it is, without blanks around it.
CString Folded(const CString& typed);

} // namespace editor
