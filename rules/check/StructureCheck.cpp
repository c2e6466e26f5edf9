#include "rules/check/CheckParts.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

using Kind = StructureNote::Kind;

/// What the entries of a list are to people.
CString EntryText(FileLevel level)
{
    switch (level) {
    case FileLevel::Root:
        return u"专业"_s;
    case FileLevel::Specialty:
        return u"大类"_s;
    case FileLevel::BigCategory:
        return u"小类"_s;
    case FileLevel::RuleList:
        return u"规则"_s;
    case FileLevel::ConditionList:
        return u"条件"_s;
    case FileLevel::BillList:
        return u"清单"_s;
    case FileLevel::QuotaList:
        return u"定额"_s;
    default:
        return u"内容"_s;
    }
}

bool IsOfCategories(FileLevel level)
{
    return level == FileLevel::Root || level == FileLevel::Specialty || level == FileLevel::BigCategory;
}

/// Whether what stands at that level belongs to one rule, or is one.
bool IsOfRule(FileLevel level)
{
    return !IsOfCategories(level) && level != FileLevel::SmallCategory;
}

CString RepeatedText(const StructureNote& note)
{
    const CString what = IsOfCategories(note.level) ? EntryText(note.level) : u"元素"_s;
    return u"%1“%2”在文件中有两段，只有第一段会被读到，另一段下次保存时丢失"_s.arg(what, note.element);
}

CString UnknownText(const StructureNote& note)
{
    const CString entry = EntryText(note.level);
    switch (note.kind) {
    case Kind::Unnamed:
        return u"有一个%1没有名称（元素“%2”），不会被读到，下次保存时丢失"_s.arg(entry, note.element);
    case Kind::NoElement:
        return u"有一处注释或文字，会被读成一条空的%1"_s.arg(entry);
    default:
        return note.isRead ? u"元素“%1”的名称不对，仍会按%2读"_s.arg(note.element, entry)
                           : u"元素“%1”不会被读到，下次保存时丢失"_s.arg(note.element);
    }
}

void TellNote(const StructureNote& note, FindingList& findings)
{
    FindingCode code = FindingCode::UnknownElement;
    CString text;
    std::optional<Mend> mend;
    if (note.kind == Kind::NoDefault) {
        code = FindingCode::NoDefault;
        text = u"这个小类没有默认规则，下次保存时会补上一条空的"_s;
        mend = Mend{.op = u"Save"_s};
    } else if (note.kind == Kind::Repeated) {
        code = FindingCode::RepeatedElement;
        text = RepeatedText(note);
    } else {
        text = UnknownText(note);
    }
    Finding& finding = findings.Add(code, note.category, text);
    // What stands beside the list of the rules is about none of them, whatever rule was read last.
    if (IsOfRule(note.level)) {
        finding.position = note.position;
        finding.ruleId = note.ruleId;
    }
    finding.mend = std::move(mend);
}

std::size_t RulesIn(const BigCategory& big)
{
    std::size_t count = 0;
    for (const SmallCategoryPtr& small : big.smallCategories)
        count += small->rules.size();
    return count;
}

void TellLoss(const CString& category, std::size_t rules, FindingList& findings)
{
    findings.Add(FindingCode::UnknownCategory, category,
                 u"工程的类别里没有它，下次保存这个专业时它的 %1 条规则会丢失"_s.arg(rules));
}

/// What stands in the file and not among the host's categories, the highest level of it.
void TellUnknown(const Configuration& configuration, const CheckFacts& facts, FindingList& findings)
{
    if (facts.categories.empty()) return;
    const auto hasBelow = [&](const CString& text) {
        const auto next = facts.categories.lower_bound(text + u'\\');
        return next != facts.categories.end() && next->first.startsWith(text + u'\\');
    };
    for (const Specialty& specialty : configuration.Specialties()) {
        if (!facts.specialties.contains(specialty.name)) {
            findings.Add(FindingCode::UnknownCategory, specialty.name, u"工程没有这个专业，它的规则用不上"_s);
            continue;
        }
        for (const BigCategory& big : specialty.bigCategories) {
            const CString bigText = specialty.name + u'\\' + big.name;
            if (!hasBelow(bigText)) {
                TellLoss(bigText, RulesIn(big), findings);
                continue;
            }
            for (const SmallCategoryPtr& small : big.smallCategories)
                if (!facts.categories.contains(small->text))
                    TellLoss(small->text, small->rules.size(), findings);
        }
    }
}

/// Calls `tell` with every entry whose id another one before it has.
template <typename Entry, typename Tell>
void EachRepeated(const std::vector<Entry>& entries, Tell tell)
{
    if (entries.size() < 2) return;
    std::map<int, std::size_t> first;
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (const auto [place, isNew] = first.try_emplace(entries[i].id, i); !isNew) tell(i, place->second);
}

template <typename Entry>
void TellRepeated(const SmallCategory& category, std::size_t rule, const std::vector<Entry>& entries,
                  const CString& what, FindingList& findings)
{
    bool isTold = false;
    EachRepeated(entries, [&](std::size_t i, std::size_t) {
        if (isTold) return;
        isTold = true;
        findings.Add(
            FindingCode::RepeatedId, category, rule,
            u"这条规则有两个%1的编号都是 %2，改动其中一个时只会改到前一个"_s.arg(what).arg(entries[i].id));
    });
}

void CheckIds(const SmallCategory& category, FindingList& findings)
{
    EachRepeated(category.rules, [&](std::size_t rule, std::size_t first) {
        findings
            .Add(FindingCode::RepeatedId, category, rule,
                 u"规则编号 %1 与第 %2 条相同，改动这一条时只会改到那一条"_s.arg(category.rules[rule].id)
                     .arg(first + 1))
            .others = {static_cast<int>(first) + 1};
    });
    for (std::size_t index = 0; index < category.rules.size(); ++index) {
        const Rule& rule = category.rules[index];
        TellRepeated(category, index, rule.conditions, u"条件"_s, findings);
        TellRepeated(category, index, rule.bills, u"清单"_s, findings);
        TellRepeated(category, index, rule.quotas, u"定额"_s, findings);
        for (const BillItem& bill : rule.bills)
            TellRepeated(category, index, bill.quotas, u"定额"_s, findings);
    }
}

} // namespace

void CheckList(const SmallCategory& category, FindingList& findings)
{
    const std::vector<Rule>& rules = category.rules;
    std::optional<std::size_t> first;
    for (std::size_t rule = 0; rule < rules.size(); ++rule) {
        if (!rules[rule].isDefault) continue;
        if (!first) {
            first = rule;
            continue;
        }
        Finding& finding = findings.Add(FindingCode::SeveralDefaults, category, rule,
                                        u"还有一条默认规则，只有第 %1 条会适用"_s.arg(*first + 1));
        finding.others = {static_cast<int>(*first) + 1};
        if (IsReached(category, rule)) finding.mend = Mend{.op = u"DelConfig"_s, .configId = rules[rule].id};
    }
    if (first && !rules.back().isDefault)
        findings.Add(FindingCode::DefaultNotLast, category, *first,
                     u"默认规则不在最后。它照样最后才用，但编辑器把最后一条当作不能移动的那条"_s);
    CheckIds(category, findings);
}

void CheckStructure(const Configuration& configuration, const FileStructure& structure,
                    const CheckFacts& facts, FindingList& findings)
{
    for (const StructureNote& note : structure)
        TellNote(note, findings);
    TellUnknown(configuration, facts, findings);
}

} // namespace rules
