#include "formula/Tokens.h"

namespace formula {

namespace {

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

TokenKind KindOf(char16_t plain)
{
    switch (plain) {
    case u'+':
    case u'-':
    case u'*':
    case u'/':
        return TokenKind::Operator;
    case u'(':
        return TokenKind::Open;
    case u')':
        return TokenKind::Close;
    default:
        return TokenKind::Unknown;
    }
}

} // namespace

Token Tokens::Next()
{
    while (m_at < m_text.size() && m_text[m_at].isSpace())
        ++m_at;
    Token token;
    token.position = m_at;
    if (m_at == m_text.size()) return token;
    token.kind = Pass();
    token.text = m_text.sliced(token.position, m_at - token.position);
    if (token.kind == TokenKind::Operator) token.sign = Plain(token.text.front());
    return token;
}

TokenKind Tokens::Pass()
{
    const QChar first = m_text[m_at];
    if (IsDigit(first)) {
        PassNumber();
        return TokenKind::Number;
    }
    if (StartsName(first)) {
        while (m_at < m_text.size() && ContinuesName(m_text[m_at]))
            ++m_at;
        return TokenKind::Name;
    }
    ++m_at;
    return KindOf(Plain(first));
}

void Tokens::PassNumber()
{
    PassDigits();
    if (m_at + 1 < m_text.size() && m_text[m_at] == u'.' && IsDigit(m_text[m_at + 1])) {
        ++m_at;
        PassDigits();
    }
}

void Tokens::PassDigits()
{
    while (m_at < m_text.size() && IsDigit(m_text[m_at]))
        ++m_at;
}

} // namespace formula
