#include "rules/sheet/RuleSheet.h"

#include "rules/CompareTesting.h"
#include "rules/sheet/ConditionCell.h"
#include "rules/sheet/ItemCell.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using rules::Rule;
using rules::RuleSheet;
using test::DefaultRule;
using test::PipeRule;
using test::Pipes;

namespace {

/// A library with the bill items 01 and 03, which has the quantity that the category gives, and the quota
/// items 8-1 and 1-1.
rules::SheetItems Library()
{
    rules::SheetItems items;
    items.bill = [](const CString& number, const CString& category) -> std::optional<QdStruct> {
        if (number != u"01" && number != u"03") return std::nullopt;
        QdStruct record;
        record.strQdId = number;
        record.strName = u"钢管"_s;
        record.strFormula = number == u"01" ? u"管道长度"_s : category + u"的"_s;
        record.strAnnex = u"是"_s;
        return record;
    };
    const auto quota = [](const CString& known) {
        return [known](const CString& number, const CString&) -> std::optional<DeStruct> {
            if (number != known) return std::nullopt;
            DeStruct record;
            record.strDeId = number;
            record.strFormula = u"管道长度"_s;
            record.strAnnex = u"否"_s;
            return record;
        };
    };
    items.quotaOfBills = quota(u"8-1"_s);
    items.quota = quota(u"1-1"_s);
    return items;
}

const rules::CatalogueFacts Facts{{test::PipeCategory, {{.name = u"材质"_s}, {.name = u"公称直径"_s}}}};

RuleSheet SheetOf(const rules::Configuration& configuration)
{
    std::vector<rules::SheetFault> faults;
    const RuleSheet sheet =
        rules::MakeSheet({configuration.Find(test::PipeCategory)}, Facts, Library(), faults);
    EXPECT_TRUE(faults.empty()) << faults.front().text.toStdString();
    return sheet;
}

std::vector<Rule> Taken(const RuleSheet& sheet, const rules::Configuration& present)
{
    std::vector<rules::SheetFault> faults;
    const rules::Configuration taken = rules::ReadSheet(sheet, present, Facts, Library(), faults);
    EXPECT_TRUE(faults.empty()) << faults.front().text.toStdString();
    return test::RulesIn(taken);
}

CString FaultOf(const RuleSheet& sheet)
{
    std::vector<rules::SheetFault> faults;
    rules::ReadSheet(sheet, Pipes({DefaultRule()}), Facts, Library(), faults);
    return faults.empty() ? CString() : CString::number(faults[0].line) + u'：' + faults[0].text;
}

const CStringArray Headings{u"类别"_s, u"默认规则"_s, u"材质"_s, u"公称直径"_s, u"清单"_s, u"定额"_s};

RuleSheet Handmade(const QList<CStringArray>& rows)
{
    RuleSheet sheet{Headings, {}};
    for (const CStringArray& row : rows)
        sheet.rows.push_back({static_cast<qint64>(sheet.rows.size()) + 2, row});
    return sheet;
}

QList<CStringArray> CellsOf(const RuleSheet& sheet)
{
    QList<CStringArray> cells{sheet.headings};
    for (const RuleSheet::Row& row : sheet.rows)
        cells.append(row.cells);
    return cells;
}

} // namespace

TEST(ConditionCell, SaysValuesAndRangesAndReadsThemBack)
{
    for (const auto& [condition, cell] : std::vector<std::pair<rules::Condition, CString>>{
             {test::Value(u"a"_s, u"＝"_s, u"X"_s), u"＝X"_s},
             {test::Value(u"a"_s, u"≠"_s, u"≤5"_s), u"≠≤5"_s},
             {test::Value(u"a"_s, u"＝"_s, u"1..2"_s), u"＝1..2"_s},
             {test::Range(u"a"_s, u"＞"_s, u"50"_s, u"≤"_s, u"65"_s), u"50＜..≤65"_s},
             {test::Range(u"a"_s, u"≥"_s, u"DN50"_s, u"＜"_s, u"DN65"_s), u"DN50≤..＜DN65"_s},
             {test::Range(u"a"_s, u"＞"_s, u"50"_s, {}, {}), u"＞50"_s},
             {test::Range(u"a"_s, {}, {}, u"≤"_s, u"-5"_s), u"≤-5"_s}}) {
        EXPECT_EQ(rules::CellOf(condition), cell) << cell.toStdString();
        EXPECT_EQ(rules::ConditionOf(u"a"_s, cell), condition) << cell.toStdString();
    }
}

