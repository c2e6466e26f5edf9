#pragma once

#include "rules/draft/Draft.h"
#include "rules/model/Facts.h"

/// The changes that people make to the rules of a draft. Each gives the edit that would do it and does
/// nothing itself; the edit is empty where there is nothing to do. Positions are indexes in the category's
/// list as the draft has it, in any order, each once; others raise `std::out_of_range`, and a category that
/// the draft has not raises `std::invalid_argument`.
///
/// The default rule stays the last one: nothing comes behind it, and it is neither deleted nor moved. A list
/// that a file has otherwise is left so.
namespace rules {

/// A rule to a place in the list; ids of rule and parts are given anew. `position` may be that behind the
/// last.
Edit InsertRules(const Draft& draft, const CString& category, std::size_t position,
                                     std::vector<Rule> rules, const CString& text);

/// The rule becomes what `changed` says. It keeps its id; parts with an id that the rule has keep theirs,
/// those with the id 0 get new ones from the rule's counters.
Edit ChangeRule(const Draft& draft, const CString& category, std::size_t position,
                                    Rule changed, const CString& text);

/// Default rules among them stay.
Edit DeleteRules(const Draft& draft, const CString& category,
                                     const std::vector<std::size_t>& positions);

/// The rules, in the order of the list, come to stand before the one that is at `target` now, or behind all
/// others but the default rule. Default rules among them stay.
Edit MoveRules(const Draft& draft, const CString& category,
                                   const std::vector<std::size_t>& positions, std::size_t target);
/// One place up or down, each run of neighbours together; what stands at the end stays.
Edit ShiftRules(const Draft& draft, const CString& category,
                                    const std::vector<std::size_t>& positions, bool down);

/// Something of a copied rule that does not go with its new category.
struct Misfit
{
    std::size_t rule = 0; ///< index among those copied
    CString text;         ///< a sentence without final mark
};

/// Copies of rules into a category, the same one or another. A default rule becomes its items' rule without
/// conditions only where the target has none yet; else it is left out. What the target's category does not
/// know - attributes, ranges where only equality goes, values outside a fixed list - is copied all the same
/// and told. `facts` are those of the target; empty when nothing is known.
Edit CopyRules(const Draft& draft, const CString& from,
                                   const std::vector<std::size_t>& positions, const CString& to,
                                   std::size_t position, const CategoryFacts& facts,
                                   std::vector<Misfit>& misfits);

/// One condition in several rules: it takes the place of the first condition on its attribute, or comes at
/// the end. Default rules are left out.
Edit SetCondition(const Draft& draft, const CString& category,
                                      const std::vector<std::size_t>& positions, const Condition& condition);
/// The conditions on an attribute go from several rules.
Edit RemoveConditions(const Draft& draft, const CString& category,
                                          const std::vector<std::size_t>& positions,
                                          const CString& attribute);

/// Where rules stand: a category and positions in it.
using RulePlaces = std::map<CString, std::vector<std::size_t>>;

/// Everywhere among the rules the item of that number becomes `record`; its formula and annex stay unless
/// `wholly`. Quota items below a bill item stay with it.
Edit ReplaceBill(const Draft& draft, const RulePlaces& places, const CString& number,
                                     const QdStruct& record, bool wholly);
/// The same for quota items, those of bill mode below bill items and those of quota mode.
Edit ReplaceQuota(const Draft& draft, const RulePlaces& places, const CString& number,
                                      const DeStruct& record, bool wholly);
/// The formula of the item of that number among the rules.
Edit SetFormula(const Draft& draft, const RulePlaces& places, const CString& number,
                                    const CString& formula);

/// All that makes the draft hold what `wanted` holds of the categories that both have: the way of what was
/// made elsewhere, by a merge or from a workbook. Rules keep their ids as `wanted` has them.
Edit Towards(const Draft& draft, const Configuration& wanted, const CString& text);

} // namespace rules
