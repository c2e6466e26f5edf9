#include "rules/bill/BillBuilder.h"

#include "rules/RulesTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::Bill;
using rules::ComponentResult;
using rules::Outcome;
using rules::Refusal;
using rules::Rule;

namespace {

const CString Category = u"给排水\\管道\\给水管"_s;
const CString BillLibrary = u"QD"_s;
const CString QuotaLibrary = u"DE"_s;

rules::QuotaItem Quota(const CString& number, const CString& unit, const CString& formula,
                       const CString& library = QuotaLibrary)
{
    rules::QuotaItem item;
    item.record.strDeId = number;
    item.record.strName = u"安装"_s;
    item.record.strUnit = unit;
    item.record.strFormula = formula;
    item.record.strDeCode = library;
    return item;
}

rules::BillItem BillOf(const CString& number, const CString& formula,
                       std::vector<rules::QuotaItem> quotas = {}, const CString& library = BillLibrary)
{
    rules::BillItem item;
    item.record.strQdId = number;
    item.record.strName = u"钢管"_s;
    item.record.strUnit = u"m"_s;
    item.record.strFormula = formula;
    item.record.strQdCode = library;
    item.quotas = std::move(quotas);
    return item;
}

Rule RuleWith(std::vector<rules::Condition> conditions, std::vector<rules::BillItem> bills,
              bool isDefault = false)
{
    Rule rule = test::RuleOf(std::move(conditions), isDefault);
    rule.bills = std::move(bills);
    return rule;
}

/// A builder over one category, with the columns 材质, 公称直径 and 长度.
class Pricing
{
public:
    explicit Pricing(std::vector<Rule> list, rules::PricingMode mode = rules::PricingMode::Bill,
                     std::vector<std::size_t> groupBy = {})
        : m_builder(Configuration(std::move(list)), Facts(mode), {u"材质"_s, u"公称直径"_s, u"长度"_s},
                    std::move(groupBy))
    {
    }

    ComponentResult Add(const CString& id, const CString& material, const CString& diameter,
                        const CString& length, const CString& category = Category)
    {
        const std::vector<CString> cells{material, diameter, length};
        return m_builder.Add({id, category, u"JL"_s, cells});
    }

    Bill Finish() const { return m_builder.Finish(); }

private:
    static rules::ConfigurationPtr Configuration(std::vector<Rule> list)
    {
        auto category = std::make_shared<rules::SmallCategory>(*test::CategoryOf(std::move(list)));
        category->text = Category;
        rules::Specialty specialty;
        specialty.bigCategories.push_back({1, u"管道"_s, {category}});
        return std::make_shared<const rules::Configuration>(std::vector{specialty});
    }

    static rules::PricingFacts Facts(rules::PricingMode mode)
    {
        rules::PricingFacts facts;
        facts.mode = mode;
        facts.billLibrary = BillLibrary;
        facts.quotaLibrary = QuotaLibrary;
        facts.attributes[Category] = {{.name = u"公称直径"_s, .valueList = {u"50"_s, u"65"_s}}};
        return facts;
    }

    rules::BillBuilder m_builder;
};

rules::Condition Steel()
{
    return test::Value(u"材质"_s, u"＝"_s, u"钢管"_s);
}

} // namespace

TEST(BillBuilder, SumsComponentsOfOneRuleExactlyAndRoundsOnce)
{
    Pricing pricing(
        {RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s, {Quota(u"d1"_s, u"10m"_s, u"长度*2"_s)})})});
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(pricing.Add(QString::number(i), u"钢管"_s, u"50"_s, u"0.333"_s).outcome, Outcome::Priced);
    const Bill bill = pricing.Finish();
    ASSERT_EQ(bill.rows.size(), 1U);
    EXPECT_EQ(bill.rows[0].sum.ToText(), u"0.999"_s);
    EXPECT_EQ(bill.rows[0].quantity, u"1.00"_s) << "three times 0.33 would be 0.99";
    EXPECT_EQ(bill.rows[0].components, 3U);
    ASSERT_EQ(bill.rows[0].quotas.size(), 1U);
    EXPECT_EQ(bill.rows[0].quotas[0].quantity, u"0.200"_s);
    EXPECT_EQ(bill.totals, (rules::Totals{3, 3, 0, 0}));
}

