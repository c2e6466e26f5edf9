#include "rules/bill/Units.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

struct KnownUnit
{
    QStringView base; ///< without the number that it begins with, in small letters
    unsigned digits;
    Dimension dimension;
};

constexpr std::array KnownUnits{
    KnownUnit{u"t", 3, Dimension::Weight},      KnownUnit{u"吨", 3, Dimension::Weight},
    KnownUnit{u"kg", 2, Dimension::Weight},     KnownUnit{u"千克", 2, Dimension::Weight},
    KnownUnit{u"公斤", 2, Dimension::Weight},   KnownUnit{u"m", 2, Dimension::Length},
    KnownUnit{u"米", 2, Dimension::Length},     KnownUnit{u"m2", 2, Dimension::Area},
    KnownUnit{u"平方米", 2, Dimension::Area},   KnownUnit{u"m3", 2, Dimension::Volume},
    KnownUnit{u"立方米", 2, Dimension::Volume}, KnownUnit{u"km", 3, Dimension::Length},
    KnownUnit{u"千米", 3, Dimension::Length},   KnownUnit{u"公里", 3, Dimension::Length},
    KnownUnit{u"", 0, Dimension::Unknown},      KnownUnit{u"项", 0, Dimension::Unknown},
    KnownUnit{u"系统", 0, Dimension::Unknown},
};

} // namespace

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
    const auto known = std::find_if(KnownUnits.begin(), KnownUnits.end(),
                                    [&](const KnownUnit& one) { return one.base == base; });
    if (known == KnownUnits.end()) return result;
    result.digits = known->digits;
    result.dimension = known->dimension;
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
