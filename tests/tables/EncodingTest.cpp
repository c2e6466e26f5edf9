#include "TableFixture.h"

#include "platform/Encoding.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Encoding;

namespace {

/// Long enough for several pieces, with characters of one to four bytes, at changing places.
CString LongText()
{
    CString text;
    for (int i = 0; text.size() < 700000; ++i)
        text += CString(i % 7, u'a') + u"镀锌,é𠮷\n"_s;
    return text;
}

CString Joined(const CArray<CStringArray>& rows)
{
    CString text;
    for (const CStringArray& row : rows)
        text += row.join(u',') + u'\n';
    return text;
}

} // namespace

TEST(TableEncoding, EveryEncodingIsReadWhateverItsPiecesPart)
{
    const CString text = LongText();
    using enum Encoding;
    for (const Encoding encoding : {Utf8, Utf8Bom, Utf16Le, Utf16Be, Gb18030}) {
        const auto bytes = platform::Encode(text, encoding);
        ASSERT_TRUE(bytes.has_value());
        // Compared as a condition: a failure would print megabytes.
        EXPECT_TRUE(Joined(test::FieldsOf(*bytes, u"a.csv"_s)) == text) << static_cast<int>(encoding);
    }
}

TEST(TableEncoding, FileWhoseFirstTextCouldBeUtf8IsGb18030WhenTheRestCannot)
{
    const QByteArray bytes = *platform::Encode(u"联通,名称\n"_s, Encoding::Gb18030);
    EXPECT_EQ(test::FieldsOf(bytes, u"a.csv"_s), (CArray<CStringArray>{{u"联通"_s, u"名称"_s}}));
}

TEST(TableEncoding, MarkCountsAtTheBeginningOnly)
{
    EXPECT_EQ(test::FieldsOf("\xEF\xBB\xBF"
                             "a,\xEF\xBB\xBF"
                             "b",
                             u"a.csv"_s),
              (CArray<CStringArray>{{u"a"_s, u"\uFEFFb"_s}}));
}

TEST(TableEncoding, MarkWithinACellOfAWorkbookIsACharacterOfIt)
{
    const QByteArray marked = "\xEF\xBB\xBF"
                              "b";
    const CArray<CStringArray> expected{{u"\uFEFFb"_s}};
    for (const QByteArray& text : {marked, marked + "_x0041_"}) {
        const CArray<CStringArray> row{{text == marked ? u"\uFEFFb"_s : u"\uFEFFbA"_s}};
        EXPECT_EQ(
            test::FieldsOf(test::MakeXlsx("<row><c t=\"inlineStr\"><is><t>" + text + "</t></is></c></row>"),
                           u"a.xlsx"_s),
            row);
    }
    EXPECT_EQ(test::FieldsOf(
                  test::MakeOds("<table:table-row><table:table-cell office:value-type=\"string\"><text:p>" +
                                marked + "</text:p></table:table-cell></table:table-row>"),
                  u"a.ods"_s),
              expected);
}

TEST(TableEncoding, BytesThatAreNoTextAreRefusedWithTheirLine)
{
    const CString reason = u"既不是 UTF-8 文本，也不是 GB18030 文本（从第 3 行起）"_s;
    EXPECT_EQ(test::RefusalOf("a\nb\n\xFF\xFF\nc", u"a.csv"_s), reason);
    EXPECT_EQ(test::RefusalOf("\xEF\xBB\xBF"
                              "a\nb\n\xC3(\nc",
                              u"a.csv"_s),
              reason);
    EXPECT_EQ(test::RefusalOf("a\nb\nc\x81", u"a.csv"_s), reason);
    EXPECT_TRUE(test::RefusalOf(QByteArray("\xFF\xFE"
                                           "a\0b",
                                           5),
                                u"a.csv"_s)
                    .startsWith(u"既不是"_s));
}

TEST(TableEncoding, TextIsReadThoughNoCharacterIsSeenToEndForManyPieces)
{
    // The one byte at the beginning lets pieces end within a character.
    const CString field = u'x' + CString(1'500'000, u'镀');
    const auto rows = test::FieldsOf(*platform::Encode(field + u",末\n"_s, Encoding::Gb18030), u"a.csv"_s);
    ASSERT_EQ(rows.size(), 1);
    // Compared as a condition: a failure would print megabytes.
    EXPECT_TRUE(rows[0] == (CStringArray{field, u"末"_s}));
}

TEST(TableEncoding, LongTextWithoutAnyEndOfACharacterEndsAtALimit)
{
    EXPECT_TRUE(test::RefusalOf(QByteArray(40 << 20, '\x81'), u"a.csv"_s).contains(u"一行超过"_s));
}
