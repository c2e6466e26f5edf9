#pragma once

#include "platform/Text.h"

#include <functional>
#include <optional>

namespace embedded {

/// What is wrong with a formula, and where.
struct FormulaFault
{
    qsizetype position = 0; ///< of the first character that does not fit, from 0; the length at the end
    CString text;           ///< in words, without a final mark

    bool operator==(const FormulaFault&) const = default;
};

/// Checks a formula: numbers (digits with at most one point between them) and names, joined by + - * / × ÷,
/// with brackets, and a sign before a first operand. Chinese full-width signs and brackets count like the
/// others, blanks do not count. A name is letters, digits and underscores, beginning with no digit;
/// `isKnown` decides whether it means anything. Gives the first fault; nothing for a good or a blank formula.
std::optional<FormulaFault> CheckFormula(const CString& formula,
                                         const std::function<bool(const CString&)>& isKnown);

/// The names in a formula, in order; of a faulty one those that can be told.
CStringArray NamesIn(const CString& formula);

} // namespace embedded
