#pragma once

#include "platform/Text.h"
#include "rules/Export.h"

#include <compare>
#include <cstdint>
#include <memory>
#include <optional>

namespace rules {

/// A decimal number of any length, exact: bounds are compared and quantities are summed without the rounding
/// of binary fractions. A value, cheap to copy. Numbers of up to 18 digits cost no allocation; longer ones
/// are kept by a library for long integers.
class KTQDDE_RULES_EXPORT Decimal
{
public:
    /// Zero.
    Decimal() noexcept = default;
    /// A whole number.
    explicit Decimal(std::int64_t whole) noexcept : m_small(whole) {}

    /// Reads ASCII digits with at most one point among, before or behind them, and a sign before; at least
    /// one digit. No blanks, no exponent, no separators between thousands. Nothing for any other text.
    static std::optional<Decimal> Parse(QStringView text);

    /// The shortest text that `Parse` reads back as this number: "-0.5", "12", never "-0" nor "1.50".
    CString ToText() const;
    /// Rounded to that many digits behind the point, all of them written: "1.50".
    CString ToText(unsigned digits) const;

    bool IsZero() const noexcept;
    /// How many digits the number is kept in, those behind the point included. A measure of its size.
    std::size_t Length() const;

    /// Rounded to that many digits behind the point, a half away from zero, as the trade rounds.
    Decimal Rounded(unsigned digits) const;

    /// The digits behind the point that a quotient without end keeps.
    static constexpr unsigned QuotientDigits = 40;
    /// The quotient, rounded to `QuotientDigits`; nothing when `divisor` is zero.
    std::optional<Decimal> DividedBy(const Decimal& divisor) const;

    Decimal operator-() const;
    Decimal& operator+=(const Decimal& other);
    friend Decimal operator+(Decimal a, const Decimal& b) { return a += b; }
    friend Decimal operator-(const Decimal& a, const Decimal& b) { return a + -b; }
    KTQDDE_RULES_EXPORT friend Decimal operator*(const Decimal& a, const Decimal& b);

    /// By value: 1.50 equals 1.5.
    KTQDDE_RULES_EXPORT friend std::strong_ordering operator<=>(const Decimal& a, const Decimal& b);
    friend bool operator==(const Decimal& a, const Decimal& b) { return (a <=> b) == 0; }

private:
    struct Long;
    struct Access;

    static std::optional<Decimal> ParseShort(QStringView text);

    // The value is coefficient / 10^m_scale. The coefficient is m_long where there is one, else m_small.
    std::int64_t m_small = 0;
    std::uint32_t m_scale = 0;
    std::shared_ptr<Long> m_long; ///< changed by the only one who has it, never where it is shared
};

} // namespace rules
