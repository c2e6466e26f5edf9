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
    EXPECT_EQ(CodesOf({rule}), CStringArray{u"repeated-item@1"_s});
    EXPECT_FALSE(FindingsOf({rule})[0].mend) << "that would lose its quota item";
    rule.bills[1] = GoodBill(u"031001002001"_s, 2);
    rule.bills[1].quotas.clear();
    EXPECT_EQ(CodesOf({rule}), CStringArray());
}

TEST(ItemCheck, BillItemTwiceWithTwoFormulasAddsUpAndIsNoMistakeToBeTakenOut)
{
    rules::Rule rule = test::PricedRule({Copper()});
    rule.bills[0].record.strFormula = u"水平管长度"_s;
    rule.bills.push_back(GoodBill(u"031001001001"_s, 2));
    rule.bills[1].record.strFormula = u"立管长度"_s;
    const auto two = FindingsOf({rule});
    ASSERT_EQ(test::Codes(two), CStringArray{u"added-quantities@1"_s});
    EXPECT_FALSE(two[0].mend);
    EXPECT_EQ(rules::SeverityOf(two[0].code), rules::Severity::Warning);
    EXPECT_TRUE(two[0].text.contains(u"计算式不同，两个工程量都算进去"_s)) << two[0].text.toStdString();

    rule.bills.push_back(GoodBill(u"031001001001"_s, 3));
    rule.bills[2].record.strFormula = u" 立管长度"_s;
    const auto three = FindingsOf({rule});
    ASSERT_EQ(test::Codes(three), (CStringArray{u"added-quantities@1"_s, u"repeated-item@1"_s}));
    ASSERT_TRUE(three[1].mend) << "it is the second one again, although not the first";
    EXPECT_EQ(three[1].mend->ids, std::vector{3});
}

TEST(ItemCheck, RepeatedItemIsMendedOnlyWhereNothingElseGoesWithIt)
{
    rules::Rule rule = test::PricedRule({Copper()});
    rule.bills.push_back(GoodBill(u"031001001001"_s, 2));
    const auto withSecond = [&](const std::function<void(rules::BillItem&)>& change) {
        rules::Rule changed = rule;
        change(changed.bills[1]);
        for (const rules::Finding& finding : FindingsOf({changed}))
            if (finding.code == rules::FindingCode::RepeatedItem) return finding.mend.has_value();
        ADD_FAILURE() << "one quantity is counted twice";
        return false;
    };
    EXPECT_TRUE(withSecond([](rules::BillItem& bill) { bill.record.strUnitCode = u"10"_s; }))
        << "the unit tells what the multiple must be";
    EXPECT_FALSE(withSecond([](rules::BillItem& bill) { bill.record.strAnnex = u"是"_s; }));
    EXPECT_FALSE(withSecond([](rules::BillItem& bill) { bill.record.strName = u"铜管"_s; }));
    EXPECT_FALSE(withSecond([](rules::BillItem& bill) { bill.record.strUnit = u"km"_s; }));
    EXPECT_FALSE(withSecond([](rules::BillItem& bill) { bill.record.strQdIdUser = u"甲"_s; }));
    EXPECT_FALSE(withSecond([](rules::BillItem& bill) { bill.quotas[0].record.strFormula = u"立管长度"_s; }))
        << "the quota item below counts something else";
    rule.bills[0].record.strQdCode = u"OTHER"_s;
    rule.bills[1].record.strQdCode = u"OTHER"_s;
    EXPECT_FALSE(CodesOf({rule}).contains(u"repeated-item@1"_s)) << "not priced, so not counted";
}

