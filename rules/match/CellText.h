#pragma once

#include "platform/Text.h"
#include "rules/Export.h"
#include "rules/model/Decimal.h"

#include <optional>
#include <set>
#include <utility>

/// How the texts of rules and take-off tables are read for matching; docs/matching.md has the words.
namespace rules {

/// The text without blanks around it; ideographic and no-break spaces are blanks.
KTQDDE_RULES_EXPORT QStringView WithoutBlanks(QStringView text);

/// The plain form of a full-width letter, digit or sign of ASCII; any other character as it is.
constexpr char16_t Narrow(char16_t c) noexcept
{
    constexpr char16_t First = 0xFF01; // this and those behind it stand for ASCII's from "!" to "~"
    constexpr char16_t Last = 0xFF5E;
    return c >= First && c <= Last ? static_cast<char16_t>(c - First + u'!') : c;
}

/// The text without blanks around it, in compatibility normalisation: "６５" and "65" are one, so are "㎡"
/// and "m2".
KTQDDE_RULES_EXPORT CString Normalised(QStringView text);
/// The same; a text that is in that form already, as most are, is shared and not copied.
KTQDDE_RULES_EXPORT CString Normalised(const CString& text);

/// The header of an attribute's column that also tells the unit: 长边 in mm gives 长边(mm).
KTQDDE_RULES_EXPORT CString WithUnit(const CString& name, const CString& unit);

/// The number that a text is, for ＝ and ≠: an optional sign, digits, at most one point, blanks around;
/// full-width forms count as the plain ones. Nothing for all else, "DN50" included.
KTQDDE_RULES_EXPORT std::optional<Decimal> PlainNumber(QStringView text);

/// Whether ＝ holds for a value and a cell: the same text without the blanks around, numbers of one value, or
/// the same after compatibility normalisation.
KTQDDE_RULES_EXPORT bool IsSameValue(const CString& a, const CString& b);

/// How the numbers of one attribute are written, as far as its value list tells.
class KTQDDE_RULES_EXPORT NumberReader
{
public:
    /// Of the values "DN15", "15mm" it learns that a number may follow "DN" or stand before "mm".
    explicit NumberReader(const CStringArray& valueList);

    /// The number for ranges: a plain one, or one written as a value of the list is. Letter case counts;
    /// blanks between the parts do not.
    std::optional<Decimal> Read(QStringView text) const;

    /// What stands before and behind the number in each of the ways that it has learned, full-width forms as
    /// plain ones and without blanks around.
    const std::set<std::pair<CString, CString>>& Forms() const noexcept { return m_forms; }

private:
    std::set<std::pair<CString, CString>> m_forms; // what stands before and behind the number
};

} // namespace rules
