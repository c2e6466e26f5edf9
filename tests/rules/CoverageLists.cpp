#include "rules/CoverageLists.h"

using namespace Qt::StringLiterals;

namespace test {

const std::vector<CString> CoverageNames{u"材质"_s, u"公称直径"_s, u"壁厚"_s};
const std::vector<CString> CoverageTexts{u"甲"_s, u"乙"_s, u"丙"_s};
const std::vector<CString> PlainNumbers{u"10"_s, u"20"_s, u"20.0"_s, u"３０"_s, u"40"_s};
const std::vector<CString> WrittenNumbers{u"DN10"_s, u"DN20"_s, u"DN30"_s, u"DN40"_s, u"20"_s};

namespace {

rules::Condition RandomCondition(Dice& dice, const ListKind& kind)
{
    const CString& name = dice.Of(CoverageNames);
    if (name == CoverageNames[0])
        return Value(name, dice.OneIn(4) ? u"≠"_s : u"＝"_s, dice.Of(CoverageTexts));
    if (dice.OneIn(3)) return Value(name, dice.OneIn(4) ? u"≠"_s : u"＝"_s, dice.Of(kind.numbers));
    const CString lower = dice.OneIn(5) ? CString() : dice.Of(kind.numbers);
    const CString upper = dice.OneIn(5) ? CString() : dice.Of(kind.numbers);
    return Range(name, dice.OneIn(2) ? u"＞"_s : u"≥"_s, lower,
                 dice.OneIn(40)  ? u"<"_s
                 : dice.OneIn(2) ? u"＜"_s
                                 : u"≤"_s,
                 upper);
}

} // namespace

ListKind RandomKind(Dice& dice)
{
    return dice.OneIn(3) ? ListKind{WrittenNumbers, {u"DN10"_s, u"DN20"_s, u"DN30"_s, u"DN40"_s}}
                         : ListKind{};
}

std::vector<rules::Rule> RandomRules(Dice& dice, const ListKind& kind)
{
    std::vector<rules::Rule> list;
    for (std::size_t count = 2 + dice.Below(7); count > 0; --count) {
        std::vector<rules::Condition> conditions;
        for (std::size_t i = dice.OneIn(30) ? 0 : 1 + dice.Below(3); i > 0; --i)
            conditions.push_back(RandomCondition(dice, kind));
        list.push_back(RuleOf(std::move(conditions), dice.OneIn(40)));
    }
    return list;
}

rules::CategoryFacts FactsOf(const ListKind& kind)
{
    rules::CategoryFacts facts;
    for (std::size_t i = 1; i < CoverageNames.size(); ++i)
        facts.push_back({.name = CoverageNames[i], .valueList = kind.list});
    return facts;
}

} // namespace test
