#include "rules/CheckTesting.h"
#include "rules/check/Where.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;
using test::CodesOf;
using test::FindingsOf;
using test::GoodBill;
using test::GoodQuota;
using test::Value;

namespace {

rules::Condition Copper()
{
    return Value(u"材质"_s, u"＝"_s, u"铜管"_s);
}

/// A rule whose bill item is changed a little.
rules::Rule WithBill(const std::function<void(rules::BillItem&)>& change)
{
    rules::Rule rule = test::PricedRule({Copper()});
    change(rule.bills.front());
    return rule;
}

rules::Rule WithQuota(const std::function<void(DeStruct&)>& change)
{
    return WithBill([&](rules::BillItem& bill) { change(bill.quotas.front().record); });
}

/// A rule of quota mode.
rules::Rule QuotaRule(std::vector<rules::QuotaItem> quotas)
{
    rules::Rule rule = test::RuleOf({Copper()});
    rule.quotas = std::move(quotas);
    return rule;
}

rules::CheckFacts QuotaMode()
{
    rules::CheckFacts facts = test::KnownFacts();
    facts.isBillMode = false;
    return facts;
}

} // namespace

TEST(ItemCheck, GoodItemsHaveNoFinding)
{
    EXPECT_EQ(CodesOf({test::PricedRule({Copper()})}), CStringArray());
    EXPECT_EQ(CodesOf({QuotaRule({GoodQuota()})}, QuotaMode()), CStringArray());
}

TEST(ItemCheck, RuleWithoutItemsOfTheModeIsTold)
{
    EXPECT_EQ(CodesOf({QuotaRule({GoodQuota()})}), CStringArray{u"no-items@1"_s});
    EXPECT_EQ(CodesOf({test::PricedRule({Copper()})}, QuotaMode()), CStringArray{u"no-items@1"_s});
}

TEST(ItemCheck, BillItemTwiceInARuleIsToldAndMended)
{
    rules::Rule rule = test::PricedRule({Copper()});
    rule.bills.push_back(GoodBill(u"031001001001"_s, 2));
    const auto findings = FindingsOf({rule});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"repeated-item@1"_s});
    ASSERT_TRUE(findings[0].mend);
    EXPECT_EQ(findings[0].mend->op, u"DelQd"_s);
    EXPECT_EQ(findings[0].mend->ids, std::vector{2});
    rule.bills[1].quotas[0].record.strDeId = u"示10-1-8"_s;
    EXPECT_FALSE(FindingsOf({rule})[0].mend) << "that would lose its quota item";
    rule.bills[1] = GoodBill(u"031001002001"_s, 2);
    rule.bills[1].quotas.clear();
    EXPECT_EQ(CodesOf({rule}), CStringArray());
}

TEST(ItemCheck, QuotaItemTwiceIsToldAndMendedInBothModes)
{
    const auto inBill = FindingsOf(
        {WithBill([](rules::BillItem& bill) { bill.quotas.push_back(GoodQuota(u"示10-1-7"_s, 2)); })});
    ASSERT_EQ(test::Codes(inBill), CStringArray{u"repeated-item@1"_s});
    ASSERT_TRUE(inBill[0].mend);
    EXPECT_EQ(inBill[0].mend->op, u"DelDeInQdNode"_s);
    EXPECT_EQ(inBill[0].mend->deIdsByQd, (std::map<int, std::vector<int>>{{1, {2}}}));
    const auto alone = FindingsOf({QuotaRule({GoodQuota(), GoodQuota(u"示10-1-7"_s, 2)})}, QuotaMode());
    ASSERT_EQ(test::Codes(alone), CStringArray{u"repeated-item@1"_s});
    ASSERT_TRUE(alone[0].mend);
    EXPECT_EQ(alone[0].mend->op, u"DelDeInConfigNode"_s);
    EXPECT_EQ(CodesOf({QuotaRule({GoodQuota(), GoodQuota(u"示10-1-8"_s, 2)})}, QuotaMode()), CStringArray());
}

TEST(ItemCheck, OneNumberWithTwoNamesOrUnitsIsTold)
{
    const rules::Rule good = test::PricedRule({Copper()});
    rules::Rule other = test::PricedRule({Value(u"壁厚"_s, u"＝"_s, u"2"_s)});
    EXPECT_FALSE(CodesOf({good, other}).contains(u"number-two-names@2"_s));
    other.bills[0].record.strName = u"铜管"_s;
    const auto findings = FindingsOf({good, other});
    EXPECT_TRUE(test::Codes(findings).contains(u"number-two-names@2"_s));
    other = test::PricedRule({Value(u"壁厚"_s, u"＝"_s, u"2"_s)});
    other.bills[0].record.strUnit = u"km"_s;
    EXPECT_TRUE(CodesOf({good, other}).contains(u"number-two-units@2"_s));
    EXPECT_FALSE(CodesOf({good, other}).contains(u"number-two-names@2"_s));
    other.bills[0].record.strQdId = u"031001001002"_s;
    EXPECT_FALSE(CodesOf({good, other}).contains(u"number-two-units@2"_s));
}

