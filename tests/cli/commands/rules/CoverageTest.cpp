#include "cli/CliTesting.h"
#include "cli/TakeoffTesting.h"
#include "cli/drawing/Picture.h"
#include "support/SourceTree.h"
#include "support/StrictXml.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <gtest/gtest.h>

#include <cstring>

using namespace Qt::StringLiterals;
using test::Cli;
using test::Head;
using test::Pipe;

namespace {

/// A project with the full sample rules for 给排水 as a configuration of its own, and a table.
class Coverage : public testing::Test
{
protected:
    Coverage() : m_cli(u"bill"_s)
    {
        QFile rules(test::InSourceTree(u"samples/PlumbingRules.xml"_s));
        if (!rules.open(QIODevice::ReadOnly)) throw std::runtime_error("no sample rules");
        m_cli.Folder().MakeFolder(u"project\\app\\自动套配置"_s);
        m_cli.Folder().WriteFile(Cli::RuleFile(u"样板"_s), rules.readAll());
    }

    void Write(const QString& rows) const { m_cli.Folder().WriteFile(u"t.csv"_s, (Head + rows).toUtf8()); }
    test::Outcome Run(const QStringList& options = {}) const
    {
        return m_cli.RunInProject(QStringList{u"coverage"_s, u"t.csv"_s, u"--config"_s, u"样板"_s} + options);
    }
    /// The only category of the JSON form.
    QJsonObject Category() const
    {
        const test::Outcome outcome = Run({u"--json"_s});
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        const QJsonArray categories = outcome.Json().value(u"categories").toArray();
        EXPECT_EQ(categories.size(), 1);
        return categories.at(0).toObject();
    }
    static qint64 HitsOf(const QJsonObject& category, bool isDefault)
    {
        qint64 hits = 0;
        for (const auto& rule : category.value(u"rules").toArray())
            if (rule.toObject().value(u"isDefault").toBool() == isDefault)
                hits += rule.toObject().value(u"hits").toInteger();
        return hits;
    }

    Cli m_cli;
};

/// 1 and 2 are caught; 3, 4 and 5 are not, the last two alike.
const QString Rows =
    u"1,a,%1,钢塑复合管,65,12.5,0,沟槽连接\n2,b,%1,钢塑复合管,65,1,0,沟槽连接\n"
    "3,c,%1,\"铜\"\"管\\,65\",65,2,0,承插\n4,d,%1,奇怪的管,40,1,1.5,\n5,e,%1,奇怪的管,40,7,1,\n"
    "5,e,%1,奇怪的管,40,100,1,\n7,f,给排水\\管道\\没有,,,,,\n"_s;

} // namespace

TEST_F(Coverage, TellsHitsRulesNeverHitAndTheLargestUncaughtGroupFirst)
{
    Write(Rows.arg(Pipe));
    const test::Outcome outcome = Run();
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    for (const QString& text :
         {Pipe + u"　构件 5 个"_s, u"40.0%"_s, u"从未命中："_s, u"管道长度"_s, u"10.50 m"_s,
          u"构件 7 个 ＝ 规则命中 2 ＋ 默认规则 3 ＋ 没有规则 0 ＋ 编号重复 1 ＋ 类别不明 1"_s,
          u"构件表没有构件的类别"_s, u"{\"op\":\"AddConfig\""_s})
        EXPECT_TRUE(outcome.Out().contains(text)) << text.toStdString() << outcome.out.toStdString();
    EXPECT_LT(outcome.Out().indexOf(u"10.50 m"_s), outcome.Out().indexOf(u"2.00 m"_s));
}

TEST_F(Coverage, BatchLineOfEveryGroupMakesARuleThatCatchesIt)
{
    Write(Rows.arg(Pipe));
    const QJsonObject before = Category();
    EXPECT_EQ(HitsOf(before, false), 2);
    EXPECT_EQ(HitsOf(before, true), 3);
    const QJsonArray groups = before.value(u"uncaught").toArray();
    ASSERT_EQ(groups.size(), 2);
    EXPECT_EQ(groups[0].toObject().value(u"components").toInt(), 2);
    EXPECT_EQ(groups[0].toObject().value(u"quantity").toString(), u"10.5"_s);
    EXPECT_EQ(groups[1].toObject().value(u"values").toObject().value(u"材质").toString(), u"铜\"管\\,65"_s);
    QByteArray script;
    for (const auto& group : groups)
        script += group.toObject().value(u"batch").toString().toUtf8() + '\n';
    const test::Outcome batch = m_cli.Batch(script + "{\"op\":\"Save\"}\n", {u"--config"_s, u"样板"_s});
    ASSERT_EQ(batch.status, 0) << batch.err.toStdString();
    const QJsonObject after = Category();
    EXPECT_EQ(HitsOf(after, false), 5);
    EXPECT_EQ(HitsOf(after, true), 0);
    const QJsonArray rules = after.value(u"rules").toArray();
    const qsizetype added = before.value(u"rules").toArray().size() - 1;
    ASSERT_EQ(rules.size(), added + 3);
    EXPECT_EQ(rules[added].toObject().value(u"hits").toInt(), 2);
    EXPECT_EQ(rules[added + 1].toObject().value(u"hits").toInt(), 1);
}

