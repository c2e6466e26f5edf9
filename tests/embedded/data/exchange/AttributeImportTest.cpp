#include "embedded/ImportFixture.h"

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::ImportReport;
using embedded::TableKind;

namespace {

using AttributeImport = test::ImportFixture;
using CalculationImport = test::ImportFixture;

const CString AttributeHeader = u"category,display_name,code,kind,list_name,values\n"_s;
const CString Place = u"给排水\\管道\\给水管,"_s;
const CString CalcHeader = u"item,code,kind,rule,category,list\n"_s;

} // namespace

TEST_F(AttributeImport, AttributesComeWithTheirValues)
{
    const ImportReport report = Import(
        TableKind::Attributes, AttributeHeader + Place + u"洁净级别,AM_Clean,固定值,,百级|千级\n"_s + Place +
                                   u"隔声,AM_Sound,9,隔声值,甲|乙\n"_s + Place + u"随意,AM_Free,0,,\n"_s);
    EXPECT_EQ(report.added, 3) << Refusals(report).toStdString();
    EmbeddedHost host(m_project.Folder());
    host::IAttributes& attributes = *host.Roles().attributes;
    EXPECT_EQ(attributes.CreateCellData(u"AM_Clean"_s)->GetValues(), (CStringArray{u"百级"_s, u"千级"_s}));
    EXPECT_EQ(attributes.CreateCellData(u"AM_Free"_s)->GetType(), 0);
    CStringArray values;
    CStringArray extras{u"隔声值"_s};
    EXPECT_TRUE(attributes.GetDropList(u"AM_Sound"_s, values, extras));
    EXPECT_EQ(values, (CStringArray{u"甲"_s, u"乙"_s}));
}

TEST_F(AttributeImport, AttributesThatShareAListNameKeepTheirOwnLists)
{
    // In the category 热水管 the names of the lists are exchanged, so that both codes have both.
    const CString other = u"给排水\\管道\\热水管,"_s;
    const ImportReport report = Import(
        TableKind::Attributes, AttributeHeader + Place + u"内层,AM_In,9,甲类,内甲\n"_s + Place +
                                   u"外层,AM_Out,9,乙类,外乙\n"_s + other + u"内层,AM_In,9,乙类,内乙\n"_s +
                                   other + u"外层,AM_Out,9,甲类,外甲\n"_s);
    ASSERT_EQ(report.added, 4) << Refusals(report).toStdString();
    EmbeddedHost host(m_project.Folder());
    const host::Roles roles = host.Roles();
    const auto values = [&](const CString& category, const CString& code) {
        SNvKtSmallCategoryId id;
        EXPECT_TRUE(roles.categories->SmallCategoryNameToId(category, id));
        CStringArray list;
        EXPECT_TRUE(roles.attributes->GetAttributeList(id, list));
        CStringArray extras;
        for (qsizetype i = 2; i < list.size(); i += 4)
            extras.append(list[i]);
        CStringArray found;
        EXPECT_TRUE(roles.attributes->GetDropList(code, found, extras));
        return found;
    };
    EXPECT_EQ(values(u"给排水\\管道\\给水管"_s, u"AM_In"_s), CStringArray{u"内甲"_s});
    EXPECT_EQ(values(u"给排水\\管道\\给水管"_s, u"AM_Out"_s), CStringArray{u"外乙"_s});
    EXPECT_EQ(values(u"给排水\\管道\\热水管"_s, u"AM_In"_s), CStringArray{u"内乙"_s});
    EXPECT_EQ(values(u"给排水\\管道\\热水管"_s, u"AM_Out"_s), CStringArray{u"外甲"_s});
}

TEST_F(AttributeImport, CodeWithAColonIsRefused)
{
    const ImportReport report = Import(TableKind::Attributes, AttributeHeader + Place + u"甲,AM:A,0,,\n"_s);
    ASSERT_EQ(report.refused.size(), 1) << Refusals(report).toStdString();
    EXPECT_TRUE(report.refused[0].reason.contains(u"冒号"_s));
}

TEST_F(AttributeImport, RowsThatDoNotFitAreRefused)
{
    const ImportReport report =
        Import(TableKind::Attributes, AttributeHeader + u"给排水\\管道\\无,甲,AM_A,,,\n"_s + Place +
                                          u"乙,1AM,,,\n"_s + Place + u"丙,AM B,,,\n"_s + Place +
                                          u",AM_C,,,\n"_s + Place + u"丁,AM_D,7,,\n"_s + Place +
                                          u"戊,AM_E,1,,\n"_s + Place + u"己,AM_F,9,,\n"_s + Place +
                                          u"庚,AM_G,0,,值\n"_s + Place + u"辛,AM_H,9,,值\n"_s);
    EXPECT_FALSE(report.stored);
    EXPECT_EQ(report.refused.size(), 9) << Refusals(report).toStdString();
    EXPECT_TRUE(Refusals(report).contains(u"“1AM”不能作为 XML 元素名"_s)) << Refusals(report).toStdString();
}

TEST_F(AttributeImport, RowsOfOneCodeMustAgreeOnItsValues)
{
    const ImportReport report =
        Import(TableKind::Attributes, AttributeHeader + Place + u"洁净级别,AM_Clean,1,,甲|乙\n"_s +
                                          u"给排水\\管道\\热水管,洁净级别,AM_Clean,1,,甲\n"_s);
    ASSERT_EQ(report.refused.size(), 1);
    EXPECT_TRUE(report.refused[0].reason.contains(u"第 2 行矛盾"_s)) << Refusals(report).toStdString();
}