TEST(ItemCheck, QuotaItemTwiceWithTwoFormulasAddsUp)
{
    rules::QuotaItem second = GoodQuota(u"示10-1-7"_s, 2);
    second.record.strFormula = u"立管长度"_s;
    const auto below = FindingsOf({WithBill([&](rules::BillItem& bill) { bill.quotas.push_back(second); })});
    ASSERT_EQ(test::Codes(below), CStringArray{u"added-quantities@1"_s});
    EXPECT_FALSE(below[0].mend);
    const auto alone = FindingsOf({QuotaRule({GoodQuota(), second})}, QuotaMode());
    ASSERT_EQ(test::Codes(alone), CStringArray{u"added-quantities@1"_s});
    EXPECT_FALSE(alone[0].mend);
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

TEST(ItemCheck, OneNumberWithTwoNamesOrUnitsIsToldOfEveryRuleThatHasTheOtherOne)
{
    const rules::Rule good = test::PricedRule({Copper()});
    rules::Rule other = good;
    other.bills[0].record.strName = u"铜管"_s;
    other.bills[0].record.strUnit = u"km"_s;
    other.bills.push_back(other.bills[0]);
    std::vector<rules::Finding> findings = FindingsOf({good, other, good, other});
    std::erase_if(findings, [](const rules::Finding& finding) {
        return finding.code != rules::FindingCode::NumberTwoNames &&
               finding.code != rules::FindingCode::NumberTwoUnits;
    });
    EXPECT_EQ(test::Codes(findings), (CStringArray{u"number-two-names@2"_s, u"number-two-units@2"_s,
                                                   u"number-two-names@4"_s, u"number-two-units@4"_s}));
    for (const rules::Finding& finding : findings)
        EXPECT_EQ(finding.others, std::vector{1});
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

TEST(ItemCheck, FeaturesOfEveryTwoRulesAreCompared)
{
    const rules::Rule wall = test::PricedRule({Value(u"壁厚"_s, u"＝"_s, u"2"_s)});
    rules::Rule copper = test::PricedRule({Copper()});
    const rules::Rule plastic = test::PricedRule({Value(u"材质"_s, u"＝"_s, u"PPR管"_s)});
    const auto ofNumbers = [&] {
        std::vector<rules::Finding> findings = FindingsOf({wall, copper, plastic});
        std::erase_if(findings, [](const rules::Finding& finding) {
            return finding.code == rules::FindingCode::PartlyHidden;
        });
        return findings;
    };
    const auto findings = ofNumbers();
    ASSERT_EQ(test::Codes(findings), CStringArray{u"number-two-features@3"_s});
    EXPECT_EQ(findings[0].others, std::vector{2}) << "the first one does not ask for the attribute";
    EXPECT_TRUE(findings[0].text.contains(u"材质＝PPR管"_s) && findings[0].text.contains(u"材质＝铜管"_s));
    copper.bills[0].record.strName = u"铜管"_s;
    EXPECT_EQ(test::Codes(ofNumbers()), CStringArray{u"number-two-names@2"_s}) << "the bill keeps them apart";
}

TEST(ItemCheck, OneNumberWrittenInTwoWaysIsOneFeature)
{
    const auto thick = [](const CString& value) {
        return test::PricedRule({Value(u"壁厚"_s, u"＝"_s, value)});
    };
    const auto isTold = [&](const CString& a, const CString& b) {
        return CodesOf({thick(a), thick(b)}).contains(u"number-two-features@2"_s);
    };
    EXPECT_FALSE(isTold(u"2"_s, u"2.0"_s));
    EXPECT_TRUE(isTold(u"2"_s, u"2.5"_s));
    EXPECT_TRUE(isTold(u"2"_s, u"二"_s));
}

TEST(ItemCheck, NumbersOfALibraryThatBringTheirSuffixHaveItInTheirLength)
{
    rules::CheckFacts facts = test::KnownFacts();
    const auto codes = [&](const CString& number) {
        return CodesOf({WithBill([&](rules::BillItem& bill) { bill.record.strQdId = number; })}, facts);
    };
    facts.bills.form = {9, 3, true};
    for (const CString& number :
         {u"031001001001"_s, u"031001001999"_s, u"0310010011000"_s, u"03100100100A"_s})
        EXPECT_EQ(codes(number), CStringArray()) << number.toStdString();
    for (const CString& number : {u"03100100100"_s, u"031001001001001"_s, u"031001001-01"_s})
        EXPECT_EQ(codes(number)[0], u"bad-number@1"_s) << number.toStdString();
    facts.bills.form = {11, 1};
    facts.bills.items = {{u"03100100100"_s, {}}};
    facts.quotas.items[u"示10-1-7"_s].bills = {u"03100100100"_s};
    EXPECT_EQ(codes(u"031001001005"_s), CStringArray());
    EXPECT_EQ(codes(u"031001002005"_s)[0], u"unknown-item@1"_s);
    for (const CString& number : {u"03100100100"_s, u"0310010010001"_s, u"03100100100A"_s})
        EXPECT_EQ(codes(number)[0], u"bad-number@1"_s) << number.toStdString();
}

TEST(ItemCheck, BillNumberMayHaveLettersInFrontOfItsSuffix)
{
    rules::CheckFacts facts = test::KnownFacts();
    facts.bills.items[u"03B001001"_s] = {};
    facts.quotas.items[u"示10-1-7"_s].bills.append(u"03B001001"_s);
    const auto codes = [&](const CString& number) {
        return CodesOf({WithBill([&](rules::BillItem& bill) { bill.record.strQdId = number; })}, facts);
    };
    EXPECT_EQ(codes(u"03B001001001"_s), CStringArray());
    EXPECT_EQ(codes(u"03B00100100A"_s)[0], u"bad-number@1"_s);
    EXPECT_EQ(codes(u"03十001001001"_s)[0], u"bad-number@1"_s);
}

TEST(ItemCheck, NumberNotOfTheLibrarysFormIsTold)
{
    for (const CString& number : {u"031001001"_s, u"0310010010011"_s, u"03100100100A"_s, u""_s})
        EXPECT_EQ(CodesOf({WithBill([&](rules::BillItem& bill) { bill.record.strQdId = number; })})[0],
                  u"bad-number@1"_s);
    rules::CheckFacts facts = test::KnownFacts();
    facts.bills.form = {};
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
    const rules::Configuration configuration = test::ConfigurationWith(category);
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
    EXPECT_EQ(use.category, test::PipeCategory);
    EXPECT_EQ(use.rule, u"材质＝铜管;"_s);
}

TEST(Where, BaseNumberMayHaveLetters)
{
    const rules::Configuration configuration = test::ConfigurationWith(test::WithDefault(
        {WithBill([](rules::BillItem& bill) { bill.record.strQdId = u"03B001001002"_s; })}));
    EXPECT_EQ(rules::UsesOf(configuration, u"03B001001"_s).size(), 1U);
    EXPECT_EQ(rules::UsesOf(configuration, u"03B001"_s).size(), 0U) << "a chapter is no item";
}