TEST(ConditionCell, ReadsWhatPeopleType)
{
    EXPECT_EQ(rules::ConditionOf(u"a"_s, u"铜管"_s), test::Value(u"a"_s, u"＝"_s, u"铜管"_s));
    EXPECT_EQ(rules::ConditionOf(u"a"_s, u"=50"_s), test::Value(u"a"_s, u"＝"_s, u"50"_s));
    EXPECT_EQ(rules::ConditionOf(u"a"_s, u"<>50"_s), test::Value(u"a"_s, u"≠"_s, u"50"_s));
    EXPECT_EQ(rules::ConditionOf(u"a"_s, u"50 <..<= 65"_s),
              test::Range(u"a"_s, u"＞"_s, u"50"_s, u"≤"_s, u"65"_s));
    EXPECT_EQ(rules::ConditionOf(u"a"_s, u">= 5"_s), test::Range(u"a"_s, u"≥"_s, u"5"_s, {}, {}));
}

TEST(ConditionCell, RefusesWhatIsNoCondition)
{
    for (const CString& cell : {u"＞"_s, u"≤ "_s, u"50＜..≤"_s, u"50＜..＞65"_s})
        EXPECT_EQ(rules::ConditionOf(u"a"_s, cell), std::nullopt) << cell.toStdString();
}

TEST(ConditionCell, SaysNothingThatWouldBeReadAsSomethingElse)
{
    EXPECT_EQ(rules::CellOf(test::Value(u"a"_s, u"="_s, u"5"_s)), std::nullopt) << "an unknown operator";
    EXPECT_EQ(rules::CellOf(test::Value(u"a"_s, {}, u"5"_s)), std::nullopt);
    EXPECT_EQ(rules::CellOf(test::Value(u"a"_s, u"＝"_s, u"5\n6"_s)), std::nullopt);
    EXPECT_EQ(rules::CellOf(test::Value(u"a"_s, u"＝"_s, u"5 "_s)), std::nullopt);
    EXPECT_EQ(rules::CellOf(test::Range(u"a"_s, u"＜"_s, u"5"_s, {}, {})), std::nullopt);
}

TEST(ItemCell, NumbersAloneHaveWhatTheLibraryGives)
{
    rules::BillItem usual = test::Bill(u"01"_s, u"管道长度"_s, {test::Quota(u"8-1"_s, u"管道长度"_s)});
    usual.record.strAnnex = u"是"_s;
    EXPECT_EQ(rules::BillCell({usual}, test::PipeCategory, Library()), u"01\n└8-1"_s);
    usual.record.strAnnex = u"否"_s;
    usual.record.strFormula.clear();
    usual.quotas[0].record.strFormula = u"个数"_s;
    usual.quotas[0].record.strAnnex = u"是"_s;
    EXPECT_EQ(rules::BillCell({usual}, test::PipeCategory, Library()),
              u"01：（不带管道配件）\n└8-1：个数（带管道配件）"_s);
    EXPECT_EQ(rules::QuotaCell({test::Quota(u"1-1"_s, u"a"_s), test::Quota(u"9"_s, u"b"_s)},
                               test::PipeCategory, Library()),
              u"1-1：a\n9：b"_s);
    EXPECT_EQ(rules::BillCell({test::Bill({}, u"a"_s)}, test::PipeCategory, Library()), std::nullopt)
        << "an item without a number";
    EXPECT_EQ(rules::ReadItems(u"└8-1"_s), std::nullopt);
}

TEST(RuleSheet, SaysEachRuleInALineAndIsReadBackAsTheSameRules)
{
    Rule pipe = PipeRule(7, u"钢管"_s, u"01"_s);
    pipe.conditions[0].id = 4;
    pipe.conditions[0].lowerBound = u"leftover"_s;
    pipe.conditions.push_back(test::Range(u"公称直径"_s, u"＞"_s, u"50"_s, u"≤"_s, u"65"_s));
    pipe.conditions.push_back(test::Value(u"公称直径"_s, u"≠"_s, u"60"_s));
    const rules::Configuration present = Pipes({pipe, PipeRule(3, u"铜管"_s, u"02"_s), DefaultRule()});
    const RuleSheet sheet = SheetOf(present);
    EXPECT_EQ(CellsOf(sheet),
              (QList<CStringArray>{
                  Headings,
                  {test::PipeCategory, {}, u"＝钢管"_s, u"50＜..≤65\n≠60"_s, u"01：（不带管道配件）"_s, {}},
                  {test::PipeCategory, {}, u"＝铜管"_s, {}, u"02："_s, {}}}));
    const std::vector<Rule> taken = Taken(sheet, present);
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_EQ(taken[0].conditions, pipe.conditions) << "what no cell shows stays";
    EXPECT_EQ(taken[0].id, 7);
    EXPECT_TRUE(taken[2].isDefault);
}

