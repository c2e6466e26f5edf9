#pragma once

#include "rules/draft/Draft.h"
#include "rules/model/Facts.h"

/// The changes that people make to the rules of a draft. Each gives the edit that would do it and does
/// nothing itself; the edit is empty where there is nothing to do. Positions are indexes in the category's
/// list as the draft has it, in any order; others raise `std::out_of_range`, and a category that the draft
/// has not raises `std::invalid_argument`.
///
/// The default rule stays the last one: nothing comes behind it, and it is neither deleted nor moved. A list
/// that a file has otherwise is left so.
namespace rules {

/// Rules to a place in the list; ids of rules and parts are given anew. `position` may be that behind the
/// last. Default rules among them are left out.
Edit InsertRules(const Draft& draft, const CString& category, std::size_t position, std::vector<Rule> rules,
                 const CString& text);

/// The rule becomes what `changed` says. It keeps its id, and stays a default rule or none; parts with an id
/// that the rule has keep theirs, the others get new ones from the rule's counters.
Edit ChangeRule(const Draft& draft, const CString& category, std::size_t position, Rule changed,
                const CString& text);

/// Default rules among them stay.
Edit DeleteRules(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions);

/// The rules, in the order of the list, come to stand before the one that is at `target` now, or behind all
/// others but the default rule. Default rules among them stay.
Edit MoveRules(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
               std::size_t target);
/// One place up or down, each run of neighbours together; what stands at the end stays.
Edit ShiftRules(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
                bool down);

/// Something of a copied rule that does not go with its new category.
struct Misfit
{
    std::size_t rule = 0; ///< index among those copied, in the order of the list
    CString text;         ///< a sentence without final mark
};

/// Copies of rules into a category, the same one or another, in the order of the list. The first default rule
/// among them that has items gives them to the target's where that has none yet; else they are left out,
/// which is told. What the target's category does not know - attributes, ranges where only equality goes,
/// values outside a list - is copied all the same and told. `facts` are those of the target; empty when
/// nothing is known. Adds to `misfits`.
Edit CopyRules(const Draft& draft, const CString& from, const std::vector<std::size_t>& positions,
               const CString& to, std::size_t position, const CategoryFacts& facts,
               std::vector<Misfit>& misfits);

/// The same with rules that come from nowhere in the draft, as from a clipboard.
Edit PasteRules(const Draft& draft, const std::vector<Rule>& rules, const CString& to, std::size_t position,
                const CategoryFacts& facts, std::vector<Misfit>& misfits);

/// One condition in several rules: it takes the place of the first condition on its attribute, or comes at
/// the end. Default rules are left out.
Edit SetCondition(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
                  const Condition& condition);
/// The conditions on an attribute go from several rules.
Edit RemoveConditions(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
                      const CString& attribute);

/// Where rules stand: a category and positions in it.
using RulePlaces = std::map<CString, std::vector<std::size_t>>;

/// Everywhere among the rules the item of that number becomes `record`; its formula and annex stay unless
/// `wholly`. Quota items below a bill item stay with it.
Edit ReplaceBill(const Draft& draft, const RulePlaces& places, const CString& number, const QdStruct& record,
                 bool wholly);
/// The same for quota items, those of bill mode below bill items and those of quota mode.
Edit ReplaceQuota(const Draft& draft, const RulePlaces& places, const CString& number, const DeStruct& record,
                  bool wholly);
/// The formula of the item of that number among the rules, be it a bill item or a quota item.
Edit SetFormula(const Draft& draft, const RulePlaces& places, const CString& number, const CString& formula);

/// All that makes the draft hold what `wanted` holds of the categories that both have: the way of what was
/// made elsewhere, by a merge or from a workbook. Rules keep their ids as `wanted` has them. Where `wanted`
/// is all that a file is to hold (`isWhole`), the rules of categories that it has not go, too.
Edit Towards(const Draft& draft, const Configuration& wanted, const CString& text, bool isWhole = false);

} // namespace rules
