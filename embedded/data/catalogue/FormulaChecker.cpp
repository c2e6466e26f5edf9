#include "embedded/data/catalogue/FormulaChecker.h"

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

enum class Kind { End, Number, Name, Operator, Open, Close, Unknown };

struct Token
{
    Kind kind = Kind::End;
    qsizetype position = 0;
    CString text;
};

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

Kind SignKind(QChar c)
{
    if (QStringView(u"+-*/×÷＋－＊／").contains(c)) return Kind::Operator;
    if (c == u'(' || c == u'（') return Kind::Open;
    if (c == u')' || c == u'）') return Kind::Close;
    return Kind::Unknown;
}

/// Cuts a formula into tokens.
class Reader
{
public:
    explicit Reader(const CString& text) : m_text(text) {}

    Token Next()
    {
        while (m_at < m_text.size() && m_text.at(m_at).isSpace())
            ++m_at;
        const qsizetype start = m_at;
        if (start == m_text.size()) return {Kind::End, start, {}};
        const Kind kind = Pass();
        return {kind, start, m_text.mid(start, m_at - start)};
    }

private:
    Kind Pass()
    {
        const QChar first = m_text.at(m_at);
        if (IsDigit(first)) return PassNumber();
        if (StartsName(first)) {
            while (m_at < m_text.size() && ContinuesName(m_text.at(m_at)))
                ++m_at;
            return Kind::Name;
        }
        ++m_at;
        return SignKind(first);
    }

    Kind PassNumber()
    {
        PassDigits();
        const bool fraction =
            m_at + 1 < m_text.size() && m_text.at(m_at) == u'.' && IsDigit(m_text.at(m_at + 1));
        if (fraction) {
            ++m_at;
            PassDigits();
        }
        return Kind::Number;
    }

    void PassDigits()
    {
        while (m_at < m_text.size() && IsDigit(m_text.at(m_at)))
            ++m_at;
    }

    const CString& m_text;
    qsizetype m_at = 0;
};

CString Quoted(const Token& token)
{
    return u"“"_s + token.text + u"”"_s;
}

bool IsSign(const Token& token)
{
    return token.kind == Kind::Operator && QStringView(u"+-＋－").contains(token.text.at(0));
}

/// Goes over the tokens once. Open brackets are kept in a list, so that their depth needs no stack.
class Checker
{
public:
    explicit Checker(const std::function<bool(const CString&)>& isKnown) : m_isKnown(isKnown) {}

    /// The fault that shows at this token, if any. Nothing may follow a fault or the end.
    std::optional<FormulaFault> Take(const Token& token)
    {
        if (token.kind == Kind::Unknown) return Fault(token, u"不能识别的字符"_s + Quoted(token));
        return m_wantsOperand ? TakeOperand(token) : TakeOperator(token);
    }

private:
    static FormulaFault Fault(const Token& token, const CString& text) { return {token.position, text}; }

    std::optional<FormulaFault> TakeOperand(const Token& token)
    {
        const bool mayBeSigned = std::exchange(m_mayBeSigned, false);
        switch (token.kind) {
        case Kind::Number:
            m_wantsOperand = false;
            return std::nullopt;
        case Kind::Name:
            m_wantsOperand = false;
            if (m_isKnown(token.text)) return std::nullopt;
            return Fault(token, Quoted(token) + u"不是计算项目"_s);
        case Kind::Open:
            m_open.push_back(token.position);
            m_mayBeSigned = true;
            return std::nullopt;
        case Kind::End:
            return Fault(token, u"公式不完整，后面还缺少数字或计算项目"_s);
        default:
            if (mayBeSigned && IsSign(token)) return std::nullopt;
            return Fault(token, Quoted(token) + u"前面缺少数字或计算项目"_s);
        }
    }

    std::optional<FormulaFault> TakeOperator(const Token& token)
    {
        switch (token.kind) {
        case Kind::Operator:
            m_wantsOperand = true;
            return std::nullopt;
        case Kind::Close:
            if (m_open.empty()) return Fault(token, u"右括号没有对应的左括号"_s);
            m_open.pop_back();
            return std::nullopt;
        case Kind::End:
            if (m_open.empty()) return std::nullopt;
            return FormulaFault{m_open.back(), u"左括号没有对应的右括号"_s};
        default:
            return Fault(token, Quoted(token) + u"前面缺少运算符"_s);
        }
    }

    const std::function<bool(const CString&)>& m_isKnown;
    std::vector<qsizetype> m_open;
    bool m_wantsOperand = true;
    bool m_mayBeSigned = true;
};

} // namespace

std::optional<FormulaFault> CheckFormula(const CString& formula,
                                         const std::function<bool(const CString&)>& isKnown)
{
    Reader reader(formula);
    Token token = reader.Next();
    if (token.kind == Kind::End) return std::nullopt;
    Checker checker(isKnown);
    while (true) {
        const std::optional<FormulaFault> fault = checker.Take(token);
        if (fault || token.kind == Kind::End) return fault;
        token = reader.Next();
    }
}

CStringArray NamesIn(const CString& formula)
{
    CStringArray names;
    Reader reader(formula);
    for (Token token = reader.Next(); token.kind != Kind::End; token = reader.Next()) {
        if (token.kind == Kind::Name) names.append(token.text);
    }
    return names;
}

} // namespace embedded