TEST(BillBuilder, RowsAreOneByNumberNameAndUnitAndSayWhatAllTheirRulesSay)
{
    const auto range = [](const CString& upper) {
        return test::Range(u"公称直径"_s, u"＞"_s, u"20"_s, u"≤"_s, upper);
    };
    Pricing pricing(
        {RuleWith({Steel(), range(u"50"_s)}, {BillOf(u"02"_s, u"长度"_s)}),
         RuleWith({Steel(), range(u"80"_s)}, {BillOf(u"02"_s, u"长度"_s), BillOf(u"01"_s, u"长度"_s)}),
         RuleWith({Steel()}, {BillOf(u"02"_s, u"长度"_s)})});
    const ComponentResult first = pricing.Add(u"a"_s, u"钢管"_s, u"40"_s, u"1"_s);
    const ComponentResult second = pricing.Add(u"b"_s, u"钢管"_s, u"50"_s, u"2"_s);
    const ComponentResult third = pricing.Add(u"c"_s, u"钢管"_s, u"80"_s, u"4"_s);
    EXPECT_EQ(first.lines.at(0).row, second.lines.at(0).row)
        << "one rule, whatever the components' diameters";
    EXPECT_EQ(pricing.Finish().rows[0].FeatureText(), u"1.材质：钢管"_s)
        << "a condition that is not the same in both is not shared, though one of its bounds is";
    pricing.Add(u"d"_s, u"钢管"_s, u"100"_s, u"8"_s);
    EXPECT_EQ(first.lines.at(0).row, third.lines.at(0).row);
    const Bill bill = pricing.Finish();
    ASSERT_EQ(bill.order, (std::vector<std::uint32_t>{1, 0}));
    EXPECT_EQ(bill.rows[0].quantity, u"15.00"_s);
    EXPECT_EQ(bill.rows[0].specialty, u"给排水"_s);
    EXPECT_EQ(bill.rows[0].FeatureText(), u"1.材质：钢管"_s);
    EXPECT_EQ(bill.rows[1].FeatureText(), u"1.材质：钢管\n2.公称直径：＞20，≤80"_s) << "of one rule all";
    EXPECT_FALSE(bill.rows[0].numberRepeated);
}

TEST(BillBuilder, RowsOfOneNumberThatDifferInNameAreMarked)
{
    rules::BillItem other = BillOf(u"01"_s, u"长度"_s);
    other.record.strName = u"铜管"_s;
    Pricing pricing({RuleWith({}, {BillOf(u"01"_s, u"长度"_s), other, BillOf(u"02"_s, u"长度"_s)})});
    pricing.Add(u"a"_s, {}, {}, u"1"_s);
    const Bill bill = pricing.Finish();
    ASSERT_EQ(bill.rows.size(), 3U);
    EXPECT_TRUE(bill.rows[0].numberRepeated);
    EXPECT_TRUE(bill.rows[1].numberRepeated);
    EXPECT_FALSE(bill.rows[2].numberRepeated);
}

TEST(BillBuilder, BillIsDividedByTheColumnsAskedFor)
{
    Pricing pricing({RuleWith({}, {BillOf(u"01"_s, u"长度"_s, {Quota(u"d"_s, u"m"_s, u"长度"_s)})})},
                    rules::PricingMode::Bill, {1});
    for (const CString& diameter : {u"50"_s, u"40"_s, u" 50"_s})
        pricing.Add({}, {}, diameter, u"2"_s);
    const Bill bill = pricing.Finish();
    ASSERT_EQ(bill.order, (std::vector<std::uint32_t>{1, 0}));
    EXPECT_EQ(bill.rows[0].group, std::vector<CString>{u"50"_s});
    EXPECT_EQ(bill.rows[0].quantity, u"4.00"_s);
    EXPECT_EQ(bill.rows[0].quotas.at(0).quantity, u"4.00"_s);
    EXPECT_EQ(bill.rows[1].quantity, u"2.00"_s);
    EXPECT_FALSE(bill.rows[0].numberRepeated) << "a bill of its own for each value";
}

TEST(BillBuilder, WhatIsCountedAsItStandsAndYetOddIsRemarkedOn)
{
    Pricing pricing({RuleWith({Steel(), test::Value(u"公称直径"_s, u"≠"_s, u"1"_s)},
                              {BillOf(u"01"_s, u"长度"_s, {Quota(u"d"_s, u"m"_s, u"长度"_s)})})});
    using rules::RemarkKind;
    const ComponentResult odd = pricing.Add(u"a"_s, u"钢管 "_s, u"６５"_s, u"-2"_s);
    EXPECT_EQ(odd.remarks, (std::vector<rules::Remark>{{RemarkKind::Blanks, u"材质"_s, u"钢管 "_s},
                                                       {RemarkKind::NotInValueList, u"公称直径"_s, u"６５"_s},
                                                       {RemarkKind::Negative, u"长度"_s, u"-2"_s}}));
    EXPECT_EQ(pricing.Add(u"b"_s, u"钢管"_s, u"65"_s, u"2"_s).remarks, std::vector<rules::Remark>());
    EXPECT_EQ(pricing.Add(u"c"_s, u"钢管"_s, u"7000"_s, u"2"_s).remarks, std::vector<rules::Remark>())
        << "a plain number need not be on the list";
    EXPECT_EQ(pricing.Finish().rows.at(0).quantity, u"2.00"_s);
}

