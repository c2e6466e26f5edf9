#pragma once

#include "rules/RulesTesting.h"
#include "rules/check/Check.h"

#include <algorithm>

/// What the tests of the checks share: a category without fault, and what a small catalogue knows.
namespace test {

inline rules::QuotaItem GoodQuota(const CString& number = QStringLiteral("示10-1-7"), int id = 1)
{
    rules::QuotaItem quota;
    quota.id = id;
    quota.record = {QStringLiteral("管道安装"), QStringLiteral("10m"),      QStringLiteral("10"), number,
                    QStringLiteral("QUOTA"),    QStringLiteral("管道长度"), QStringLiteral("是")};
    return quota;
}

inline rules::BillItem GoodBill(const CString& number = QStringLiteral("031001001001"), int id = 1)
{
    rules::BillItem bill;
    bill.id = id;
    bill.record.strQdId = number;
    bill.record.strName = QStringLiteral("镀锌钢管");
    bill.record.strUnit = QStringLiteral("m");
    bill.record.strUnitCode = QStringLiteral("1");
    bill.record.strQdCode = QStringLiteral("BILL");
    bill.record.strFormula = QStringLiteral("管道长度");
    bill.quotas.push_back(GoodQuota());
    return bill;
}

/// A condition on 材质.
inline rules::Condition Material(const CString& value, const CString& sign = QStringLiteral("＝"))
{
    return Value(QStringLiteral("材质"), sign, value);
}

/// A rule with these conditions, numbered, and a bill item without fault.
inline rules::Rule PricedRule(std::vector<rules::Condition> conditions)
{
    for (std::size_t i = 0; i < conditions.size(); ++i)
        conditions[i].id = static_cast<int>(i) + 1;
    rules::Rule rule = RuleOf(std::move(conditions));
    rule.bills.push_back(GoodBill());
    return rule;
}

/// What the catalogue of these tests knows.
inline rules::CheckFacts KnownFacts()
{
    rules::CheckFacts facts;
    facts.bills = {QStringLiteral("BILL"),
                   {9, 3},
                   {{QStringLiteral("031001001"), {}}, {QStringLiteral("031001002"), {}}}};
    facts.quotas.code = QStringLiteral("QUOTA");
    facts.quotas.items[QStringLiteral("示10-1-7")].bills = {QStringLiteral("031001001")};
    facts.quotas.items[QStringLiteral("示10-1-8")] = {};
    rules::CategoryFacts attributes;
    attributes.push_back(
        {.name = QStringLiteral("材质"),
         .valueList = {QStringLiteral("镀锌钢管"), QStringLiteral("PPR管"), QStringLiteral("铜管")},
         .allowsRange = false});
    attributes.push_back({.name = QStringLiteral("公称直径"),
                          .valueList = {QStringLiteral("15"), QStringLiteral("20"), QStringLiteral("25"),
                                        QStringLiteral("32"), QStringLiteral("65"), QStringLiteral("80")}});
    attributes.push_back({.name = QStringLiteral("壁厚")});
    facts.attributes[PipeCategory] = attributes;
    facts.categories[PipeCategory] = attributes;
    facts.specialties = {QStringLiteral("给排水")};
    facts.calculationItems = {{QStringLiteral("管道长度"), QStringLiteral("水平管长度+立管长度")},
                              {QStringLiteral("数量"), QStringLiteral("构件个数")},
                              {QStringLiteral("刷油面积"), QStringLiteral("3.1416×管外径×管道长度")}};
    facts.dimensions = {{QStringLiteral("管道长度"), rules::Dimension::Length},
                        {QStringLiteral("数量"), rules::Dimension::Count},
                        {QStringLiteral("刷油面积"), rules::Dimension::Area}};
    facts.names = {QStringLiteral("水平管长度"), QStringLiteral("立管长度"), QStringLiteral("构件个数"),
                   QStringLiteral("管外径")};
    return facts;
}

/// A configuration of this category alone.
inline rules::Configuration ConfigurationWith(rules::SmallCategory category)
{
    category.text = category.text.isEmpty() ? PipeCategory : category.text;
    const CStringArray names = category.text.split(u'\\');
    category.name = names[2];
    rules::BigCategory big{11, names[1], {std::make_shared<const rules::SmallCategory>(std::move(category))}};
    return rules::Configuration({rules::Specialty{1, names[0], {big}}});
}

/// The rules with ids from 2, and the default rule behind them.
inline rules::SmallCategory WithDefault(std::vector<rules::Rule> list)
{
    rules::SmallCategory category;
    category.rules = std::move(list);
    for (std::size_t i = 0; i < category.rules.size(); ++i)
        category.rules[i].id = static_cast<int>(i) + 2;
    category.rules.push_back(RuleOf({}, true));
    category.rules.back().id = 1;
    return category;
}

inline std::vector<rules::Finding> FindingsOf(std::vector<rules::Rule> list,
                                              const rules::CheckFacts& facts = KnownFacts())
{
    return rules::Check(ConfigurationWith(WithDefault(std::move(list))), {}, facts);
}

/// The codes with the places of their rules, such as "gap@2".
inline CStringArray Codes(const std::vector<rules::Finding>& findings)
{
    CStringArray codes;
    for (const rules::Finding& finding : findings)
        codes.append(rules::CodeText(finding.code) +
                     (finding.position > 0 ? u'@' + QString::number(finding.position) : QString()));
    return codes;
}

inline CStringArray CodesOf(std::vector<rules::Rule> list, const rules::CheckFacts& facts = KnownFacts())
{
    return Codes(FindingsOf(std::move(list), facts));
}

} // namespace test
