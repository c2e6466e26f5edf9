#include "rules/model/Decimal.h"

#include <gmp.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace rules {

namespace {

constexpr int ShortDigits = 18; // every number of so many digits fits 64 bits

/// 10 to the power of `exponent`, which is at most `ShortDigits`.
constexpr std::int64_t ShortPower(std::uint32_t exponent)
{
    std::int64_t power = 1;
    while (exponent-- > 0)
        power *= 10;
    return power;
}

bool AddFits(std::int64_t a, std::int64_t b)
{
    using Limits = std::numeric_limits<std::int64_t>;
    return b >= 0 ? a <= Limits::max() - b : a >= Limits::min() - b;
}

/// Whether both are so small that any product of them fits.
bool ProductFits(std::int64_t a, std::int64_t b)
{
    constexpr std::int64_t Half = 3'000'000'000; // its square is below 2^63
    const auto small = [](std::int64_t n, std::int64_t limit) { return n > -limit && n < limit; };
    if (small(a, Half) && small(b, Half)) return true;
    constexpr std::int64_t Most = std::numeric_limits<std::int64_t>::max();
    if (a == std::numeric_limits<std::int64_t>::min() || b == std::numeric_limits<std::int64_t>::min())
        return false;
    const std::int64_t magnitude = a < 0 ? -a : a;
    return magnitude <= 1 || small(b, Most / magnitude + 1);
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

} // namespace

/// A long integer of the library, with its lifetime.
struct Decimal::Long
{
    mpz_t number;

    Long() { mpz_init(number); }
    ~Long() { mpz_clear(number); }
    Long(const Long&) = delete;
    Long& operator=(const Long&) = delete;
};

/// What the operations share. Kept out of the header, which knows nothing of the library.
struct Decimal::Access
{
    using Shared = std::shared_ptr<Long>;

    static Shared FromText(const std::string& digits)
    {
        auto result = std::make_shared<Long>();
        mpz_set_str(result->number, digits.c_str(), 10);
        return result;
    }

    /// In two halves: a long of the library has 32 bits on some platforms.
    static void Set(Long& to, std::int64_t value)
    {
        const std::uint64_t magnitude =
            value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
        mpz_set_ui(to.number, static_cast<unsigned long>(magnitude >> 32U));
        mpz_mul_2exp(to.number, to.number, 32);
        mpz_add_ui(to.number, to.number, static_cast<unsigned long>(magnitude & 0xFFFFFFFFU));
        if (value < 0) mpz_neg(to.number, to.number);
    }

    /// Adds to a long coefficient where it stands, if nobody shares it and it stays a long one: sums of
    /// millions of components are made so. False when nothing was done.
    static bool AddInPlace(Decimal& sum, const Decimal& other)
    {
        constexpr std::size_t LongBits = 64; // more than any number of `ShortDigits` has
        std::int64_t summand = 0;
        if (!sum.m_long || sum.m_long.use_count() != 1 || sum.m_scale < other.m_scale ||
            !Shifted(other, sum.m_scale - other.m_scale, summand))
            return false;
        Long addend;
        Set(addend, summand);
        mpz_add(addend.number, sum.m_long->number, addend.number);
        if (mpz_sizeinbase(addend.number, 2) < LongBits) return false;
        mpz_swap(sum.m_long->number, addend.number);
        return true;
    }

    /// The coefficient as a long integer, multiplied by 10^shift.
    static Shared Coefficient(const Decimal& value, std::uint32_t shift = 0)
    {
        auto result = std::make_shared<Long>();
        if (value.m_long)
            mpz_set(result->number, value.m_long->number);
        else
            Set(*result, value.m_small);
        if (shift > 0) {
            Long power;
            mpz_ui_pow_ui(power.number, 10, shift);
            mpz_mul(result->number, result->number, power.number);
        }
        return result;
    }

    /// The coefficient times 10^shift where that fits 64 bits.
    static bool Shifted(const Decimal& value, std::uint32_t shift, std::int64_t& result)
    {
        if (value.m_long || shift > static_cast<std::uint32_t>(ShortDigits)) return false;
        const std::int64_t power = ShortPower(shift);
        if (!ProductFits(value.m_small, power)) return false;
        result = value.m_small * power;
        return true;
    }

