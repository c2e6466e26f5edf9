#include "xml/Dom.h"

#include "xml/PrintXml.h"
#include "xml/XmlTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Elements that are made or loaded in one document and appended to another.

using test::Parsed;

namespace {

constexpr char Head[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// A document with the element `name`, which is its document element.
xml::Document WithRoot(const CString& name)
{
    xml::Document document = xml::Document::Create();
    document.AppendChild(document.CreateElement(name));
    return document;
}

} // namespace

TEST(MovedNode, FirstElementOfAFreshDocumentBringsItsAttributesAndChildren)
{
    const xml::Document target = WithRoot(u"r"_s);
    const xml::Document fresh = xml::Document::Create();
    const xml::Element made = fresh.CreateElement(u"a"_s);
    made.SetAttribute(u"x"_s, u"1"_s);
    made.AppendChild(xml::Document::Create().CreateElement(u"b"_s)).ToElement().SetAttribute(u"y"_s, u"2"_s);
    target.FirstChild().AppendChild(made);
    EXPECT_EQ(target.ToBytes(), QByteArray(Head) + "<r>\n\t<a x=\"1\">\n\t\t<b y=\"2\"/>\n\t</a>\n</r>\n");
}

TEST(MovedNode, AppendedTwiceStandsOnce)
{
    for (const bool filled : {false, true}) {
        const xml::Document target = WithRoot(u"r"_s);
        const xml::Document fresh = xml::Document::Create();
        const xml::Element made = fresh.CreateElement(u"a"_s);
        if (filled) made.SetAttribute(u"x"_s, u"1"_s);
        const xml::Node first = target.FirstChild().AppendChild(made);
        target.FirstChild().AppendChild(target.CreateElement(u"b"_s));
        const xml::Node second = target.FirstChild().AppendChild(made);
        EXPECT_EQ(first, second);
        EXPECT_EQ(target.FirstChild().FirstChild().Name(), u"b"_s);
        EXPECT_EQ(target.FirstChild().FirstChild().NextSibling(), second);
        EXPECT_TRUE(second.NextSibling().IsNull());
    }
}

TEST(MovedNode, HandleFromBeforeStillWritesIntoTheElement)
{
    const xml::Document target = WithRoot(u"r"_s);
    const xml::Element made = xml::Document::Create().CreateElement(u"a"_s);
    const xml::Node placed = target.FirstChild().AppendChild(made);
    made.SetAttribute(u"x"_s, u"1"_s);
    made.AppendChild(target.CreateElement(u"b"_s));
    EXPECT_EQ(made, placed);
    EXPECT_EQ(made.Kind(), xml::NodeKind::Element);
    EXPECT_EQ(made.Name(), u"a"_s);
    EXPECT_EQ(made.FirstChild().Name(), u"b"_s);
    EXPECT_FALSE(made.SelectSingleNode(u"b"_s).IsNull());
    CString value;
    EXPECT_TRUE(made.GetAttribute(u"x"_s, value));
    EXPECT_EQ(target.ToBytes(), QByteArray(Head) + "<r>\n\t<a x=\"1\">\n\t\t<b/>\n\t</a>\n</r>\n");
    target.FirstChild().RemoveChild(made);
    EXPECT_EQ(target.ToBytes(), QByteArray(Head) + "<r/>\n");
}

TEST(MovedNode, HandlesBelowItFollowToo)
{
    const xml::Document target = WithRoot(u"r"_s);
    const xml::Document source = Parsed("<s><t><u/><v><w/></v></t></s>");
    const xml::Node t = source.FirstChild().FirstChild();
    const xml::Element w = t.FirstChild().NextSibling().FirstChild().ToElement();
    target.FirstChild().AppendChild(t);
    w.SetAttribute(u"x"_s, u"1"_s);
    EXPECT_TRUE(target.ToBytes().contains("<w x=\"1\"/>"));
    EXPECT_TRUE(source.FirstChild().FirstChild().IsNull());
}

TEST(MovedNode, GoesThereAndBack)
{
    const xml::Document one = WithRoot(u"one"_s);
    const xml::Document two = WithRoot(u"two"_s);
    const xml::Element made = one.CreateElement(u"a"_s);
    one.FirstChild().AppendChild(made);
    two.FirstChild().AppendChild(made);
    EXPECT_TRUE(one.FirstChild().FirstChild().IsNull());
    one.FirstChild().AppendChild(made);
    EXPECT_TRUE(two.FirstChild().FirstChild().IsNull());
    made.SetAttribute(u"x"_s, u"1"_s);
    EXPECT_EQ(one.ToBytes(), QByteArray(Head) + "<one>\n\t<a x=\"1\"/>\n</one>\n");
}

TEST(MovedNode, HandleOutlivesTheDocumentThatItsElementWentTo)
{
    const xml::Element made = xml::Document::Create().CreateElement(u"a"_s);
    made.SetAttribute(u"x"_s, u"1"_s);
    WithRoot(u"r"_s).FirstChild().AppendChild(made);
    CString value;
    EXPECT_TRUE(made.GetAttribute(u"x"_s, value));
    EXPECT_EQ(made.Name(), u"a"_s);
}

TEST(MovedNode, DocumentElementBringsContentThatNobodyHasLookedAt)
{
    const xml::Document source = Parsed("<s><t><u x='1'/></t></s>");
    const xml::Document target = WithRoot(u"r"_s);
    target.FirstChild().AppendChild(source.FirstChild());
    EXPECT_EQ(target.FirstChild().FirstChild().FirstChild().FirstChild().Name(), u"u"_s);
    const xml::Document nested = Parsed("<s><t><u x='1'/></t></s>");
    const xml::Node root = nested.FirstChild();
    nested.RemoveChild(root);
    nested.AppendChild(nested.CreateElement(u"r"_s)).AppendChild(root);
    EXPECT_TRUE(nested.ToBytes().contains("<u x=\"1\"/>"));
}

TEST(DocumentNode, TakesNoText)
{
    const xml::Document source = Parsed("<s>t<![CDATA[c]]></s>");
    const xml::Document target = xml::Document::Create();
    const xml::Node text = source.FirstChild().FirstChild();
    EXPECT_THROW(target.AppendChild(text.NextSibling()), xml::Error);
    EXPECT_THROW(target.AppendChild(text), xml::Error);
    EXPECT_EQ(target.ToBytes(), Head);
    EXPECT_EQ(source.ToBytes(), "<s>t<![CDATA[c]]></s>\n");
}

TEST(DocumentNode, CommentLeavesRoomForTheElement)
{
    const xml::Document source = Parsed("<s><!--c--><?p i?></s>");
    const xml::Document target = xml::Document::Create();
    const xml::Node comment = target.AppendChild(source.FirstChild().FirstChild());
    EXPECT_TRUE(target.FirstChild().IsNull());
    const xml::Node root = target.AppendChild(target.CreateElement(u"r"_s));
    target.AppendChild(source.FirstChild().FirstChild());
    EXPECT_EQ(target.FirstChild(), root);
    EXPECT_TRUE(comment.NextSibling().IsNull());
    EXPECT_EQ(target.ToBytes(), QByteArray(Head) + "<!--c-->\n<r/>\n<?p i?>\n");
    EXPECT_THROW(target.AppendChild(target.CreateElement(u"q"_s)), xml::Error);
    EXPECT_EQ(target.AppendChild(root), root) << "it is the document element already";
}

TEST(DocumentNode, CommentBesideALoadedElementIsWritten)
{
    const xml::Document source = Parsed("<s><!--c--></s>");
    const xml::Document target = Parsed("<?xml version='1.0'?>\n<r  x='1'/>");
    target.AppendChild(source.FirstChild().FirstChild());
    EXPECT_EQ(target.ToBytes(), "<?xml version='1.0'?>\n<r  x='1'/>\n<!--c-->\n");
    target.AppendChild(target.FirstChild());
    EXPECT_EQ(target.ToBytes(), "<?xml version='1.0'?>\n<!--c-->\n<r  x='1'/>\n");
}

TEST(RootText, GetsNoBlanksFromTheChildrenThatComeAndGo)
{
    const xml::Document document = Parsed("<r>\n\t<a/>text<b/>\n\t<c/>\n</r>\n");
    const xml::Node root = document.FirstChild();
    root.RemoveChild(root.SelectSingleNode(u"b"_s));
    EXPECT_EQ(document.ToBytes(), "<r>\n\t<a/>text<c/>\n</r>\n");
    root.AppendChild(document.CreateElement(u"b"_s));
    EXPECT_EQ(document.ToBytes(), "<r>\n\t<a/>text<c/><b/>\n</r>\n");
    root.RemoveChild(root.SelectSingleNode(u"c"_s));
    root.RemoveChild(root.SelectSingleNode(u"b"_s));
    EXPECT_EQ(document.ToBytes(), "<r>\n\t<a/>text</r>\n");
}

TEST(RootText, AppendedStaysAsItIs)
{
    const xml::Document source = Parsed("<s>text</s>");
    const xml::Document document = Parsed("<r>\n\t<a/>\n</r>\n");
    document.FirstChild().AppendChild(source.FirstChild().FirstChild());
    EXPECT_EQ(document.ToBytes(), "<r>\n\t<a/>text</r>\n");
}

TEST(RootText, NewChildAndEndTagAreNoBlanksBehindIt)
{
    const xml::Document document = Parsed("<r>text<a/></r>");
    const xml::Node root = document.FirstChild();
    root.RemoveChild(root.SelectSingleNode(u"a"_s));
    root.AppendChild(document.CreateElement(u"a"_s));
    EXPECT_EQ(document.ToBytes(), "<r>text<a/></r>\n");
}

TEST(Content, MarkAtTheBeginningOfAChangedChildIsACharacter)
{
    const xml::Document document = Parsed("<r><a>\xEF\xBB\xBFtext<b/></a></r>");
    document.FirstChild().FirstChild().ToElement().SetAttribute(u"x"_s, u"1"_s);
    EXPECT_EQ(document.ToBytes(), "<r><a x=\"1\">\xEF\xBB\xBFtext<b/></a></r>\n");
}
