#include "rules/compare/DifferenceText.h"

#include "rules/compare/Content.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

const CString BillWord = u"清单"_s;
const CString QuotaWord = u"定额"_s;

CString Quoted(const CString& text)
{
    return text.isEmpty() ? u"（空）"_s : text;
}

/// What people call a field of an item.
CString FieldWord(const CString& field)
{
    static const std::map<CString, CString> Words{
        {u"strQdId"_s, u"编码"_s},         {u"strDeId"_s, u"编码"_s},         {u"strName"_s, u"名称"_s},
        {u"strUnit"_s, u"单位"_s},         {u"strUnitCode"_s, u"单位倍数"_s}, {u"strFormula"_s, u"工程量"_s},
        {u"strAnnex"_s, u"带管道配件"_s},  {u"strQdCode"_s, u"清单库"_s},     {u"strDeCode"_s, u"定额库"_s},
        {u"strQdIdUser"_s, u"用户编码"_s}, {u"strtypeid"_s, u"类型"_s}};
    return Words.at(field);
}

const CString& NumberOf(const BillItem& item)
{
    return item.record.strQdId;
}
const CString& NumberOf(const QuotaItem& item)
{
    return item.record.strDeId;
}
const CString& WordOf(const BillItem&)
{
    return BillWord;
}
const CString& WordOf(const QuotaItem&)
{
    return QuotaWord;
}
const auto& FieldsOf(const BillItem&)
{
    return QdFields;
}
const auto& FieldsOf(const QuotaItem&)
{
    return DeFields;
}

/// 清单 030801001 镀锌钢管（m）：管道长度
template <typename Item>
CString ItemText(const Item& item)
{
    CString text = u"%1 %2 %3"_s.arg(WordOf(item), NumberOf(item), item.record.strName);
    if (!item.record.strUnit.isEmpty()) text += u"（%1）"_s.arg(item.record.strUnit);
    if (!item.record.strFormula.isEmpty()) text += u"："_s + item.record.strFormula;
    return text;
}

/// Which part of one list is which of another: of the same content first, then what `isSame` says, in order.
template <typename Part, typename IsSame>
std::vector<std::pair<const Part*, const Part*>> PairParts(const std::vector<Part>& before,
                                                           const std::vector<Part>& after, IsSame isSame)
{
    std::vector<std::pair<const Part*, const Part*>> pairs;
    std::vector<const Part*> formers;
    std::vector<const Part*> partners(after.size(), nullptr);
    const auto takePartner = [&](const Part& part, auto fits) {
        for (std::size_t j = 0; j < after.size(); ++j) {
            if (partners[j] != nullptr || !fits(part, after[j])) continue;
            partners[j] = &part;
            return true;
        }
        return false;
    };
    for (const Part& part : before)
        if (!takePartner(part, [](const Part& a, const Part& b) { return HasSameContent(a, b); }))
            formers.push_back(&part);
    for (const Part* part : formers)
        if (!takePartner(*part, isSame)) pairs.push_back({part, nullptr});
    for (std::size_t j = 0; j < after.size(); ++j)
        pairs.push_back({partners[j], &after[j]});
    return pairs;
}

template <typename Part>
bool IsSameOrder(const std::vector<std::pair<const Part*, const Part*>>& pairs)
{
    const Part* last = nullptr;
    for (const auto& [before, after] : pairs) {
        if (before == nullptr || after == nullptr) continue;
        if (last != nullptr && before < last) return false;
        last = before;
    }
    return true;
}

void TellConditions(const Rule& before, const Rule& after, CStringArray& lines)
{
    const auto pairs =
        PairParts(before.conditions, after.conditions,
                  [](const Condition& a, const Condition& b) { return a.attribute == b.attribute; });
    for (const auto& [former, present] : pairs) {
        if (present == nullptr)
            lines += u"去掉条件 "_s + former->Text();
        else if (former == nullptr)
            lines += u"加上条件 "_s + present->Text();
        else if (former->Text() != present->Text())
            lines += u"条件 %1 改为 %2"_s.arg(former->Text(), present->Text());
        else if (!HasSameContent(*former, *present))
            lines += u"条件 %1 不显示的内容变了"_s.arg(present->Text());
    }
    if (!IsSameOrder(pairs)) lines += u"条件的次序变了"_s;
}

template <typename Item>
void TellItems(const std::vector<Item>& before, const std::vector<Item>& after, const CString& indent,
               CStringArray& lines);

void TellQuotasBelow(const BillItem& before, const BillItem& after, const CString& indent,
                     CStringArray& lines)
{
    TellItems(before.quotas, after.quotas, indent, lines);
}
void TellQuotasBelow(const QuotaItem&, const QuotaItem&, const CString&, CStringArray&) {}

void ListQuotasBelow(const BillItem& item, const CString& indent, CStringArray& lines)
{
    for (const QuotaItem& quota : item.quotas)
        lines += indent + ItemText(quota);
}
void ListQuotasBelow(const QuotaItem&, const CString&, CStringArray&) {}

