#include "rules/sql/SqlPlan.h"

#include "rules/match/CategoryMatcher.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

const NumberReader* NumbersOf(const CategoryMatcher& matcher, const CString& attribute)
{
    const CString wanted = Normalised(attribute);
    const auto& known = matcher.Attributes();
    const auto found = std::find_if(known.begin(), known.end(), [&](const CategoryMatcher::Attribute& one) {
        return Normalised(one.name) == wanted;
    });
    return found == known.end() ? nullptr : &found->numbers;
}

const CategoryFacts& FactsOf(const CatalogueFacts& facts, const CString& category)
{
    static const CategoryFacts None;
    const auto found = facts.find(category);
    return found == facts.end() ? None : found->second;
}

} // namespace

SqlPlan::SqlPlan(const Configuration& configuration, const CatalogueFacts& facts, const SqlOptions& options)
{
    const Dialect dialect(options.dialect);
    // An attribute of that name is that column, as in a take-off table.
    for (const CString& heading : {IdHeading, CategoryHeading, OwnName})
        m_taken.insert(dialect.NameForm(heading));
    std::set<CString> seen;
    for (const Specialty& specialty : configuration.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories) {
                const bool isWanted = options.category.isEmpty() || small->text == options.category;
                // Of categories with one text the first counts. No cell can name one that no text can hold.
                if (isWanted && Dialect::CanHold(small->text) && seen.insert(small->text).second)
                    Add(small, FactsOf(facts, small->text), dialect);
            }
}

void SqlPlan::Add(const SmallCategoryPtr& category, const CategoryFacts& facts, const Dialect& dialect)
{
    const CategoryMatcher matcher(category, facts);
    Category& planned = categories.emplace_back();
    planned.category = category;
    planned.firstKey = m_nextKey;
    for (const Rule& rule : category->rules) {
        const std::size_t key = m_nextKey++;
        if (rule.isDefault) {
            if (!planned.defaultKey) planned.defaultKey = key;
        } else if (auto tests = TestsOf(rule, matcher, dialect)) {
            planned.tested.push_back({key, std::move(*tests)});
        }
    }
}

/// Nothing when one of the conditions can never hold.
std::optional<std::vector<CellTest>> SqlPlan::TestsOf(const Rule& rule, const CategoryMatcher& matcher,
                                                      const Dialect& dialect)
{
    const auto isSound = [&](const Condition& condition) {
        const NumberReader* const numbers = NumbersOf(matcher, condition.attribute);
        return numbers != nullptr && Dialect::CanHold(condition.attribute) &&
               DefectOf(condition, *numbers) == Defect::None;
    };
    if (!std::all_of(rule.conditions.begin(), rule.conditions.end(), isSound)) return std::nullopt;
    std::vector<CellTest> tests;
    for (const Condition& condition : rule.conditions)
        tests.push_back(TestOf(condition, *NumbersOf(matcher, condition.attribute), dialect));
    return tests;
}

CellTest SqlPlan::TestOf(const Condition& condition, const NumberReader& numbers, const Dialect& dialect)
{
    CellTest test;
    test.column = ColumnOf(condition.attribute, dialect);
    Column& column = columns[test.column];
    if (condition.isValueForm) {
        test.form = condition.equalOperator == u"＝"_s ? CellTest::Form::Equal : CellTest::Form::Unequal;
        const CString value = Normalised(condition.value);
        column.AddValueForm();
        if (!value.isEmpty() && Dialect::CanHold(value)) test.text = column.AddText(value);
        if (const auto number = PlainNumber(condition.value)) test.number = column.AddNumber(*number);
        return test;
    }
    test.form = CellTest::Form::Range;
    column.AddRanges(categories.size(), numbers);
    if (!condition.lowerBound.isEmpty())
        test.lower = {*numbers.Read(condition.lowerBound), condition.lowerOperator == u"≥"_s};
    if (!condition.upperBound.isEmpty())
        test.upper = {*numbers.Read(condition.upperBound), condition.upperOperator == u"≤"_s};
    for (const auto& bound : {test.lower, test.upper})
        if (bound) column.AddBound(bound->value);
    return test;
}

std::size_t SqlPlan::ColumnOf(const CString& attribute, const Dialect& dialect)
{
    const CString normalised = Normalised(attribute);
    const auto [place, isNew] = columnByAttribute.try_emplace(normalised, columns.size());
    if (isNew) columns.emplace_back(NameFor(normalised, dialect), columns.size() + 1);
    return place->second;
}

/// The attribute's own name where the dialect can tell it from the others, else with a number behind it.
CString SqlPlan::NameFor(const CString& attribute, const Dialect& dialect)
{
    for (const CString& heading : {IdHeading, CategoryHeading, OwnName})
        if (attribute == heading) return attribute;
    CString name = dialect.CutName(attribute, 0);
    for (int number = 2; !m_taken.insert(dialect.NameForm(name)).second; ++number) {
        const CString behind = u'_' + CString::number(number);
        name = dialect.CutName(attribute, behind.size()) + behind;
    }
    return name;
}

} // namespace rules
