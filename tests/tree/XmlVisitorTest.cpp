#include "tree/XmlVisitor.h"

#include "TreeTesting.h"

#include "support/MessageRecorder.h"

using namespace Qt::StringLiterals;
using test::Page;

namespace {

/// The machine has no XML engine while this lives.
class NoEngine
{
public:
    NoEngine() { xml::SetEngineAvailable(false); }
    ~NoEngine() { xml::SetEngineAvailable(true); }
    NoEngine(const NoEngine&) = delete;
    NoEngine& operator=(const NoEngine&) = delete;
};

} // namespace

TEST(XmlVisitor, MissingAttributeReadsAsEmptyWithoutRaising)
{
    const Page page(u"<n a='1'/>"_s);
    EXPECT_EQ(XmlVisitor::getNodeAttribute(page.Root(), u"a"_s), u"1"_s);
    EXPECT_EQ(XmlVisitor::getNodeAttribute(page.Root(), u"b"_s), CString());
    EXPECT_EQ(XmlVisitor::getNodeAttribute(page.Root(), u"A"_s), CString());
}

TEST(XmlVisitor, AttributeOfANullElementReadsAsEmptyWithoutRaising)
{
    EXPECT_EQ(XmlVisitor::getNodeAttribute({}, u"a"_s), CString());
}

TEST(XmlVisitor, AddattTwiceLeavesOneAttributeWithTheSecondValueInItsPlace)
{
    const Page page;
    XmlVisitor::addatt(page.Root(), u"a"_s, u"1"_s);
    XmlVisitor::addatt(page.Root(), u"b"_s, u"2"_s);
    XmlVisitor::addatt(page.Root(), u"a"_s, u"3"_s);
    EXPECT_EQ(page.Canonical(), u"<n a=\"3\" b=\"2\">\n"_s);
}

TEST(XmlVisitor, AddattOnANullElementRaisesThePointerError)
{
    EXPECT_THROW(XmlVisitor::addatt({}, u"a"_s, u"1"_s), xml::PointerError);
}

TEST(XmlVisitor, AddattOfAForbiddenCharacterRaisesAndChangesNothing)
{
    const Page page(u"<n a='1'/>"_s);
    EXPECT_THROW(XmlVisitor::addatt(page.Root(), u"a"_s, CString(QChar(1))), xml::Error);
    EXPECT_EQ(XmlVisitor::getNodeAttribute(page.Root(), u"a"_s), u"1"_s);
}

TEST(XmlVisitor, AddattKeepsMarkupBlanksAndLineEndsOfTheValue)
{
    const CString value = u" <\"&'>\t\r\n\u4e2d\U0002070E "_s;
    const Page page;
    XmlVisitor::addatt(page.Root(), u"a"_s, value);
    EXPECT_EQ(XmlVisitor::getNodeAttribute(page.Root(), u"a"_s), value);
    EXPECT_EQ(page.Canonical(), u"<n a=\""_s + value + u"\">\n"_s);
}

TEST(XmlVisitor, AddChildTwiceGivesTwoElementsInCallOrder)
{
    const Page page(u"<n><old/></n>"_s);
    const IXMLDOMElement first = XmlVisitor::addChild(page.Root(), u"c"_s);
    const IXMLDOMElement second = XmlVisitor::addChild(page.Root(), u"c"_s);
    XmlVisitor::addatt(first, u"no"_s, u"1"_s);
    XmlVisitor::addatt(second, u"no"_s, u"2"_s);
    EXPECT_EQ(page.Canonical(), u"<n>\n <old>\n <c no=\"1\">\n <c no=\"2\">\n"_s);
}

TEST(XmlVisitor, AddattTwiceOnAChildMadeByAddChildLeavesOneAttributeWithTheSecondValueInItsPlace)
{
    // More names than the XML layer can tell apart without a search, whatever it goes by.
    constexpr int Names = 200;
    const Page page;
    const IXMLDOMElement child = XmlVisitor::addChild(page.Root(), u"c"_s);
    CString expected = u"<n>\n <c"_s;
    for (const CString& round : {u"first"_s, u"second"_s})
        for (int i = 0; i < Names; ++i)
            XmlVisitor::addatt(child, u"a%1"_s.arg(i), round + CString::number(i));
    for (int i = 0; i < Names; ++i)
        expected += u" a%1=\"second%1\""_s.arg(i);
    EXPECT_EQ(page.Canonical(), expected + u">\n"_s);
}

TEST(XmlVisitor, AddChildToANullParentRaisesThePointerError)
{
    EXPECT_THROW(XmlVisitor::addChild({}, u"c"_s), xml::PointerError);
}

TEST(XmlVisitor, AddChildMakesTheElementBeforeItLooksAtTheParent)
{
    try {
        XmlVisitor::addChild({}, u"1 is no name"_s);
        FAIL() << "nothing was raised";
    } catch (const xml::PointerError&) {
        FAIL() << "the parent was looked at first";
    } catch (const xml::Error&) {
        SUCCEED();
    }
}

TEST(XmlVisitor, RootOfAnEmptyDocumentIsMadeOnceAndFoundAgain)
{
    const IXMLDOMDocument document = XmlVisitor::CreateXmlDocPtr();
    const IXMLDOMNode made = XmlVisitor::GetRootNode_C(document, u"根"_s);
    EXPECT_EQ(made.Name(), u"根"_s);
    EXPECT_TRUE(XmlVisitor::GetRootNode_C(document, u"根"_s) == made);
    EXPECT_TRUE(document.FirstChild() == made);
    EXPECT_TRUE(made.NextSibling().IsNull());
}

TEST(XmlVisitor, RootNameIsComparedExactly)
{
    const IXMLDOMDocument document = XmlVisitor::CreateXmlDocPtr();
    ASSERT_TRUE(document.LoadBytes("<root/>"));
    EXPECT_TRUE(XmlVisitor::GetRootNode_C(document, u"root"_s) == document.FirstChild());
    // Another spelling is another element, and a document takes no second one.
    EXPECT_THROW(XmlVisitor::GetRootNode_C(document, u"Root"_s), xml::Error);
}

TEST(XmlVisitor, WithAnEngineADocumentIsMadeWithoutAWord)
{
    const test::MessageRecorder messages;
    EXPECT_FALSE(XmlVisitor::CreateXmlDocPtr().IsNull());
    EXPECT_TRUE(messages.Messages().empty());
}

TEST(XmlVisitor, WithoutAnEngineAWarningWithoutOwnerIsShownAndTheDocumentIsNull)
{
    const NoEngine noEngine;
    const test::MessageRecorder messages;
    EXPECT_TRUE(XmlVisitor::CreateXmlDocPtr().IsNull());
    ASSERT_EQ(messages.Messages().size(), 1U);
    const platform::Message& message = messages.Messages().front();
    EXPECT_EQ(message.kind, platform::MessageKind::Warning);
    EXPECT_EQ(message.text, u"无法创建DOMDocument对象，请检查是否安装了MS XML Parser 运行库!"_s);
    EXPECT_EQ(message.caption, u"Norvasoft"_s);
    EXPECT_FALSE(message.owned);
}

TEST(XmlVisitor, WithoutAnEngineAddChildRaisesThePointerError)
{
    const Page page;
    const NoEngine noEngine;
    const test::MessageRecorder messages;
    EXPECT_THROW(XmlVisitor::addChild(page.Root(), u"c"_s), xml::PointerError);
    EXPECT_EQ(messages.Messages().size(), 1U);
}
