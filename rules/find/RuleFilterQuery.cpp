#include "rules/find/FoldedText.h"
#include "rules/find/RuleFilter.h"

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

struct Token
{
    enum class Kind { Word, Attribute, Equals };

    Kind kind = Kind::Word;
    CString text; ///< as typed
};

/// The words of a text; an equals sign between an attribute and its value is a word of its own.
std::vector<Token> TokensOf(const CString& text, const std::set<CString>& attributes)
{
    using enum Token::Kind;
    std::vector<Token> tokens;
    for (const CString& word : text.simplified().split(u' ', Qt::SkipEmptyParts)) {
        const auto sign =
            std::find_if(word.begin(), word.end(), [](QChar c) { return c == u'=' || c == u'＝'; });
        const qsizetype length = sign - word.begin();
        const CString head = word.first(length);
        const bool isAttribute = attributes.contains(Folded(head));
        if (sign == word.end() || (!head.isEmpty() && !isAttribute)) {
            tokens.push_back({isAttribute ? Attribute : Word, word});
            continue;
        }
        if (isAttribute) tokens.push_back({Attribute, head});
        tokens.push_back({Equals, word.sliced(length, 1)});
        const CString tail = word.sliced(length + 1);
        if (!tail.isEmpty()) tokens.push_back({attributes.contains(Folded(tail)) ? Attribute : Word, tail});
    }
    return tokens;
}

/// Whether a word goes on the text of a condition behind its attribute: ≤65.
bool BeginsWithSign(const CString& folded)
{
    return !folded.isEmpty() && u"<>≤≥≠!"_s.contains(folded.front());
}

} // namespace

RuleQuery::RuleQuery(const CString& text, const CStringArray& attributes)
{
    using enum Token::Kind;
    std::set<CString> names;
    for (const CString& attribute : attributes)
        names.insert(Folded(attribute));
    const std::vector<Token> tokens = TokensOf(text, names);
    const auto isAt = [&](std::size_t i, Token::Kind kind) {
        return i < tokens.size() && tokens[i].kind == kind;
    };
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        CString word = Folded(tokens[i].text);
        if (tokens[i].kind != Attribute) {
            m_words.append(word);
            continue;
        }
        const bool hasEquals = isAt(i + 1, Equals);
        const std::size_t next = i + (hasEquals ? 2 : 1);
        if (isAt(next, Word) && (hasEquals || !BeginsWithSign(Folded(tokens[next].text)))) {
            m_values.push_back({word, tokens[next].text});
            i = next;
        } else if (hasEquals) {
            m_values.push_back({word, {}});
            i = next - 1;
        } else if (isAt(next, Word)) {
            m_words.append(word + Folded(tokens[next].text));
            i = next;
        } else {
            m_words.append(word);
        }
    }
}

} // namespace rules
