#include "xml/Dom.h"

#include "support/StrictXml.h"
#include "support/TempFolder.h"
#include "xml/PrintXml.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

xml::Document Loaded(const QByteArray& bytes)
{
    xml::Document document = xml::Document::Create();
    document.LoadBytes(bytes);
    return document;
}

struct Case
{
    const char* name;
    QByteArray bytes;
};

void PrintTo(const Case& c, std::ostream* out)
{
    *out << c.name;
}

class RefusedXml : public testing::TestWithParam<Case>
{
};

class AcceptedXml : public testing::TestWithParam<Case>
{
};

std::string CaseName(const testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(RefusedXml, LoadsAsFalseWithAReasonAndLeavesTheDocumentEmpty)
{
    const xml::Document document = xml::Document::Create();
    EXPECT_FALSE(document.LoadBytes(GetParam().bytes));
    EXPECT_FALSE(document.Reason().ToString().isEmpty());
    EXPECT_TRUE(document.FirstChild().IsNull());
    EXPECT_FALSE(test::IsStrictXml(GetParam().bytes)) << "the independent parser takes it";
}

INSTANTIATE_TEST_SUITE_P(
    Load, RefusedXml,
    testing::Values(
        Case{"Empty", ""}, Case{"OnlyBlanks", " \n "}, Case{"OnlyDeclaration", "<?xml version=\"1.0\"?>"},
        Case{"Binary", QByteArray("\x00\x01\x02\xFF", 4)}, Case{"Truncated", "<a><b x='1'/>"},
        Case{"TruncatedInTag", "<a x='1"}, Case{"TruncatedInComment", "<a/><!-- x"},
        Case{"TruncatedInCData", "<a><![CDATA[x"}, Case{"TwoRoots", "<a/><b/>"}, Case{"TextBefore", "x<a/>"},
        Case{"TextBehind", "<a/>x"}, Case{"CDataBehind", "<a/><![CDATA[x]]>"},
        Case{"DuplicateAttribute", "<a x='1' x='2'/>"},
        Case{"DuplicateAmongMany",
             "<a a1='' a2='' a3='' a4='' a5='' a6='' a7='' a8='' a9='' b1='' b2='' b3='' "
             "b4='' b5='' b6='' b7='' b8='' a1=''/>"},
        // Behind an element with the same attributes, which are then known.
        Case{"DuplicateBehindKnownNames", "<r><a x=\"1\" y=\"2\"/><a x=\"1\" y=\"2\" x=\"3\"/></r>"},
        Case{"DuplicateInPlaceOfAKnownName", "<r><a x=\"1\" y=\"2\"/><a x=\"1\" x=\"2\"/></r>"},
        Case{"LessThanInAKnownValue", "<r><a x=\"1\"/><a x=\"<\"/></r>"},
        Case{"CutUtf8InAKnownValue", "<r><a x=\"1\"/><a x=\"\xE4\xB8\"/></r>"},
        Case{"NonCharacterInAKnownValue", "<r><a x=\"1\"/><a x=\"\xEF\xBF\xBE\"/></r>"},
        Case{"SurrogateInAKnownValue", "<r><a x=\"1\"/><a x=\"\xED\xA0\x80\"/></r>"},
        Case{"OverlongInAKnownValue", "<r><a x=\"1\"/><a x=\"\xE0\x80\xAF\"/></r>"},
        Case{"KnownAttributesNotApart", "<r><a x=\"1\" y=\"2\"/><a x=\"1\"y=\"2\"/></r>"},
        Case{"TruncatedInAKnownName", "<r><a x=\"1\" yyyyyyyyyyyyyyyyyyyy=\"2\"/><a x=\"1\" yyyy"},
        Case{"NameBeginsWithDigit", "<1a/>"}, Case{"AttributeNameBeginsWithHyphen", "<a -x='1'/>"},
        Case{"AttributeWithoutValue", "<a x/>"}, Case{"AttributeWithoutQuotes", "<a x=1/>"},
        Case{"AttributesNotApart", "<a x='1'y='2'/>"}, Case{"LessThanInValue", "<a x='<'/>"},
        Case{"UnknownEntity", "<a>&nbsp;</a>"}, Case{"BareAmpersand", "<a x='a&b'/>"},
        Case{"ReferenceToNul", "<a>&#0;</a>"}, Case{"ReferenceToSurrogate", "<a>&#xD800;</a>"},
        Case{"ReferenceTooLarge", "<a>&#x110000;</a>"}, Case{"ReferenceWithoutDigits", "<a>&#;</a>"},
        Case{"ControlCharacter", "<a x='\x01'/>"}, Case{"NonCharacter", "<a>\xEF\xBF\xBF</a>"},
        Case{"NulInText", QByteArray("<a>x\0y</a>", 10)}, Case{"OverlongUtf8", "<a>\xC0\xAF</a>"},
        Case{"SurrogateInUtf8", "<a>\xED\xA0\x80</a>"}, Case{"CutUtf8", "<a>\xE4\xB8</a>"},
        Case{"WrongNesting", "<a><b></a></b>"}, Case{"EndTagOfLongerName", "<a></ab>"},
        Case{"EndTagOfShorterName", "<ab></a>"}, Case{"EndTagAlone", "</a>"},
        Case{"HyphensInComment", "<a><!-- x -- y --></a>"}, Case{"CDataEndInText", "<a>]]></a>"},
        Case{"DeclarationInside", "<a><?xml version='1.0'?></a>"},
        Case{"DeclarationNotFirst", " <?xml version='1.0'?><a/>"},
        Case{"DeclarationWithoutVersion", "<?xml encoding='UTF-8'?><a/>"},
        Case{"UnknownEncoding", "<?xml version='1.0' encoding='NoSuchCharset'?><a/>"},
        Case{"WrongEncoding", "<?xml version='1.0' encoding='UTF-8'?><a x='\xB8\xF8'/>"},
        Case{"BrokenGb18030", "<?xml version='1.0' encoding='GB18030'?><a x='\xFF\xFF'/>"}),
    CaseName);

TEST(Load, RefusesDoctypeEvenWhereOthersTakeIt)
{
    const xml::Document document = xml::Document::Create();
    EXPECT_FALSE(document.LoadBytes("<!DOCTYPE a [<!ENTITY x \"y\">]><a>&x;</a>"));
    EXPECT_TRUE(document.Reason().text.contains(u"DOCTYPE"_s));
}

TEST_P(AcceptedXml, LoadsAndTheIndependentParserAgrees)
{
    const xml::Document document = xml::Document::Create();
    EXPECT_TRUE(document.LoadBytes(GetParam().bytes)) << qPrintable(document.Reason().ToString());
    EXPECT_TRUE(test::IsStrictXml(GetParam().bytes));
}

INSTANTIATE_TEST_SUITE_P(
    Load, AcceptedXml,
    testing::Values(
        Case{"Smallest", "<a/>"}, Case{"WithoutDeclaration", "<a></a>"},
        Case{"Declaration", "<?xml version=\"1.0\" encoding=\"utf-8\" standalone='yes' ?>\n<a/>\n"},
        Case{"CommentsAround", "<!-- 甲 --><?p q?><a/><!-- 乙 -->"},
        Case{"ChineseNames", "<自动套清单定额配置信息 版本='1'><导线·导管/></自动套清单定额配置信息>"},
        Case{"References", "<a x='&lt;&#65;&#x4E2D;&quot;'>&amp;&gt;&apos;</a>"},
        Case{"BlanksInTags", "<a  x = '1'\n\ty=\"2\" ></a >"}, Case{"EmptyCData", "<a><![CDATA[]]></a>"},
        Case{"GreaterThanInValue", "<a x='>'/>"}, Case{"SupplementaryPlane", "<a x='\xF0\xA0\x80\x80'/>"},
        Case{"Utf8ByteOrderMark", "\xEF\xBB\xBF<a/>"}),
    CaseName);

TEST(Load, NamesLineAndColumnOfWhatItRefuses)
{
    const xml::Document document = Loaded("<a>\n  <甲 乙='1' 乙='2'/>\n</a>");
    EXPECT_EQ(document.Reason().line, 2);
    EXPECT_EQ(document.Reason().column, 22 - 3);
    EXPECT_TRUE(document.Reason().text.contains(u"重复"_s));
}

TEST(Load, SaysWhatIsWrongAlsoWhereTheFileEnds)
{
    const auto reason = [](const QByteArray& bytes) { return Loaded(bytes).Reason().text; };
    EXPECT_EQ(reason("<?xml version=\"1.0\"?>\n"), u"没有根元素"_s);
    EXPECT_EQ(reason("<!-- x -->"), u"没有根元素"_s);
    EXPECT_EQ(reason("<a x='1' x='2'/>"), u"同一元素中属性重复"_s);
    EXPECT_EQ(reason("<a/><?xml"), u"XML 声明只能在文件开头"_s);
    for (const QByteArray cut :
         {"<a", "<a>", "<a x", "<a x=", "<a x='1", "<a/><!-- x", "<?xml version", "<a></a"})
        EXPECT_EQ(reason(cut), u"文件不完整"_s) << cut.constData();
}

TEST(Load, BytesOfAnotherEncodingAreToldAsSuchWhereverTheyStand)
{
    const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    const QByteArray gbk = "\xD7\xD4\xB6\xAF"; // 自动
    for (const QByteArray& place :
         {"<" + gbk + "/>", "<a" + gbk + "/>", "<a " + gbk + "='1'/>", "<a x='" + gbk + "'/>",
          "<a>" + gbk + "</a>", "<a></" + gbk + ">", "<a><b></" + gbk + "></a>", "<a/><!--" + gbk + "-->",
          "<?" + gbk + "?><a/>", "<a x=" + gbk + "/>"})
        EXPECT_EQ(Loaded(declaration + place).Reason().text, u"字节不是有效的文字编码"_s)
            << place.toHex().constData();
}

TEST(Load, TakesElementsOfANameWithEverChangingAttributes)
{
    const xml::Document document =
        Loaded("<r><a x=\"1\" y=\"2\"/><a y=\"＝\" x=\"≤\"/><a/><a x='3'  y = \"&lt;\" z=\"4\"/>"
               "<a x=\"é\" y=\"5\" z=\"𠀀\" w=\"\"/></r>");
    CString text;
    for (xml::Node node = document.FirstChild().FirstChild(); node; node = node.NextSibling())
        for (const CString& name : {u"w"_s, u"x"_s, u"y"_s, u"z"_s}) {
            CString value = u"-"_s;
            node.ToElement().GetAttribute(name, value);
            text += value;
        }
    EXPECT_EQ(text, u"-12--≤＝------3<4é5𠀀"_s);
}

TEST(Load, MissingFileIsFalseWithAReason)
{
    const test::TempFolder folder;
    const xml::Document document = xml::Document::Create();
    EXPECT_FALSE(document.Load(folder.Path(u"fehlt.xml"_s)));
    EXPECT_EQ(document.Reason().line, 0);
    EXPECT_FALSE(document.Reason().ToString().isEmpty());
}

TEST(Load, ReplacesWhatTheDocumentHeld)
{
    const xml::Document document = Loaded("<a><b/></a>");
    EXPECT_TRUE(document.LoadBytes("<c/>"));
    EXPECT_TRUE(document.SelectSingleNode(u"a"_s).IsNull());
    EXPECT_FALSE(document.SelectSingleNode(u"c"_s).IsNull());
}

TEST(Load, WalksCommentsInstructionsAndTextButNoBlankText)
{
    const xml::Document document = Loaded("<a>\n <!--c--> <?p q?> 字 <![CDATA[d]]> <b/> \n</a>");
    QList<xml::NodeKind> kinds;
    for (xml::Node n = document.FirstChild().FirstChild(); n; n = n.NextSibling())
        kinds.append(n.Kind());
    using enum xml::NodeKind;
    EXPECT_EQ(kinds, (QList<xml::NodeKind>{Comment, ProcessingInstruction, Text, CData, Element}));
}

TEST(Load, ReadsValuesAsXmlSays)
{
    const xml::Document document = Loaded("<a x='1&#10;2\n3&amp;' y=\"甲\"/>");
    CString value;
    ASSERT_TRUE(document.FirstChild().ToElement().GetAttribute(u"x"_s, value));
    EXPECT_EQ(value, u"1\n2 3&"_s);
    ASSERT_TRUE(document.FirstChild().ToElement().GetAttribute(u"y"_s, value));
    EXPECT_EQ(value, u"甲"_s);
}

TEST(Load, FindsContentAtEveryDepth)
{
    const xml::Document document = Loaded("<a><b x='1'><c><d y='2'>t</d></c></b><b/></a>");
    const xml::Node d = document.FirstChild().SelectSingleNode(u"b"_s).SelectSingleNode(u"c"_s).FirstChild();
    EXPECT_EQ(d.Name(), u"d"_s);
    EXPECT_EQ(d.FirstChild().Kind(), xml::NodeKind::Text);
}

TEST(Load, TakesAHundredThousandNestedElements)
{
    constexpr int Depth = 100000;
    const QByteArray nested = QByteArray("<n>").repeated(Depth) + QByteArray("</n>").repeated(Depth);
    const xml::Document document = Loaded("<a>" + nested + "<b/></a>");
    int depth = 0;
    for (xml::Node n = document.FirstChild().FirstChild(); n; n = n.FirstChild())
        ++depth;
    EXPECT_EQ(depth, Depth);
    document.FirstChild().RemoveChild(document.FirstChild().FirstChild());
    EXPECT_EQ(document.FirstChild().FirstChild().Name(), u"b"_s);
}
