#pragma once

#include "rules/sql/Column.h"

#include <optional>
#include <vector>

namespace rules {

/// A condition over the three numbers that a cell has been read as.
struct CellTest
{
    enum class Form { Equal, Unequal, Range };
    /// One bound of a range.
    struct Bound
    {
        Decimal value;
        bool isIn = false; ///< whether the bound itself is in the range
    };

    Form form = Form::Equal;
    std::size_t column = 0;
    std::size_t text = 0;   ///< the value as a text; 0 when no cell can be it
    std::size_t number = 0; ///< the value as a number; 0 when it is none
    std::optional<Bound> lower;
    std::optional<Bound> upper;
};

/// A rule that may apply by its conditions, all of which must hold.
struct TestedRule
{
    std::size_t key = 0; ///< what the query calls it by
    std::vector<CellTest> tests;
};

/// The key of the first rule whose tests hold, as an expression; `otherwise` is one, too, for when there is
/// none.
///
/// Rules stand in blocks of blocks. Before each block stands what all of its rules ask of one column or
/// another, so that most blocks are left out after a comparison or two and a long list costs little.
CString ChoiceOf(const std::vector<TestedRule>& rules, const std::vector<Column>& columns,
                 const CString& otherwise);

} // namespace rules
