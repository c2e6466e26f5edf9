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

/// The bytes of a file after the key has been written to it.
QByteArray Written(const QByteArray& bytes, const CString& value = u"new"_s)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a.ini"_s, bytes);
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, value));
    EXPECT_EQ(ProfileFile(path).Read(Section, Key, u"(none)"_s, 100), value);
    return folder.ReadFile(u"a.ini"_s);
}

/// Whether writing these three texts to a file is refused and leaves it as it is.
bool IsRefused(const CString& section, const CString& key, const CString& value)
{
    const test::TempFolder folder;
    const QByteArray bytes = "[QdDeConfigInfo]\nConfigName=old\n";
    const bool written = ProfileFile(folder.WriteFile(u"a.ini"_s, bytes)).Write(section, key, value);
    return !written && folder.ReadFile(u"a.ini"_s) == bytes;
}

TEST(ProfileWrite, ReplacesTheValueAndNothingElse)
{
    EXPECT_EQ(
        Written(
            "; 注释\r\n[A]\r\nConfigName=x\r\n[QdDeConfigInfo]\r\nX=1\r\nConfigName=old\r\nY=2\r\n\r\n[B]"),
        "; 注释\r\n[A]\r\nConfigName=x\r\n[QdDeConfigInfo]\r\nX=1\r\nConfigName=new\r\nY=2\r\n\r\n[B]");
}

TEST(ProfileWrite, KeepsTheSpellingOfNamesAndTheBlanksAround)
{
    EXPECT_EQ(Written(" [QDDECONFIGINFO] \n\tconfigname =  old \t\n"),
              " [QDDECONFIGINFO] \n\tconfigname =  new \t\n");
}

TEST(ProfileWrite, ReplacesAnEmptyValue)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=\nX=1\n"), "[QdDeConfigInfo]\nConfigName=new\nX=1\n");
}

TEST(ProfileWrite, ReplacesAQuotedValueWithItsQuotes)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=\"old\"\n"), "[QdDeConfigInfo]\nConfigName=new\n");
}

TEST(ProfileWrite, ChangesTheFirstOfEqualKeysOnly)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=a\nConfigName=b\n[QdDeConfigInfo]\nConfigName=c\n"),
              "[QdDeConfigInfo]\nConfigName=new\nConfigName=b\n[QdDeConfigInfo]\nConfigName=c\n");
}

TEST(ProfileWrite, CommentIsNotTakenForTheKey)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\n;ConfigName=a\n"),
              "[QdDeConfigInfo]\n;ConfigName=a\nConfigName=new\n");
}

TEST(ProfileWrite, AddsAMissingKeyBehindTheLastLineOfItsSection)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\nX=1\n\n  \n[B]\nY=2\n"),
              "[QdDeConfigInfo]\nX=1\nConfigName=new\n\n  \n[B]\nY=2\n");
    EXPECT_EQ(Written("[QdDeConfigInfo]\n\n[B]\n"), "[QdDeConfigInfo]\nConfigName=new\n\n[B]\n");
}

TEST(ProfileWrite, AddsAMissingSectionAtTheEnd)
{
    EXPECT_EQ(Written("[A]\nX=1\n"), "[A]\nX=1\n[QdDeConfigInfo]\nConfigName=new\n");
}

TEST(ProfileWrite, EndsALastLineThatWasLeftOpen)
{
    EXPECT_EQ(Written("[A]\r\nX=1"), "[A]\r\nX=1\r\n[QdDeConfigInfo]\r\nConfigName=new\r\n");
    EXPECT_EQ(Written("[A]\n[QdDeConfigInfo]"), "[A]\n[QdDeConfigInfo]\nConfigName=new\n");
    EXPECT_EQ(Written("[QdDeConfigInfo]\nX=1"), "[QdDeConfigInfo]\nX=1\nConfigName=new\n");
}

TEST(ProfileWrite, ReplacesAValueInALastLineThatWasLeftOpen)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=old"), "[QdDeConfigInfo]\nConfigName=new");
}

