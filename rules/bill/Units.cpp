#include "rules/bill/Units.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

UnitOfMeasure UnitOfMeasure::Of(const CString& unit)
{
    const CString text = unit.trimmed().normalized(CString::NormalizationForm_KC);
    const auto firstOther =
        std::find_if(text.begin(), text.end(), [](QChar c) { return c < u'0' || c > u'9'; });
    const qsizetype digits = firstOther - text.begin();
    UnitOfMeasure result;
    if (const auto number = Decimal::Parse(text.first(digits)); number && !number->IsZero())
        result.multiple = *number;
    const CString base = text.sliced(digits).trimmed().toLower();
    if (base == u"t"_s)
        result.digits = 3;
    else if (base == u"m"_s || base == u"m2"_s || base == u"m3"_s || base == u"kg"_s)
        result.digits = 2;
    return result;
}

CString UnitOfMeasure::Format(const Decimal& sumInBaseUnit) const
{
    const Decimal rounded = sumInBaseUnit.Rounded(digits);
    if (multiple == Decimal(1)) return rounded.ToText(digits);
    // 25 sets are 2.5 of ten: the quotient gets as many more digits as the multiple needs.
    const CString text = multiple.ToText();
    const bool isPowerOfTen = text.count(u'0') == text.size() - 1 && text.startsWith(u'1');
    const auto more = static_cast<unsigned>(text.size() - (isPowerOfTen ? 1 : 0));
    return rounded.DividedBy(multiple)->ToText(digits + more);
}

} // namespace rules
