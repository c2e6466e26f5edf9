#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"

#include <memory>
#include <vector>

/// Finding rules by what a person types.
namespace rules {

/// What a search looks for, read from one line of text. Words are separated by blanks; a rule is found when
/// all words find something in it. Letter case, and the width of letters and digits, do not count.
///
/// A word that is the name of an attribute and is followed by a value (公称直径 65, also 公称直径=65 and
/// 公称直径＝65) finds the rules that a component with this value could still get: a condition on the
/// attribute that holds for it, a range that holds the number included. Any other word finds the rules whose
/// condition text, bill or quota numbers or names hold it.
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
        CString attribute;
        CString value;
    };

    CStringArray m_words; ///< folded
    std::vector<AttributeValue> m_values;
};

/// The rules of one category made ready to be searched again and again, while somebody types. Keeps the
/// category alive. Making it costs about as much as one reading of all texts; a search then reads them once.
class RuleTexts
{
public:
    /// `facts` tell how the numbers of attributes are written; needed during the call only.
    RuleTexts(SmallCategoryPtr category, const CategoryFacts& facts);

    const SmallCategoryPtr& Category() const noexcept { return m_category; }
    /// Positions of the rules found, rising; all of them for an empty query.
    std::vector<std::size_t> Find(const RuleQuery& query) const;
    /// Whether any is found.
    bool Holds(const RuleQuery& query) const;

private:
    SmallCategoryPtr m_category;
};

/// The names of all attributes that conditions of the configuration name or the facts offer: what `RuleQuery`
/// takes for attributes.
CStringArray AttributeNames(const Configuration& configuration,
                                                const CatalogueFacts& facts);

} // namespace rules
