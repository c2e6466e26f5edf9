// Three states of one configuration brought together, on random triples. KTQDDE_MERGES asks for more of them,
// KTQDDE_MERGE_SEED repeats a run.
#include "rules/MergeTesting.h"
#include "rules/compare/Content.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <set>

using namespace Qt::StringLiterals;
using rules::Merge;
using rules::Rule;
using rules::Side;
using test::DefaultRule;
using test::IdsOf;
using test::Merged;
using test::PipeRule;
using test::Pipes;
using test::Told;

namespace {

int Asked()
{
    const int asked = qEnvironmentVariableIntValue("KTQDDE_MERGES");
    return asked > 0 ? asked : 400;
}

unsigned Seed()
{
    const unsigned seed = qEnvironmentVariableIsSet("KTQDDE_MERGE_SEED")
                              ? static_cast<unsigned>(qEnvironmentVariableIntValue("KTQDDE_MERGE_SEED"))
                              : std::random_device{}();
    std::printf("seed %u\n", seed);
    return seed;
}

/// Makes rules and edits them as people do.
class Editing
{
public:
    explicit Editing(unsigned seed) : m_random(seed) {}

    std::size_t Below(std::size_t limit) { return m_random() % limit; }

    /// Where `m_stock` is not zero, rules of one of so many contents; else each has its own.
    Rule NewRule(int id)
    {
        const std::size_t number = m_stock == 0 ? ++m_count : Below(m_stock);
        Rule rule = PipeRule(id, u"材质%1"_s.arg(number), u"%1"_s.arg(number));
        if (Below(3) == 0) rule.quotas = {test::Quota(u"q%1"_s.arg(number))};
        return rule;
    }

    std::vector<Rule> List()
    {
        std::vector<Rule> rules;
        for (std::size_t i = 0, size = Below(9); i < size; ++i)
            rules.push_back(NewRule(static_cast<int>(i) + 2));
        rules.push_back(DefaultRule());
        return rules;
    }

    void Change(Rule& rule)
    {
        const std::size_t number = m_stock == 0 ? ++m_count : Below(m_stock);
        if (rule.isDefault || Below(2) == 0)
            rule.bills = {test::Bill(u"%1"_s.arg(number))};
        else
            rule.conditions[0].value = u"材质%1"_s.arg(number);
    }

    static int NextId(const std::vector<Rule>& rules)
    {
        const std::vector<int> ids = IdsOf(rules);
        return ids.empty() ? 1 : *std::max_element(ids.begin(), ids.end()) + 1;
    }

    void Add(std::vector<Rule>& rules)
    {
        const std::size_t size = rules.size();
        const Rule rule = NewRule(NextId(rules));
        rules.insert(rules.begin() + static_cast<std::ptrdiff_t>(Below(size == 0 ? 1 : size)), rule);
    }

    void Move(std::vector<Rule>& rules, std::size_t from)
    {
        const Rule rule = rules[from];
        rules.erase(rules.begin() + static_cast<std::ptrdiff_t>(from));
        rules.insert(rules.begin() + static_cast<std::ptrdiff_t>(Below(rules.size() + 1)), rule);
    }

