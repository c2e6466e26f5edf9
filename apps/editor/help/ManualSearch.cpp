#include "editor/help/ManualSearch.h"

#include <QtGui/QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Characters of the line that are shown before and behind what was found.
constexpr int LineBefore = 8;
constexpr int LineBehind = 24;

bool EndsLine(QChar c)
{
    return c == QChar::ParagraphSeparator || c == QChar::LineSeparator || c == u'\n' || c == QChar(0xfdd0) ||
           c == QChar(0xfdd1); // the edges of a table's cells
}

} // namespace

QList<ManualHits> FindInManual(const ManualPages& pages, const QString& words)
{
    QList<ManualHits> hits;
    if (words.isEmpty()) return hits;
    for (const ManualPage& page : pages.Pages()) {
        ManualHits found{&page, {}};
        for (qsizetype at = page.text.indexOf(words, 0, Qt::CaseInsensitive); at >= 0;
             at = page.text.indexOf(words, at + words.size(), Qt::CaseInsensitive))
            found.places.append(static_cast<int>(at));
        if (!found.places.isEmpty()) hits.append(found);
    }
    return hits;
}

QString LineAround(const ManualPage& page, int place, int length)
{
    qsizetype first = place;
    while (first > 0 && place - first < LineBefore && !EndsLine(page.text[first - 1]))
        --first;
    qsizetype end = place + length;
    while (end < page.text.size() && end - place - length < LineBehind && !EndsLine(page.text[end]))
        ++end;
    const bool isCutBefore = first > 0 && !EndsLine(page.text[first - 1]);
    const bool isCutBehind = end < page.text.size() && !EndsLine(page.text[end]);
    QString line = page.text.mid(first, end - first);
    line.remove(QChar::ObjectReplacementCharacter);
    return (isCutBefore ? u"…"_s : QString()) + line.simplified() + (isCutBehind ? u"…"_s : QString());
}

} // namespace editor
