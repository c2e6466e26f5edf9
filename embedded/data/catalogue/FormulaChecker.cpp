#include "embedded/data/catalogue/FormulaChecker.h"

#include "formula/Grammar.h"

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

using formula::Fault;
using formula::Token;
using formula::TokenKind;

CString Quoted(const Token& token)
{
    return u'“' + token.text.toString() + u'”';
}

/// What is wrong, as it shows at a token.
CString InWords(Fault fault, const Token& token)
{
    switch (fault) {
    case Fault::None:
        break;
    case Fault::UnknownCharacter:
        return u"不能识别的字符"_s + Quoted(token);
    case Fault::OperandMissing:
        return Quoted(token) + u"前面缺少数字或计算项目"_s;
    case Fault::OperatorMissing:
        return Quoted(token) + u"前面缺少运算符"_s;
    case Fault::Incomplete:
        return u"公式不完整，后面还缺少数字或计算项目"_s;
    case Fault::BracketNotOpened:
        return u"右括号没有对应的左括号"_s;
    case Fault::BracketNotClosed:
        return u"左括号没有对应的右括号"_s;
    }
    return {};
}

} // namespace

std::optional<FormulaFault> CheckFormula(const CString& formula,
                                         const std::function<bool(const CString&)>& isKnown)
{
    formula::Tokens tokens(formula);
    formula::Grammar grammar;
    Token token = tokens.Next();
    if (token.kind == TokenKind::End) return std::nullopt;
    for (;; token = tokens.Next()) {
        const formula::Verdict verdict = grammar.Take(token);
        if (verdict.fault != Fault::None)
            return FormulaFault{verdict.position, InWords(verdict.fault, token)};
        if (token.kind == TokenKind::End) return std::nullopt;
        if (token.kind == TokenKind::Name && !isKnown(token.text.toString()))
            return FormulaFault{token.position, Quoted(token) + u"不是计算项目"_s};
    }
}

CStringArray NamesIn(const CString& formula)
{
    CStringArray names;
    formula::Tokens tokens(formula);
    for (Token token = tokens.Next(); token.kind != TokenKind::End; token = tokens.Next())
        if (token.kind == TokenKind::Name) names.append(token.text.toString());
    return names;
}

} // namespace embedded
