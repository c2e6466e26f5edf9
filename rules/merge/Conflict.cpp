#include "rules/merge/Conflict.h"

#include "rules/compare/DifferenceText.h"

using namespace Qt::StringLiterals;

namespace rules {

namespace {

CString RuleText(const std::optional<Rule>& rule)
{
    if (!rule) return u"（删了）"_s;
    const CString text = rule->Text();
    return text.isEmpty() ? u"（无条件）"_s : text;
}

/// What one side says, under a heading.
CString SideText(const CString& word, const Conflict& conflict, const std::optional<Rule>& rule, int place)
{
    CString text = u"  %1："_s.arg(word);
    if (!rule) return text + u"删了这条规则\n"_s;
    if (conflict.kind == ConflictKind::Moved) return text + u"移到第 %1 条\n"_s.arg(place + 1);
    text += u"第 %1 条 %2\n"_s.arg(place + 1).arg(RuleText(rule));
    const CStringArray lines = conflict.base ? DetailsBetween(*conflict.base, *rule) : ItemLines(*rule);
    for (const CString& line : lines)
        text += u"      "_s + line + u'\n';
    return text;
}

CString KindText(ConflictKind kind)
{
    switch (kind) {
    case ConflictKind::Changed:
        return u"两边都改了"_s;
    case ConflictKind::Removed:
        return u"一边改了，另一边删了"_s;
    case ConflictKind::AddedTwice:
        return u"两边各加了条件相同的规则，内容不同"_s;
    case ConflictKind::Moved:
        break;
    }
    return u"两边移到了不同的位置"_s;
}

} // namespace

CString Conflict::Describe() const
{
    const std::optional<Rule>& known = base ? base : mine;
    return u"%1：%2：%3\n"_s.arg(category, KindText(kind), RuleText(known)) +
           SideText(u"我方"_s, *this, mine, minePlace) + SideText(u"对方"_s, *this, theirs, theirsPlace);
}

} // namespace rules
