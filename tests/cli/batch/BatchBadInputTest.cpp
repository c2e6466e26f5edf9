#include "cli/CliTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::Cli;

namespace {

/// A line that is refused before the presenter is called, and a word of the reason.
struct BadLine
{
    const char* name;
    QByteArray line;
    QString reason;
};

std::ostream& operator<<(std::ostream& out, const BadLine& bad)
{
    return out << bad.name;
}

QByteArray InPath(const QByteArray& entry)
{
    return R"({"op":"DelConfig","path":{)" + entry + "}}";
}

QByteArray WithQd(const QByteArray& record)
{
    return R"({"op":"AddQd","path":{},"qd":)" + record + "}";
}

class BatchBadInput : public testing::TestWithParam<BadLine>
{
};

QList<BadLine> BadShapes()
{
    return {
        {"NoJson", "AddConfig", u"不是 JSON"_s},
        {"CutJson", R"({"op":"Save")", u"不是 JSON"_s},
        {"GarbageBehind", R"({"op":"Save"} x)", u"不是 JSON"_s},
        {"AnArray", R"(["Save"])", u"不是 JSON 对象"_s},
        {"InvalidUtf8", "{\"op\":\"Save\",\"\xFF\":1}", u"UTF-8"_s},
        {"ByteZero", QByteArray("{\"op\":\"Sa\0ve\"}", 14), u"XML"_s},
        {"NoOperation", R"({"path":{}})", u"op"_s},
        {"OperationIsNoText", R"({"op":5})", u"op"_s},
        {"UnknownOperation", R"({"op":"Frob"})", u"Frob"_s},
        {"OperationInOtherCase", R"({"op":"save"})", u"save"_s},
        {"UnknownKey", R"({"op":"Save","speed":1})", u"speed"_s},
        {"KeyOfAnotherOperation", R"({"op":"DelConfig","path":{},"ids":[1]})", u"ids"_s},
        {"MissingPath", R"({"op":"DelConfig"})", u"path"_s},
        {"MissingArray", R"({"op":"AddCondition","path":{}})", u"array"_s},
        {"MissingRecord", R"({"op":"AddDe2QdNode","path":{}})", u"de"_s},
        {"MissingFile", R"({"op":"SaveAs"})", u"file"_s},
    };
}

QList<BadLine> BadPaths()
{
    return {
        {"PathIsNoObject", R"({"op":"DelConfig","path":[]})", u"path"_s},
        {"UnknownPathField", InPath(R"("ruleId":1)"), u"ruleId"_s},
        {"IdIsText", InPath(R"("configId":"1")"), u"configId"_s},
        {"IdIsNull", InPath(R"("configId":null)"), u"configId"_s},
        {"IdIsNotWhole", InPath(R"("configId":1.5)"), u"configId"_s},
        {"IdTooLarge", InPath(R"("configId":2147483648)"), u"configId"_s},
        {"IdTooSmall", InPath(R"("configId":-2147483649)"), u"configId"_s},
        {"IdHuge", InPath(R"("configId":1e300)"), u"configId"_s},
        {"UnknownCategory", InPath(R"("category":"给排水\\管道\\没有")"), u"没有"_s},
        {"BigCategoryOnly", InPath(R"("category":"给排水\\管道")"), u"给排水\\管道"_s},
        {"CategoryBesideIds", InPath(R"("category":"给排水\\管道\\给水管","sMemberId":1)"), u"sMemberId"_s},
        {"CategoryIsNoText", InPath(R"("category":5)"), u"category"_s},
    };
}

QList<BadLine> BadArguments()
{
    return {
        {"ArrayIsText", R"({"op":"AddCondition","path":{},"array":"A"})", u"array"_s},
        {"ArrayHoldsNumber", R"({"op":"AddCondition","path":{},"array":["A",1]})", u"array"_s},
        {"RecordIsArray", WithQd("[]"), u"qd"_s},
        {"UnknownRecordField", WithQd(R"({"strDeId":"1"})"), u"strDeId"_s},
        {"RecordFieldIsNumber", WithQd(R"({"strQdId":31001001})"), u"strQdId"_s},
        {"ForbiddenCharacter", WithQd(R"({"strName":"a\u0001b"})"), u"strName"_s},
        {"NonCharacter", WithQd(R"({"strName":"\uFFFE"})"), u"strName"_s},
        {"LoneSurrogate", WithQd(R"({"strName":"\uD800"})"), u"strName"_s},
        {"ForbiddenCharacterInArray", R"({"op":"AddCondition","path":{},"array":["\u0000"]})", u"array"_s},
        {"IdsAreNoArray", R"({"op":"DelQd","path":{},"ids":1})", u"ids"_s},
        {"IdsHoldText", R"({"op":"DelQd","path":{},"ids":["1"]})", u"ids"_s},
        {"IdsOutOfRange", R"({"op":"DelQd","path":{},"ids":[4294967296]})", u"ids"_s},
        {"DeIdsByQdIsArray", R"({"op":"DelDeInQdNode","path":{},"deIdsByQd":[]})", u"deIdsByQd"_s},
        {"DeIdsByQdKeyIsNoNumber", R"({"op":"DelDeInQdNode","path":{},"deIdsByQd":{"x":[1]}})",
         u"deIdsByQd"_s},
        {"DeIdsByQdKeyTooLarge", R"({"op":"DelDeInQdNode","path":{},"deIdsByQd":{"2147483648":[1]}})",
         u"deIdsByQd"_s},
        {"DeIdsByQdValueIsNumber", R"({"op":"DelDeInQdNode","path":{},"deIdsByQd":{"1":1}})", u"deIdsByQd"_s},
        {"FileIsNumber", R"({"op":"SaveAs","file":1})", u"file"_s},
        {"FileIsEmpty", R"({"op":"SaveAs","file":""})", u"路径"_s},
        {"FileHoldsForbiddenCharacter", R"({"op":"SaveAs","file":"a\u0000.xml"})", u"file"_s},
    };
}

} // namespace

TEST_P(BatchBadInput, IsRefusedWithItsLineAndReason)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome = cli.Batch("\n" + GetParam().line + "\n{\"op\":\"Save\"}\n");
    EXPECT_EQ(outcome.status, 1);
    const QList<QJsonObject> lines = outcome.Lines();
    ASSERT_EQ(lines.size(), 1) << outcome.out.toStdString();
    EXPECT_EQ(lines[0].value(u"line"_s).toInt(), 2);
    EXPECT_EQ(lines[0].value(u"ok"_s), QJsonValue(false));
    EXPECT_TRUE(lines[0].value(u"error"_s).toString().contains(GetParam().reason))
        << outcome.out.toStdString();
    EXPECT_TRUE(outcome.Err().contains(u"第 2 行"_s)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.Err().contains(GetParam().reason)) << outcome.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Lines, BatchBadInput, testing::ValuesIn(BadShapes() + BadPaths() + BadArguments()),
                         [](const auto& bad) { return std::string(bad.param.name); });

TEST(BatchBadInputTogether, KeepGoingNamesEveryBadLine)
{
    const Cli cli(u"bill"_s);
    const test::Outcome outcome = cli.Batch("x\n{\"op\":\"Save\"}\n{\"op\":\"Frob\"}\n", {u"--keep-going"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.Lines().size(), 3);
    EXPECT_TRUE(outcome.Err().contains(u"第 1 行："_s));
    EXPECT_FALSE(outcome.Err().contains(u"第 2 行"_s));
    EXPECT_TRUE(outcome.Err().contains(u"第 3 行 Frob"_s));
}
