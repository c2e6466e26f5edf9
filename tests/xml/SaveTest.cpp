#include "xml/Dom.h"

#include "platform/Files.h"
#include "support/FaultyFileSystem.h"
#include "support/StrictXml.h"
#include "support/TempFolder.h"
#include "xml/XmlTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using test::Parsed;

namespace {

/// Every way of writing that a careful hand or another program may have used.
const QByteArray Handwritten =
    "<?xml version='1.0'?>\r\n<!-- 头 -->\r\n<root  Version = '1' >\r\n"
    "    <!-- 甲 -->  <电气 name='电气' id=\"2\"   >\r\n\t\t<x y='&#65;&gt;'></x> 文字 <![CDATA[<>]]>\r\n"
    "    </电气>\r\n    <给排水 name=\"给排水\"/>\r\n</root >\r\n<!-- 尾 -->\r\n";

} // namespace

TEST(Save, UntouchedDocumentComesBackByteForByte)
{
    EXPECT_EQ(Parsed(Handwritten).ToBytes(), Handwritten);
}

TEST(Save, LookingAtADocumentChangesNothing)
{
    const xml::Document document = Parsed(Handwritten);
    for (xml::Node child = document.FirstChild().FirstChild(); child; child = child.NextSibling())
        if (child.Kind() == xml::NodeKind::Element)
            for (xml::Node below = child.FirstChild(); below; below = below.NextSibling())
                below.Kind();
    EXPECT_EQ(document.ToBytes(), Handwritten);
}

TEST(Save, ReplacingOneChildKeepsTheOthersByteForByte)
{
    const xml::Document document = Parsed(Handwritten);
    const xml::Node root = document.FirstChild();
    root.RemoveChild(root.SelectSingleNode(u"给排水"_s));
    const xml::Element renewed = root.AppendChild(document.CreateElement(u"给排水"_s)).ToElement();
    renewed.SetAttribute(u"name"_s, u"给排水"_s);
    QByteArray expected = Handwritten;
    expected.replace("\r\n    <给排水 name=\"给排水\"/>", "\r\n    <给排水 name=\"给排水\"/>");
    EXPECT_EQ(document.ToBytes(), expected) << "the new element takes indent and line end of the file";
}

TEST(Save, ChangedChildIsWrittenAnewAndTheOthersStay)
{
    const xml::Document document = Parsed(Handwritten);
    const xml::Element electric = document.FirstChild().SelectSingleNode(u"电气"_s).ToElement();
    electric.SetAttribute(u"id"_s, u"3"_s);
    const QByteArray saved = document.ToBytes();
    EXPECT_TRUE(saved.contains("  <电气 name=\"电气\" id=\"3\">"));
    EXPECT_TRUE(saved.contains("<root  Version = '1' >"));
    EXPECT_TRUE(saved.contains("\r\n    <给排水 name=\"给排水\"/>\r\n</root"));
    EXPECT_EQ(test::CanonicalXml(saved),
              test::CanonicalXml(QByteArray(Handwritten).replace("id=\"2\"", "id=\"3\"")));
}

TEST(Save, DeepChangeIsNotOverlooked)
{
    const xml::Document document = Parsed("<r>\n\t<a><b><c x='1'/></b></a>\n\t<d/>\n</r>\n");
    document.FirstChild().FirstChild().FirstChild().FirstChild().ToElement().SetAttribute(u"x"_s, u"2"_s);
    EXPECT_EQ(test::CanonicalXml(document.ToBytes()),
              test::CanonicalXml("<r><a><b><c x='2'/></b></a><d/></r>"));
}

TEST(Save, RootAttributeRewritesTheRootTagAlone)
{
    const xml::Document document = Parsed("<r a='1'  >\n <x  y='1'/>\n</r>\n");
    document.FirstChild().ToElement().SetAttribute(u"b"_s, u"2"_s);
    EXPECT_EQ(document.ToBytes(), "<r a=\"1\" b=\"2\">\n <x  y='1'/>\n</r>\n");
}

TEST(Save, TextBesideANewOrChangedChildStaysAsItIs)
{
    const xml::Document document = Parsed("<r><a x='1'/>1<b/></r>");
    document.FirstChild().FirstChild().ToElement().SetAttribute(u"x"_s, u"2"_s);
    document.FirstChild().SelectSingleNode(u"b"_s).ToElement().SetAttribute(u"y"_s, u"3"_s);
    EXPECT_EQ(document.ToBytes(), "<r><a x=\"2\"/>1<b y=\"3\"/></r>\n");
    const xml::Document text = Parsed("<r>1</r>");
    text.FirstChild().AppendChild(text.CreateElement(u"c"_s));
    EXPECT_EQ(test::CanonicalXml(text.ToBytes()), test::CanonicalXml("<r>1<c/></r>"));
}

TEST(Save, ChildInAnEmptyRootGetsALineOfItsOwn)
{
    for (const QByteArray source : {"<r/>", "<r></r>"}) {
        const xml::Document document = Parsed(source);
        document.FirstChild().AppendChild(document.CreateElement(u"a"_s));
        EXPECT_EQ(document.ToBytes(), "<r>\n\t<a/>\n</r>\n");
    }
}