TEST(RuleSheet, HandmadeListComesBackAsTheSameCells)
{
    const RuleSheet made = Handmade({{test::PipeCategory, {}, u"＝钢管"_s, u"≤50"_s, u"01\n└8-1"_s, {}},
                                     {test::PipeCategory, {}, u"＝钢管"_s, u"50＜..≤65"_s, u"01：个数"_s, {}},
                                     {test::PipeCategory, {}, {}, u"＞65\n≠100"_s, {}, u"1-1"_s},
                                     {test::PipeCategory, u"是"_s, {}, {}, u"01："_s, {}}});
    const std::vector<Rule> taken = Taken(made, Pipes({DefaultRule()}));
    ASSERT_EQ(taken.size(), 4U);
    EXPECT_EQ(taken[0].bills[0].record.strName, u"钢管"_s);
    EXPECT_EQ(taken[0].bills[0].record.strFormula, u"管道长度"_s);
    EXPECT_EQ(CellsOf(SheetOf(Pipes(taken))), CellsOf(made));
}

TEST(RuleSheet, ChangedLineIsTheRuleThatItWasAndANewOneGetsANewId)
{
    Rule pipe = PipeRule(7, u"钢管"_s, u"01"_s);
    pipe.bills[0].record.strName = u"改过的名称"_s;
    const rules::Configuration present = Pipes({pipe, DefaultRule()});
    const std::vector<Rule> taken =
        Taken(Handmade({{test::PipeCategory, {}, u"铜管"_s, {}, u"01"_s, {}},
                        {test::PipeCategory, {}, u"钢管"_s, {}, u"01：个数"_s, {}}}),
              present);
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_EQ(taken[0].id, 8);
    EXPECT_EQ(taken[1].id, 7);
    EXPECT_EQ(taken[1].bills[0].record.strName, u"改过的名称"_s);
    EXPECT_EQ(taken[1].bills[0].record.strFormula, u"个数"_s);
    EXPECT_EQ(taken[1].counters, pipe.counters);
    EXPECT_EQ(taken[2].id, 1);
}

TEST(RuleSheet, EqualLinesAreTwoRules)
{
    const CStringArray line{test::PipeCategory, {}, u"＝钢管"_s, {}, u"01"_s, {}};
    const std::vector<Rule> taken = Taken(Handmade({line, line}), Pipes({DefaultRule()}));
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_NE(taken[0].id, taken[1].id);
}

TEST(RuleSheet, EveryFaultIsToldWithItsLine)
{
    const CString pipe = test::PipeCategory;
    EXPECT_EQ(FaultOf(Handmade({{u"给排水\\管道\\没有"_s}})), u"2：没有小类“给排水\\管道\\没有”"_s);
    EXPECT_EQ(FaultOf(Handmade({{pipe}, {pipe, {}, {}, u"＞"_s}})), u"3：“公称直径”的范围写得不对：＞"_s);
    EXPECT_EQ(FaultOf(Handmade({{pipe, {}, {}, {}, u"77"_s}})), u"2：清单库里没有 77"_s);
    EXPECT_EQ(FaultOf(Handmade({{pipe, {}, {}, {}, u"01\n└77"_s}})), u"2：定额库里没有 77"_s);
    EXPECT_EQ(FaultOf(Handmade({{pipe, {}, {}, {}, {}, u"└1-1"_s}})),
              u"2：清单或定额写得不对，每行先写编号"_s);
    EXPECT_EQ(FaultOf(Handmade({{pipe, u"默认"_s}})), u"2：“默认规则”只能是 是、否 或空：默认"_s);
    EXPECT_EQ(FaultOf(Handmade({{pipe, {}, {}, {}, {}, {}, u"x"_s}})), u"2：单元格比列名多"_s);
    RuleSheet unknown = Handmade({{pipe, {}, u"5"_s}});
    unknown.headings[2] = u"壁厚"_s;
    EXPECT_EQ(FaultOf(unknown), u"2：给排水\\管道\\给水管 没有属性“壁厚”"_s);
    RuleSheet twice = Handmade({});
    twice.headings[3] = u"材质"_s;
    EXPECT_EQ(FaultOf(twice), u"1：列“材质”有两个"_s);
    EXPECT_EQ(FaultOf({{u"类别"_s, u"清单"_s}, {}}), u"1：缺少列“定额”"_s);
}