    void UseStock(std::size_t size) { m_stock = size; }

private:
    std::mt19937 m_random;
    std::size_t m_stock = 0;
    std::size_t m_count = 0;
};

CStringArray Sorted(CStringArray texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

/// What a list of the random test is, for a person who looks into a failure.
std::string Shown(const std::vector<Rule>& base, const std::vector<Rule>& mine,
                  const std::vector<Rule>& theirs)
{
    CString text;
    for (const auto* list : {&base, &mine, &theirs}) {
        for (const Rule& rule : *list)
            text += u"%1 %2\n"_s.arg(rule.id).arg(Told(rule));
        text += u"--\n"_s;
    }
    return text.toStdString();
}

/// One side's edits of rules that the other one leaves alone.
struct Edit
{
    std::vector<Rule> state;
    std::set<int> changed; ///< ids
    std::set<int> removed;
    CStringArray added;
    bool hasMoved = false;
};

std::vector<Rule>::iterator FindId(std::vector<Rule>& rules, int id)
{
    return std::find_if(rules.begin(), rules.end(), [&](const Rule& rule) { return rule.id == id; });
}

/// Puts a rule in front of another one of those that are `own`.
void MoveWithin(Editing& editing, std::vector<Rule>& rules, int id, const std::vector<int>& own)
{
    const auto from = FindId(rules, id);
    const Rule rule = *from;
    rules.erase(from);
    const auto to = FindId(rules, own[editing.Below(own.size())]);
    rules.insert(to == rules.end() ? rules.begin() : to, rule);
}

Edit EditOwn(Editing& editing, const std::vector<Rule>& base, const std::vector<int>& own, bool mayMove)
{
    Edit edit{base, {}, {}, {}, false};
    for (const int id : own) {
        switch (editing.Below(4)) {
        case 0:
            editing.Change(*FindId(edit.state, id));
            edit.changed.insert(id);
            break;
        case 1:
            edit.state.erase(FindId(edit.state, id));
            edit.removed.insert(id);
            break;
        case 2:
            if (!mayMove) break;
            MoveWithin(editing, edit.state, id, own);
            edit.hasMoved = true;
            break;
        default:
            break;
        }
    }
    for (std::size_t i = editing.Below(3); i > 0; --i) {
        const CStringArray before = Told(edit.state);
        editing.Add(edit.state);
        for (const CString& text : Told(edit.state))
            if (!before.contains(text)) edit.added += text;
    }
    return edit;
}

/// Which rules each side edits: any that the other does not, where one side alone changes the order; or one
/// half of the list each, where both may. (Moves across each other's rules touch.)
struct Owners
{
    std::vector<int> mine;
    std::vector<int> theirs;
    bool mayMineMove = false;
    bool mayTheirsMove = false;
};

Owners ShareOut(Editing& editing, const std::vector<Rule>& base)
{
    Owners owners;
    const bool isHalved = editing.Below(2) == 0;
    owners.mayMineMove = isHalved || editing.Below(2) == 0;
    owners.mayTheirsMove = isHalved || !owners.mayMineMove;
    for (std::size_t i = 0; i < base.size(); ++i) {
        if (base[i].isDefault) continue;
        const bool isMine = isHalved ? i < base.size() / 2 : editing.Below(2) == 0;
        (isMine ? owners.mine : owners.theirs).push_back(base[i].id);
    }
    return owners;
}

/// The rules that a base rule's text and both edits come to, in no order.
CStringArray BothEdits(const std::vector<Rule>& base, const Edit& mine, const Edit& theirs)
{
    CStringArray texts = mine.added + theirs.added;
    for (const Rule& rule : base) {
        if (mine.removed.contains(rule.id) || theirs.removed.contains(rule.id)) continue;
        const std::vector<Rule>& owner = mine.changed.contains(rule.id)     ? mine.state
                                         : theirs.changed.contains(rule.id) ? theirs.state
                                                                            : base;
        texts += Told(*std::find_if(owner.begin(), owner.end(), [&](const Rule& candidate) {
            return candidate.id == rule.id && !mine.added.contains(Told(candidate)) &&
                   !theirs.added.contains(Told(candidate));
        }));
    }
    return texts;
}

/// Those of `texts` that are in `all`, in the order of `all`.
CStringArray InOrderOf(const CStringArray& all, const CStringArray& texts)
{
    CStringArray chosen;
    for (const CString& text : all)
        if (texts.contains(text)) chosen += text;
    return chosen;
}

} // namespace

TEST(MergeTriples, EditsThatDoNotTouchAreAllAppliedAndNothingElse)
{
    Editing editing(Seed());
    for (int round = 0; round < Asked(); ++round) {
        const std::vector<Rule> base = editing.List();
        const Owners owners = ShareOut(editing, base);
        const Edit mine = EditOwn(editing, base, owners.mine, owners.mayMineMove);
        const Edit theirs = EditOwn(editing, base, owners.theirs, owners.mayTheirsMove);
        const Merge merge(Pipes(base), Pipes(mine.state), Pipes(theirs.state));
        const std::string shown = Shown(base, mine.state, theirs.state);
        ASSERT_TRUE(merge.Conflicts().empty()) << shown << merge.Conflicts()[0].Describe().toStdString();
        const std::vector<Rule> merged = Merged(merge);
        const CStringArray told = Told(merged);
        ASSERT_EQ(Sorted(told), Sorted(BothEdits(base, mine, theirs))) << shown;
        const std::vector<int> ids = IdsOf(merged);
        ASSERT_EQ(std::set<int>(ids.begin(), ids.end()).size(), ids.size()) << shown;
        // A side whose order nobody contradicts has its order.
        if (!theirs.hasMoved) {
            ASSERT_EQ(InOrderOf(told, Told(mine.state)), InOrderOf(Told(mine.state), told)) << shown;
        }
        if (!mine.hasMoved) {
            ASSERT_EQ(InOrderOf(told, Told(theirs.state)), InOrderOf(Told(theirs.state), told)) << shown;
        }
    }
}

namespace {

/// Edits any rules, so that two sides touch.
std::vector<Rule> EditAny(Editing& editing, std::vector<Rule> rules)
{
    for (std::size_t i = editing.Below(6); i > 0; --i) {
        const std::size_t at = editing.Below(rules.empty() ? 1 : rules.size());
        const std::size_t kind = rules.empty() ? 4 : editing.Below(5);
        if (kind == 0 || kind == 1)
            editing.Change(rules[at]);
        else if (kind == 2)
            rules.erase(rules.begin() + static_cast<std::ptrdiff_t>(at));
        else if (kind == 3)
            editing.Move(rules, at);
        else
            editing.Add(rules);
    }
    if (editing.Below(8) == 0) // ids given anew
        for (Rule& rule : rules)
            if (!rule.isDefault) rule.id += 1;
    return rules;
}

std::vector<Side> Flipped(std::vector<Side> answers)
{
    for (Side& side : answers)
        side = side == Side::Mine ? Side::Theirs : Side::Mine;
    return answers;
}

CStringArray InConflict(const Merge& merge)
{
    CStringArray texts;
    for (const rules::Conflict& conflict : merge.Conflicts())
        for (const auto* rule : {&conflict.base, &conflict.mine, &conflict.theirs})
            if (*rule) texts += Told(**rule);
    return texts;
}

} // namespace

TEST(MergeTriples, ResultIsTheSameFromEitherSideUpToOrder)
{
    Editing editing(Seed());
    for (int round = 0; round < Asked(); ++round) {
        editing.UseStock(round % 2 == 0 ? 0 : 12);
        const std::vector<Rule> base = editing.List();
        const std::vector<Rule> mine = EditAny(editing, base);
        const std::vector<Rule> theirs = EditAny(editing, base);
        const std::string shown = Shown(base, mine, theirs);
        const Merge here(Pipes(base), Pipes(mine), Pipes(theirs));
        const Merge there(Pipes(base), Pipes(theirs), Pipes(mine));
        ASSERT_EQ(here.Conflicts().size(), there.Conflicts().size()) << shown;
        for (const Side side : {Side::Mine, Side::Theirs}) {
            const auto answers = test::All(here, side);
            ASSERT_EQ(Sorted(Told(test::RulesIn(here.Result(answers)))),
                      Sorted(Told(test::RulesIn(there.Result(Flipped(answers))))))
                << shown;
        }
    }
}

TEST(MergeTriples, EveryRuleOfBothSidesIsInTheResultOrInAConflict)
{
    Editing editing(Seed());
    for (int round = 0; round < Asked(); ++round) {
        editing.UseStock(round % 2 == 0 ? 0 : 12);
        const std::vector<Rule> base = editing.List();
        const std::vector<Rule> mine = EditAny(editing, base);
        const std::vector<Rule> theirs = EditAny(editing, base);
        const std::string shown = Shown(base, mine, theirs);
        const Merge merge(Pipes(base), Pipes(mine), Pipes(theirs));
        const CStringArray conflicts = InConflict(merge);
        const CStringArray former = Told(base);
        for (const Side side : {Side::Mine, Side::Theirs}) {
            const CStringArray result = Told(Merged(merge, side));
            for (const CString& text : Told(mine) + Told(theirs)) {
                const bool isAnybodysEdit = !former.contains(text);
                const bool isEverywhere = Told(mine).count(text) >= former.count(text) &&
                                          Told(theirs).count(text) >= former.count(text);
                if (isAnybodysEdit || isEverywhere) {
                    ASSERT_TRUE(result.contains(text) || conflicts.contains(text))
                        << text.toStdString() << '\n'
                        << shown;
                }
            }
            for (const CString& text : result)
                ASSERT_TRUE(Told(mine).contains(text) || Told(theirs).contains(text)) << shown;
        }
    }
}

TEST(MergeTriples, SideThatDidNothingLeavesTheOtherAsItIs)
{
    Editing editing(Seed());
    for (int round = 0; round < Asked(); ++round) {
        editing.UseStock(round % 2 == 0 ? 0 : 12);
        const std::vector<Rule> base = editing.List();
        const std::vector<Rule> edited = EditAny(editing, base);
        const std::string shown = Shown(base, edited, edited);
        ASSERT_EQ(Told(Merged(base, edited, base)), Told(edited)) << shown;
        ASSERT_EQ(Told(Merged(base, base, edited)), Told(edited)) << shown;
        ASSERT_EQ(Told(Merged(base, edited, edited)), Told(edited)) << shown;
        ASSERT_EQ(IdsOf(Merged(base, edited, base)), IdsOf(edited)) << shown;
        ASSERT_EQ(IdsOf(Merged(base, base, edited)), IdsOf(edited)) << shown;
    }
}
