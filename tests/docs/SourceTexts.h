#pragma once

#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace test {

/// A text literal of C++ source, adjacent pieces joined and escapes resolved, and the names of the calls and
/// function bodies around it, the innermost last.
struct SourceLiteral
{
    QString text;
    QStringList around;
};

QList<SourceLiteral> LiteralsOf(const QString& source);

/// A text as a person sees it: without the mark of a mnemonic, with "…" for what the program fills in, blanks
/// and line ends alike, and without the punctuation that windows and boxes put behind.
QString AsSeen(QString text);

/// What the programs with windows can show, as seen: every literal of their sources.
QSet<QString> TextsOfWindows();

/// Of these, what a box shows with a "!" behind it: what is said by a warning, and what has the mark itself.
QSet<QString> WarningsOfWindows();

/// What can come up in a box, or in the place of a window that tells why something is refused. The reasons
/// for which an import refuses a row are not among them: they tell themselves what to do.
QSet<QString> MessagesOfWindows();

} // namespace test
