#include "platform/ProfileFile.h"

#include "EncodingNames.h"
#include "platform/Encoding.h"
#include "platform/ProfileFileTesting.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Encoding;
using platform::ProfileFile;

using test::Key;
using test::Section;

namespace {

const CString Fallback = u"(fallback)"_s;

/// What a reader gets from a file with these bytes.
CString ReadFrom(const QByteArray& bytes, const CString& section = Section, const CString& key = Key)
{
    const test::TempFolder folder;
    return ProfileFile(folder.WriteFile(u"a.ini"_s, bytes)).Read(section, key, Fallback, 100);
}

/// What a reader with a buffer of that size gets for a value.
CString ReadCut(const CString& value, int bufferSize)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a.ini"_s, "[QdDeConfigInfo]\nConfigName=" + value.toUtf8());
    return ProfileFile(path).Read(Section, Key, Fallback, bufferSize);
}

TEST(ProfileRead, FindsTheKeyInItsSection)
{
    const QByteArray bytes = "[Other]\r\nConfigName=wrong\r\n[QdDeConfigInfo]\r\nX=1\r\nConfigName=右\r\n"
                             "[Later]\r\nConfigName=wrong\r\n";
    EXPECT_EQ(ReadFrom(bytes), u"右"_s);
}

TEST(ProfileRead, MissingFileSectionOrKeyGivesTheFallback)
{
    const test::TempFolder folder;
    EXPECT_EQ(ProfileFile(folder.Path(u"none.ini"_s)).Read(Section, Key, Fallback, 100), Fallback);
    EXPECT_EQ(ReadFrom(""), Fallback);
    EXPECT_EQ(ReadFrom("ConfigName=x\n"), Fallback);
    EXPECT_EQ(ReadFrom("[Other]\nConfigName=x\n"), Fallback);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nOther=x\n"), Fallback);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\n[Other]\nConfigName=x\n"), Fallback);
}

TEST(ProfileRead, UnreadableFileGivesTheFallback)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a.ini"_s, "[QdDeConfigInfo]\nConfigName=x\n");
    test::FaultyFileSystem faulty;
    faulty.Inject(test::Fault::RefuseRead);
    EXPECT_EQ(ProfileFile(path).Read(Section, Key, Fallback, 100), Fallback);
}

TEST(ProfileRead, ValueThatDoesNotDecodeGivesTheFallback)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\xFF\xFF\n"), Fallback);
}

TEST(ProfileRead, EmptyValueIsAValue)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\n"), u""_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=   "), u""_s);
}

TEST(ProfileRead, LineWithoutEqualsSignIsNoKey)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName\nConfigName=x\n"), u"x"_s);
}

TEST(ProfileRead, NamesAreComparedWithoutRegardToCase)
{
    EXPECT_EQ(ReadFrom("[QDDECONFIGINFO]\nconfigname=x\n"), u"x"_s);
}

TEST(ProfileRead, BlanksAroundNamesAndValuesDoNotCount)
{
    EXPECT_EQ(ReadFrom(" \t[ QdDeConfigInfo\t] rest\n \tConfigName\t = \t a b \t\n"), u"a b"_s);
}

TEST(ProfileRead, OtherBlanksBelongToTheValue)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\u3000x\u3000\n"), u"\u3000x\u3000"_s);
}

TEST(ProfileRead, CommentsAreNoKeys)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\n;ConfigName=a\n ; ConfigName=b\nConfigName=c\n", Section, Key),
              u"c"_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\n;ConfigName=a\n", Section, u";ConfigName"_s), Fallback);
    EXPECT_EQ(ReadFrom(";[QdDeConfigInfo]\nConfigName=a\n"), Fallback);
}

TEST(ProfileRead, SemicolonInsideAValueBelongsToIt)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=a;b\n"), u"a;b"_s);
}

TEST(ProfileRead, OnlyTheFirstEqualsSignSeparates)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=a=b=\n"), u"a=b="_s);
}