TEST(ItemCheck, OneNumberForTwoFeaturesIsTold)
{
    const rules::Rule copper = test::PricedRule({Copper()});
    EXPECT_EQ(CodesOf({copper, test::PricedRule({Value(u"材质"_s, u"＝"_s, u"PPR管"_s)})}),
              CStringArray{u"number-two-features@2"_s});
    EXPECT_EQ(CodesOf({test::PricedRule({Copper(), Value(u"壁厚"_s, u"＝"_s, u"2"_s)}), copper}),
              CStringArray())
        << "no attribute of both differs";
    rules::Rule other = test::PricedRule({Value(u"材质"_s, u"＝"_s, u"PPR管"_s)});
    other.bills[0].record.strQdId = u"031001001002"_s;
    EXPECT_EQ(CodesOf({copper, other}), CStringArray());
}

TEST(ItemCheck, NumberNotOfTheLibrarysFormIsTold)
{
    for (const CString& number : {u"031001001"_s, u"0310010010011"_s, u"03100100100A"_s, u""_s})
        EXPECT_EQ(CodesOf({WithBill([&](rules::BillItem& bill) { bill.record.strQdId = number; })})[0],
                  u"bad-number@1"_s);
    rules::CheckFacts facts = test::KnownFacts();
    facts.bills.numberLength = -1;
    facts.bills.items.clear();
    EXPECT_FALSE(CodesOf({WithBill([&](rules::BillItem& bill) { bill.record.strQdId = u"X-1"_s; })}, facts)
                     .contains(u"bad-number@1"_s))
        << "the library has no rule";
}

TEST(ItemCheck, ItemThatTheLibraryHasNotIsTold)
{
    EXPECT_EQ(CodesOf({WithBill([](rules::BillItem& bill) {
                  bill.record.strQdId = u"031001009001"_s;
                  bill.quotas.clear();
              })}),
              CStringArray{u"unknown-item@1"_s});
    EXPECT_EQ(CodesOf({WithQuota([](DeStruct& quota) { quota.strDeId = u"示9-9-9"_s; })}),
              CStringArray{u"unknown-item@1"_s});
}

TEST(ItemCheck, ItemOfAnotherLibraryIsToldAndNotCheckedFurther)
{
    EXPECT_EQ(CodesOf({WithBill([](rules::BillItem& bill) {
                  bill.record.strQdCode = u"OTHER"_s;
                  bill.record.strQdId = u"X"_s;
              })}),
              CStringArray{u"other-library@1"_s});
    EXPECT_EQ(CodesOf({WithBill([](rules::BillItem& bill) { bill.record.strQdCode = u"bill"_s; })}),
              CStringArray())
        << "codes are compared without regard to case";
}

TEST(ItemCheck, QuotaThatTheGuideDoesNotHangOnItsBillIsTold)
{
    EXPECT_EQ(CodesOf({WithBill([](rules::BillItem& bill) { bill.record.strQdId = u"031001002001"_s; })}),
              CStringArray{u"quota-not-on-bill@1"_s});
    EXPECT_EQ(CodesOf({WithQuota([](DeStruct& quota) { quota.strDeId = u"示10-1-8"_s; })}), CStringArray())
        << "no guide speaks of it";
}

TEST(ItemCheck, UnitThatDoesNotGoWithTheCalculationItemIsTold)
{
    const auto withUnit = [](const CString& unit, const CString& formula) {
        return CodesOf({WithBill([&](rules::BillItem& bill) {
            bill.record.strUnit = unit;
            bill.record.strFormula = formula;
        })});
    };
    EXPECT_EQ(withUnit(u"台"_s, u"管道长度"_s), CStringArray{u"unfit-unit@1"_s});
    EXPECT_EQ(withUnit(u"m"_s, u"数量"_s), CStringArray{u"unfit-unit@1"_s});
    EXPECT_EQ(withUnit(u"m"_s, u"刷油面积"_s), CStringArray{u"unfit-unit@1"_s});
    EXPECT_EQ(withUnit(u"台"_s, u"水平管长度+立管长度"_s), CStringArray{u"unfit-unit@1"_s})
        << "the expression of a calculation item";
    EXPECT_EQ(withUnit(u"㎡"_s, u"刷油面积"_s), CStringArray());
    EXPECT_EQ(withUnit(u"套"_s, u"数量"_s), CStringArray());
    EXPECT_EQ(withUnit(u"系统"_s, u"管道长度"_s), CStringArray()) << "counts anything";
    EXPECT_EQ(withUnit(u"台"_s, u"管道长度×2"_s), CStringArray()) << "who writes a formula means it";
}

