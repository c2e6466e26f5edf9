#pragma once

#include "platform/Text.h"

#include <utility>
#include <vector>

namespace rules {

/// A character, or two as a surrogate pair, and what it is written as.
using Replacement = std::pair<CString, CString>;

/// All texts that are equal to a value after compatibility normalisation, in such words that a database
/// without normalisation finds them.
///
/// Two texts are equal after it when they are equal decomposed, marks that follow each other in their order.
/// A character is decomposed whatever stands beside it. So it takes three things: characters that stand for
/// several are replaced by those, `replacements` has all that may lead to the value; then every place may
/// hold any of a few characters, `places`; and where marks may come in another order, each order is a form
/// of its own.
struct CompatibleForms
{
    std::vector<Replacement> replacements;
    /// For each form the places, each with the characters that it may hold, the plain one first.
    std::vector<CStringArray> forms;
    /// Whether any other text than the normalised one itself is equal to it.
    bool hasOthers = false;
};

/// Those of a text, which is given normalised and without half surrogate pairs. Raises `std::length_error`
/// when marks stand in heaps that have more orders than anybody would write down.
CompatibleForms CompatibleFormsOf(const CString& normalised);

} // namespace rules