TEST(ProfileRead, FirstOfEqualKeysCounts)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=a\nCONFIGNAME=b\n"), u"a"_s);
}

TEST(ProfileRead, FirstOfEqualSectionsCounts)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nX=1\n[QdDeConfigInfo]\nConfigName=b\n"), Fallback);
}

TEST(ProfileRead, OnePairOfQuotesIsTakenOff)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\" a \"\n"), u" a "_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName='a'\n"), u"a"_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\"\"a\"\"\n"), u"\"a\""_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\"\"\n"), u""_s);
}

TEST(ProfileRead, UnpairedQuotesStay)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\"a\n"), u"\"a"_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\"a'\n"), u"\"a'"_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=\"\n"), u"\""_s);
}

TEST(ProfileRead, EveryLineEndSeparates)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\r\nX=1\r\nConfigName=a\r\n"), u"a"_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nX=1\nConfigName=a\n"), u"a"_s);
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\rX=1\rConfigName=a\r"), u"a"_s);
}

TEST(ProfileRead, LastLineNeedsNoLineEnd)
{
    EXPECT_EQ(ReadFrom("[QdDeConfigInfo]\nConfigName=a"), u"a"_s);
}

class ProfileReadIn : public ::testing::TestWithParam<Encoding>
{
};

TEST_P(ProfileReadIn, ReadsChineseText)
{
    const CString text = u"[项目]\r\n;注释\r\n名称=默认 配置\r\n[QdDeConfigInfo]\r\nConfigName=给排水\r\n"_s;
    const QByteArray bytes = platform::Encode(text, GetParam()).value_or(QByteArray());
    EXPECT_EQ(ReadFrom(bytes), u"给排水"_s);
    EXPECT_EQ(ReadFrom(bytes, u"项目"_s, u"名称"_s), u"默认 配置"_s);
}

INSTANTIATE_TEST_SUITE_P(Encodings, ProfileReadIn, platform::AllEncodings(), platform::EncodingTestName);

TEST(ProfileRead, ByteOrderMarkDirectlyBeforeTheSectionDoesNotHideIt)
{
    EXPECT_EQ(ReadFrom("\xEF\xBB\xBF[QdDeConfigInfo]\nConfigName=a\n"), u"a"_s);
}

TEST(ProfileRead, TrailByteThatLooksLikeABracketIsPartOfItsCharacter)
{
    // The second byte of this character is that of "]".
    const QByteArray name = platform::Encode(u"乚"_s, Encoding::Gb18030).value_or(QByteArray());
    EXPECT_EQ(ReadFrom("[" + name + "\xC7\xE5]\nConfigName=a\n", u"乚清"_s), u"a"_s);
}

TEST(ProfileRead, LongValueIsCutToTheBuffer)
{
    const CString value(150, u'清');
    EXPECT_EQ(ReadCut(value, 100), value.left(99));
    EXPECT_EQ(ReadCut(value, 151), value);
    EXPECT_EQ(ReadCut(value.left(99), 100), value.left(99));
}

TEST(ProfileRead, CutCountsUtf16Characters)
{
    EXPECT_EQ(ReadCut(u"𠮷𠮷"_s, 3), u"𠮷"_s);
    EXPECT_EQ(ReadCut(u"𠮷𠮷"_s, 4).size(), 3);
}

TEST(ProfileRead, BufferWithoutRoomGivesNothing)
{
    EXPECT_EQ(ReadCut(u"abc"_s, 1), u""_s);
    EXPECT_EQ(ReadCut(u"abc"_s, 0), u""_s);
    EXPECT_EQ(ReadCut(u"abc"_s, -5), u""_s);
}

TEST(ProfileRead, FallbackIsCutToo)
{
    const test::TempFolder folder;
    EXPECT_EQ(ProfileFile(folder.Path(u"none"_s)).Read(Section, Key, u"abcdef"_s, 4), u"abc"_s);
}

} // namespace
