#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace test {

/// A command that a document shows, and where.
struct ShownCommand
{
    int line = 0; ///< from 1
    QStringList words;
};

/// A file that a document gives the content of.
struct ShownFile
{
    QString name;
    QByteArray content;
};

/// A document of the source tree, and what can be tried of it. docs/documents.md tells the conventions.
class Document
{
public:
    /// `path` is relative to the source tree.
    explicit Document(const QString& path);

    const QString& Path() const noexcept { return m_path; }
    const QString& Text() const noexcept { return m_text; }

    /// The lines of code blocks, indented or fenced, whose first word is the name of a program of this
    /// project or `rm`. A line with a full-width colon is what a program says and no command.
    QList<ShownCommand> Commands() const;
    /// The code blocks behind a comment `<!-- file: NAME -->`.
    QList<ShownFile> Files() const;
    /// The targets of pictures and of other links, relative to the document as they stand; none of the web.
    QStringList Pictures() const { return Targets(true); }
    QStringList Links() const { return Targets(false); }
    /// The texts in corner brackets 「」: what a program shows.
    QStringList Quotes() const;

private:
    QStringList Targets(bool pictures) const;

    QString m_path;
    QString m_text;
};

/// README files, everything below docs/ and the description of the samples, relative to the source tree.
QStringList DocumentPaths();

/// The words of a shell line: separated by blanks, in single or double quotes held together, up to a comment.
QStringList SplitWords(const QString& line);

} // namespace test