TEST_F(Coverage, GroupWithoutAnyValueHasNoBatchLine)
{
    Write(u"1,a,%1,,,3,1,\n"_s.arg(Pipe));
    const QJsonObject group = Category().value(u"uncaught").toArray().at(0).toObject();
    EXPECT_EQ(group.value(u"batch").toString(), QString());
    EXPECT_TRUE(Run().Out().contains(u"没有能写成条件的属性：1"_s));
}

TEST_F(Coverage, OneCategoryAloneIsShown)
{
    Write(Rows.arg(Pipe) + u"9,g,给排水\\管道\\排水管,PVC-U管,100,5,0,粘接\n"_s);
    EXPECT_TRUE(Run().Out().contains(u"给排水\\管道\\排水管"_s));
    const test::Outcome outcome = Run({u"--category"_s, u"给水管"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_FALSE(outcome.Out().contains(u"给排水\\管道\\排水管"_s));
    EXPECT_TRUE(outcome.Out().contains(u"构件 5 个 ＝ 规则命中 2 ＋ 默认规则 3 ＋ 没有规则 0\n"_s))
        << outcome.out.toStdString();
    EXPECT_EQ(Run({u"--category"_s, u"没有这个"_s}).status, 1);
}

TEST_F(Coverage, PictureIsWrittenAsSvgAndAsPng)
{
    Write(u"1,a,%1,<甲 & 乙>,65,12.5,0,x\n"_s.arg(Pipe) + Rows.arg(Pipe).section(u'\n', 1));
    const test::Outcome svg = Run({u"-o"_s, u"图.svg"_s});
    ASSERT_EQ(svg.status, 0) << svg.err.toStdString();
    const QByteArray text = m_cli.Folder().ReadFile(u"图.svg"_s);
    EXPECT_TRUE(test::IsStrictXml(text));
    EXPECT_TRUE(text.contains("prefers-color-scheme:dark"));
    EXPECT_TRUE(QString::fromUtf8(text).contains(u"第 "_s));
    const test::Outcome png = Run({u"-o"_s, u"图.png"_s});
    ASSERT_EQ(png.status, 0) << png.err.toStdString();
    EXPECT_TRUE(m_cli.Folder().ReadFile(u"图.png"_s).startsWith("\x89PNG\r\n\x1a\n"));
    const test::Outcome again = Run({u"-o"_s, u"图.png"_s});
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.Err().contains(u"--force"_s));
    EXPECT_EQ(Run({u"-o"_s, u"图.png"_s, u"--force"_s}).status, 0);
    EXPECT_EQ(Run({u"-o"_s, u"图.gif"_s}).status, 2);
}

TEST(Picture, TextsAreCutToTheirRoomAndSayInFullWhatTheyWereCutFrom)
{
    const QString text = u"镀锌钢管A100"_s;
    EXPECT_EQ(cli::CutToWidth(text, 10, 1000), text);
    const QString cut = cli::CutToWidth(text, 10, 45);
    EXPECT_TRUE(cut.endsWith(u'…')) << cut.toStdString();
    EXPECT_LE(cli::WidthOf(cut, 10), 45);
    EXPECT_EQ(cli::CutToWidth(u"a\U00020000\U00020000"_s, 10, 20), u"a…"_s) << "a pair is not parted";
    cli::Picture picture;
    picture.width = picture.height = 10;
    picture.labels.push_back({.x = 1, .y = 5, .size = 5, .text = u"a<b"_s, .whole = u"a<b & \u0001c"_s});
    const QByteArray svg = cli::ToSvg(picture);
    EXPECT_TRUE(test::IsStrictXml(svg));
    EXPECT_TRUE(svg.contains("<title>a&lt;b &amp;  c</title>a&lt;b"));
}