TEST(ItemCheck, MultipleThatIsNotTheNumberInTheUnitIsToldAndMended)
{
    const auto bill =
        FindingsOf({WithBill([](rules::BillItem& item) { item.record.strUnitCode = u"10"_s; })});
    ASSERT_EQ(test::Codes(bill), CStringArray{u"unit-multiple@1"_s});
    ASSERT_TRUE(bill[0].mend && bill[0].mend->qd);
    EXPECT_EQ(bill[0].mend->op, u"ResetQd"_s);
    EXPECT_EQ(bill[0].mend->qd->strUnitCode, u"1"_s);
    EXPECT_EQ(bill[0].mend->qd->strName, u"镀锌钢管"_s) << "a reset overwrites the whole record";
    const auto below = FindingsOf({WithQuota([](DeStruct& quota) { quota.strUnitCode.clear(); })});
    ASSERT_EQ(test::Codes(below), CStringArray{u"unit-multiple@1"_s});
    ASSERT_TRUE(below[0].mend && below[0].mend->de);
    EXPECT_EQ(below[0].mend->op, u"ResetDeToQd"_s);
    EXPECT_EQ(below[0].mend->qdId, 1);
    EXPECT_EQ(below[0].mend->de->strUnitCode, u"10"_s);
    rules::QuotaItem quota = GoodQuota();
    quota.record.strUnitCode = u"100"_s;
    const auto alone = FindingsOf({QuotaRule({quota})}, QuotaMode());
    ASSERT_EQ(test::Codes(alone), CStringArray{u"unit-multiple@1"_s});
    EXPECT_EQ(alone[0].mend->op, u"ResetDeToConfig"_s);
    EXPECT_EQ(CodesOf({WithBill([](rules::BillItem& item) { item.record.strUnitCode.clear(); })}),
              CStringArray())
        << "none is 1";
}

TEST(ItemCheck, FormulaThatIsMissingWrongOrOfUnknownNamesIsTold)
{
    const auto with = [](const CString& formula) {
        return CodesOf({WithBill([&](rules::BillItem& bill) { bill.record.strFormula = formula; })});
    };
    EXPECT_EQ(with(u" "_s), CStringArray{u"no-formula@1"_s});
    EXPECT_EQ(with(u"管道长度×"_s), CStringArray{u"bad-formula@1"_s});
    EXPECT_EQ(with(u"管道长度+长度"_s), CStringArray{u"unknown-name@1"_s});
    EXPECT_EQ(with(u"管道长度×2+水平管长度×壁厚"_s), CStringArray()) << "calculation item, name, attribute";
}

TEST(Where, RulesThatGiveAnItemAreFoundByItsNumberAndABillItemByItsBaseNumber)
{
    rules::SmallCategory category = test::WithDefault(
        {test::PricedRule({Copper()}), QuotaRule({GoodQuota()}), WithBill([](rules::BillItem& bill) {
             bill.record.strQdId = u"031001001002"_s;
             bill.quotas[0].record.strDeId = u"示10-1-70"_s;
         })});
    const rules::Configuration configuration = test::ConfigurationOf(category);
    const auto positions = [&](const CString& number) {
        std::vector<int> found;
        for (const rules::ItemUse& use : rules::UsesOf(configuration, number))
            found.push_back(use.position);
        return found;
    };
    EXPECT_EQ(positions(u"031001001001"_s), std::vector{1});
    EXPECT_EQ(positions(u"031001001"_s), (std::vector{1, 3}));
    EXPECT_EQ(positions(u"示10-1-7"_s), (std::vector{1, 2})) << "and not 示10-1-70";
    EXPECT_EQ(positions(u"0310"_s), std::vector<int>()) << "a chapter is no item";
    const rules::ItemUse use = rules::UsesOf(configuration, u"示10-1-7"_s)[0];
    EXPECT_EQ(use.billNumber, u"031001001001"_s);
    EXPECT_FALSE(use.isBill);
    EXPECT_EQ(use.category, test::Pipes);
    EXPECT_EQ(use.rule, u"材质＝铜管;"_s);
}
