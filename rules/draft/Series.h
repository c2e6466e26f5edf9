#pragma once

#include "rules/draft/Draft.h"

/// Series: from one rule and the values of an attribute a rule for each value, or for each range between
/// neighbours.
namespace rules {

/// How the values of a series become conditions. Of 15, 20, 25:
enum class SeriesForm {
    Values,      ///< ＝15, ＝20, ＝25
    UpperClosed, ///< 15＜..≤20, 20＜..≤25: each value belongs to the range that ends with it
    LowerClosed, ///< 15≤..＜20, 20≤..＜25: each value belongs to the range that begins with it
};

struct SeriesPlan
{
    CString attribute;
    CStringArray values; ///< as the conditions get them, and in the order of the rules; for ranges rising
    SeriesForm form = SeriesForm::Values;
    /// Of ranges: whether every value belongs to one. Adds in front ≤15 to those that are closed above, and
    /// at the end ≥25 to those that are closed below.
    bool withOpenEnds = true;
    /// Of ranges: whether what lies beyond the other end has one, too. Adds ＞25 at the end to those that are
    /// closed above, and ＜15 in front to those that are closed below.
    bool withRest = false;
    /// The attribute's value list, from which ranges learn how its numbers are written (DN15).
    CStringArray valueList{};
};

/// The rules of a series, without ids, for a preview: each is `pattern` with its condition on the attribute
/// replaced, or, where it has none, with one more. A pattern that is a default rule gives its items only.
/// Raises `std::invalid_argument`, with the reason in words for a person as UTF-8, when the attribute has no
/// name, there are no values, one is blank or comes twice, or those of ranges are no rising numbers or give
/// no range.
std::vector<Rule> MakeSeries(const Rule& pattern, const SeriesPlan& plan);

/// The edit that puts the series in the place of the rule at `position`, or behind it where it is to stay. A
/// default rule stays behind its series. Raises what `MakeSeries` and `InsertRules` raise.
Edit InsertSeries(const Draft& draft, const CString& category, std::size_t position, const SeriesPlan& plan,
                  bool replacesPattern);

} // namespace rules
