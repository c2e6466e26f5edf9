#include "xml/Dom.h"

#include "xml/PrintXml.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

CString Attribute(const xml::Element& element, const CString& name)
{
    CString value = u"missing"_s;
    element.GetAttribute(name, value);
    return value;
}

} // namespace

TEST(Dom, NullHandlesAreLegalUntilTheyAreUsed)
{
    const xml::Node node;
    EXPECT_TRUE(node.IsNull());
    EXPECT_EQ(node.Kind(), xml::NodeKind::Null);
    EXPECT_TRUE(node.ToElement().IsNull());
    EXPECT_EQ(node, xml::Node(node));
    EXPECT_THROW(node.FirstChild(), xml::PointerError);
    EXPECT_THROW(node.NextSibling(), xml::PointerError);
    EXPECT_THROW(node.Name(), xml::PointerError);
    EXPECT_THROW(node.SelectSingleNode(u"a"_s), xml::PointerError);
    EXPECT_THROW(xml::Element().SetAttribute(u"a"_s, u"b"_s), xml::PointerError);
    CString value = u"kept"_s;
    EXPECT_THROW(xml::Element().GetAttribute(u"a"_s, value), xml::PointerError);
    EXPECT_EQ(value, u"kept"_s);
    EXPECT_THROW(xml::Document().Load(u"x"_s), xml::PointerError);
    EXPECT_THROW(xml::Document().CreateElement(u"x"_s), xml::PointerError);
    EXPECT_THROW(xml::Document().Save(u"x"_s), xml::PointerError);
}

TEST(Dom, NoEngineGivesANullDocument)
{
    xml::SetEngineAvailable(false);
    EXPECT_TRUE(xml::Document::Create().IsNull());
    xml::SetEngineAvailable(true);
    EXPECT_FALSE(xml::Document::Create().IsNull());
}

TEST(Dom, SelectsTheFirstChildOfExactlyThatName)
{
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes("<a><!--De--><de i='0'/><De i='1'/><De i='2'/></a>"));
    EXPECT_EQ(Attribute(document.FirstChild().SelectSingleNode(u"De"_s).ToElement(), u"i"_s), u"1"_s);
    EXPECT_TRUE(document.FirstChild().SelectSingleNode(u"DE"_s).IsNull());
    EXPECT_TRUE(document.FirstChild().SelectSingleNode(u"no name"_s).IsNull());
}

TEST(Dom, AttributeSetTwiceKeepsItsPlaceAndTheSecondValue)
{
    const xml::Document document = xml::Document::Create();
    const xml::Element a = document.AppendChild(document.CreateElement(u"a"_s)).ToElement();
    a.SetAttribute(u"x"_s, u"1"_s);
    a.SetAttribute(u"y"_s, u"2"_s);
    a.SetAttribute(u"x"_s, u"3"_s);
    EXPECT_EQ(document.ToBytes(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a x=\"3\" y=\"2\"/>\n");
}

TEST(Dom, RefusesNamesAndCharactersThatNoFileCanHold)
{
    const xml::Document document = xml::Document::Create();
    EXPECT_THROW(document.CreateElement(u"1a"_s), xml::Error);
    EXPECT_THROW(document.CreateElement(u""_s), xml::Error);
    EXPECT_THROW(document.CreateElement(u"a b"_s), xml::Error);
    EXPECT_NO_THROW(document.CreateElement(u"导线·导管"_s));
    const xml::Element a = document.AppendChild(document.CreateElement(u"a"_s)).ToElement();
    EXPECT_THROW(a.SetAttribute(u"a b"_s, u""_s), xml::Error);
    EXPECT_THROW(a.SetAttribute(u"x"_s, CString(QChar(1))), xml::Error);
    EXPECT_THROW(a.SetAttribute(u"x"_s, CString(QChar(0xD800))), xml::Error);
    EXPECT_THROW(a.SetAttribute(u"x"_s, CString(QChar(0xFFFE))), xml::Error);
    CString value;
    EXPECT_FALSE(a.GetAttribute(u"x"_s, value)) << "a refused attribute must not have been made";
    EXPECT_NO_THROW(a.SetAttribute(u"x"_s, u"\t\n\U00020000"_s));
}

TEST(Dom, SecondDocumentElementIsRefused)
{
    const xml::Document document = xml::Document::Create();
    document.AppendChild(document.CreateElement(u"a"_s));
    EXPECT_THROW(document.AppendChild(document.CreateElement(u"b"_s)), xml::Error);
}

TEST(Dom, AppendMovesFromAnotherDocumentAndGivesTheNewHandle)
{
    const xml::Document target = xml::Document::Create();
    const xml::Node root = target.AppendChild(target.CreateElement(u"a"_s));
    const xml::Document source = xml::Document::Create();
    ASSERT_TRUE(source.LoadBytes("<s><t x='1'><u/></t></s>"));
    const xml::Node moved = root.AppendChild(source.FirstChild().FirstChild());
    EXPECT_EQ(Attribute(moved.ToElement(), u"x"_s), u"1"_s);
    EXPECT_EQ(moved.FirstChild().Name(), u"u"_s);
    EXPECT_TRUE(source.FirstChild().FirstChild().IsNull());
}

TEST(Dom, HandleKeepsItsDocumentAlive)
{
    xml::Node node;
    {
        const xml::Document document = xml::Document::Create();
        ASSERT_TRUE(document.LoadBytes("<a><b x='1'/></a>"));
        node = document.FirstChild().FirstChild();
    }
    EXPECT_EQ(Attribute(node.ToElement(), u"x"_s), u"1"_s);
}

TEST(Dom, AppendingBelowItselfOrIntoTextIsRefused)
{
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes("<a><b/>t</a>"));
    const xml::Node a = document.FirstChild();
    EXPECT_THROW(a.FirstChild().AppendChild(a), xml::Error);
    EXPECT_THROW(a.FirstChild().AppendChild(a.FirstChild()), xml::Error);
    EXPECT_THROW(a.FirstChild().NextSibling().AppendChild(document.CreateElement(u"c"_s)), xml::Error);
    EXPECT_THROW(a.AppendChild(document), xml::Error);
    EXPECT_THROW(a.AppendChild(xml::Node()), xml::PointerError);
}

TEST(Dom, RemovedNodeIsGoneAndItsHandleStaysSafe)
{
    const xml::Document document = xml::Document::Create();
    ASSERT_TRUE(document.LoadBytes("<a><b x='1'><c/></b><d/></a>"));
    const xml::Node a = document.FirstChild();
    const xml::Node b = a.FirstChild();
    a.RemoveChild(b);
    EXPECT_EQ(a.FirstChild().Name(), u"d"_s);
    EXPECT_EQ(b.Name(), u"b"_s);
    EXPECT_TRUE(b.NextSibling().IsNull());
    EXPECT_THROW(a.RemoveChild(b), xml::Error);
    EXPECT_THROW(a.RemoveChild(xml::Node()), xml::PointerError);
}

TEST(Dom, NewElementStandsNowhereUntilItIsAppended)
{
    const xml::Document document = xml::Document::Create();
    const xml::Element first = document.CreateElement(u"a"_s);
    const xml::Element second = document.CreateElement(u"b"_s);
    EXPECT_TRUE(first.NextSibling().IsNull());
    EXPECT_TRUE(document.FirstChild().IsNull());
    document.AppendChild(second);
    EXPECT_EQ(document.FirstChild().Name(), u"b"_s);
}
