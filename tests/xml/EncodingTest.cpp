#include "xml/Dom.h"

#include "platform/Encoding.h"
#include "support/StrictXml.h"
#include "xml/XmlTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using test::Parsed;

namespace {

/// A document in one encoding, and the same document as UTF-8.
QByteArray Encoded(const QByteArray& label, platform::Encoding encoding, const CString& body)
{
    const CString text =
        u"<?xml version=\"1.0\" encoding=\""_s + CString::fromLatin1(label) + u"\"?>\n"_s + body;
    return platform::Encode(text, encoding).value();
}

CString Value(const xml::Document& document)
{
    CString value;
    document.FirstChild().ToElement().GetAttribute(u"x"_s, value);
    return value;
}

} // namespace

TEST(Encoding, GbFilesAreReadAndKeptByteForByte)
{
    for (const QByteArray label : {"GB2312", "gbk", "GB18030"}) {
        const QByteArray bytes = Encoded(label, platform::Encoding::Gb18030, u"<清单 x='定额'/>\n"_s);
        const xml::Document document = Parsed(bytes);
        EXPECT_EQ(Value(document), u"定额"_s) << label.constData();
        EXPECT_EQ(document.ToBytes(), bytes) << label.constData();
    }
}

TEST(Encoding, GbFileKeepsItsEncodingWhenItIsChanged)
{
    const xml::Document document =
        Parsed(Encoded("GBK", platform::Encoding::Gb18030, u"<清单 x='定额'/>\n"_s));
    document.FirstChild().ToElement().SetAttribute(u"x"_s, u"镀锌"_s);
    const QByteArray saved = document.ToBytes();
    EXPECT_TRUE(saved.contains("encoding=\"GBK\""));
    EXPECT_EQ(Value(Parsed(saved)), u"镀锌"_s);
    EXPECT_TRUE(test::IsStrictXml(saved));
}

TEST(Encoding, TextBeyondTheDeclaredCharsetIsDeclaredAsGb18030)
{
    const xml::Document document =
        Parsed(Encoded("GB2312", platform::Encoding::Gb18030, u"<清单 x='定额'/>\n"_s));
    document.FirstChild().ToElement().SetAttribute(u"x"_s, u"\U00020000鎔"_s);
    const QByteArray saved = document.ToBytes();
    EXPECT_TRUE(saved.contains("encoding=\"GB18030\""));
    EXPECT_EQ(Value(Parsed(saved)), u"\U00020000鎔"_s);
    EXPECT_TRUE(test::IsStrictXml(saved));
}

TEST(Encoding, Utf16FilesOfBothOrdersAreReadAndKept)
{
    for (const auto encoding : {platform::Encoding::Utf16Le, platform::Encoding::Utf16Be}) {
        const QByteArray bytes = Encoded("UTF-16", encoding, u"<清单 x='定额'/>\n"_s);
        const xml::Document document = Parsed(bytes);
        EXPECT_EQ(Value(document), u"定额"_s);
        EXPECT_EQ(document.ToBytes(), bytes);
    }
}

TEST(Encoding, ByteOrderMarkOfUtf8IsKept)
{
    const QByteArray bytes = "\xEF\xBB\xBF<清单 x='定额'/>\n";
    EXPECT_EQ(Parsed(bytes).ToBytes(), bytes);
}

TEST(Encoding, NewDocumentIsUtf8)
{
    const xml::Document document = xml::Document::Create();
    document.AppendChild(document.CreateElement(u"清单"_s));
    EXPECT_EQ(document.ToBytes(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<清单/>\n");
}

TEST(Encoding, OddNumberOfUtf16BytesIsRefused)
{
    QByteArray bytes = Encoded("UTF-16", platform::Encoding::Utf16Le, u"<a/>"_s);
    bytes.chop(1);
    EXPECT_FALSE(xml::Document::Create().LoadBytes(bytes));
}

TEST(Encoding, InstructionWhoseNameBeginsLikeTheDeclarationDeclaresNothing)
{
    const CString text = u"<?xmlns version=\"1.0\" encoding=\"GBK\"?>\n<清单 x='定额'/>\n"_s;
    EXPECT_EQ(Value(Parsed(text.toUtf8())), u"定额"_s);
    EXPECT_FALSE(
        xml::Document::Create().LoadBytes(platform::Encode(text, platform::Encoding::Gb18030).value()));
}

TEST(Encoding, ByteOrderMarkWinsAndTheDeclarationIsPutRight)
{
    const CString text = u"<?xml version=\"1.0\" encoding=\"GBK\"?>\n<清单 x='定额'/>\n"_s;
    for (const auto encoding : {platform::Encoding::Utf8Bom, platform::Encoding::Utf16Le}) {
        const xml::Document document = Parsed(platform::Encode(text, encoding).value());
        EXPECT_EQ(Value(document), u"定额"_s);
        const QByteArray saved = document.ToBytes();
        EXPECT_TRUE(test::IsStrictXml(saved));
        EXPECT_EQ(Value(Parsed(saved)), u"定额"_s);
    }
}
