#pragma once

#include "rules/draft/Draft.h"

/// Series: from one rule and the values of an attribute a rule for each value, or for each range between
/// neighbours.
namespace rules {

/// How the values of a series become conditions.
enum class SeriesForm {
    Values,      ///< ＝X for each
    UpperClosed, ///< for neighbours a and b: a＜..≤b. The first one has no lower bound
    LowerClosed, ///< a≤..＜b. The last one has no upper bound
};

struct SeriesPlan
{
    CString attribute;
    CStringArray values; ///< as the conditions get them; for ranges numbers in rising order
    SeriesForm form = SeriesForm::Values;
    /// Of ranges: whether one without the first bound, or the last one, is made, so that nothing is left out
    /// at the ends.
    bool withOpenEnds = true;
};

/// The rules of a series, without ids, for a preview: each is `pattern` with its condition on the attribute
/// replaced, or, where it has none, with one more. Raises `std::invalid_argument`, with the reason in words
/// for a person, when there are no values, one comes twice, or those of ranges are no rising numbers.
std::vector<Rule> MakeSeries(const Rule& pattern, const SeriesPlan& plan);

/// The edit that puts the series in the place of the rule at `position`, or behind it where it is to stay.
Edit InsertSeries(const Draft& draft, const CString& category, std::size_t position,
                                      const SeriesPlan& plan, bool replacesPattern);

} // namespace rules
