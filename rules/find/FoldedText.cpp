#include "rules/find/FoldedText.h"

#include "rules/match/CellText.h"

namespace rules {

namespace {

/// The character as a search sees it, where that can be told without its neighbours; 0 where not. Nearly all
/// characters of rules are such.
char16_t Plain(char16_t c)
{
    constexpr char16_t FirstIdeograph = 0x4E00;
    constexpr char16_t LastIdeograph = 0x9FFF;
    if (c >= FirstIdeograph && c <= LastIdeograph) return c;
    c = Narrow(c);
    if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c - u'A' + u'a');
    if (c < 0x80 || c == u'≤' || c == u'≥' || c == u'≠') return c;
    return 0;
}

/// Joins what has just been appended to the character before it, if the two are one sign.
void JoinSigns(CString& folded, qsizetype begin)
{
    const qsizetype size = folded.size();
    if (size - begin < 2) return;
    const char16_t first = folded[size - 2].unicode();
    const char16_t second = folded[size - 1].unicode();
    char16_t joined = 0;
    if (second == u'=') joined = first == u'<' ? u'≤' : first == u'>' ? u'≥' : first == u'!' ? u'≠' : 0;
    if (second == u'>' && first == u'<') joined = u'≠';
    if (joined == 0) return;
    folded.chop(1);
    folded.back() = QChar(joined);
}

} // namespace

void AppendFolded(CString& folded, QStringView text)
{
    const qsizetype begin = folded.size();
    for (const QChar c : text) {
        const char16_t plain = Plain(c.unicode());
        if (plain == 0) {
            // Once more, with the neighbours in view.
            folded.truncate(begin);
            const CString whole = text.toString().normalized(CString::NormalizationForm_KC).toCaseFolded();
            for (const QChar other : whole) {
                folded.append(other);
                JoinSigns(folded, begin);
            }
            return;
        }
        folded.append(QChar(plain));
        JoinSigns(folded, begin);
    }
}

CString Folded(QStringView text)
{
    CString folded;
    AppendFolded(folded, text.trimmed());
    return folded;
}

} // namespace rules
