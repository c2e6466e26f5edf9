#include "docs/SourceTexts.h"

#include "support/SourceTree.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// Calls and functions that decide what a box says.
const QRegularExpression
    Tellers(u"^(Show|ShowWarning|AskYesNo|ShowReport|AskOpenAnyway|AskHeadTarget|Describe|Choose|Failed|Fail|"
            "Error|FileError|Refuse|Miss|Refusal|Expect|TakeName|invalid_argument|\\w*Fault)$"_s);

bool IsWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

/// Goes over C++ source once. Knows no more of the language than finding its texts takes.
class LiteralReader
{
public:
    explicit LiteralReader(const QString& source) : m_source(source) {}

    QList<SourceLiteral> ReadAll()
    {
        while (m_at < m_source.size())
            Step();
        return m_literals;
    }

private:
    QStringView Rest() const { return QStringView(m_source).mid(m_at); }

    void Step()
    {
        const QChar c = m_source[m_at];
        if (Rest().startsWith(u"//"))
            SkipTo(u"\n"_s);
        else if (Rest().startsWith(u"/*"))
            SkipTo(u"*/"_s);
        else if (c == u'"')
            TakeText();
        else if (c == u'\'')
            TakeCharacter();
        else if (IsWordCharacter(c))
            TakeWord();
        else
            TakeSign(c);
    }

    void SkipTo(const QString& end)
    {
        const qsizetype found = m_source.indexOf(end, m_at);
        m_at = found < 0 ? m_source.size() : found + end.size();
    }

    void TakeWord()
    {
        const qsizetype begin = m_at;
        while (m_at < m_source.size() && IsWordCharacter(m_source[m_at]))
            ++m_at;
        const QString word = m_source.mid(begin, m_at - begin);
        // The encoding of a text and the words between a function's arguments and its body name nothing.
        if (!QStringList{u"u"_s, u"u8"_s, u"_s"_s, u"const"_s, u"noexcept"_s, u"override"_s}.contains(word)) {
            m_word = word;
            m_joins = false;
        }
    }

    void TakeSign(QChar c)
    {
        ++m_at;
        if (c.isSpace()) return;
        if (c == u'(' || c == u'{' || c == u'[') {
            m_around.append(std::exchange(m_word, {}));
        } else if ((c == u')' || c == u'}' || c == u']') && !m_around.isEmpty()) {
            const QString closed = m_around.takeLast();
            m_word = c == u')' ? closed : QString(); // a body bears the name of its function
        } else {
            m_word.clear();
        }
        m_joins = false;
    }

    void TakeCharacter()
    {
        const bool separatesDigits = m_at > 0 && m_source[m_at - 1].isDigit();
        ++m_at;
        if (separatesDigits) return;
        while (m_at < m_source.size() && m_source[m_at] != u'\'')
            m_at += m_source[m_at] == u'\\' ? 2 : 1;
        ++m_at;
    }

    void TakeText()
    {
        QString text;
        for (++m_at; m_at < m_source.size() && m_source[m_at] != u'"'; ++m_at) {
            if (m_source[m_at] != u'\\') {
                text += m_source[m_at];
                continue;
            }
            const QChar escaped = m_source[++m_at];
            text += escaped == u'n' ? u'\n' : escaped;
        }
        ++m_at;
        if (m_joins)
            m_literals.last().text += text;
        else
            m_literals.append({text, m_around});
        m_joins = true;
    }

    const QString& m_source;
    qsizetype m_at = 0;
    QString m_word;
    QStringList m_around;
    QList<SourceLiteral> m_literals;
    bool m_joins = false; ///< whether a text that follows is a piece of the last one
};

void ForEachLiteral(const std::function<void(const SourceLiteral&)>& take)
{
    for (const QString& folder : {u"src"_s, u"embedded"_s, u"apps/shared"_s, u"apps/editor"_s}) {
        QDirIterator walk(InSourceTree(folder), {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            const bool isOfWindows =
                path.endsWith(u"/TableImport.cpp") || path.endsWith(u"/OtherProjects.cpp");
            if (path.contains(u"/exchange/") && !isOfWindows) continue;
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) continue;
            for (const SourceLiteral& literal : LiteralsOf(QString::fromUtf8(file.readAll())))
                take(literal);
        }
    }
}

bool IsForPeople(const SourceLiteral& literal)
{
    static const QRegularExpression chinese(u"[\\x{4e00}-\\x{9fff}]"_s);
    static const QRegularExpression english(u"[a-z] [a-z]"_s);
    const bool inABox = literal.around.contains(u"Show"_s);
    return chinese.match(literal.text).hasMatch() || (inABox && english.match(literal.text).hasMatch());
}

} // namespace

QList<SourceLiteral> LiteralsOf(const QString& source)
{
    return LiteralReader(source).ReadAll();
}

QString AsSeen(QString text)
{
    static const QRegularExpression mnemonic(u"\\(&.\\)"_s);
    static const QRegularExpression filledIn(u"%[0-9]"_s);
    static const QRegularExpression punctuation(u"^[：]|[!?.:：，。\\s]+$"_s);
    return text.remove(mnemonic).remove(u'&').replace(filledIn, u"…"_s).simplified().remove(punctuation);
}

QSet<QString> TextsOfWindows()
{
    QSet<QString> texts;
    ForEachLiteral([&](const SourceLiteral& literal) { texts.insert(AsSeen(literal.text)); });
    return texts;
}

QSet<QString> WarningsOfWindows()
{
    // The faults of a file name, of a chosen cloud folder and of the ini come up as warnings of their
    // dialogs.
    const QStringList warners{u"ShowWarning"_s, u"FileNameFault"_s, u"Choose"_s, u"NotWrittenText"_s};
    QSet<QString> warnings;
    ForEachLiteral([&](const SourceLiteral& literal) {
        const bool warns = std::any_of(warners.begin(), warners.end(), [&](const QString& warner) {
            return literal.around.contains(warner);
        });
        if (warns || literal.text.endsWith(u'!')) warnings.insert(AsSeen(literal.text));
    });
    return warnings;
}

QSet<QString> MessagesOfWindows()
{
    QSet<QString> messages;
    ForEachLiteral([&](const SourceLiteral& literal) {
        const bool told = !literal.around.filter(Tellers).isEmpty();
        if (told && IsForPeople(literal)) messages.insert(AsSeen(literal.text));
    });
    return messages;
}

} // namespace test
