#include "rules/CheckTesting.h"
#include "rules/model/Snapshot.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const CString GoodRule =
    u"<Config id=\"2\" bDefault=\"0\"><Condition><condition id=\"1\" strCFType=\"材质\" bEqual=\"true\" "
    "strEqualoperator=\"＝\" strValue=\"铜管\"/></Condition><Qd><qd id=\"1\" strQdId=\"031001001001\" "
    "strName=\"管\" "
    "strUnit=\"m\" strUnitCode=\"1\" strQdCode=\"BILL\" strFormula=\"管道长度\"><De/></qd></Qd><De/></Config>"_s;
const CString DefaultText = u"<Config id=\"1\" bDefault=\"1\"/>"_s;

CString CategoryText(const CString& list)
{
    return u"<SMember id=\"111\" name=\"给水管\"><Config>"_s + list + u"</Config></SMember>"_s;
}

CString SpecialtyText(const CString& small)
{
    return u"<给排水 id=\"1\" name=\"给排水\"><LMember id=\"11\" name=\"管道\">"_s + small +
           u"</LMember></给排水>"_s;
}

/// The findings of a rule file of that content below the root.
std::vector<rules::Finding> FindingsIn(const CString& content)
{
    const test::TempFolder folder;
    const CString text = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><自动套清单定额配置信息>"_s + content +
                         u"</自动套清单定额配置信息>"_s;
    CString reason;
    rules::FileStructure structure;
    const rules::ConfigurationPtr configuration =
        rules::ReadRuleFile(folder.WriteFile(u"r.xml"_s, text.toUtf8()), reason, &structure);
    EXPECT_NE(configuration, nullptr) << reason.toStdString();
    return configuration ? rules::Check(*configuration, structure, test::KnownFacts())
                         : std::vector<rules::Finding>();
}

CStringArray CodesIn(const CString& content)
{
    return test::Codes(FindingsIn(content));
}

CStringArray CodesInList(const CString& list)
{
    return CodesIn(SpecialtyText(CategoryText(list)));
}

} // namespace

TEST(StructureCheck, GoodFileHasNoFinding)
{
    EXPECT_EQ(CodesInList(GoodRule + DefaultText), CStringArray());
    EXPECT_EQ(CodesInList(u"<config id=\"1\" bDefault=\"1\"/>"_s), CStringArray()) << "as a new file has it";
}

TEST(StructureCheck, ListWithoutDefaultRuleIsTold)
{
    const auto findings = FindingsIn(SpecialtyText(CategoryText(GoodRule)));
    ASSERT_EQ(test::Codes(findings), CStringArray{u"no-default"_s});
    EXPECT_EQ(findings[0].category, test::PipeCategory);
    ASSERT_TRUE(findings[0].mend);
    EXPECT_EQ(findings[0].mend->op, u"Save"_s);
    EXPECT_EQ(CodesIn(SpecialtyText(u"<SMember name=\"给水管\"/>"_s)), CStringArray{u"no-default"_s});
}

TEST(StructureCheck, SecondDefaultRuleIsToldAndMended)
{
    const auto findings = FindingsIn(
        SpecialtyText(CategoryText(GoodRule + DefaultText + u"<Config id=\"7\" bDefault=\"1\"/>"_s)));
    ASSERT_EQ(test::Codes(findings), CStringArray{u"several-defaults@3"_s});
    EXPECT_EQ(findings[0].others, std::vector{2});
    ASSERT_TRUE(findings[0].mend);
    EXPECT_EQ(findings[0].mend->configId, 7);
}

TEST(StructureCheck, DefaultRuleThatIsNotLastIsTold)
{
    EXPECT_EQ(CodesInList(DefaultText + GoodRule), CStringArray{u"default-not-last@1"_s});
}

TEST(StructureCheck, IdsThatStandTwiceAreTold)
{
    CString twin = GoodRule;
    twin.replace(u"铜管"_s, u"PPR管"_s).replace(u"031001001001"_s, u"031001001002"_s);
    EXPECT_EQ(CodesInList(GoodRule + twin + DefaultText), CStringArray{u"repeated-id@2"_s});
    EXPECT_EQ(CodesInList(GoodRule + CString(twin).replace(u"<Config id=\"2\""_s, u"<Config id=\"3\""_s) +
                          DefaultText),
              CStringArray());
    CString conditions = GoodRule;
    conditions.replace(u"</Condition>"_s, u"<condition id=\"1\" strCFType=\"壁厚\" bEqual=\"false\" "
                                          "strRangeoperator1=\"＞\" strRange1=\"2\"/></Condition>"_s);
    EXPECT_EQ(CodesInList(conditions + DefaultText), CStringArray{u"repeated-id@1"_s});
    CString bills = GoodRule;
    bills.replace(u"</Qd>"_s,
                  u"<qd id=\"1\" strQdId=\"031001002001\" strName=\"管\" strUnit=\"m\" strQdCode=\"BILL\" "
                  "strFormula=\"管道长度\"/></Qd>"_s);
    EXPECT_EQ(CodesInList(bills + DefaultText), CStringArray{u"repeated-id@1"_s});
}

