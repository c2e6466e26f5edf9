#pragma once

#include "rules/model/Decimal.h"

#include <functional>
#include <optional>
#include <vector>

namespace rules {

/// Why there is no quantity.
enum class QuantityFault {
    None,
    EmptyFormula,
    BadFormula,       ///< it is no formula at all
    NameWithoutValue, ///< a name is neither a filled column nor a calculation item
    ValueNotANumber,  ///< the cell of a name is no number
    DivisionByZero,
    Circular, ///< a calculation item comes to itself again
    TooLong,  ///< a number of more digits than any quantity has
};

/// A quantity, or why there is none.
struct Quantity
{
    Decimal value;
    QuantityFault fault = QuantityFault::None;
    CString subject{}; ///< the name, cell or formula that the fault is about

    bool IsKnown() const noexcept { return fault == QuantityFault::None; }
};

/// A formula, read once: numbers and names joined by + - * / × ÷, brackets, a sign before a first operand.
/// Full-width signs and brackets count like the plain ones, blanks do not count. A name is letters, digits
/// and underscores, beginning with no digit.
class KTQDDE_RULES_EXPORT Formula
{
public:
    /// Nothing for a text that is no formula, a blank one included.
    static std::optional<Formula> Parse(const CString& text);

    /// The names in it, each once. What `Evaluate` asks for is an index in here.
    const CStringArray& Names() const noexcept { return m_names; }

    /// The value, exact but for endless quotients (see `Decimal::DividedBy`). `valueOf` gives the value of a
    /// name by its index; the first fault is the result.
    Quantity Evaluate(const std::function<Quantity(std::size_t)>& valueOf) const;
    /// The same with a stack that others use, too, and that is left as it was: whoever evaluates many
    /// formulas spares their allocations.
    Quantity Evaluate(const std::function<Quantity(std::size_t)>& valueOf, std::vector<Decimal>& stack) const;

private:
    class Reader;

    struct Step
    {
        enum class Kind : std::uint8_t { Number, Name, Add, Subtract, Multiply, Divide, Negate };

        Kind kind = Kind::Number;
        std::size_t index = 0; ///< of the number or name
    };

    static Quantity Apply(Step::Kind kind, const Decimal& a, const Decimal& b);

    CStringArray m_names;
    std::vector<Decimal> m_numbers;
    std::vector<Step> m_steps; ///< operands before their operator
};

} // namespace rules
