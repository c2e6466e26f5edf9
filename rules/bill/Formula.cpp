#include "rules/bill/Formula.h"

#include "formula/Grammar.h"

#include <utility>

namespace rules {

namespace {

using formula::TokenKind;

/// No quantity of a building has more. A rule that multiplies by itself again and again ends here.
constexpr std::size_t MostDigits = 1000;

} // namespace

/// Reads from left to right what the grammar lets pass, operators waiting on a list of their own until their
/// operands are there, so that no depth of brackets needs the stack.
class Formula::Reader
{
public:
    explicit Reader(const CString& text) : m_text(text) {}

    std::optional<Formula> Read()
    {
        formula::Tokens tokens(m_text);
        formula::Grammar grammar;
        for (;;) {
            const formula::Token token = tokens.Next();
            const bool wantsOperand = grammar.WantsOperand();
            if (grammar.Take(token).fault != formula::Fault::None) return std::nullopt;
            if (token.kind == TokenKind::End) break;
            wantsOperand ? TakeOperand(token) : TakeOperator(token);
        }
        while (!m_waiting.empty())
            Settle();
        return std::move(m_formula);
    }

private:
    static constexpr char16_t Negation = u'~';

    void TakeOperand(const formula::Token& token)
    {
        switch (token.kind) {
        case TokenKind::Number:
            m_formula.m_steps.push_back({Step::Kind::Number, m_formula.m_numbers.size()});
            m_formula.m_numbers.push_back(*Decimal::Parse(token.text));
            break;
        case TokenKind::Name:
            m_formula.m_steps.push_back({Step::Kind::Name, IndexOf(token.text.toString())});
            break;
        case TokenKind::Open:
            m_waiting.push_back(u'(');
            break;
        default: // a sign before the operand
            if (token.sign == u'-') m_waiting.push_back(Negation);
            break;
        }
    }

    void TakeOperator(const formula::Token& token)
    {
        if (token.kind == TokenKind::Close) {
            while (m_waiting.back() != u'(')
                Settle();
            m_waiting.pop_back();
            return;
        }
        while (!m_waiting.empty() && Rank(m_waiting.back()) >= Rank(token.sign))
            Settle();
        m_waiting.push_back(token.sign);
    }

    std::size_t IndexOf(const CString& name)
    {
        qsizetype index = m_formula.m_names.indexOf(name);
        if (index < 0) {
            index = m_formula.m_names.size();
            m_formula.m_names.append(name);
        }
        return static_cast<std::size_t>(index);
    }

    static int Rank(char16_t sign)
    {
        switch (sign) {
        case u'+':
        case u'-':
        case Negation: // as in school, -a×b is -(a×b), which is the same
            return 1;
        case u'*':
        case u'/':
            return 2;
        default:
            return 0;
        }
    }

    /// Moves the last waiting operator behind its operands.
    void Settle()
    {
        using Kind = Step::Kind;
        switch (m_waiting.back()) {
        case u'+':
            m_formula.m_steps.push_back({Kind::Add, 0});
            break;
        case u'-':
            m_formula.m_steps.push_back({Kind::Subtract, 0});
            break;
        case u'*':
            m_formula.m_steps.push_back({Kind::Multiply, 0});
            break;
        case u'/':
            m_formula.m_steps.push_back({Kind::Divide, 0});
            break;
        default:
            m_formula.m_steps.push_back({Kind::Negate, 0});
            break;
        }
        m_waiting.pop_back();
    }

    const CString& m_text;
    Formula m_formula;
    std::vector<char16_t> m_waiting;
};

std::optional<Formula> Formula::Parse(const CString& text)
{
    return Reader(text).Read();
}

Quantity Formula::Apply(Step::Kind kind, const Decimal& a, const Decimal& b)
{
    switch (kind) {
    case Step::Kind::Add:
        return {a + b};
    case Step::Kind::Subtract:
        return {a - b};
    case Step::Kind::Multiply:
        return {a * b};
    default:
        if (const auto quotient = a.DividedBy(b)) return {*quotient};
        return {{}, QuantityFault::DivisionByZero};
    }
}

Quantity Formula::Evaluate(const std::function<Quantity(std::size_t)>& valueOf) const
{
    std::vector<Decimal> stack;
    return Evaluate(valueOf, stack);
}

Quantity Formula::Evaluate(const std::function<Quantity(std::size_t)>& valueOf,
                           std::vector<Decimal>& stack) const
{
    const std::size_t below = stack.size();
    for (const Step& step : m_steps) {
        Quantity result;
        if (step.kind == Step::Kind::Number) {
            result.value = m_numbers[step.index];
        } else if (step.kind == Step::Kind::Name) {
            result = valueOf(step.index);
        } else if (step.kind == Step::Kind::Negate) {
            result.value = -stack.back();
            stack.pop_back();
        } else {
            const Decimal right = std::move(stack.back());
            stack.pop_back();
            result = Apply(step.kind, stack.back(), right);
            stack.pop_back();
            if (result.IsKnown() && result.value.Length() > MostDigits) result.fault = QuantityFault::TooLong;
        }
        if (!result.IsKnown()) {
            stack.resize(below);
            return result;
        }
        stack.push_back(std::move(result.value));
    }
    Quantity result{std::move(stack.back())};
    stack.resize(below);
    return result;
}

} // namespace rules
