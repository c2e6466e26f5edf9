#include "cli/CliTesting.h"

#include <QtCore/QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

QStringList Names(const QJsonArray& entries)
{
    QStringList names;
    for (const auto& entry : entries)
        names += entry.toObject().value(u"name"_s).toString();
    return names;
}

/// The entry of that name, as an object.
QJsonObject Entry(const QJsonArray& entries, const QString& name)
{
    const qsizetype index = Names(entries).indexOf(name);
    return index < 0 ? QJsonObject() : entries[index].toObject();
}

} // namespace

TEST(Catalogue, JsonNestsTheLevelsInTheHostsOrder)
{
    const Cli cli(u"bill"_s);
    const QJsonArray specialties =
        cli.RunInProject({u"catalog"_s, u"--json"_s}).Json().value(u"specialties"_s).toArray();
    EXPECT_EQ(Names(specialties),
              (QStringList{u"给排水"_s, u"电气"_s, u"暖通"_s, u"消防"_s, u"弱电"_s, u"建筑"_s}));
    const QJsonArray bigs = specialties[0].toObject().value(u"bigCategories"_s).toArray();
    EXPECT_EQ(Names(bigs),
              (QStringList{u"管道"_s, u"阀门附件"_s, u"卫生器具"_s, u"支架套管"_s, u"给水设备"_s}));
    const QJsonObject small = Entry(bigs[0].toObject().value(u"smallCategories"_s).toArray(), u"给水管"_s);
    EXPECT_EQ(small.keys(), (QStringList{u"attType"_s, u"attributes"_s, u"id"_s, u"name"_s}));
    EXPECT_EQ(small.value(u"id"_s), QJsonValue(10101));
    EXPECT_EQ(small.value(u"attType"_s), QJsonValue(1));
    const QJsonObject attribute = Entry(small.value(u"attributes"_s).toArray(), u"公称直径"_s);
    EXPECT_EQ(attribute, (QJsonObject{{u"name"_s, u"公称直径"_s}, {u"code"_s, u"AM_NominalDiameter"_s}}));
}

TEST(Catalogue, SpecListsOneSpecialty)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome = cli.RunInProject({u"catalog"_s, u"--spec"_s, u"弱电"_s, u"--json"_s});
    EXPECT_EQ(Names(outcome.Json().value(u"specialties"_s).toArray()), QStringList{u"弱电"_s});
    EXPECT_EQ(cli.RunInProject({u"catalog"_s, u"--spec"_s, u"园林"_s}).status, 1);
}

TEST(Catalogue, TableNamesCategoriesAndAttributes)
{
    const test::Outcome outcome = Cli(u"quota"_s).RunInProject({u"catalog"_s});
    EXPECT_EQ(outcome.status, 0);
    for (const QString& text :
         {u"1 给排水"_s, u"  101 管道"_s, u"10101"_s, u"给水管"_s, u"公称直径"_s, u"6 建筑"_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString();
}