    static Decimal Make(const Shared& coefficient, std::uint32_t scale)
    {
        Decimal result;
        result.m_scale = scale;
        if (mpz_sizeinbase(coefficient->number, 10) <= static_cast<std::size_t>(ShortDigits))
            result.m_small = std::stoll(Text(*coefficient));
        else
            result.m_long = coefficient;
        return result;
    }

    static std::string Text(const Long& number)
    {
        std::string text(mpz_sizeinbase(number.number, 10) + 2, '\0');
        mpz_get_str(text.data(), 10, number.number);
        text.resize(text.find('\0'));
        return text;
    }

    /// The quotient of two long integers, rounded to a whole number, a half away from zero.
    static Shared RoundedQuotient(const Shared& dividend, const Shared& divisor)
    {
        auto result = std::make_shared<Long>();
        Long rest;
        mpz_tdiv_qr(result->number, rest.number, dividend->number, divisor->number);
        mpz_mul_2exp(rest.number, rest.number, 1);
        if (mpz_cmpabs(rest.number, divisor->number) >= 0) {
            const bool negative = (mpz_sgn(dividend->number) < 0) != (mpz_sgn(divisor->number) < 0);
            negative ? mpz_sub_ui(result->number, result->number, 1)
                     : mpz_add_ui(result->number, result->number, 1);
        }
        return result;
    }

    static Shared Power(std::uint32_t exponent)
    {
        auto result = std::make_shared<Long>();
        mpz_ui_pow_ui(result->number, 10, exponent);
        return result;
    }

    /// The digits of the coefficient without sign, at least one more than the scale.
    static std::string Digits(const Decimal& value, bool& negative)
    {
        std::string digits = value.m_long ? Text(*value.m_long) : std::to_string(value.m_small);
        negative = digits.front() == '-';
        if (negative) digits.erase(0, 1);
        if (digits.size() <= value.m_scale) digits.insert(0, value.m_scale + 1 - digits.size(), '0');
        return digits;
    }
};

/// A number of up to 18 digits, as nearly all are, without a text on the way; nothing for any other text.
std::optional<Decimal> Decimal::ParseShort(QStringView text)
{
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) text = text.sliced(1);
    if (text.isEmpty() || text.size() > ShortDigits) return std::nullopt;
    std::int64_t coefficient = 0;
    qsizetype point = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9')
            coefficient = 10 * coefficient + (c - u'0');
        else if (c == u'.' && point < 0 && text.size() > 1)
            point = i;
        else
            return std::nullopt;
    }
    Decimal result(negative ? -coefficient : coefficient);
    if (point >= 0) result.m_scale = static_cast<std::uint32_t>(text.size() - point - 1);
    while (result.m_scale > 0 && result.m_small % 10 == 0) {
        result.m_small /= 10;
        --result.m_scale;
    }
    return result;
}

std::optional<Decimal> Decimal::Parse(QStringView text)
{
    if (const std::optional<Decimal> brief = ParseShort(text)) return brief;
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) text = text.sliced(1);
    const qsizetype point = text.indexOf(u'.');
    const QStringView whole = point < 0 ? text : text.first(point);
    QStringView fraction = point < 0 ? QStringView() : text.sliced(point + 1);
    if (whole.isEmpty() && fraction.isEmpty()) return std::nullopt;
    if (!std::all_of(whole.begin(), whole.end(), IsDigit) ||
        !std::all_of(fraction.begin(), fraction.end(), IsDigit))
        return std::nullopt;
    while (fraction.endsWith(u'0'))
        fraction.chop(1);

    std::string digits;
    digits.reserve(static_cast<std::size_t>(text.size()) + 1);
    for (const QStringView part : {whole, fraction})
        for (const QChar c : part)
            if (!digits.empty() || c != u'0') digits.push_back(static_cast<char>(c.unicode()));
    if (digits.empty()) return Decimal();
    if (negative) digits.insert(0, 1, '-');
    Decimal result;
    result.m_scale = static_cast<std::uint32_t>(fraction.size());
    if (digits.size() <= static_cast<std::size_t>(ShortDigits))
        result.m_small = std::stoll(digits);
    else
        result.m_long = Access::FromText(digits);
    return result;
}

