#include "shared/RuleChanges.h"

#include "rules/model/Snapshot.h"
#include "shared/ChangeText.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray Head = "<自动套清单定额配置信息><给排水 id=\"1\" name=\"给排水\"><LMember id=\"1\" "
                        "name=\"管道\"><SMember id=\"1\" "
                        "name=\"给水管\"><Config>";
const QByteArray Tail =
    "<Config id=\"1\" bDefault=\"1\"/></Config></SMember><SMember name=\"空\"/></LMember></给排水>"
    "</自动套清单定额配置信息>";
const QByteArray Rule =
    "<Config id=\"2\"><Condition><condition strCFType=\"材质\" bEqual=\"true\" strEqualoperator=\"＝\" "
    "strValue=\"铜管\"/></Condition><Qd><qd strQdId=\"01\" strName=\"n\" strUnit=\"m\" "
    "strFormula=\"f\"><De><De "
    "strDeId=\"8\" strName=\"q\"/></De></qd></Qd></Config>";

} // namespace

TEST(RuleChanges, FileIsToldInLinesWithoutIdsAndPlaces)
{
    CString reason;
    const auto read = rules::ReadRules(Head + Rule + "<Config id=\"3\"/>" + Tail, reason);
    ASSERT_NE(read, nullptr) << reason.toStdString();
    EXPECT_EQ(shared::RuleLines(*read),
              (CStringArray{u"给排水\\管道\\给水管"_s, u"  材质＝铜管;"_s, u"      清单 01 n（m）：f"_s,
                            u"        定额 8 q"_s, u"  （无条件）"_s, u"  其它"_s}));
}

TEST(RuleChanges, DifferencesAreToldByRule)
{
    EXPECT_EQ(shared::RuleChangeLines(Head + Tail, Head + Rule + Tail)->last(), u"规则：加了 1 条。"_s);
    EXPECT_EQ(shared::RuleChangeLines(Head + Tail, Head + Tail), (CStringArray{u"规则没有差别。"_s}));
    EXPECT_EQ(shared::RuleChangeLines(Head + Tail, Head + Tail + "\n")->last(),
              u"文件中别的内容不同（版本、文件头或写法）。"_s);
}

TEST(RuleChanges, NothingIsToldOfWhatIsNoRuleFile)
{
    EXPECT_EQ(shared::RuleChangeLines("<a/>", Head + Tail), std::nullopt);
    EXPECT_EQ(shared::RuleChangeLines(Head + Tail, "no xml"), std::nullopt);
}

TEST(ChangeText, TabsOfAnIndentAreNarrowAndWhatAllLinesHaveIsLeftOut)
{
    EXPECT_EQ(shared::DescribeChanges({{3, {u"\t\t\t<a/>"_s}, {u"\t\t\t<b>"_s, u"\t\t\t\t<c/>"_s}}}),
              u"  第 3 行：删去 1 行，加入 2 行\n  - <a/>\n  + <b>\n  +   <c/>\n"_s);
}
