#pragma once

#include "platform/Text.h"

/// Formulas of quantities: numbers and names joined by + - * / × ÷, with brackets. What they are worth is not
/// known here.
namespace formula {

enum class TokenKind {
    End,
    Number,   ///< digits with at most one point between them
    Name,     ///< letters, digits and underscores, beginning with no digit
    Operator, ///< a sign that joins two operands; + and - also before a first one
    Open,     ///< bracket
    Close,    ///< bracket
    Unknown,  ///< a character that no formula has
};

/// A piece of a formula. The text belongs to the formula.
struct Token
{
    TokenKind kind = TokenKind::End;
    qsizetype position = 0; ///< of its first character, from 0; the length at the end
    QStringView text{};
    char16_t sign = 0; ///< of an operator its plain form: + - * /
};

/// Cuts a formula into tokens. Full-width signs and brackets count like the plain ones, blanks do not count.
class Tokens
{
public:
    /// The formula must outlive this and the tokens.
    explicit Tokens(QStringView formula) : m_text(formula) {}

    /// The next token; `End` from the end on.
    Token Next();

private:
    TokenKind Pass();
    void PassNumber();
    void PassDigits();

    QStringView m_text;
    qsizetype m_at = 0;
};

} // namespace formula