TEST(BillBuilder, RulesThatSayTheSameShareARow)
{
    Pricing pricing(
        {RuleWith({Steel(), test::Value(u"公称直径"_s, u"＝"_s, {})}, {BillOf(u"09"_s, u"长度"_s)}),
         RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s, {Quota(u"d"_s, u"m"_s, u"长度"_s)}),
                              BillOf(u"01"_s, u"1"_s, {Quota(u"d"_s, u"m"_s, u"1"_s)})})});
    EXPECT_EQ(pricing.Add(u"a"_s, u"钢管"_s, u"50"_s, u"2"_s).lines.size(), 2U);
    const Bill bill = pricing.Finish();
    ASSERT_EQ(bill.rows.size(), 1U);
    EXPECT_EQ(bill.rows[0].quantity, u"3.00"_s);
    ASSERT_EQ(bill.rows[0].quotas.size(), 1U);
    EXPECT_EQ(bill.rows[0].quotas[0].quantity, u"3.00"_s);
}

TEST(BillBuilder, MissingQuantityIsToldAndTheRestSummed)
{
    Pricing pricing({RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s, {Quota(u"d"_s, u"m"_s, u""_s)})})});
    pricing.Add(u"a"_s, u"钢管"_s, u"50"_s, u"2"_s);
    const ComponentResult without = pricing.Add(u"b"_s, u"钢管"_s, u"50"_s, u""_s);
    EXPECT_EQ(without.outcome, Outcome::Priced);
    EXPECT_EQ(without.lines.at(0).quantity.fault, rules::QuantityFault::NameWithoutValue);
    const Bill bill = pricing.Finish();
    EXPECT_EQ(bill.rows[0].quantity, u"2.00"_s);
    EXPECT_EQ(bill.rows[0].missing, 1U);
    EXPECT_EQ(bill.rows[0].quotas[0].missing, 2U);
    EXPECT_EQ(bill.rows[0].quotas[0].quantity, CString()) << "never 0";
}

TEST(BillBuilder, ItemsOfOtherLibrariesAreToldAndNotPriced)
{
    Pricing pricing(
        {RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s, {Quota(u"d"_s, u"m"_s, u"1"_s, u"ALT"_s)}),
                              BillOf(u"02"_s, u"长度"_s, {}, u"ALT"_s)}),
         RuleWith({}, {BillOf(u"03"_s, u"长度"_s, {}, u"ALT"_s)})});
    const ComponentResult some = pricing.Add(u"a"_s, u"钢管"_s, u"50"_s, u"2"_s);
    EXPECT_EQ(some.lines.size(), 1U);
    EXPECT_EQ(some.itemsOfOtherLibraries, 2);
    const ComponentResult none = pricing.Add(u"b"_s, u"铜管"_s, u"50"_s, u"2"_s);
    EXPECT_EQ(none.refusal, Refusal::OtherLibraries);
    EXPECT_EQ(none.itemsOfOtherLibraries, 1);
    EXPECT_EQ(pricing.Finish().rows.size(), 1U);
}

TEST(BillBuilder, LibraryCodesAreComparedWithoutCase)
{
    Pricing pricing({RuleWith({}, {BillOf(u"01"_s, u"1"_s, {}, u"qd"_s)})});
    EXPECT_EQ(pricing.Add(u"a"_s, {}, {}, {}).outcome, Outcome::Priced);
}

TEST(BillBuilder, QuotaModePricesTheQuotasOfTheRule)
{
    Rule rule = RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s)});
    rule.quotas.push_back(Quota(u"d1"_s, u"10m"_s, u"长度"_s));
    Pricing pricing({rule}, rules::PricingMode::Quota);
    pricing.Add(u"a"_s, u"钢管"_s, u"50"_s, u"25"_s);
    const Bill bill = pricing.Finish();
    ASSERT_EQ(bill.rows.size(), 1U);
    EXPECT_EQ(bill.rows[0].number, u"d1"_s);
    EXPECT_EQ(bill.rows[0].quantity, u"2.500"_s);
}

