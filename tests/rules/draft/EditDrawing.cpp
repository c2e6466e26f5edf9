#include "rules/draft/EditDrawing.h"

#include "rules/compare/Content.h"
#include "rules/draft/RuleEdits.h"
#include "rules/draft/Series.h"

#include <QtCore/QtGlobal>

#include <cstdio>
#include <random>

using namespace Qt::StringLiterals;
using rules::Condition;
using rules::Draft;
using rules::Edit;
using rules::Rule;

namespace test {

namespace {

/// In another order than a set has them.
std::vector<std::size_t> Backwards(const PlainRules::Positions& positions)
{
    return {positions.rbegin(), positions.rend()};
}

rules::RulePlaces Backwards(const PlainRules::Places& places)
{
    rules::RulePlaces backwards;
    for (const auto& [category, positions] : places)
        backwards.emplace(category, Backwards(positions));
    return backwards;
}

const std::vector<Rule> BareDefaultAlone{rules::BareDefault()};

} // namespace

int EditsAsked(int usual)
{
    const int asked = qEnvironmentVariableIntValue("KTQDDE_EDITS");
    return asked > 0 ? asked : usual;
}

unsigned EditSeed()
{
    const unsigned seed = qEnvironmentVariableIsSet("KTQDDE_EDIT_SEED")
                              ? qEnvironmentVariable("KTQDDE_EDIT_SEED").toUInt()
                              : std::random_device{}();
    std::printf("seed %u\n", seed);
    return seed;
}

PlainRules::Lists ListsIn(const std::vector<CString>& categories, const rules::Configuration& configuration)
{
    PlainRules::Lists lists;
    for (const CString& category : categories) {
        const rules::SmallCategoryPtr found = configuration.Find(category);
        lists[category] = found ? found->rules : BareDefaultAlone;
    }
    return lists;
}

rules::Configuration ConfigurationOfLists(const PlainRules::Lists& lists)
{
    std::vector<rules::SmallCategoryPtr> categories;
    for (const auto& [category, list] : lists)
        if (list != BareDefaultAlone) categories.push_back(SmallOf(category.split(u'\\').back(), list));
    return ConfigurationOf(categories);
}

Edit EditDrawing::Draw(const Draft& draft, PlainRules& plain)
{
    Dice& dice = m_drawing.Random();
    const CString& category = dice.Of(m_categories);
    // Lists that have grown long are mostly made shorter.
    const std::size_t kind = plain.In(category).size() > 25 ? 2 : dice.Below(12);
    return kind < 6 ? ListEdit(kind, category, draft, plain) : OtherEdit(kind, category, draft, plain);
}

Edit EditDrawing::ListEdit(std::size_t kind, const CString& category, const Draft& draft, PlainRules& plain)
{
    Dice& dice = m_drawing.Random();
    const std::size_t size = plain.In(category).size();
    const PlainRules::Positions some = m_drawing.Some(size);
    const std::size_t place = dice.Below(size + 1);
    const bool flag = dice.OneIn(2);
    Edit edit;
    switch (kind) {
    case 0: {
        const std::vector<Rule> rules{m_drawing.NewRule(), m_drawing.NewRule()};
        edit = rules::InsertRules(draft, category, place, rules, {});
        plain.Insert(category, place, rules);
        break;
    }
    case 1: {
        Rule changed = plain.In(category)[place % size];
        m_drawing.Change(changed);
        edit = rules::ChangeRule(draft, category, place % size, changed, {});
        plain.Change(category, place % size, changed);
        break;
    }
    case 2:
        edit = rules::DeleteRules(draft, category, Backwards(some));
        plain.Delete(category, some);
        break;
    case 3:
        edit = rules::MoveRules(draft, category, Backwards(some), place);
        plain.Move(category, some, place);
        break;
    case 4:
        edit = rules::ShiftRules(draft, category, Backwards(some), flag);
        plain.Shift(category, some, flag);
        break;
    default: {
        const CString& to = dice.Of(m_categories);
        const std::size_t target = dice.Below(plain.In(to).size() + 1);
        std::vector<rules::Misfit> misfits;
        edit = rules::CopyRules(draft, category, Backwards(some), to, target, {}, misfits);
        plain.Copy(category, some, to, target);
    }
    }
    return edit;
}

Edit EditDrawing::OtherEdit(std::size_t kind, const CString& category, const Draft& draft, PlainRules& plain)
{
    Dice& dice = m_drawing.Random();
    const std::size_t size = plain.In(category).size();
    const PlainRules::Positions some = m_drawing.Some(size);
    const CString& other = dice.Of(m_categories);
    const PlainRules::Places places{{category, some}, {other, m_drawing.Some(plain.In(other).size())}};
    const CString& number = dice.Of(Numbers);
    const bool flag = dice.OneIn(2);
    Edit edit;
    switch (kind) {
    case 6: {
        const Condition condition = m_drawing.NewCondition();
        edit = rules::SetCondition(draft, category, Backwards(some), condition);
        plain.SetCondition(category, some, condition);
        break;
    }
    case 7:
        edit = rules::RemoveConditions(draft, category, Backwards(some), Attributes[0]);
        plain.RemoveConditions(category, some, Attributes[0]);
        break;
    case 8: {
        const QdStruct record = m_drawing.NewBill().record;
        edit = rules::ReplaceBill(draft, Backwards(places), number, record, flag);
        plain.ReplaceBill(places, number, record, flag);
        break;
    }
    case 9: {
        const DeStruct record = m_drawing.NewQuota().record;
        edit = rules::ReplaceQuota(draft, Backwards(places), number, record, flag);
        plain.ReplaceQuota(places, number, record, flag);
        break;
    }
    case 10: {
        const CString& formula = dice.Of(Values);
        edit = rules::SetFormula(draft, Backwards(places), number, formula);
        plain.SetFormula(places, number, formula);
        break;
    }
    default:
        if (dice.OneIn(3)) return TowardsAnother(draft, plain);
        const rules::SeriesPlan plan = m_drawing.Plan();
        const std::size_t place = dice.Below(size);
        edit = rules::InsertSeries(draft, category, place, plan, flag);
        plain.Series(category, place, plan, flag);
    }
    return edit;
}

/// The lists as somebody has made them elsewhere: in any order, default rules anywhere, ids given twice.
Edit EditDrawing::TowardsAnother(const Draft& draft, PlainRules& plain)
{
    Dice& dice = m_drawing.Random();
    PlainRules::Lists lists = plain.All();
    std::vector<Rule>& list = lists[dice.Of(m_categories)];
    for (int i = 0; i < 4; ++i)
        std::swap(list[dice.Below(list.size())], list[dice.Below(list.size())]);
    if (dice.OneIn(3)) list.insert(list.begin(), list[dice.Below(list.size())]);
    Rule& rule = list[dice.Below(list.size())];
    rule.bills = {test::Bill(u"09"_s)};
    rule.counters.bill = std::max(rule.counters.bill, 1);
    const bool isWhole = dice.OneIn(2) && m_isAll;
    const Edit edit = rules::Towards(draft, ConfigurationOfLists(lists), {}, isWhole);
    for (auto& [category, wanted] : lists) // those left out count for nothing, or for all
        if (wanted == BareDefaultAlone && !isWhole) wanted = plain.In(category);
    plain.Take(lists);
    return edit;
}

} // namespace test