template <typename Item>
CString ChangedFields(const Item& before, const Item& after)
{
    CStringArray changes;
    for (const auto& [name, field] : FieldsOf(after)) {
        const CString& former = before.record.*field;
        const CString& present = after.record.*field;
        if (former != present)
            changes += u"%1 %2 改为 %3"_s.arg(FieldWord(name), Quoted(former), Quoted(present));
    }
    return changes.join(u"，"_s);
}

template <typename Item>
void TellItem(const Item* before, const Item* after, const CString& indent, CStringArray& lines)
{
    const CString below = indent + u"  "_s;
    if (after == nullptr) {
        lines += indent + u"去掉"_s + ItemText(*before);
    } else if (before == nullptr) {
        lines += indent + u"加上"_s + ItemText(*after);
        ListQuotasBelow(*after, below, lines);
    } else if (!HasSameContent(*before, *after)) {
        const CString fields = ChangedFields(*before, *after);
        CString line = indent + u"%1 %2 %3"_s.arg(WordOf(*after), NumberOf(*after), after->record.strName);
        if (!fields.isEmpty()) line += u"："_s + fields;
        lines += line;
        TellQuotasBelow(*before, *after, below, lines);
    }
}

template <typename Item>
void TellItems(const std::vector<Item>& before, const std::vector<Item>& after, const CString& indent,
               CStringArray& lines)
{
    const auto pairs =
        PairParts(before, after, [](const Item& a, const Item& b) { return NumberOf(a) == NumberOf(b); });
    for (const auto& [former, present] : pairs)
        TellItem(former, present, indent, lines);
    if (!IsSameOrder(pairs) && !after.empty())
        lines += indent + u"%1项的次序变了"_s.arg(WordOf(after.front()));
}

CString RuleName(const Rule& rule)
{
    const CString text = rule.Text();
    return text.isEmpty() ? u"（无条件）"_s : text;
}

void AddCount(CStringArray& parts, const CString& text, std::size_t count)
{
    if (count > 0) parts += text.arg(count);
}

} // namespace

CString Headline(const CategoryDifference& category, const RuleDifference& rule)
{
    const CString name = RuleName(category.RuleOf(rule));
    if (rule.IsAdded()) return u"加了第 %1 条：%2"_s.arg(rule.after + 1).arg(name);
    if (rule.IsRemoved()) return u"删了原第 %1 条：%2"_s.arg(rule.before + 1).arg(name);
    CString place = u"第 %1 条"_s.arg(rule.after + 1);
    if (rule.isMoved) place += u"（从第 %1 条移来）"_s.arg(rule.before + 1);
    return (rule.isChanged ? u"改了"_s : u"移动了"_s) + place + u"："_s + name;
}

CStringArray ItemLines(const Rule& rule)
{
    CStringArray lines;
    for (const BillItem& item : rule.bills) {
        lines += ItemText(item);
        ListQuotasBelow(item, u"  "_s, lines);
    }
    for (const QuotaItem& item : rule.quotas)
        lines += ItemText(item);
    return lines;
}

CStringArray DetailsBetween(const Rule& before, const Rule& after)
{
    CStringArray lines;
    if (before.isDefault != after.isDefault)
        lines += after.isDefault ? u"成了默认规则"_s : u"不再是默认规则"_s;
    TellConditions(before, after, lines);
    TellItems(before.bills, after.bills, {}, lines);
    TellItems(before.quotas, after.quotas, {}, lines);
    return lines;
}

CStringArray Details(const CategoryDifference& category, const RuleDifference& rule)
{
    if (rule.IsAdded() || rule.IsRemoved()) return ItemLines(category.RuleOf(rule));
    if (!rule.isChanged) return {};
    return DetailsBetween(category.before->rules[static_cast<std::size_t>(rule.before)],
                          category.RuleOf(rule));
}

CStringArray SummaryLines(const Comparison& comparison)
{
    CStringArray counts;
    AddCount(counts, u"加了 %1 条"_s, comparison.Added());
    AddCount(counts, u"删了 %1 条"_s, comparison.Removed());
    AddCount(counts, u"改了 %1 条"_s, comparison.Changed());
    AddCount(counts, u"移动了 %1 条"_s, comparison.Moved());
    CStringArray lines;
    lines += counts.isEmpty() ? u"规则没有差别。"_s : u"规则："_s + counts.join(u"，"_s) + u"。"_s;
    if (comparison.renumbered > 0) lines += u"另有 %1 条规则只换了编号。"_s.arg(comparison.renumbered);
    if (comparison.completed > 0)
        lines += u"补上了 %1 个小类的空默认规则（打开并关闭配置就会补上）。"_s.arg(comparison.completed);
    if (comparison.dropped > 0) lines += u"少了 %1 个小类，它们只有空的默认规则。"_s.arg(comparison.dropped);
    return lines;
}

CStringArray DifferenceLines(const Comparison& comparison)
{
    CStringArray lines;
    for (const CategoryDifference& category : comparison.categories) {
        lines += category.text;
        for (const RuleDifference& rule : category.rules) {
            lines += u"  "_s + Headline(category, rule);
            for (const CString& detail : Details(category, rule))
                lines += u"      "_s + detail;
        }
        lines += CString();
    }
    return lines + SummaryLines(comparison);
}

} // namespace rules