TEST(BillBuilder, EveryComponentIsPricedOnDefaultOrRefusedWithAReason)
{
    Pricing pricing({RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s)}),
                     RuleWith({test::Value(u"材质"_s, u"＝"_s, u"铜管"_s)}, {}), RuleWith({}, {}, true)});
    EXPECT_EQ(pricing.Add(u"a"_s, u"钢管"_s, {}, u"1"_s).outcome, Outcome::Priced);
    EXPECT_EQ(pricing.Add(u"a"_s, u"钢管"_s, {}, u"1"_s).refusal, Refusal::IdTwice) << "the first counts";
    EXPECT_EQ(pricing.Add(u"b"_s, u"铜管"_s, {}, u"1"_s).refusal, Refusal::NoItems);
    EXPECT_EQ(pricing.Add(u"c"_s, u"PPR管"_s, {}, u"1"_s).outcome, Outcome::OnDefault);
    EXPECT_EQ(pricing.Add(u"d"_s, u"钢管"_s, {}, u"1"_s, u"给排水\\管道\\没有"_s).refusal,
              Refusal::UnknownCategory);
    EXPECT_EQ(pricing.Add({}, u"钢管"_s, {}, u"1"_s).outcome, Outcome::Priced);
    EXPECT_EQ(pricing.Add({}, u"钢管"_s, {}, u"1"_s).outcome, Outcome::Priced) << "no id is nobody's";
    const Bill bill = pricing.Finish();
    EXPECT_EQ(bill.totals, (rules::Totals{7, 3, 1, 3}));
    EXPECT_EQ(bill.rows.at(0).quantity, u"3.00"_s);
}

TEST(BillBuilder, ComponentThatNoRuleTakesIsRefused)
{
    Pricing pricing({RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s)})});
    EXPECT_EQ(pricing.Add(u"a"_s, u"铜管"_s, {}, u"1"_s).refusal, Refusal::NoRuleApplies);
}

TEST(BillBuilder, DefaultRuleWithItemsPricesThem)
{
    Pricing pricing({RuleWith({Steel()}, {BillOf(u"01"_s, u"长度"_s)}, true)});
    const ComponentResult result = pricing.Add(u"a"_s, u"铜管"_s, {}, u"1"_s);
    EXPECT_EQ(result.outcome, Outcome::OnDefault);
    EXPECT_EQ(result.lines.size(), 1U);
    EXPECT_EQ(pricing.Finish().rows.at(0).FeatureText(), CString())
        << "the conditions of a default rule say nothing";
}

TEST(BillBuilder, HeaderWithTheUnitServesConditionAndFormula)
{
    rules::PricingFacts facts;
    facts.billLibrary = BillLibrary;
    facts.attributes[Category] = {{.name = u"长边"_s, .code = u"AM_LongEdge"_s, .unit = u"mm"_s}};
    auto category = std::make_shared<rules::SmallCategory>(*test::CategoryOf(
        {RuleWith({test::Range(u"长边"_s, u"＞"_s, u"300"_s, {}, {})}, {BillOf(u"01"_s, u"长边*2"_s)})}));
    category->text = Category;
    rules::Specialty specialty;
    specialty.bigCategories.push_back({1, u"管道"_s, {category}});
    for (const CString& header : {u"长边"_s, u"AM_LongEdge"_s, u"长边（mm）"_s}) {
        rules::BillBuilder builder(std::make_shared<const rules::Configuration>(std::vector{specialty}),
                                   facts, {header});
        const std::vector<CString> cells{u"500"_s};
        ASSERT_EQ(builder.Add({{}, Category, {}, cells}).outcome, Outcome::Priced) << header.toStdString();
        EXPECT_EQ(builder.Finish().rows.at(0).quantity, u"1.00"_s);
    }
}

TEST(BillBuilder, FittingsAreToldAndHaveNoEffect)
{
    rules::BillItem item = BillOf(u"01"_s, u"长度"_s);
    item.record.strAnnex = u"是"_s;
    Pricing pricing({RuleWith({}, {item})});
    pricing.Add(u"a"_s, {}, {}, u"1"_s);
    const Bill bill = pricing.Finish();
    EXPECT_TRUE(bill.rows.at(0).withFittings);
    EXPECT_EQ(bill.rows.at(0).quantity, u"1.00"_s);
}
