#include "xml/Dom.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Names and values are kept by a few of their characters, so these have them in common.

namespace {

CString Value(const xml::Node& element, const CString& name)
{
    CString value = u"missing"_s;
    element.ToElement().GetAttribute(name, value);
    return value;
}

} // namespace

TEST(Pools, ValuesOfEqualEndsAndLengthStayApart)
{
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes("<a><b v='head-1-tail'/><b v='head-2-tail'/><b v='head-1-tail'/>"
                                   "<b v='head-11-tail'/><b v=''/></a>"));
    CString all;
    for (xml::Node b = document.FirstChild().FirstChild(); b; b = b.NextSibling())
        all += Value(b, u"v"_s) + u'|';
    EXPECT_EQ(all, u"head-1-tail|head-2-tail|head-1-tail|head-11-tail||"_s);
}

TEST(Pools, ChangedTextLeavesTheOthersThatWereEqual)
{
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes("<a v='给水管' w='给水管'/>"));
    CString mine = Value(document.FirstChild(), u"v"_s);
    mine += u"一";
    EXPECT_EQ(Value(document.FirstChild(), u"w"_s), u"给水管"_s);
    EXPECT_EQ(mine, u"给水管一"_s);
}

TEST(Pools, ValueIsThatOfNowAfterALoadAndAfterASetting)
{
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes("<a v='1'/>"));
    EXPECT_EQ(Value(document.FirstChild(), u"v"_s), u"1"_s);
    document.FirstChild().ToElement().SetAttribute(u"v"_s, u"2"_s);
    EXPECT_EQ(Value(document.FirstChild(), u"v"_s), u"2"_s);
    ASSERT_TRUE(document.LoadBytes("<a v='3'/>"));
    EXPECT_EQ(Value(document.FirstChild(), u"v"_s), u"3"_s);
}

TEST(Pools, LongValuesAreReadWhole)
{
    const xml::Document document = xml::Document::Create();
    const CString value(200, u'长');
    const xml::Element a = document.AppendChild(document.CreateElement(u"a"_s)).ToElement();
    a.SetAttribute(u"v"_s, value);
    EXPECT_EQ(Value(a, u"v"_s), value);
    EXPECT_EQ(Value(a, u"v"_s), value);
}

TEST(Pools, NamesOfEqualLengthMiddleAndEndStayApart)
{
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes("<a aXcYd='1' bXcYd='2' 名='3' 茗='4'/>"));
    const xml::Node a = document.FirstChild();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Value(a, u"bXcYd"_s), u"2"_s);
        EXPECT_EQ(Value(a, u"aXcYd"_s), u"1"_s);
        EXPECT_EQ(Value(a, u"茗"_s), u"4"_s);
        EXPECT_EQ(Value(a, u"名"_s), u"3"_s);
        EXPECT_EQ(Value(a, u""_s), u"missing"_s);
        EXPECT_EQ(Value(a, u"cXcYd"_s), u"missing"_s);
    }
}

TEST(Pools, NameThatIsNoneIsRefusedEachTime)
{
    const xml::Document document = xml::Document::Create();
    const xml::Element a = document.AppendChild(document.CreateElement(u"a"_s)).ToElement();
    for (const CString& name : {u"1a"_s, u""_s, u"a b"_s, CString(QChar(0xD800))})
        for (int round = 0; round < 2; ++round)
            EXPECT_THROW(a.SetAttribute(name, u"x"_s), xml::Error);
}

TEST(Pools, TextThatXmlForbidsIsRefusedWhereverItStands)
{
    const xml::Document document = xml::Document::Create();
    const xml::Element a = document.AppendChild(document.CreateElement(u"a"_s)).ToElement();
    const QChar forbidden[] = {QChar(0),      QChar(1),      QChar(0x0B),  QChar(0x1F),
                               QChar(0xD800), QChar(0xFFFE), QChar(0xFFFF)};
    for (const QChar c : forbidden)
        for (const CString& text : {CString(c), u"给"_s + c, c + u"a"_s})
            EXPECT_THROW(a.SetAttribute(u"v"_s, text), xml::Error) << int{c.unicode()};
    for (const CString& text : {u"\t\n\r"_s, u"\u007F\u0080\uFFFD"_s, u"\U0001F600"_s}) {
        a.SetAttribute(u"v"_s, text);
        EXPECT_EQ(Value(a, u"v"_s), text);
    }
}
