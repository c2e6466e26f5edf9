#include "cli/CliTesting.h"
#include "support/SourceTree.h"

#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

class Try : public testing::Test
{
protected:
    Try() : m_cli(u"bill"_s) {}

    test::Outcome Run(const QStringList& words, const QString& category = u"给水管"_s) const
    {
        return m_cli.RunInProject(QStringList{u"try"_s, u"--category"_s, category, u"--config"_s,
                                              test::InSourceTree(u"samples/PlumbingRules.xml"_s)} +
                                  words);
    }

    Cli m_cli;
};

} // namespace

TEST_F(Try, TellsRuleItemsQuantitiesAndWhyTheOthersDoNotApply)
{
    const test::Outcome outcome = Run({u"材质=钢塑复合管"_s, u"连接方式=沟槽连接"_s, u"公称直径=65"_s,
                                       u"水平管长度=12.5"_s, u"立管长度=0"_s});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    for (const QString& text : {u"类别：给排水\\管道\\给水管"_s, u"适用的规则：第 "_s, u"材质＝钢塑复合管"_s,
                                u"12.5"_s, u"最接近的在前"_s, u"构件的值是“65”"_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString() << outcome.out.toStdString();
}

TEST_F(Try, JsonListsTheNearestMissesFirst)
{
    const QJsonObject json =
        Run({u"材质=钢塑复合管"_s, u"连接方式=沟槽连接"_s, u"公称直径=DN65"_s, u"--json"_s}).Json();
    EXPECT_EQ(json[u"outcome"_s].toString(), u"default"_s);
    EXPECT_EQ(json[u"told"_s].toArray().first().toString(), u"公称直径 的值“DN65”不在值列表中"_s);
    const QJsonArray before = json[u"before"_s].toArray();
    ASSERT_GT(before.size(), 10);
    int failing = 0;
    for (const QJsonValue& miss : before) {
        const int here = miss[u"conditions"_s].toInt() - miss[u"holding"_s].toInt();
        EXPECT_GE(here, failing);
        EXPECT_GT(here, 0);
        failing = here;
    }
    EXPECT_TRUE(before.first()[u"why"_s].toString().contains(u"构件的值“DN65”不是数字"_s));
}

TEST_F(Try, QuantityThatIsMissingIsToldAndNotZero)
{
    const QJsonObject json =
        Run({u"材质=钢塑复合管"_s, u"连接方式=沟槽连接"_s, u"公称直径=65"_s, u"--json"_s}).Json();
    const QJsonObject item = json[u"items"_s].toArray().first().toObject();
    EXPECT_EQ(item[u"quantity"_s].toString(), QString());
    EXPECT_EQ(item[u"fault"_s].toString(), u"“水平管长度”没有值"_s);
}

TEST_F(Try, AttributeMayBeNamedByItsCode)
{
    const auto ruleOf = [&](const QString& diameter) {
        return Run({u"材质=钢塑复合管"_s, u"连接方式=沟槽连接"_s, diameter, u"--json"_s})
            .Json()[u"rule"_s]
            .toInt();
    };
    EXPECT_EQ(ruleOf(u"AM_NominalDiameter=65"_s), ruleOf(u"公称直径=65"_s));
    EXPECT_NE(ruleOf(u"AM_NominalDiameter=65"_s), ruleOf(u"公称直径=100"_s));
}

TEST_F(Try, WhatCannotBeMeantIsRefused)
{
    EXPECT_EQ(Run({u"材质"_s}).status, 2);
    EXPECT_EQ(Run({u"材质=a"_s, u"材质=b"_s}).status, 2);
    EXPECT_EQ(m_cli.RunInProject({u"try"_s, u"材质=a"_s}).status, 2);
    const test::Outcome unknown = Run({}, u"没有"_s);
    EXPECT_EQ(unknown.status, 1);
    EXPECT_TRUE(unknown.Err().contains(u"没有小类“没有”"_s));
}
