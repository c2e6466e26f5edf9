#include "platform/Paths.h"

#include "support/TempFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(Paths, NineCharactersAreForbiddenInFileNames)
{
    CString found;
    for (char16_t character = 0; character < 0x3000; ++character)
        if (platform::IsForbiddenInFileNames(character)) found += QChar(character);
    EXPECT_EQ(found, u"\"*/:<>?\\|"_s);
}

TEST(Paths, NativeFormHasThePlatformsSeparator)
{
    const QChar separator = QDir::separator();
    EXPECT_EQ(platform::ToNative(u"a\\b\\c.xml"_s), u"a"_s + separator + u"b"_s + separator + u"c.xml"_s);
    EXPECT_EQ(platform::ToNative(u"plain"_s), u"plain"_s);
    EXPECT_EQ(platform::ToNative(QString()), QString());
}

TEST(Paths, DevicesOfWindowsAreKnownInAnyLetterCaseAndWithAnyExtension)
{
    for (const CString& name :
         {u"CON"_s, u"nul.xml"_s, u"Com1"_s, u"lpt9.a.b"_s, u"aux "_s, u"conin$.xml"_s, u"CONOUT$"_s})
        EXPECT_TRUE(platform::IsDeviceName(name)) << name.toStdString();
    for (const CString& name :
         {CString(), u"CON1"_s, u"com0"_s, u"COM10"_s, u"xCON"_s, u"a.con"_s, u"控制"_s})
        EXPECT_FALSE(platform::IsDeviceName(name)) << name.toStdString();
}

TEST(Paths, FileNamesAreAsLongAsFileSystemsHoldThem)
{
    EXPECT_FALSE(platform::IsTooLongFileName(CString(255, u'a')));
    EXPECT_TRUE(platform::IsTooLongFileName(CString(256, u'a')));
    EXPECT_FALSE(platform::IsTooLongFileName(CString(85, u'管')));
    EXPECT_TRUE(platform::IsTooLongFileName(CString(86, u'管')));
}

TEST(Paths, PathTextIsAbsoluteCleanAndHasBackslashesOnly)
{
    const QString native = QDir::tempPath() + u"/x/./y//../工程.prj"_s;
    const QString text = platform::FromNative(native);
    EXPECT_TRUE(text.endsWith(u"\\x\\工程.prj"_s)) << text.toStdString();
    EXPECT_FALSE(text.contains(u'/'));
    EXPECT_TRUE(QDir::isAbsolutePath(platform::ToNative(text)));
}

TEST(Paths, RelativeNativePathStandsInTheCurrentFolder)
{
    const QString current = QDir::currentPath();
    EXPECT_EQ(platform::FromNative(u"a.xml"_s), platform::FromNative(current) + u"\\a.xml"_s);
}

TEST(Paths, EmptyNativePathStaysEmpty)
{
    EXPECT_EQ(platform::FromNative(QString()), QString());
}

TEST(Paths, PathTextLeadsBackToTheFile)
{
    const test::TempFolder folder;
    folder.WriteFile(u"规则.xml"_s, "x");
    const QString native = folder.Native(u"规则.xml"_s);
    EXPECT_TRUE(platform::HasPathText(native));
    EXPECT_TRUE(QFileInfo::exists(platform::ToNative(platform::FromNative(native))));
}

#if !defined(_WIN32)
TEST(Paths, NativeNameWithBackslashHasNoPathText)
{
    EXPECT_FALSE(platform::HasPathText(u"/tmp/a\\b.xml"_s));
    EXPECT_FALSE(platform::HasPathText(u"/tmp/a\\b/c.xml"_s));
}
#endif

TEST(Paths, EmptyNativePathHasAPathText)
{
    EXPECT_TRUE(platform::HasPathText(QString()));
}

TEST(Paths, FolderStandsBeforeTheLastBackslash)
{
    EXPECT_EQ(platform::FolderOf(u"C:\\a\\b.prj"_s), u"C:\\a"_s);
    EXPECT_EQ(platform::FolderOf(u"C:\\a\\"_s), u"C:\\a"_s);
    EXPECT_EQ(platform::FolderOf(u"\\b.prj"_s), u""_s);
}

TEST(Paths, FolderOfANameAloneIsEmpty)
{
    EXPECT_EQ(platform::FolderOf(u"b.prj"_s), u""_s);
    EXPECT_EQ(platform::FolderOf(u""_s), u""_s);
}

TEST(Paths, SlashIsNoSeparatorOfPathTexts)
{
    EXPECT_EQ(platform::FolderOf(u"a/b"_s), u""_s);
    EXPECT_EQ(platform::FileNameOf(u"a/b"_s), u"a/b"_s);
}

TEST(Paths, FileNameStandsBehindTheLastBackslash)
{
    EXPECT_EQ(platform::FileNameOf(u"C:\\a\\b.prj"_s), u"b.prj"_s);
    EXPECT_EQ(platform::FileNameOf(u"C:\\a\\"_s), u""_s);
    EXPECT_EQ(platform::FileNameOf(u"b.prj"_s), u"b.prj"_s);
}

TEST(Paths, NameIsCutAtItsLastStop)
{
    EXPECT_EQ(platform::BeforeLastStop(u"a.b.xml"_s), u"a.b"_s);
    EXPECT_EQ(platform::BeforeLastStop(u"配置.xml"_s), u"配置"_s);
    EXPECT_EQ(platform::BeforeLastStop(u".xml"_s), u""_s);
}

TEST(Paths, NameWithoutStopBecomesEmpty)
{
    EXPECT_EQ(platform::BeforeLastStop(u"abc"_s), u""_s);
    EXPECT_EQ(platform::BeforeLastStop(u""_s), u""_s);
}

} // namespace
