#include "docs/Documents.h"

#include "support/SourceTree.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace test {

namespace {

const QStringList Programs{u"ktqdde"_s, u"ktqdde-editor"_s, u"ktqdde-pictures"_s, u"rm"_s};

struct CodeLine
{
    int number = 0; ///< from 1
    QString text;
};

bool IsIndented(const QString& line)
{
    return line.startsWith(u"    ") && !line.trimmed().isEmpty();
}

/// The lines of code blocks, without the indentation and the fences.
QList<CodeLine> CodeLines(const QStringList& lines, qsizetype from = 0)
{
    QList<CodeLine> code;
    bool fenced = false;
    for (qsizetype i = from; i < lines.size(); ++i) {
        const QString& line = lines[i];
        if (line.startsWith(u"```"))
            fenced = !fenced;
        else if (fenced)
            code.append({static_cast<int>(i) + 1, line});
        else if (IsIndented(line))
            code.append({static_cast<int>(i) + 1, line.mid(4)});
    }
    return code;
}

/// The first code block at or behind a line.
QByteArray BlockBehind(const QStringList& lines, qsizetype from)
{
    QByteArray content;
    int former = 0;
    for (const CodeLine& line : CodeLines(lines, from)) {
        if (former != 0 && line.number != former + 1) break;
        former = line.number;
        content += line.text.toUtf8() + '\n';
    }
    return content;
}

QString ReadText(const QString& path)
{
    QFile file(InSourceTree(path));
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + path.toStdString());
    return QString::fromUtf8(file.readAll());
}

} // namespace

Document::Document(const QString& path) : m_path(path), m_text(ReadText(path)) {}

QList<ShownCommand> Document::Commands() const
{
    QList<ShownCommand> commands;
    for (const CodeLine& line : CodeLines(m_text.split(u'\n'))) {
        const QStringList words = line.text.contains(u'：') ? QStringList() : SplitWords(line.text);
        if (!words.isEmpty() && Programs.contains(words.first())) commands.append({line.number, words});
    }
    return commands;
}

QList<ShownFile> Document::Files() const
{
    static const QRegularExpression mark(u"^<!-- file: (\\S+) -->$"_s);
    const QStringList lines = m_text.split(u'\n');
    QList<ShownFile> files;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch match = mark.match(lines[i]);
        if (match.hasMatch()) files.append({match.captured(1), BlockBehind(lines, i + 1)});
    }
    return files;
}

QStringList Document::Quotes() const
{
    static const QRegularExpression quote(u"「([^」]*)」"_s);
    QStringList quotes;
    for (const QRegularExpressionMatch& match : quote.globalMatch(m_text))
        quotes.append(match.captured(1));
    return quotes;
}

QStringList Document::Targets(bool pictures) const
{
    static const QRegularExpression link(u"(!?)\\[[^\\]]*\\]\\(([^)#\\s]+)[^)]*\\)"_s);
    QStringList targets;
    for (const QRegularExpressionMatch& match : link.globalMatch(m_text)) {
        const bool isPicture = !match.captured(1).isEmpty();
        if (isPicture == pictures && !match.captured(2).contains(u"://")) targets.append(match.captured(2));
    }
    return targets;
}

QStringList DocumentPaths()
{
    QStringList paths{u"README.md"_s, u"README.zh-CN.md"_s, u"CONTRIBUTING.md"_s, u"samples/README.md"_s};
    const QString root = InSourceTree({});
    QDirIterator walk(InSourceTree(u"docs"_s), {u"*.md"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        paths.append(walk.next().mid(root.size()));
    paths.sort();
    return paths;
}

QStringList SplitWords(const QString& line)
{
    QStringList words;
    QString word;
    bool inWord = false;
    QChar quote;
    for (const QChar c : line + u' ') {
        if (!quote.isNull()) {
            if (c == quote)
                quote = {};
            else
                word += c;
        } else if (c == u'\'' || c == u'"') {
            quote = c;
            inWord = true;
        } else if (c == u'#' && !inWord) {
            break;
        } else if (!c.isSpace()) {
            word += c;
            inWord = true;
        } else if (std::exchange(inWord, false)) {
            words.append(std::exchange(word, {}));
        }
    }
    return words;
}

} // namespace test
