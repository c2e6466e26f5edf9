#include "shared/ChangeText.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

qsizetype Indentation(const CString& line)
{
    qsizetype blanks = 0;
    while (blanks < line.size() && line[blanks] == u' ')
        ++blanks;
    return blanks;
}

} // namespace

CString DescribeChanges(const CArray<LineChange>& changes)
{
    qsizetype margin = std::numeric_limits<qsizetype>::max();
    for (const LineChange& change : changes)
        for (const CString& line : change.removed + change.added)
            margin = std::min(margin, Indentation(line));
    CString text;
    for (const LineChange& change : changes) {
        text += u"  第 %1 行：删去 %2 行，加入 %3 行\n"_s.arg(change.line)
                    .arg(change.removed.size())
                    .arg(change.added.size());
        for (const CString& line : change.removed)
            text += u"  - "_s + line.mid(margin) + u'\n';
        for (const CString& line : change.added)
            text += u"  + "_s + line.mid(margin) + u'\n';
    }
    return text;
}

} // namespace shared