CString Decimal::ToText() const
{
    bool negative = false;
    std::string digits = Access::Digits(*this, negative);
    if (m_scale > 0) {
        digits.insert(digits.size() - m_scale, 1, '.');
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.') digits.pop_back();
    }
    if (negative) digits.insert(0, 1, '-');
    return CString::fromStdString(digits);
}

CString Decimal::ToText(unsigned digits) const
{
    CString text = Rounded(digits).ToText();
    if (digits == 0) return text;
    qsizetype point = text.indexOf(u'.');
    if (point < 0) {
        point = text.size();
        text += u'.';
    }
    return text.leftJustified(point + 1 + static_cast<qsizetype>(digits), u'0');
}

bool Decimal::IsZero() const noexcept
{
    return !m_long && m_small == 0; // a long coefficient has more than 18 digits
}

std::size_t Decimal::Length() const
{
    if (!m_long) {
        std::size_t length = 1;
        for (std::int64_t rest = m_small / 10; rest != 0; rest /= 10)
            ++length;
        return std::max(length, std::size_t{m_scale} + 1);
    }
    bool negative = false;
    return Access::Digits(*this, negative).size();
}

Decimal Decimal::Rounded(unsigned digits) const
{
    if (m_scale <= digits) return *this;
    return Access::Make(Access::RoundedQuotient(Access::Coefficient(*this), Access::Power(m_scale - digits)),
                        digits);
}

std::optional<Decimal> Decimal::DividedBy(const Decimal& divisor) const
{
    if (divisor.IsZero()) return std::nullopt;
    // (a / 10^s) / (b / 10^t) with q digits behind the point is a·10^(q+t) / (b·10^s), rounded.
    const auto dividend = Access::Coefficient(*this, QuotientDigits + divisor.m_scale);
    const auto scaled = Access::Coefficient(divisor, m_scale);
    Decimal quotient = Access::Make(Access::RoundedQuotient(dividend, scaled), QuotientDigits);
    return Parse(quotient.ToText()); // without the zeros at its end, so that most quotients are short again
}

Decimal Decimal::operator-() const
{
    if (!m_long && m_small != std::numeric_limits<std::int64_t>::min()) {
        Decimal result = *this;
        result.m_small = -m_small;
        return result;
    }
    const auto coefficient = Access::Coefficient(*this);
    mpz_neg(coefficient->number, coefficient->number);
    return Access::Make(coefficient, m_scale);
}

Decimal& Decimal::operator+=(const Decimal& other)
{
    const std::uint32_t scale = std::max(m_scale, other.m_scale);
    std::int64_t a = 0;
    std::int64_t b = 0;
    if (Access::Shifted(*this, scale - m_scale, a) && Access::Shifted(other, scale - other.m_scale, b) &&
        AddFits(a, b)) {
        m_small = a + b;
        m_scale = scale;
        return *this;
    }
    if (Access::AddInPlace(*this, other)) return *this;
    const auto sum = Access::Coefficient(*this, scale - m_scale);
    mpz_add(sum->number, sum->number, Access::Coefficient(other, scale - other.m_scale)->number);
    return *this = Access::Make(sum, scale);
}

Decimal operator*(const Decimal& a, const Decimal& b)
{
    if (!a.m_long && !b.m_long && ProductFits(a.m_small, b.m_small)) {
        Decimal result(a.m_small * b.m_small);
        result.m_scale = a.m_scale + b.m_scale;
        return result;
    }
    const auto product = Decimal::Access::Coefficient(a);
    mpz_mul(product->number, product->number, Decimal::Access::Coefficient(b)->number);
    return Decimal::Access::Make(product, a.m_scale + b.m_scale);
}

std::strong_ordering operator<=>(const Decimal& a, const Decimal& b)
{
    const std::uint32_t scale = std::max(a.m_scale, b.m_scale);
    std::int64_t left = 0;
    std::int64_t right = 0;
    if (Decimal::Access::Shifted(a, scale - a.m_scale, left) &&
        Decimal::Access::Shifted(b, scale - b.m_scale, right))
        return left <=> right;
    const auto first = Decimal::Access::Coefficient(a, scale - a.m_scale);
    return mpz_cmp(first->number, Decimal::Access::Coefficient(b, scale - b.m_scale)->number) <=> 0;
}

} // namespace rules
