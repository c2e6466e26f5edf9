#pragma once

#include "rules/draft/RuleEdits.h"
#include "rules/draft/Series.h"

#include <map>
#include <set>
#include <vector>

namespace test {

/// Lists of rules by category, edited by the plainest code there is, written from what the headers say: the
/// measure for drafts and their edits.
class PlainRules
{
public:
    using List = std::vector<rules::Rule>;
    using Lists = std::map<CString, List>;
    using Positions = std::set<std::size_t>;
    using Places = std::map<CString, Positions>;

    const Lists& All() const { return m_lists; }
    List& In(const CString& category) { return m_lists.at(category); }
    /// Other lists take the place of these.
    void Take(const Lists& lists);

    void Insert(const CString& category, std::size_t position, List rules);
    void Change(const CString& category, std::size_t position, rules::Rule changed);
    void Delete(const CString& category, const Positions& positions);
    void Move(const CString& category, const Positions& positions, std::size_t target);
    void Shift(const CString& category, const Positions& positions, bool down);
    void Copy(const CString& from, const Positions& positions, const CString& to, std::size_t position);
    void SetCondition(const CString& category, const Positions& positions, const rules::Condition& condition);
    void RemoveConditions(const CString& category, const Positions& positions, const CString& attribute);
    void ReplaceBill(const Places& places, const CString& number, const QdStruct& record, bool wholly);
    void ReplaceQuota(const Places& places, const CString& number, const DeStruct& record, bool wholly);
    void SetFormula(const Places& places, const CString& number, const CString& formula);
    void Series(const CString& category, std::size_t position, const rules::SeriesPlan& plan, bool replaces);

private:
    static std::size_t EndOf(const List& list);
    void Note();

    Lists m_lists;
    std::map<CString, int> m_highest; ///< ids that have ever been in a list
};

} // namespace test