TEST_F(AttributeImport, NamesThatHoldEachOtherAreRefused)
{
    const ImportReport report = Import(TableKind::Attributes, AttributeHeader + Place + u"径,AM_New,0,,\n"_s +
                                                                  Place + u"公称直径二,AM_New2,0,,\n"_s);
    ASSERT_EQ(report.refused.size(), 2) << Refusals(report).toStdString();
    EXPECT_TRUE(report.refused[1].reason.contains(u"公称直径”"_s));
}

TEST_F(CalculationImport, ItemsComeWithTheirRulesAndPlaces)
{
    const ImportReport report = Import(
        TableKind::Calc, CalcHeader + u"支吊架重量二,HangerWeight2,5,个数×单重,给排水\\管道\\给水管,其他\n"
                                      "支吊架重量二,,,,给排水\\管道\\热水管,主要\n"
                                      "备用,Spare,2,个,,\n"_s);
    EXPECT_EQ(report.added, 3) << Refusals(report).toStdString();
    EmbeddedHost host(m_project.Folder());
    CStringArray items;
    CStringArray other;
    ASSERT_TRUE(host.Roles().calculation->GetCalItems(u"给排水\\管道\\给水管"_s, items, other));
    EXPECT_TRUE(other.contains(u"支吊架重量二"_s));
    RuleCodeStruct info;
    ASSERT_TRUE(host.Roles().calculation->GetCalItemInfo(u"备用"_s, info));
    EXPECT_EQ(info.strRule, u"个"_s);
}

TEST_F(CalculationImport, RowsThatDoNotFitAreRefused)
{
    const ImportReport report = Import(TableKind::Calc, CalcHeader + u"没有,,,,给排水\\管道\\给水管,主要\n"
                                                                     "半个,Half,,,,\n"
                                                                     "甲,A1,6,x,,\n"
                                                                     "乙,PipeLength,1,x,,\n"
                                                                     "丙,C1,1,x,给排水\\管道\\无,主要\n"
                                                                     "丁,D1,1,x,给排水\\管道\\给水管,第三\n"
                                                                     "戊,E1,1,x,,\n"
                                                                     "戊,E2,1,x,给排水\\管道\\给水管,\n"
                                                                     ",F1,1,x,,\n"_s);
    EXPECT_FALSE(report.stored);
    ASSERT_EQ(report.refused.size(), 8) << Refusals(report).toStdString();
    EXPECT_TRUE(Refusals(report).contains(u"9:与第 8 行矛盾"_s)) << Refusals(report).toStdString();
}

TEST_F(CalculationImport, ExpressionThatTheCalculatorWouldNotTakeIsRefused)
{
    const ImportReport report = Import(TableKind::Calc, CalcHeader + u"甲,A1,1,(个数×2,,\n"
                                                                     "乙,B1,1,个数×,,\n"
                                                                     "丙,C1,1,(个数+1)×2,,\n"_s);
    EXPECT_EQ(Refusals(report), u"2:计算规则（rule）：第 1 个字符：左括号没有对应的右括号\n"
                                "3:计算规则（rule）：第 4 个字符：公式不完整，后面还缺少数字或计算项目\n"_s);
}

TEST_F(CalculationImport, FaultyExpressionThatIsInTheTableAlreadyDoesNotStopTheRest)
{
    CatalogueSql(u"UPDATE calculation_rules SET rule = '(' WHERE item = '数量'"_s);
    const CString table = Exported(TableKind::Calc);
    for (const bool replace : {false, true}) {
        const ImportReport report = Import(TableKind::Calc, table, {.replace = replace});
        EXPECT_TRUE(report.stored) << Refusals(report).toStdString();
    }
}

TEST_F(AttributeImport, UnitsAreKeptChangedAndTakenAway)
{
    const auto unitOf = [&](const CString& code) {
        for (const CString& line : Exported(TableKind::Attributes).split(u"\r\n"_s))
            if (line.startsWith(u"给排水\\管道\\给水管,"_s) && line.contains(u',' + code + u','))
                return line.section(u',', -1);
        return u"no row"_s;
    };
    EXPECT_EQ(unitOf(u"AM_NominalDiameter"_s), u"mm"_s);
    EXPECT_EQ(unitOf(u"AM_Material"_s), CString());
    ImportReport report = Import(TableKind::Attributes, u"category,display_name,code\n"_s + Place +
                                                            u"公称直径,AM_NominalDiameter\n"_s + Place +
                                                            u"罐体直径,AM_Tank\n"_s);
    ASSERT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_EQ(unitOf(u"AM_NominalDiameter"_s), u"mm"_s) << "a table without the column says nothing of units";
    EXPECT_EQ(unitOf(u"AM_Tank"_s), u"mm"_s) << "a new attribute counts as its name does";
    report = Import(TableKind::Attributes, u"category,display_name,code,unit\n"_s + Place +
                                               u"公称直径,AM_NominalDiameter,\n"_s + Place +
                                               u"罐体直径,AM_Tank, cm \n"_s);
    ASSERT_TRUE(report.stored) << Refusals(report).toStdString();
    EXPECT_EQ(unitOf(u"AM_NominalDiameter"_s), CString());
    EXPECT_EQ(unitOf(u"AM_Tank"_s), u"cm"_s);
}