TEST(Save, RemovingTheLastChildLeavesAWellFormedRoot)
{
    const xml::Document document = Parsed("<r>\n\t<a/>\n</r>");
    document.FirstChild().RemoveChild(document.FirstChild().FirstChild());
    EXPECT_EQ(document.ToBytes(), "<r>\n</r>\n");
}

TEST(Save, WritesOneElementOnALineAndTextWhereItIs)
{
    const xml::Document document = xml::Document::Create();
    const xml::Document fragment = Parsed("<t>甲<u/>乙</t>");
    const xml::Node root = document.AppendChild(document.CreateElement(u"r"_s));
    root.AppendChild(document.CreateElement(u"a"_s)).AppendChild(document.CreateElement(u"b"_s));
    root.AppendChild(fragment.FirstChild());
    EXPECT_EQ(document.ToBytes(),
              "<?xml version=\"1.0\" "
              "encoding=\"UTF-8\"?>\n<r>\n\t<a>\n\t\t<b/>\n\t</a>\n\t<t>甲<u/>乙</t>\n</r>\n");
}

TEST(Save, EveryLegalCharacterSurvivesInAValue)
{
    CString text;
    for (const char32_t c :
         {0x09, 0x0A, 0x0D, 0x20, 0x22, 0x26, 0x27, 0x3C, 0x3E, 0x85, 0x2028, 0x4E2D, 0xFFFD, 0x20000})
        text += CString::fromUcs4(&c, 1);
    const xml::Document document = xml::Document::Create();
    document.AppendChild(document.CreateElement(u"a"_s)).ToElement().SetAttribute(u"x"_s, text);
    const QByteArray saved = document.ToBytes();
    EXPECT_TRUE(test::IsStrictXml(saved));
    CString read;
    ASSERT_TRUE(Parsed(saved).FirstChild().ToElement().GetAttribute(u"x"_s, read));
    EXPECT_EQ(read, text);
}

TEST(Save, ValuesAreWholeWhateverTheirLength)
{
    // Values are written by pieces of 4096 bytes.
    for (const qsizetype length : {0, 1, 4095, 4096, 4097, 8191, 8192, 8193, 100'000}) {
        const CString text = CString(length, u'x') + u"<尾"_s;
        const xml::Document document = xml::Document::Create();
        document.AppendChild(document.CreateElement(u"a"_s)).ToElement().SetAttribute(u"x"_s, text);
        CString read;
        ASSERT_TRUE(Parsed(document.ToBytes()).FirstChild().ToElement().GetAttribute(u"x"_s, read));
        EXPECT_EQ(read, text);
    }
}

TEST(Save, ByteOrderMarkAtTheBeginningOfAValueIsACharacterOfIt)
{
    const CString text = CString(200'000, QChar::ByteOrderMark) + u"定额"_s;
    const xml::Document document = xml::Document::Create();
    document.AppendChild(document.CreateElement(u"a"_s)).ToElement().SetAttribute(u"x"_s, text);
    CString read;
    ASSERT_TRUE(Parsed(document.ToBytes()).FirstChild().ToElement().GetAttribute(u"x"_s, read));
    EXPECT_EQ(read, text);
}

TEST(Save, DeepDocumentIsWrittenWithoutAStack)
{
    constexpr int Depth = 100000;
    const QByteArray nested = QByteArray("<n>").repeated(Depth) + QByteArray("</n>").repeated(Depth);
    const xml::Document document = Parsed("<a>" + nested + "</a>");
    document.FirstChild().FirstChild().ToElement().SetAttribute(u"x"_s, u"1"_s);
    const QByteArray saved = document.ToBytes();
    EXPECT_EQ(saved.count("<n"), Depth);
    EXPECT_EQ(saved.count("</n>"), Depth - 1);
}

TEST(Save, WritesTheFileInPlace)
{
    const test::TempFolder folder;
    const CString path =
        folder.WriteFile(u"a.xml"_s, QByteArray("<r>").append(QByteArray(5000, ' ')).append("</r>"));
    const xml::Document document = Parsed("<r/>");
    document.Save(path);
    EXPECT_EQ(folder.ReadFile(u"a.xml"_s), "<r/>\n");
}

TEST(Save, EveryFaultRaisesAnErrorThatNamesTheFile)
{
    const test::TempFolder folder;
    const QByteArray old = "<old/>\n";
    const xml::Document document = Parsed("<r>" + QByteArray("<a/>").repeated(1000) + "</r>");
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync}) {
        const CString path = folder.WriteFile(u"规则.xml"_s, old);
        test::FaultyFileSystem files;
        files.Inject(fault);
        try {
            document.Save(path);
            ADD_FAILURE() << "fault " << static_cast<int>(fault) << " went unnoticed";
        } catch (const xml::Error& error) {
            EXPECT_TRUE(error.Message().contains(u"规则.xml"_s)) << error.what();
        }
        if (fault == RefuseOpen || fault == NoRoom) {
            EXPECT_EQ(folder.ReadFile(u"规则.xml"_s), old) << "the old bytes must not have been touched";
        }
    }
}
