#include "rules/RandomRules.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace test {

namespace {

const std::vector<CString> AttributeNames{u"材质"_s, u"公称直径"_s, u"周长(mm)"_s, u"壁厚"_s, u"具体构件"_s};

/// Names that a query or a table may mistake: quotes, an end of a statement, letter case, more bytes than a
/// database tells apart, headings of other columns.
const std::vector<CString> OddNames{u"壁\"厚'; DROP TABLE components; --"_s,
                                    u"管\\径\n%1 ?:a"_s,
                                    u"dn"_s,
                                    u"DN"_s,
                                    CString(30, u'长') + u"甲"_s,
                                    CString(30, u'长') + u"乙"_s,
                                    u"构件编号"_s};

/// Texts that are one after compatibility normalisation or nearly so, and such as a query or a pattern may
/// mistake.
const std::vector<CString> OddWords{u"é"_s,
                                    u"e\u0301"_s,
                                    u"q\u0323\u0307x"_s,
                                    u"q\u0307\u0323x"_s,
                                    u"㎜"_s,
                                    u"mm"_s,
                                    u"ｍm"_s,
                                    u"5㎡"_s,
                                    u"5m²"_s,
                                    u"ﬁ[^a-z]*?"_s,
                                    u"fi[^a-z]*?"_s,
                                    u"ｆｉ［＾ａ－ｚ］＊？"_s,
                                    u"각"_s,
                                    u"\u1100\u1161\u11a8"_s,
                                    u"ｶﾞ"_s,
                                    u"ガ"_s,
                                    u"^"_s,
                                    u"＾"_s,
                                    u"]"_s,
                                    u"］-\\."_s,
                                    u"]-＼."_s,
                                    u"O'Brien \"x\"; --"_s,
                                    u"O＇Brien \"x\"; --"_s,
                                    u"a\\b\nc"_s,
                                    u"ａ\\b\nc"_s,
                                    u"𝟓𝐚"_s,
                                    u"5a"_s,
                                    u"\u00a8x"_s,
                                    u"金"_s,
                                    u"\uf90a"_s};

const std::vector<CString> Words{u"镀锌钢管"_s, u" 镀锌钢管"_s, u"PPR管"_s, u"ＰＰＲ管"_s, u"铜管"_s,
                                 u"ppr管"_s,    u"m²"_s,        u"m2"_s,    u"无"_s};

const std::vector<CString> Numbers{u"50"_s,
                                   u"50.0"_s,
                                   u"+50"_s,
                                   u"５０"_s,
                                   u"DN50"_s,
                                   u"De50"_s,
                                   u"50mm"_s,
                                   u"50 mm"_s,
                                   u"65"_s,
                                   u"DN65"_s,
                                   u"ＤＮ６５"_s,
                                   u"-5"_s,
                                   u"0"_s,
                                   u"-0.0"_s,
                                   u".5"_s,
                                   u"5."_s,
                                   u"5²"_s,
                                   u"52"_s,
                                   u"52.0"_s,
                                   u"0.1"_s,
                                   u"0.10000000000000000000001"_s,
                                   u"12345678901234567890"_s,
                                   u"12345678901234567891"_s,
                                   u"1e3"_s,
                                   u"1,000"_s,
                                   u"DN50×40"_s,
                                   u"-5℃"_s,
                                   u"- 5℃"_s,
                                   u"SC-100"_s,
                                   u"- 7"_s,
                                   u"No. 5"_s,
                                   u"No.5"_s,
                                   u"Ｎo．５"_s,
                                   u"No..5"_s,
                                   u"5 .mm"_s,
                                   u"5.mm"_s,
                                   u"5.0.mm"_s,
                                   u"..5"_s,
                                   u"+-5"_s,
                                   u"-00.50"_s,
                                   u"- .5mm"_s,
                                   u"SC--5"_s,
                                   u"⑤"_s,
                                   u"."_s,
                                   u"-50"_s,
                                   u"-50.5"_s};

const std::vector<CString> Blanks{u""_s, u" "_s, u"\u3000"_s};

std::vector<CString> AllNames()
{
    std::vector<CString> names = AttributeNames;
    names.insert(names.end(), OddNames.begin(), OddNames.end());
    return names;
}

rules::Condition RandomCondition(Dice& dice)
{
    rules::Condition condition;
    condition.attribute = dice.OneIn(40) ? u" "_s : dice.Of(AttributeNames);
    if (dice.OneIn(20)) condition.attribute = u"周长（mm）"_s;
    if (dice.OneIn(12)) condition.attribute = dice.Of(OddNames);
    condition.isValueForm = dice.OneIn(2);
    const auto sign = [&](std::vector<CString> offered) {
        return dice.OneIn(12) ? dice.Of<CString>({u""_s, u"="_s, u"＝"_s, u"＞"_s, u"≤"_s, u">"_s})
                              : dice.Of(offered);
    };
    // Leftovers of the other form stay in a condition.
    if (condition.isValueForm || dice.OneIn(4)) {
        condition.equalOperator = sign({u"＝"_s, u"＝"_s, u"≠"_s});
        condition.value = RandomText(dice);
    }
    if (!condition.isValueForm || dice.OneIn(4)) {
        condition.lowerOperator = sign({u"＞"_s, u"≥"_s});
        condition.upperOperator = sign({u"＜"_s, u"≤"_s});
        if (!dice.OneIn(4)) condition.lowerBound = dice.OneIn(12) ? RandomText(dice) : dice.Of(Numbers);
        if (!dice.OneIn(4)) condition.upperBound = dice.OneIn(12) ? RandomText(dice) : dice.Of(Numbers);
    }
    return condition;
}

} // namespace

