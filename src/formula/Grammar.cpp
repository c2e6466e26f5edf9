#include "formula/Grammar.h"

#include <utility>

namespace formula {

Verdict Grammar::Take(const Token& token)
{
    if (token.kind == TokenKind::Unknown) return {Fault::UnknownCharacter, token.position};
    const Fault fault = m_wantsOperand ? TakeOperand(token) : TakeOperator(token);
    return {fault, fault == Fault::BracketNotClosed ? m_open.back() : token.position};
}

Fault Grammar::TakeOperand(const Token& token)
{
    const bool maySign = std::exchange(m_maySign, false);
    switch (token.kind) {
    case TokenKind::Number:
    case TokenKind::Name:
        m_wantsOperand = false;
        return Fault::None;
    case TokenKind::Open:
        m_open.push_back(token.position);
        m_maySign = true;
        return Fault::None;
    case TokenKind::End:
        return Fault::Incomplete;
    default:
        return maySign && (token.sign == u'+' || token.sign == u'-') ? Fault::None : Fault::OperandMissing;
    }
}

Fault Grammar::TakeOperator(const Token& token)
{
    switch (token.kind) {
    case TokenKind::Operator:
        m_wantsOperand = true;
        return Fault::None;
    case TokenKind::Close:
        if (m_open.empty()) return Fault::BracketNotOpened;
        m_open.pop_back();
        return Fault::None;
    case TokenKind::End:
        return m_open.empty() ? Fault::None : Fault::BracketNotClosed;
    default:
        return Fault::OperatorMissing;
    }
}

} // namespace formula
