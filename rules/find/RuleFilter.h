#pragma once

#include "rules/match/CellText.h"
#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

/// Finding rules by what a person types.
namespace rules {

/// What a search looks for, read from one line of text. Words are separated by blanks; a rule is found when
/// all words find something in it. Letter case, and the width of letters and digits, do not count; <=, >= and
/// != or <> count as ≤, ≥ and ≠.
///
/// A word that is the name of an attribute and is followed by a value (公称直径 65, also 公称直径=65 and
/// 公称直径＝65) finds the rules with a condition on the attribute that holds for the value: a range that has
/// the number in it, ＝ with the value, ≠ with another one. A number may be written with or without what the
/// attribute's value list writes around it: 65 finds ＝DN65, and DN65 finds ≤65. A value that is no number
/// also finds ＝ with a value that has it in it, as while it is being typed. A rule without a condition on
/// the attribute is not found, though it may apply to such a component: it says nothing of it. Followed by =
/// alone the name finds all conditions on the attribute.
///
/// Any other word finds the rules whose condition text, bill or quota numbers or names hold it; that of an
/// attribute behind which nothing stands yet is such a word.
class RuleQuery
{
public:
    RuleQuery() = default;
    /// `attributes` are the names that are taken for attributes.
    RuleQuery(const CString& text, const CStringArray& attributes);

    bool IsEmpty() const noexcept { return m_words.isEmpty() && m_values.empty(); }

private:
    friend class RuleTexts;

    struct AttributeValue
    {
        CString attribute; ///< folded
        CString value;     ///< as typed; empty for any
    };

    CStringArray m_words; ///< folded
    std::vector<AttributeValue> m_values;
};

/// The rules of one category made ready to be searched again and again, while somebody types. Keeps the
/// category alive. Making it costs about as much as one reading of all texts; a search then reads them once.
/// Immutable, so any number of threads may use one.
class RuleTexts
{
public:
    /// `facts` tell how the numbers of attributes are written; needed during the call only. The category may
    /// not be null.
    RuleTexts(SmallCategoryPtr category, const CategoryFacts& facts);

    const SmallCategoryPtr& Category() const noexcept { return m_category; }
    /// Positions of the rules found, rising; all of them for an empty query.
    std::vector<std::size_t> Find(const RuleQuery& query) const;
    /// Whether any is found.
    bool Holds(const RuleQuery& query) const { return !Find(query).empty(); }

private:
    class Maker;

    /// One condition and the rules that have it.
    struct Known
    {
        const Condition* condition = nullptr; ///< one of the category
        std::shared_ptr<const NumberReader> numbers;
        CString value; ///< folded
        std::vector<std::uint32_t> rules;
    };

    QStringView TextOf(std::size_t rule) const;
    std::vector<std::size_t> FindWord(const CString& word) const;
    std::vector<bool> FindValue(const RuleQuery::AttributeValue& wanted) const;

    SmallCategoryPtr m_category;
    CString m_text;                                ///< folded, of all rules
    std::vector<qsizetype> m_ends;                 ///< of each rule's piece of it
    std::map<CString, std::vector<Known>> m_known; ///< by the folded name of the attribute
};

/// The names of all attributes that the facts offer or conditions of the configuration name, each once: what
/// `RuleQuery` takes for attributes.
CStringArray AttributeNames(const Configuration& configuration, const CatalogueFacts& facts);

} // namespace rules