TEST(RuleSheet, RuleThatNoTableCanSayIsToldAndNotLeftOut)
{
    std::vector<rules::SheetFault> faults;
    Rule odd = PipeRule(2, u"钢管"_s, u"01"_s);
    odd.conditions[0].equalOperator = u"="_s;
    rules::MakeSheet({Pipes({odd, DefaultRule()}).Find(test::PipeCategory)}, Facts, Library(), faults);
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].text, u"给排水\\管道\\给水管 第 1 条 材质=钢管;：有表格写不出的内容"_s);
}

TEST(RuleSheet, QuantityOfANumberAloneIsThatOfItsCategory)
{
    const RuleSheet made = Handmade({{test::PipeCategory, {}, u"＝钢管"_s, {}, u"03"_s, {}}});
    const std::vector<Rule> taken = Taken(made, Pipes({DefaultRule()}));
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].bills[0].record.strFormula, test::PipeCategory + u"的"_s);
    EXPECT_EQ(CellsOf(SheetOf(Pipes(taken))), CellsOf(made));
}

TEST(RuleSheet, SecondItemOfANumberKeepsWhatIsItsOwn)
{
    Rule pipe = PipeRule(7, u"钢管"_s, u"01"_s);
    pipe.bills.push_back(test::Bill(u"01"_s));
    pipe.bills[1].id = 2;
    pipe.bills[1].record.strName = u"第二个"_s;
    pipe.quotas = {test::Quota(u"1-1"_s), test::Quota(u"1-1"_s)};
    pipe.quotas[1].id = 2;
    pipe.quotas[1].record.strName = u"也是第二个"_s;
    pipe.counters = {1, 2, 2};
    const std::vector<Rule> taken = Taken(
        Handmade({{test::PipeCategory, {}, u"钢管"_s, {}, u"01：a\n01：b"_s, u"1-1：a\n1-1：b\n1-1：c"_s}}),
        Pipes({pipe, DefaultRule()}));
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].id, 7);
    EXPECT_EQ(taken[0].bills[0].record.strName, u"名称01"_s);
    EXPECT_EQ(taken[0].bills[1].record.strName, u"第二个"_s);
    EXPECT_EQ(taken[0].bills[1].id, 2);
    EXPECT_EQ(taken[0].quotas[1].record.strName, u"也是第二个"_s);
    EXPECT_EQ(taken[0].quotas[2].id, 3);
}

TEST(RuleSheet, HighestIdThereIsIsNotCountedOn)
{
    constexpr int Highest = std::numeric_limits<int>::max();
    Rule pipe = PipeRule(Highest, u"钢管"_s, u"01"_s);
    pipe.counters = {Highest, Highest, Highest};
    const CString category = test::PipeCategory;
    const std::vector<Rule> taken =
        Taken(Handmade({{category, {}, u"＝钢管"_s, {}, u"01：a\n03"_s, u"1-1"_s}, {category, {}, u"新"_s}}),
              Pipes({pipe, DefaultRule()}));
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_EQ(taken[0].id, Highest);
    EXPECT_EQ(taken[0].counters.bill, std::numeric_limits<int>::min()) << "goes on as in the editor";
    EXPECT_EQ(taken[1].id, 2);
}

TEST(RuleSheet, DefaultRuleThatIsMadeHasAnIdOfItsOwn)
{
    const std::vector<Rule> taken =
        Taken(Handmade({{test::PipeCategory, {}, u"＝钢管"_s, {}, u"02："_s, {}}}),
              Pipes({PipeRule(1, u"钢管"_s, u"02"_s), PipeRule(5, u"铜管"_s, u"02"_s)}));
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].id, 1);
    EXPECT_TRUE(taken[1].isDefault);
    EXPECT_NE(taken[1].id, 1);
}

TEST(RuleSheet, AttributeThatCanHeadNoColumnIsToldAndNotWritten)
{
    for (const CString& name : {CString(), u"类别"_s, u"定额"_s, u"材质 "_s}) {
        Rule odd = PipeRule(2, u"钢管"_s, u"01"_s);
        odd.conditions.push_back(test::Value(name, u"＝"_s, u"X"_s));
        std::vector<rules::SheetFault> faults;
        const RuleSheet sheet =
            rules::MakeSheet({Pipes({odd}).Find(test::PipeCategory)}, Facts, Library(), faults);
        EXPECT_EQ(faults.size(), 1U) << name.toStdString();
        EXPECT_EQ(sheet.headings, Headings) << name.toStdString();
    }
}