TEST(ProfileWrite, UsesTheLineEndOfTheFile)
{
    EXPECT_EQ(Written("[A]\r\n"), "[A]\r\n[QdDeConfigInfo]\r\nConfigName=new\r\n");
    EXPECT_EQ(Written("[A]\r"), "[A]\r[QdDeConfigInfo]\rConfigName=new\r");
    EXPECT_EQ(Written("\n[A]\r\n"), "\n[A]\r\n[QdDeConfigInfo]\nConfigName=new\n");
}

TEST(ProfileWrite, CreatesAMissingFileInUtf8)
{
    const test::TempFolder folder;
    EXPECT_TRUE(ProfileFile(folder.Path(u"a.ini"_s)).Write(Section, Key, u"配置"_s));
    EXPECT_EQ(folder.ReadFile(u"a.ini"_s), "[QdDeConfigInfo]\r\nConfigName=配置\r\n");
}

TEST(ProfileWrite, FillsAnEmptyFile)
{
    EXPECT_EQ(Written(""), "[QdDeConfigInfo]\r\nConfigName=new\r\n");
}

TEST(ProfileWrite, FileOfAByteOrderMarkAloneKeepsIt)
{
    EXPECT_EQ(Written("\xEF\xBB\xBF"), "\xEF\xBB\xBF[QdDeConfigInfo]\r\nConfigName=new\r\n");
}

class ProfileWriteIn : public ::testing::TestWithParam<Encoding>
{
};

TEST_P(ProfileWriteIn, KeepsTheEncoding)
{
    const auto encode = [](const CString& text) {
        return platform::Encode(text, GetParam()).value_or(QByteArray());
    };
    const CString text = u"[项目]\r\n名称=工程\r\n[QdDeConfigInfo]\r\nConfigName=%1\r\n说明=定额\r\n"_s;
    EXPECT_EQ(Written(encode(text.arg(u"旧的配置"_s)), u"新"_s), encode(text.arg(u"新"_s)));
}

TEST_P(ProfileWriteIn, AddsInTheEncoding)
{
    const auto encode = [](const CString& text) {
        return platform::Encode(text, GetParam()).value_or(QByteArray());
    };
    EXPECT_EQ(Written(encode(u"[项目]\n名称=工程"_s), u"新"_s),
              encode(u"[项目]\n名称=工程\n[QdDeConfigInfo]\nConfigName=新\n"_s));
}

INSTANTIATE_TEST_SUITE_P(Encodings, ProfileWriteIn, platform::AllEncodings(), platform::EncodingTestName);

TEST(ProfileWrite, ValueThatReadingWouldChangeIsPutInQuotes)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=a\n", u" a "_s),
              "[QdDeConfigInfo]\nConfigName=\" a \"\n");
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=a\n", u"\"a\""_s),
              "[QdDeConfigInfo]\nConfigName=\"\"a\"\"\n");
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=a\n", u"'a'"_s),
              "[QdDeConfigInfo]\nConfigName=\"'a'\"\n");
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=a\n", u""_s), "[QdDeConfigInfo]\nConfigName=\n");
}

TEST(ProfileWrite, FileThatAlreadySaysSoIsNotWritten)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a.ini"_s, "[qddeconfiginfo]\n configname = \"new\" \n");
    const test::FaultyFileSystem watched;
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, u"new"_s));
    EXPECT_EQ(watched.WritePoints(), 0);
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, u"other"_s));
    EXPECT_EQ(watched.WritePoints(), 1);
}

TEST(ProfileWrite, ValueLongerThanAnyReadersBufferIsComparedWhole)
{
    const test::TempFolder folder;
    const CString path = folder.Path(u"a.ini"_s);
    const CString longName(150, u'a');
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, longName));
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, longName + u'b'));
    EXPECT_TRUE(folder.ReadFile(u"a.ini"_s).contains(longName.toUtf8() + "b\r\n"));
}