TEST(StructureCheck, SpecialtyCategoryOrContainerTwiceIsTold)
{
    const CString small = CategoryText(GoodRule + DefaultText);
    EXPECT_EQ(CodesIn(SpecialtyText(small) + SpecialtyText(small)), CStringArray{u"repeated-element"_s});
    EXPECT_EQ(CodesIn(SpecialtyText(small + small)), CStringArray{u"repeated-element"_s});
    const auto inCategory =
        FindingsIn(SpecialtyText(CString(small).replace(u"</SMember>"_s, u"<Config/></SMember>"_s)));
    ASSERT_EQ(test::Codes(inCategory), CStringArray{u"repeated-element"_s}) << "it is about no rule";
    EXPECT_EQ(inCategory[0].category, test::PipeCategory);
    EXPECT_EQ(inCategory[0].ruleId, 0);
    const auto inRule = FindingsIn(SpecialtyText(CategoryText(
        CString(GoodRule).replace(u"<De/></Config>"_s, u"<De/><De/></Config>"_s) + DefaultText)));
    ASSERT_EQ(test::Codes(inRule), CStringArray{u"repeated-element@1"_s});
    EXPECT_EQ(inRule[0].category, test::PipeCategory);
    EXPECT_EQ(inRule[0].ruleId, 2);
}

TEST(StructureCheck, CategoryThatTheHostHasNotIsToldBeforeASaveLosesIt)
{
    const CString small = CategoryText(GoodRule + DefaultText);
    const auto findings = FindingsIn(SpecialtyText(
        small +
        CString(small).replace(u"给水管"_s, u"旧管"_s).replace(u"031001001001"_s, u"031001001002"_s)));
    ASSERT_EQ(test::Codes(findings), CStringArray{u"unknown-category"_s});
    EXPECT_EQ(findings[0].category, u"给排水\\管道\\旧管"_s);
    EXPECT_TRUE(findings[0].text.contains(u"2 条规则会丢失"_s));
    EXPECT_EQ(CodesIn(SpecialtyText(small).replace(u"name=\"管道\""_s, u"name=\"旧管道\""_s)),
              CStringArray{u"unknown-category"_s});
    EXPECT_EQ(CodesIn(SpecialtyText(small).replace(u"name=\"给排水\""_s, u"name=\"园林\""_s)),
              CStringArray{u"unknown-category"_s});
}

TEST(StructureCheck, ElementsOfUnknownNamesAreTold)
{
    EXPECT_EQ(
        CodesInList(
            CString(GoodRule).replace(u"<Config id"_s, u"<Rule id"_s).replace(u"</Config>"_s, u"</Rule>"_s) +
            DefaultText),
        CStringArray{u"unknown-element@1"_s})
        << "read as a rule all the same";
    EXPECT_EQ(
        CodesInList(CString(GoodRule).replace(u"<De/></Config>"_s, u"<De/><Note/></Config>"_s) + DefaultText),
        CStringArray{u"unknown-element@1"_s});
    EXPECT_EQ(CodesIn(SpecialtyText(
                  CategoryText(GoodRule + DefaultText).replace(u"</SMember>"_s, u"<Note/></SMember>"_s))),
              CStringArray{u"unknown-element"_s})
        << "behind the list of the rules it is about none of them";
    EXPECT_EQ(CodesIn(SpecialtyText(CategoryText(DefaultText) + u"<SMember/>"_s)),
              CStringArray{u"unknown-element"_s});
    EXPECT_EQ(CodesIn(SpecialtyText(CategoryText(DefaultText)
                                        .replace(u"<SMember"_s, u"<Small"_s)
                                        .replace(u"</SMember"_s, u"</Small"_s))),
              CStringArray{u"unknown-element"_s});
}

TEST(StructureCheck, RemarkInAListIsToldSinceItIsReadAsAnEntry)
{
    EXPECT_EQ(CodesInList(GoodRule + u"<!-- to do -->"_s + DefaultText),
              (CStringArray{u"unknown-element@2"_s, u"no-conditions@2"_s, u"no-items@2"_s,
                            u"default-never-applies@3"_s}));
    const CStringArray inRule = CodesInList(
        CString(GoodRule).replace(u"</Condition>"_s, u"<!-- to do --></Condition>"_s) + DefaultText);
    EXPECT_EQ(inRule, (CStringArray{u"unknown-element@1"_s, u"no-attribute@1"_s}));
    EXPECT_EQ(CodesIn(SpecialtyText(CategoryText(GoodRule + DefaultText)) + u"<!-- to do -->"_s),
              CStringArray())
        << "beside the specialties it is one";
}
