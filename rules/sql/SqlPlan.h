#pragma once

#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"
#include "rules/sql/Dialect.h"
#include "rules/sql/RuleTests.h"

namespace rules {

class CategoryMatcher;

/// The headings of the components table that no attribute gives.
inline const CString IdHeading = QStringLiteral("构件编号");
inline const CString CategoryHeading = QStringLiteral("类别");

/// What is to be decided, worked out before any SQL is written: the columns with all that is asked of them,
/// and the rules as tests of them.
struct SqlPlan
{
    struct Category
    {
        SmallCategoryPtr category;
        std::size_t firstKey = 0; ///< of its first rule; the others follow
        std::vector<TestedRule> tested;
        std::optional<std::size_t> defaultKey;
    };

    /// Raises as `RulesSql` does.
    SqlPlan(const Configuration& configuration, const CatalogueFacts& facts, const SqlOptions& options);

    std::vector<Category> categories; ///< number i of the query is at index i - 1
    std::vector<Column> columns;
    std::map<CString, std::size_t> columnByAttribute; ///< by the name in compatibility normalisation

private:
    void Add(const SmallCategoryPtr& category, const CategoryFacts& facts, const Dialect& dialect);
    std::optional<std::vector<CellTest>> TestsOf(const Rule& rule, const CategoryMatcher& matcher,
                                                 const Dialect& dialect);
    CellTest TestOf(const Condition& condition, const NumberReader& numbers, const Dialect& dialect);
    std::size_t ColumnOf(const CString& attribute, const Dialect& dialect);
    CString NameFor(const CString& attribute, const Dialect& dialect);

    std::size_t m_nextKey = 1;
    std::set<CString> m_taken; ///< forms of the columns' names
};

} // namespace rules
