#include "rules/CheckTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;
using test::Material;
using test::PricedRule;
using test::Value;

namespace {

const CString Drains = u"给排水\\管道\\排水管"_s;

/// Faults of every kind of check that looks at one category: ids, a hidden rule, a value that the list has
/// not, a bill item that stands twice. All of its rules give one bill number.
rules::SmallCategory FaultyCategory(const CString& text, const CString& nameOfItem)
{
    rules::SmallCategory category =
        test::WithDefault({PricedRule({Material(u"铜管"_s)}), PricedRule({Material(u"铜管"_s)}),
                           PricedRule({Material(u"木管"_s)})});
    category.text = text;
    category.name = text.section(u'\\', -1);
    category.rules[2].id = category.rules[0].id;
    for (rules::Rule& rule : category.rules)
        for (rules::BillItem& bill : rule.bills)
            bill.record.strName = nameOfItem;
    category.rules[0].bills.push_back(category.rules[0].bills.front());
    return category;
}

/// Two such categories, whose rules give the number different names.
rules::Configuration FaultyConfiguration()
{
    rules::BigCategory big{11, u"管道"_s, {}};
    for (const auto& [text, name] :
         {std::pair(test::PipeCategory, u"铜管"_s), std::pair(Drains, u"排水管"_s)})
        big.smallCategories.push_back(
            std::make_shared<const rules::SmallCategory>(FaultyCategory(text, name)));
    return rules::Configuration({rules::Specialty{1, u"给排水"_s, {big}}});
}

rules::CheckFacts FactsOfBoth()
{
    rules::CheckFacts facts = test::KnownFacts();
    facts.attributes[Drains] = facts.attributes[test::PipeCategory];
    facts.categories[Drains] = facts.categories[test::PipeCategory];
    return facts;
}

const std::vector<rules::SmallCategoryPtr>& CategoriesOf(const rules::Configuration& configuration)
{
    return configuration.Specialties().front().bigCategories.front().smallCategories;
}

bool IsOfNumbers(const rules::Finding& finding)
{
    using enum rules::FindingCode;
    return finding.code == NumberTwoNames || finding.code == NumberTwoUnits ||
           finding.code == NumberTwoFeatures;
}

/// All that a finding says, a line each.
CStringArray TextsOf(const std::vector<rules::Finding>& findings)
{
    CStringArray lines;
    for (const rules::Finding& finding : findings) {
        CString line = u"%1 %2@%3#%4 %5"_s.arg(finding.category, rules::CodeText(finding.code))
                           .arg(finding.position)
                           .arg(finding.ruleId)
                           .arg(finding.text);
        for (const int other : finding.others)
            line += u' ' + QString::number(other);
        lines.append(finding.mend ? line + u' ' + finding.mend->op : line);
    }
    return lines;
}

} // namespace

TEST(CheckCategory, FindsInRulesAsTheyAreEditedWhatCheckFindsInTheFile)
{
    const rules::Configuration configuration = FaultyConfiguration();
    const rules::CheckFacts facts = FactsOfBoth();
    std::vector<rules::Finding> expected = rules::Check(configuration, {}, facts);
    expected.erase(std::remove_if(expected.begin(), expected.end(), IsOfNumbers), expected.end());
    std::vector<rules::Finding> found;
    for (const rules::SmallCategoryPtr& category : CategoriesOf(configuration)) {
        const std::vector<rules::Finding> ofThis = rules::CheckCategory(*category, facts);
        EXPECT_EQ(test::Codes(ofThis),
                  (CStringArray{u"repeated-id@1"_s, u"repeated-item@1"_s, u"never-applies@2"_s,
                                u"repeated-id@3"_s, u"value-not-in-list@3"_s}));
        found.insert(found.end(), ofThis.begin(), ofThis.end());
    }
    EXPECT_EQ(TextsOf(found), TextsOf(expected));
}

TEST(CheckCategory, TellsWhatIsAboutTheWholeCategoryFirst)
{
    rules::CheckFacts facts = test::KnownFacts();
    facts.effort = 0;
    rules::SmallCategory category = test::WithDefault(
        {PricedRule({Value(u"壁厚"_s, u"＝"_s, u"厚"_s), Material(u"木管"_s)}),
         PricedRule({test::Range(u"壁厚"_s, {}, {}, u"≤"_s, u"2"_s)}),
         PricedRule({test::Range(u"壁厚"_s, u"＞"_s, u"3"_s, {}, {})}),
         PricedRule({Material(u"铜管"_s), test::Range(u"壁厚"_s, u"＞"_s, u"2"_s, u"≤"_s, u"3"_s)})});
    category.text = test::PipeCategory;
    EXPECT_EQ(test::Codes(rules::CheckCategory(category, facts)),
              (CStringArray{u"not-decided"_s, u"value-not-in-list@1"_s}));
}

TEST(CheckCategory, LooksUpNothingForACategoryThatNobodyKnows)
{
    rules::SmallCategory category = test::WithDefault({PricedRule({Material(u"铜管"_s)})});
    category.text = u"给排水\\管道\\新小类"_s;
    EXPECT_EQ(test::Codes(rules::CheckCategory(category, test::KnownFacts())), CStringArray());
}

TEST(CheckBillNumbers, ComparesTheRulesOfAllCategories)
{
    const std::vector<rules::Finding> found = rules::CheckBillNumbers(FaultyConfiguration(), FactsOfBoth());
    ASSERT_FALSE(found.empty());
    EXPECT_TRUE(std::all_of(found.begin(), found.end(), IsOfNumbers));
    std::vector<rules::Finding> ofCheck = rules::Check(FaultyConfiguration(), {}, FactsOfBoth());
    ofCheck.erase(std::remove_if(ofCheck.begin(), ofCheck.end(), std::not_fn(IsOfNumbers)), ofCheck.end());
    EXPECT_EQ(TextsOf(found), TextsOf(ofCheck));
    const auto first = std::find_if(found.begin(), found.end(), [](const rules::Finding& finding) {
        return finding.code == rules::FindingCode::NumberTwoNames;
    });
    ASSERT_NE(first, found.end());
    EXPECT_EQ(first->category, Drains);
    EXPECT_TRUE(first->text.contains(test::PipeCategory)) << first->text.toStdString();
}

TEST(CheckBillNumbers, FindsNothingInQuotaMode)
{
    rules::CheckFacts facts = FactsOfBoth();
    facts.isBillMode = false;
    EXPECT_TRUE(rules::CheckBillNumbers(FaultyConfiguration(), facts).empty());
}
