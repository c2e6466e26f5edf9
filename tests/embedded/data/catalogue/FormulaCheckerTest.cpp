#include "embedded/data/catalogue/FormulaChecker.h"

#include "support/PrintText.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using embedded::CheckFormula;

namespace {

bool IsLength(const CString& name)
{
    return name == u"长度" || name == u"L_1";
}

struct Faulty
{
    CString formula;
    int position;
    CString text;
};

/// "position text" of the fault; "good" when there is none.
CString Outcome(const CString& formula)
{
    const auto fault = CheckFormula(formula, IsLength);
    return fault ? u"%1 %2"_s.arg(fault->position).arg(fault->text) : u"good"_s;
}

TEST(FormulaChecker, TakesNumbersNamesOperatorsAndBrackets)
{
    for (const CString& formula :
         {u"1"_s, u"3.1416"_s, u"长度"_s, u"L_1"_s, u"1+2-3*4/5"_s, u"长度×1.02÷2"_s, u"(长度+1)*2"_s,
          u"((1))"_s, u"-1"_s, u"+长度"_s, u"2*(-长度)"_s, u"（长度＋1）＊2／3－1"_s, u" 长度 +\n1 "_s})
        EXPECT_EQ(Outcome(formula), u"good"_s) << formula.toStdString();
}

TEST(FormulaChecker, TakesABlankFormula)
{
    EXPECT_EQ(Outcome({}), u"good"_s);
    EXPECT_EQ(Outcome(u" \t　"_s), u"good"_s);
}

TEST(FormulaChecker, TellsWhereAFaultIs)
{
    const std::vector<Faulty> faults = {
        {u"1+"_s, 2, u"公式不完整，后面还缺少数字或计算项目"_s},
        {u"("_s, 1, u"公式不完整，后面还缺少数字或计算项目"_s},
        {u"1++2"_s, 2, u"“+”前面缺少数字或计算项目"_s},
        {u"*2"_s, 0, u"“*”前面缺少数字或计算项目"_s},
        {u"--1"_s, 1, u"“-”前面缺少数字或计算项目"_s},
        {u"2*-1"_s, 2, u"“-”前面缺少数字或计算项目"_s},
        {u"()"_s, 1, u"“)”前面缺少数字或计算项目"_s},
        {u"(1+)"_s, 3, u"“)”前面缺少数字或计算项目"_s},
        {u"(1+2"_s, 0, u"左括号没有对应的右括号"_s},
        {u"((1)+2"_s, 0, u"左括号没有对应的右括号"_s},
        {u"1+(2*(3)"_s, 2, u"左括号没有对应的右括号"_s},
        {u"1)"_s, 1, u"右括号没有对应的左括号"_s},
        {u"2长度"_s, 1, u"“长度”前面缺少运算符"_s},
        {u"长度 2"_s, 3, u"“2”前面缺少运算符"_s},
        {u"2(3)"_s, 1, u"“(”前面缺少运算符"_s},
        {u"宽度*2"_s, 0, u"“宽度”不是计算项目"_s},
        {u"2+长度2"_s, 2, u"“长度2”不是计算项目"_s},
        {u"1."_s, 1, u"不能识别的字符“.”"_s},
        {u".5"_s, 0, u"不能识别的字符“.”"_s},
        {u"1.2.3"_s, 3, u"不能识别的字符“.”"_s},
        {u"长度%2"_s, 2, u"不能识别的字符“%”"_s},
    };
    for (const Faulty& faulty : faults)
        EXPECT_EQ(Outcome(faulty.formula), u"%1 %2"_s.arg(faulty.position).arg(faulty.text))
            << faulty.formula.toStdString();
}

TEST(FormulaChecker, DepthOfBracketsIsBoundedByMemoryOnly)
{
    constexpr int Depth = 200000;
    EXPECT_EQ(Outcome(CString(Depth, u'(') + u'1' + CString(Depth, u')')), u"good"_s);
    EXPECT_EQ(Outcome(CString(Depth, u'(') + u'1').section(u' ', 1), u"左括号没有对应的右括号"_s);
}

TEST(FormulaChecker, GivesTheNamesOfAFormula)
{
    EXPECT_EQ(embedded::NamesIn(u"3.1416×(管外径+1.033×保温厚度)×管外径"_s),
              (CStringArray{u"管外径"_s, u"保温厚度"_s, u"管外径"_s}));
    EXPECT_EQ(embedded::NamesIn(u"甲+)%乙1 2丙"_s), (CStringArray{u"甲"_s, u"乙1"_s, u"丙"_s}));
}

} // namespace