TEST(ProfileWrite, LineBreaksAndNulAreRefused)
{
    for (const CString& bad : {u"a\nb"_s, u"a\rb"_s, u"a\0b"_s}) {
        EXPECT_TRUE(IsRefused(bad, Key, u"v"_s));
        EXPECT_TRUE(IsRefused(Section, bad, u"v"_s));
        EXPECT_TRUE(IsRefused(Section, Key, bad));
    }
}

TEST(ProfileWrite, KeysThatReadingWouldNotFindAreRefused)
{
    for (const CString& bad : {u""_s, u" "_s, u"a=b"_s, u";a"_s, u"[a"_s})
        EXPECT_TRUE(IsRefused(Section, bad, u"v"_s)) << bad.toStdString();
}

TEST(ProfileWrite, UnpairedSurrogateIsRefused)
{
    EXPECT_TRUE(IsRefused(Section, Key, CString(QChar(0xD800))));
}

TEST(ProfileWrite, BytesThatDoNotDecodeStayAndStopNothing)
{
    EXPECT_EQ(Written("\xFF\xFF\n[QdDeConfigInfo]\nConfigName=a\n\xFF\xFF\n", u"新"_s),
              "\xFF\xFF\n[QdDeConfigInfo]\nConfigName=新\n\xFF\xFF\n");
    EXPECT_EQ(Written("[QdDeConfigInfo]\nConfigName=\xFF\xFF\nX=\xFF\n"),
              "[QdDeConfigInfo]\nConfigName=new\nX=\xFF\n");
    EXPECT_EQ(Written("[QdDeConfigInfo]\nX=\xFF\n\n"), "[QdDeConfigInfo]\nX=\xFF\nConfigName=new\n\n");
}

TEST(ProfileWrite, SectionWhoseNameDoesNotDecodeEndsTheOneBeforeIt)
{
    EXPECT_EQ(Written("[QdDeConfigInfo]\nX=1\n[\xFF\xFF]\nConfigName=other\n"),
              "[QdDeConfigInfo]\nX=1\nConfigName=new\n[\xFF\xFF]\nConfigName=other\n");
}

TEST(ProfileWrite, HalfACharacterAtTheEndOfWideTextStaysThere)
{
    const QByteArray start = platform::Encode(u"[QdDeConfigInfo]\n"_s, Encoding::Utf16Le).value_or("");
    const QByteArray entry = platform::Encode(u"ConfigName=新\n"_s, Encoding::Utf16Le).value_or("").mid(2);
    EXPECT_EQ(Written(start + "A", u"新"_s), start + entry + "A");
}

TEST(ProfileWrite, NameAddedToAnAsciiFileOutlivesTheGbkLinesThatOthersAdd)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a.ini"_s, "[A]\r\nX=1\r\n");
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, u"给排水"_s));
    const QByteArray ours = folder.ReadFile(u"a.ini"_s);
    EXPECT_TRUE(ours.contains("ConfigName=给排水\r\n"));
    const QByteArray theirs = platform::Encode(u"[工程]\r\n名称=示例\r\n"_s, Encoding::Gb18030).value_or("");
    folder.WriteFile(u"a.ini"_s, ours + theirs);
    EXPECT_EQ(ProfileFile(path).Read(Section, Key, {}, 100), u"给排水"_s);
    EXPECT_EQ(ProfileFile(path).Read(u"工程"_s, u"名称"_s, {}, 100), u"示例"_s);
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, u"电气"_s));
    EXPECT_EQ(ProfileFile(path).Read(Section, Key, {}, 100), u"电气"_s);
    EXPECT_TRUE(folder.ReadFile(u"a.ini"_s).endsWith(theirs));
}

