#include "rules/draft/EditTools.h"
#include "rules/draft/PartNumbers.h"
#include "rules/draft/RuleEdits.h"
#include "rules/draft/Wording.h"
#include "rules/match/CellText.h"

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// What a category's attributes can be asked for.
class KnownAttributes
{
public:
    /// `facts` must outlive this.
    KnownAttributes(const CString& category, const CategoryFacts& facts) : m_category(category)
    {
        for (const AttributeFacts& fact : facts)
            m_facts.try_emplace(Normalised(fact.name), &fact);
    }

    /// Why the category's editor would not have offered the condition; nothing when it would.
    std::optional<CString> Misfit(const Condition& condition) const
    {
        const CString name = Normalised(condition.attribute);
        if (m_facts.empty() || name == OwnName) return std::nullopt;
        const auto found = m_facts.find(name);
        if (found == m_facts.end()) return u"%1没有属性“%2”"_s.arg(m_category, condition.attribute);
        const AttributeFacts& fact = *found->second;
        if (!condition.isValueForm)
            return fact.allowsRange ? std::nullopt
                                    : std::optional(u"“%1”只能取值，不能写范围：%2"_s.arg(condition.attribute,
                                                                                          condition.Text()));
        const bool isListed =
            fact.valueList.isEmpty() || WithoutBlanks(condition.value).isEmpty() ||
            std::any_of(fact.valueList.begin(), fact.valueList.end(),
                        [&](const CString& value) { return IsSameValue(value, condition.value); });
        if (isListed) return std::nullopt;
        return u"“%1”的值列表里没有“%2”"_s.arg(condition.attribute, condition.value);
    }

private:
    CString m_category;
    std::map<CString, const AttributeFacts*> m_facts;
};

bool HasItems(const Rule& rule)
{
    return !rule.bills.empty() || !rule.quotas.empty();
}

/// Copies on their way into a category.
class Copies
{
public:
    Copies(const SmallCategory& target, std::vector<Misfit>& misfits) : m_target(target), m_misfits(misfits)
    {
        const auto found = std::find_if(target.rules.begin(), target.rules.end(),
                                        [](const Rule& rule) { return rule.isDefault; });
        m_defaultPlace = static_cast<std::size_t>(found - target.rules.begin());
    }

    /// `facts` are null where all goes that the rules have.
    void Add(const Rule& rule, const KnownAttributes* facts)
    {
        const std::size_t index = m_count++;
        if (rule.isDefault) {
            if (HasItems(rule) && !TakeDefault(rule))
                m_misfits.push_back({index, u"%1已有默认规则，没有再复制"_s.arg(m_target.name)});
            return;
        }
        m_copies.push_back(rule);
        if (facts == nullptr) return;
        for (const Condition& condition : rule.conditions)
            if (auto text = facts->Misfit(condition)) m_misfits.push_back({index, *std::move(text)});
    }

    Edit Insert(const std::vector<int>& ids, std::size_t position, const CString& where)
    {
        const std::size_t count = m_copies.size() + (m_default ? 1 : 0);
        Edit edit{Counted(u"复制"_s, count) + where, {}};
        ListChange change(m_target);
        for (std::size_t i = 0; i <= m_target.rules.size(); ++i) {
            if (i == position) PutCopies(ids, change);
            if (i == m_defaultPlace && m_default)
                change.Put(std::move(*m_default));
            else if (i < m_target.rules.size())
                change.Keep(i);
        }
        change.AppendTo(edit);
        return edit;
    }

    std::size_t Count() const noexcept { return m_copies.size(); }

private:
    bool TakeDefault(const Rule& rule)
    {
        if (m_default || m_defaultPlace == m_target.rules.size()) return false;
        const Rule& present = m_target.rules[m_defaultPlace];
        if (HasItems(present)) return false;
        m_default = present;
        m_default->bills = rule.bills;
        m_default->quotas = rule.quotas;
        NumberParts(*m_default, present);
        return true;
    }

    void PutCopies(const std::vector<int>& ids, ListChange& change)
    {
        for (std::size_t i = 0; i < m_copies.size(); ++i) {
            NumberAnew(m_copies[i]);
            m_copies[i].id = ids[i];
            change.Put(std::move(m_copies[i]));
        }
    }

    const SmallCategory& m_target;
    std::vector<Misfit>& m_misfits;
    std::size_t m_defaultPlace = 0; ///< of the target's default rule, or the end
    std::optional<Rule> m_default;  ///< what that becomes
    std::vector<Rule> m_copies;
    std::size_t m_count = 0;
};

} // namespace

Edit CopyRules(const Draft& draft, const CString& from, const std::vector<std::size_t>& positions,
               const CString& to, std::size_t position, const CategoryFacts& facts,
               std::vector<Misfit>& misfits)
{
    const SmallCategoryPtr source = CategoryOf(draft, from);
    const SmallCategoryPtr target = CategoryOf(draft, to);
    if (position > target->rules.size()) throw std::out_of_range("the list ends before that position");
    const KnownAttributes known(target->name, facts);
    Copies copies(*target, misfits);
    for (const std::size_t place : PlacesIn(*source, positions))
        copies.Add(source->rules[place], from == to ? nullptr : &known);
    return copies.Insert(draft.FreshIds(to, copies.Count()), std::min(position, EndOf(*target)),
                         from == to ? CString() : u"到 "_s + target->name);
}

Edit PasteRules(const Draft& draft, const std::vector<Rule>& rules, const CString& to, std::size_t position,
                const CategoryFacts& facts, std::vector<Misfit>& misfits)
{
    const SmallCategoryPtr target = CategoryOf(draft, to);
    if (position > target->rules.size()) throw std::out_of_range("the list ends before that position");
    const KnownAttributes known(target->name, facts);
    Copies copies(*target, misfits);
    for (const Rule& rule : rules)
        copies.Add(rule, &known);
    Edit edit =
        copies.Insert(draft.FreshIds(to, copies.Count()), std::min(position, EndOf(*target)), CString());
    edit.text = u"粘贴 %1 条规则"_s.arg(rules.size());
    return edit;
}

} // namespace rules
