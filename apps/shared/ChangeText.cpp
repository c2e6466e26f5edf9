#include "shared/ChangeText.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

/// Files of this program are indented with tabs, a dozen deep: as wide as tabs are shown, they push the text
/// out of sight.
CString WithNarrowTabs(const CString& line)
{
    qsizetype tabs = 0;
    while (tabs < line.size() && line[tabs] == u'\t')
        ++tabs;
    return CString(2 * tabs, u' ') + line.mid(tabs);
}

qsizetype LeadingBlanks(const CString& line)
{
    qsizetype blanks = 0;
    while (blanks < line.size() && line[blanks] == u' ')
        ++blanks;
    return blanks;
}

CArray<LineChange> WithNarrowTabs(CArray<LineChange> changes)
{
    for (LineChange& change : changes)
        for (CStringArray* const lines : {&change.removed, &change.added})
            for (CString& line : *lines)
                line = WithNarrowTabs(line);
    return changes;
}

} // namespace

CString DescribeChanges(const CArray<LineChange>& given)
{
    const CArray<LineChange> changes = WithNarrowTabs(given);
    qsizetype margin = std::numeric_limits<qsizetype>::max();
    for (const LineChange& change : changes)
        for (const CString& line : change.removed + change.added)
            margin = std::min(margin, LeadingBlanks(line));
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
