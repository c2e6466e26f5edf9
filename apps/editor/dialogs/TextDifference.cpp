#include "editor/dialogs/TextDifference.h"

#include "platform/Encoding.h"
#include "shared/ChangeText.h"

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Beyond this many lines a window shows what nobody reads.
constexpr qsizetype LongestText = 5000;

// What does not decode is shown as well as can be: a damaged file has a history, too.
CStringArray Lines(const QByteArray& bytes)
{
    const auto text = platform::Decode(bytes, platform::GuessEncoding(bytes));
    return text.value_or(CString::fromUtf8(bytes)).split(u'\n');
}

} // namespace

CString DescribeDifference(const QByteArray& before, const QByteArray& after)
{
    if (before == after) return u"没有不同。"_s;
    CStringArray text =
        shared::DescribeChanges(shared::CompareLines(Lines(before), Lines(after))).split(u'\n');
    if (text.size() > LongestText) {
        text = text.first(LongestText);
        text.append(u"…（其余不列）"_s);
    }
    return text.join(u'\n');
}

} // namespace editor