TEST(ProfileWrite, LineKeepsTheEncodingThatItsOtherHalfNeeds)
{
    const test::TempFolder folder;
    const QByteArray chinese = platform::Encode(u"[甲]\n乙=丙\n[丁]\n"_s, Encoding::Gb18030).value_or("");
    const CString path = folder.WriteFile(u"a.ini"_s, chinese + "名称=旧\n");
    EXPECT_TRUE(ProfileFile(path).Write(u"丁"_s, u"名称"_s, u"给水管"_s));
    EXPECT_EQ(folder.ReadFile(u"a.ini"_s), chinese + "名称=给水管\n");
}

TEST(ProfileWrite, LettersThatBothEncodingsKnowAreReadBackAsWritten)
{
    const QByteArray chinese = platform::Encode(u"[甲]\n乙=丙\n"_s, Encoding::Gb18030).value_or("");
    for (const CString& letters : {u"é"_s, u"ж"_s, u"模"_s, u"αβ"_s})
        Written(chinese + "[QdDeConfigInfo]\n", letters);
}

TEST(ProfileWrite, FileThatCannotBeOpenedForWritingIsFalseAndKept)
{
    const test::TempFolder folder;
    const QByteArray bytes = "[QdDeConfigInfo]\nConfigName=old\n";
    const CString path = folder.WriteFile(u"a.ini"_s, bytes);
    test::FaultyFileSystem faulty;
    faulty.Inject(test::Fault::RefuseOpen);
    EXPECT_FALSE(ProfileFile(path).Write(Section, Key, u"new"_s));
    EXPECT_EQ(folder.ReadFile(u"a.ini"_s), bytes);
}

TEST(ProfileWrite, WriteThatFailsAnywhereIsFalseAndKeepsTheFile)
{
    const test::TempFolder folder;
    const QByteArray bytes = "[QdDeConfigInfo]\nConfigName=old\n";
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync}) {
        const CString path = folder.WriteFile(u"a.ini"_s, bytes);
        test::FaultyFileSystem faulty;
        faulty.Inject(fault);
        if (fault == Write) faulty.FailAfter(32); // in the middle of the line
        faulty.OnlyAt(0);
        EXPECT_FALSE(ProfileFile(path).Write(Section, Key, u"a longer value"_s));
        EXPECT_EQ(folder.ReadFile(u"a.ini"_s), bytes);
        faulty.OnlyAt(faulty.WritePoints());
        EXPECT_FALSE(ProfileFile(folder.Path(u"new.ini"_s)).Write(Section, Key, u"a longer value"_s));
        EXPECT_FALSE(folder.Exists(u"new.ini"_s));
    }
}

TEST(ProfileWrite, ReadOnlyFileIsFalseAndKept)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a.ini"_s, "[QdDeConfigInfo]\nConfigName=old\n");
    folder.SetReadOnly(u"a.ini"_s, true);
    EXPECT_FALSE(ProfileFile(path).Write(Section, Key, u"new"_s));
    EXPECT_TRUE(ProfileFile(path).Write(Section, Key, u"old"_s)) << "it already says so";
    EXPECT_EQ(folder.ReadFile(u"a.ini"_s), "[QdDeConfigInfo]\nConfigName=old\n");
}

TEST(ProfileWrite, FileThatExistsButCannotBeReadIsNotReplaced)
{
    const test::TempFolder folder;
    const CString path = folder.WriteFile(u"a.ini"_s, "[Other]\nX=1\n");
    test::FaultyFileSystem faulty;
    faulty.Inject(test::Fault::RefuseRead);
    EXPECT_FALSE(ProfileFile(path).Write(Section, Key, u"new"_s));
    EXPECT_EQ(folder.ReadFile(u"a.ini"_s), "[Other]\nX=1\n");
}

TEST(ProfileWrite, MissingFolderIsFalse)
{
    const test::TempFolder folder;
    EXPECT_FALSE(ProfileFile(folder.Path(u"missing\\a.ini"_s)).Write(Section, Key, u"new"_s));
    EXPECT_FALSE(ProfileFile(CString()).Write(Section, Key, u"new"_s));
}

} // namespace
