#include "platform/Encoding.h"

#include "EncodingNames.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Decode;
using platform::Encode;
using platform::Encoding;
using platform::FitsChineseCharset;
using platform::GuessEncoding;

namespace {

/// ASCII, Chinese, the euro sign, a character outside the basic plane, and a line end.
const CString Mixed = u"Qd 清单 € 𠮷\r\n定额"_s;

class EveryEncoding : public ::testing::TestWithParam<Encoding>
{
};

TEST_P(EveryEncoding, RoundTripsText)
{
    const std::optional<QByteArray> bytes = Encode(Mixed, GetParam());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(Decode(*bytes, GetParam()), Mixed);
}

TEST_P(EveryEncoding, RoundTripsEmptyText)
{
    const std::optional<QByteArray> bytes = Encode(CString(), GetParam());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(Decode(*bytes, GetParam()), CString());
}

TEST_P(EveryEncoding, RoundTripsTextLargerThanAnyBuffer)
{
    const CString text = CString(100'000, u'清') + u'x';
    const std::optional<QByteArray> bytes = Encode(text, GetParam());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(Decode(*bytes, GetParam()), text);
}

TEST_P(EveryEncoding, RefusesToEncodeAnUnpairedSurrogate)
{
    EXPECT_EQ(Encode(u"a"_s + QChar(0xD800) + u"b"_s, GetParam()), std::nullopt);
    EXPECT_EQ(Encode(CString(QChar(0xDC00)), GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Encodings, EveryEncoding, platform::AllEncodings(), platform::EncodingTestName);

TEST(EncodingBytes, EachEncodingWritesItsOwnMark)
{
    EXPECT_EQ(Encode(u"A清"_s, Encoding::Utf8), QByteArray("A\xE6\xB8\x85"));
    EXPECT_EQ(Encode(u"A清"_s, Encoding::Utf8Bom), QByteArray("\xEF\xBB\xBF"
                                                              "A\xE6\xB8\x85"));
    EXPECT_EQ(Encode(u"A清"_s, Encoding::Utf16Le), QByteArray("\xFF\xFE\x41\x00\x05\x6E", 6));
    EXPECT_EQ(Encode(u"A清"_s, Encoding::Utf16Be), QByteArray("\xFE\xFF\x00\x41\x6E\x05", 6));
    EXPECT_EQ(Encode(u"A清"_s, Encoding::Gb18030), QByteArray("A\xC7\xE5"));
}

TEST(DecodeUtf8, MarkStaysACharacterWhereTheEncodingHasNone)
{
    const QByteArray bytes = "\xEF\xBB\xBF"
                             "a";
    EXPECT_EQ(Decode(bytes, Encoding::Utf8), CString(QChar(0xFEFF)) + u'a');
    EXPECT_EQ(Decode(bytes, Encoding::Utf8Bom), u"a"_s);
}

TEST(DecodeUtf8, OnlyTheFirstMarkIsTakenOff)
{
    const QByteArray mark = "\xEF\xBB\xBF";
    EXPECT_EQ(Decode(mark + mark + 'a', Encoding::Utf8Bom), CString(QChar(0xFEFF)) + u'a');
}

TEST(DecodeUtf8, RefusesWhatIsNotStrictlyUtf8)
{
    EXPECT_EQ(Decode("a\xFF", Encoding::Utf8), std::nullopt);
    EXPECT_EQ(Decode("\x80", Encoding::Utf8), std::nullopt);
    EXPECT_EQ(Decode("\xC0\xAF", Encoding::Utf8), std::nullopt) << "overlong";
    EXPECT_EQ(Decode("\xED\xA0\x80", Encoding::Utf8), std::nullopt) << "surrogate";
    EXPECT_EQ(Decode("\xF4\x90\x80\x80", Encoding::Utf8), std::nullopt) << "above U+10FFFF";
}

TEST(DecodeUtf8, RefusesASequenceThatTheEndCutsOff)
{
    EXPECT_EQ(Decode("a\xE6\xB8", Encoding::Utf8), std::nullopt);
    EXPECT_EQ(Decode("a\xE6", Encoding::Utf8Bom), std::nullopt);
}

TEST(DecodeUtf8, KeepsNulCharacters)
{
    EXPECT_EQ(Decode(QByteArray("a\0b", 3), Encoding::Utf8), CString(u"a\0b"_s));
}

TEST(DecodeUtf16, WorksWithoutAMarkToo)
{
    EXPECT_EQ(Decode(QByteArray("A\0", 2), Encoding::Utf16Le), u"A"_s);
    EXPECT_EQ(Decode(QByteArray("\0A", 2), Encoding::Utf16Be), u"A"_s);
}

TEST(DecodeUtf16, RefusesHalfACodeUnit)
{
    EXPECT_EQ(Decode(QByteArray("\xFF\xFE\x41", 3), Encoding::Utf16Le), std::nullopt);
    EXPECT_EQ(Decode(QByteArray("\xFE\xFF\x00\x41\x00", 5), Encoding::Utf16Be), std::nullopt);
}

TEST(DecodeUtf16, RefusesAnUnpairedSurrogate)
{
    EXPECT_EQ(Decode(QByteArray("\xFF\xFE\x00\xD8", 4), Encoding::Utf16Le), std::nullopt);
    EXPECT_EQ(Decode(QByteArray("\xFE\xFF\xDC\x00", 4), Encoding::Utf16Be), std::nullopt);
}

TEST(DecodeGb18030, ReadsTwoAndFourByteForms)
{
    EXPECT_EQ(Decode("\xB6\xA8\xB6\xEE", Encoding::Gb18030), u"定额"_s);
    EXPECT_EQ(Decode("\x95\x32\x82\x36", Encoding::Gb18030), u"\U00020000"_s);
}

TEST(DecodeGb18030, RefusesInvalidAndIncompleteSequences)
{
    EXPECT_EQ(Decode("\xB6", Encoding::Gb18030), std::nullopt);
    EXPECT_EQ(Decode("a\xFF\xFF", Encoding::Gb18030), std::nullopt);
    EXPECT_EQ(Decode("\x95\x32", Encoding::Gb18030), std::nullopt);
}

TEST(ChineseCharset, Gb2312HoldsSimplifiedCharactersOnly)
{
    EXPECT_TRUE(FitsChineseCharset(u"abc 清单定额"_s, "GB2312"));
    EXPECT_FALSE(FitsChineseCharset(u"清單"_s, "GB2312"));
    EXPECT_FALSE(FitsChineseCharset(u"镕"_s, "GB2312"));
}

TEST(ChineseCharset, GbkHoldsTraditionalCharactersToo)
{
    EXPECT_TRUE(FitsChineseCharset(u"清單镕"_s, "GBK"));
    EXPECT_FALSE(FitsChineseCharset(u"𠮷"_s, "GBK"));
    EXPECT_FALSE(FitsChineseCharset(u"ث"_s, "GBK"));
}

TEST(ChineseCharset, Gb18030HoldsEverything)
{
    EXPECT_TRUE(FitsChineseCharset(Mixed + u"ثé"_s, "GB18030"));
}

TEST(ChineseCharset, NameCountsInAnyLetterCase)
{
    EXPECT_TRUE(FitsChineseCharset(u"清"_s, "gb2312"));
    EXPECT_TRUE(FitsChineseCharset(u"單"_s, "gbk"));
    EXPECT_FALSE(FitsChineseCharset(u"單"_s, "gb2312"));
}

TEST(ChineseCharset, EmptyTextFits)
{
    EXPECT_TRUE(FitsChineseCharset(u""_s, "GB2312"));
}

TEST(ChineseCharset, UnpairedSurrogateFitsNowhere)
{
    EXPECT_FALSE(FitsChineseCharset(CString(QChar(0xD800)), "GB18030"));
    EXPECT_FALSE(FitsChineseCharset(CString(QChar(0xD800)), "GBK"));
}

TEST(ChineseCharset, OtherCharsetsAreNotKnown)
{
    EXPECT_FALSE(FitsChineseCharset(u"a"_s, "UTF-8"));
    EXPECT_FALSE(FitsChineseCharset(u"a"_s, ""));
}

TEST(GuessedEncoding, MarkDecides)
{
    EXPECT_EQ(GuessEncoding("\xEF\xBB\xBF"
                            "a"),
              Encoding::Utf8Bom);
    EXPECT_EQ(GuessEncoding("\xFF\xFE"), Encoding::Utf16Le);
    EXPECT_EQ(GuessEncoding("\xFE\xFF"), Encoding::Utf16Be);
    EXPECT_EQ(GuessEncoding("\xEF\xBB\xBF\xFF"), Encoding::Utf8Bom) << "even over bytes that do not decode";
}

TEST(GuessedEncoding, ValidUtf8IsUtf8)
{
    EXPECT_EQ(GuessEncoding(""), Encoding::Utf8);
    EXPECT_EQ(GuessEncoding("plain"), Encoding::Utf8);
    EXPECT_EQ(GuessEncoding("\xE6\xB8\x85"), Encoding::Utf8);
}

TEST(GuessedEncoding, EverythingElseIsGb18030)
{
    EXPECT_EQ(GuessEncoding("\xC7\xE5\xB5\xA5"), Encoding::Gb18030);
    EXPECT_EQ(GuessEncoding("\xFF"), Encoding::Gb18030);
}

} // namespace
