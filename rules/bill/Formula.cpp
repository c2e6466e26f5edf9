#include "rules/bill/Formula.h"

#include <utility>

namespace rules {

namespace {

/// No quantity of a building has more. A rule that multiplies by itself again and again ends here.
constexpr std::size_t MostDigits = 1000;

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool StartsName(QChar c)
{
    return c.isLetter() || c == u'_' || c.isSurrogate();
}

bool ContinuesName(QChar c)
{
    return StartsName(c) || c.isDigit() || c.isMark();
}

/// The plain form of a sign or bracket; any other character as it is.
char16_t Plain(QChar c)
{
    switch (c.unicode()) {
    case u'＋':
        return u'+';
    case u'－':
        return u'-';
    case u'＊':
    case u'×':
        return u'*';
    case u'／':
    case u'÷':
        return u'/';
    case u'（':
        return u'(';
    case u'）':
        return u')';
    default:
        return c.unicode();
    }
}

} // namespace

/// Reads from left to right, operators waiting on a list of their own until their operands are there, so that
/// no depth of brackets needs the stack.
class Formula::Reader
{
public:
    explicit Reader(const CString& text) : m_text(text) {}

    std::optional<Formula> Read()
    {
        while (SkipBlanks())
            if (!(m_wantsOperand ? TakeOperand() : TakeOperator())) return std::nullopt;
        if (m_wantsOperand) return std::nullopt;
        while (!m_waiting.empty()) {
            if (m_waiting.back() == u'(') return std::nullopt;
            Settle();
        }
        return std::move(m_formula);
    }

private:
    static constexpr char16_t Negation = u'~';

    bool SkipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
        return m_at < m_text.size();
    }

    bool TakeOperand()
    {
        const QChar c = m_text[m_at];
        const bool maySign = std::exchange(m_maySign, false);
        if (IsDigit(c)) return TakeNumber();
        if (StartsName(c)) return TakeName();
        ++m_at;
        switch (Plain(c)) {
        case u'(':
            m_waiting.push_back(u'(');
            m_maySign = true;
            return true;
        case u'-':
            m_waiting.push_back(Negation);
            return maySign;
        case u'+':
            return maySign;
        default:
            return false;
        }
    }

    bool TakeOperator()
    {
        const char16_t sign = Plain(m_text[m_at++]);
        if (sign == u')') {
            while (!m_waiting.empty() && m_waiting.back() != u'(')
                Settle();
            if (m_waiting.empty()) return false;
            m_waiting.pop_back();
            return true;
        }
        if (Rank(sign) == 0) return false;
        while (!m_waiting.empty() && Rank(m_waiting.back()) >= Rank(sign))
            Settle();
        m_waiting.push_back(sign);
        m_wantsOperand = true;
        return true;
    }

    bool TakeNumber()
    {
        const qsizetype begin = m_at;
        PassDigits();
        if (m_at + 1 < m_text.size() && m_text[m_at] == u'.' && IsDigit(m_text[m_at + 1])) {
            ++m_at;
            PassDigits();
        }
        Append({Step::Kind::Number, m_formula.m_numbers.size()});
        m_formula.m_numbers.push_back(*Decimal::Parse(QStringView(m_text).sliced(begin, m_at - begin)));
        return true;
    }

    void PassDigits()
    {
        while (m_at < m_text.size() && IsDigit(m_text[m_at]))
            ++m_at;
    }

    bool TakeName()
    {
        const qsizetype begin = m_at;
        while (m_at < m_text.size() && ContinuesName(m_text[m_at]))
            ++m_at;
        const CString name = m_text.sliced(begin, m_at - begin);
        qsizetype index = m_formula.m_names.indexOf(name);
        if (index < 0) {
            index = m_formula.m_names.size();
            m_formula.m_names.append(name);
        }
        Append({Step::Kind::Name, static_cast<std::size_t>(index)});
        return true;
    }

    void Append(Step operand)
    {
        m_formula.m_steps.push_back(operand);
        m_wantsOperand = false;
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
    qsizetype m_at = 0;
    bool m_wantsOperand = true;
    bool m_maySign = true;
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
        if (!result.IsKnown()) return result;
        stack.push_back(std::move(result.value));
    }
    return {stack.back()};
}

} // namespace rules
