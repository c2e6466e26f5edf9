#include "editor/dialogs/TextDifference.h"

#include "platform/Encoding.h"
#include "shared/ChangeText.h"
#include "shared/RuleChanges.h"

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Beyond this many lines a window shows what nobody reads.
constexpr qsizetype LongestText = 5000;

const CString NoDifference = u"没有不同。"_s;

CString Shortened(CStringArray lines)
{
    if (lines.size() > LongestText) {
        lines = lines.first(LongestText);
        lines.append(u"…（其余不列）"_s);
    }
    return lines.join(u'\n');
}

// What does not decode is shown as well as can be: a damaged file has a history, too.
CStringArray Lines(const QByteArray& bytes)
{
    const auto text = platform::Decode(bytes, platform::GuessEncoding(bytes));
    return text.value_or(CString::fromUtf8(bytes)).split(u'\n');
}

} // namespace

CString DescribeRuleDifference(const QByteArray& before, const QByteArray& after)
{
    if (before == after) return NoDifference;
    const auto lines = shared::RuleChangeLines(before, after);
    return lines ? Shortened(*lines)
                 : u"不能作为规则文件读出，显示原文的不同：\n"_s + DescribeDifference(before, after);
}

CString DescribeDifference(const QByteArray& before, const QByteArray& after)
{
    if (before == after) return NoDifference;
    return Shortened(shared::DescribeChanges(shared::CompareLines(Lines(before), Lines(after))).split(u'\n'));
}

} // namespace editor
