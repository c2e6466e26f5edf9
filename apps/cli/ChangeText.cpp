#include "cli/ChangeText.h"

#include "cli/Failure.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace cli {

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

CStringArray LinesOf(const CString& path)
{
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw platform::FileError(path, reason);
    return TextOf(*bytes, platform::ToNative(path)).split(u'\n');
}

CString TextOf(const QByteArray& bytes, const CString& name)
{
    const auto text = platform::Decode(bytes, platform::GuessEncoding(bytes));
    if (!text) throw Refusal(name + u"：不是文本，显示不了"_s);
    return *text;
}

} // namespace cli