unsigned SeedOfRun()
{
    const unsigned seed = qEnvironmentVariableIsSet("KTQDDE_MATCH_SEED")
                              ? qEnvironmentVariable("KTQDDE_MATCH_SEED").toUInt()
                              : std::random_device{}();
    std::printf("seed %u\n", seed);
    return seed;
}

std::size_t ComponentsOfRun(std::size_t usual)
{
    return qEnvironmentVariableIsSet("KTQDDE_MATCH_COMPONENTS")
               ? qEnvironmentVariable("KTQDDE_MATCH_COMPONENTS").toULongLong()
               : usual;
}

CString RandomText(Dice& dice)
{
    if (dice.OneIn(20)) return dice.Of(Blanks);
    if (dice.OneIn(6)) return dice.Of(OddWords);
    return dice.OneIn(3) ? dice.Of(Words) : dice.Of(Numbers);
}

rules::SmallCategoryPtr RandomCategory(Dice& dice)
{
    std::vector<rules::Rule> list;
    for (std::size_t count = dice.OneIn(10) ? dice.Below(200) : dice.Below(30); count > 0; --count) {
        rules::Rule rule;
        rule.isDefault = dice.OneIn(12);
        for (std::size_t conditions = dice.OneIn(25) ? 0 : 1 + dice.Below(4); conditions > 0; --conditions)
            rule.conditions.push_back(RandomCondition(dice));
        list.push_back(rule);
    }
    if (!dice.OneIn(3)) list.push_back(test::RuleOf({}, true));
    return test::CategoryOf(std::move(list));
}

rules::CategoryFacts RandomFacts(Dice& dice)
{
    rules::CategoryFacts facts;
    for (const CString& name : AllNames()) {
        if (dice.OneIn(5)) continue;
        rules::AttributeFacts fact{.name = name};
        if (!dice.OneIn(4)) fact.code = u"AM_"_s + QString::number(facts.size());
        for (std::size_t values = dice.Below(4); values > 0; --values)
            fact.valueList.append(RandomText(dice));
        facts.push_back(fact);
    }
    return facts;
}

CStringArray RandomHeaders(Dice& dice, const rules::CategoryFacts& facts)
{
    CStringArray headers{u"无关"_s};
    for (const CString& name : AllNames())
        if (!dice.OneIn(4)) headers.append(dice.OneIn(8) ? u" "_s + name : name);
    for (const rules::AttributeFacts& fact : facts)
        if (!fact.code.isEmpty() && dice.OneIn(2)) headers.append(fact.code);
    return headers;
}

} // namespace test
