#pragma once

#include "formula/Tokens.h"

#include <vector>

namespace formula {

/// What is wrong with a formula.
enum class Fault {
    None,
    UnknownCharacter,
    OperandMissing,  ///< before the token
    OperatorMissing, ///< before the token
    Incomplete,      ///< it ends where an operand should stand; a blank one does so at once
    BracketNotOpened,
    BracketNotClosed,
};

struct Verdict
{
    Fault fault = Fault::None;
    qsizetype position = 0; ///< of what is wrong: the token, or the bracket that nothing closes
};

/// Which token may follow which: operands and operators in turn, brackets in pairs, one sign at most before a
/// first operand. Goes over the tokens once, and no depth of brackets needs the stack.
class Grammar
{
public:
    /// Whether the next token should be an operand, or what stands before one.
    bool WantsOperand() const noexcept { return m_wantsOperand; }
    /// Whether a token fits behind those before; `End` asks whether the formula is whole. Nothing may follow
    /// a fault or the end.
    Verdict Take(const Token& token);

private:
    Fault TakeOperand(const Token& token);
    Fault TakeOperator(const Token& token);

    std::vector<qsizetype> m_open; ///< positions of brackets
    bool m_wantsOperand = true;
    bool m_maySign = true;
};

} // namespace formula
