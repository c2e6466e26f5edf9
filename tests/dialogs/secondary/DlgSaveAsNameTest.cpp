// Which names the save-as dialog refuses, asks about and takes.

#include "dialogs/secondary/DlgSaveAsFixture.h"

#include <QtWidgets/QLineEdit>

#include <gtest/gtest.h>

using namespace test::saveas;

namespace {

/// A name that only some file system refuses, and the warning it gets.
struct BadName
{
    CString name;
    CString warning;
};

class DlgSaveAsBadName : public DlgSaveAsTest, public ::testing::WithParamInterface<BadName>
{
};

} // namespace

TEST_F(DlgSaveAsTest, EmptyNameIsRefusedWithoutAWord)
{
    for (const int mode : {DlgSaveAs::Load, DlgSaveAs::New, DlgSaveAs::SaveAs}) {
        DlgSaveAs dialog(mode, nullptr, {});
        test::Open(dialog);
        test::Click(dialog, Save);
        EXPECT_TRUE(dialog.isVisible()) << mode;
    }
    ExpectSilence();
}

TEST_F(DlgSaveAsTest, EachForbiddenCharacterIsRefused)
{
    const CString forbidden = u"\\/:*?<>\"|"_s;
    for (const QChar character : forbidden) {
        m_guard.Messages().Clear();
        DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
        SaveUnder(dialog, u"a"_s + character + u"b"_s);
        EXPECT_TRUE(dialog.isVisible()) << QString(character).toStdString();
        ExpectOnlyMessage(MessageKind::Warning, ForbiddenText);
    }
}

TEST_F(DlgSaveAsTest, ForbiddenCharacterIsReportedOnceHoweverOftenItOccurs)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"??**"_s);
    ExpectOnlyMessage(MessageKind::Warning, ForbiddenText);
}

TEST_F(DlgSaveAsTest, NewModeRefusesTheCurrentFileInAnyLetterCase)
{
    AddFiles({u"Abc"_s});
    DlgSaveAs dialog(DlgSaveAs::New, nullptr, PathOf(u"Abc.xml"_s));
    SaveUnder(dialog, u"aBC"_s);
    EXPECT_TRUE(dialog.isVisible());
    ExpectOnlyMessage(MessageKind::Warning, CurrentText);
}

TEST_F(DlgSaveAsTest, NewModeRefusesTheCurrentFileWithItsExtensionInAnyLetterCase)
{
    AddFiles({u"abc"_s});
    for (const CString& name : {u"abc.xml"_s, u"abc.XML"_s}) {
        m_guard.Messages().Clear();
        DlgSaveAs dialog(DlgSaveAs::New, nullptr, PathOf(u"abc.xml"_s));
        SaveUnder(dialog, name);
        EXPECT_TRUE(dialog.isVisible()) << name.toStdString();
        ExpectOnlyMessage(MessageKind::Warning, CurrentText);
    }
}

TEST_F(DlgSaveAsTest, NewModeRefusesTheCurrentFileBeforeItAsks)
{
    AddFiles({u"abc"_s});
    DlgSaveAs dialog(DlgSaveAs::New, nullptr, PathOf(u"abc.xml"_s));
    SaveUnder(dialog, u"abc"_s);
    EXPECT_TRUE(dialog.isVisible());
    ExpectOnlyMessage(MessageKind::Warning, CurrentText);
}

TEST_F(DlgSaveAsTest, SaveAsModeAsksForTheCurrentFileAsForAnyOther)
{
    AddFiles({u"abc"_s});
    m_guard.Messages().PresetAnswer(platform::Answer::Yes);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"abc"_s);
    ExpectOnlyMessage(MessageKind::Question, OverwriteText);
    ExpectChosen(dialog, PathOf(u"abc.xml"_s));
}

TEST_F(DlgSaveAsTest, SaveAsModeDoesNotProtectAFileThatItIsToldIsTheCurrentOne)
{
    AddFiles({u"abc"_s});
    m_guard.Messages().PresetAnswer(platform::Answer::Yes);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, PathOf(u"abc.xml"_s));
    SaveUnder(dialog, u"abc"_s);
    ExpectOnlyMessage(MessageKind::Question, OverwriteText);
    ExpectChosen(dialog, PathOf(u"abc.xml"_s));
}

TEST_F(DlgSaveAsTest, NewModeAsksBeforeAnotherFileIsOverwritten)
{
    AddFiles({u"abc"_s, u"current"_s});
    m_guard.Messages().PresetAnswer(platform::Answer::Yes);
    DlgSaveAs dialog(DlgSaveAs::New, nullptr, PathOf(u"current.xml"_s));
    SaveUnder(dialog, u"abc"_s);
    ExpectOnlyMessage(MessageKind::Question, OverwriteText);
    ExpectChosen(dialog, PathOf(u"abc.xml"_s));
}

TEST_F(DlgSaveAsTest, AnsweringNoLeavesTheDialogOpen)
{
    AddFiles({u"abc"_s});
    m_guard.Messages().PresetAnswer(platform::Answer::No);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"abc"_s);
    ExpectOnlyMessage(MessageKind::Question, OverwriteText);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.ItemText(NameEdit), u"abc"_s);
}

TEST_F(DlgSaveAsTest, LoadModeAsksNothingAboutAnExistingFile)
{
    AddFiles({u"abc"_s});
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, PathOf(u"abc.xml"_s));
    test::Open(dialog);
    test::ClickLine(dialog, FileList, 0);
    test::Click(dialog, Save);
    ExpectSilence();
    ExpectChosen(dialog, PathOf(u"abc.xml"_s));
}

TEST_F(DlgSaveAsTest, ExtensionInCapitalsIsTakenOffForTheQuestionAndKeptInThePath)
{
    AddFiles({u"abc"_s});
    m_guard.Messages().PresetAnswer(platform::Answer::Yes);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"abc.XML"_s);
    ExpectOnlyMessage(MessageKind::Question, OverwriteText);
    ExpectChosen(dialog, PathOf(u"abc.XML"_s));
}

TEST_F(DlgSaveAsTest, ExtensionInSmallLettersIsNotFoundAndOverwritesWithoutAQuestion)
{
    AddFiles({u"abc"_s});
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"abc.xml"_s);
    ExpectSilence();
    ExpectChosen(dialog, PathOf(u"abc.xml"_s));
}

TEST_F(DlgSaveAsTest, ExtensionInMixedLettersIsKeptAsTyped)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"abc.Xml"_s);
    ExpectChosen(dialog, PathOf(u"abc.Xml"_s));
}

TEST_F(DlgSaveAsTest, NameOfFourCharactersKeepsItsCapitalExtensionInTheQuestion)
{
    AddFile(u".XML.xml"_s);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u".XML"_s);
    ExpectOnlyMessage(MessageKind::Question, OverwriteText);
}

TEST_F(DlgSaveAsTest, NameThatIsOnlyTheExtensionIsTakenAsItStands)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u".xml"_s);
    ExpectSilence();
    ExpectChosen(dialog, PathOf(u".xml"_s));
}

TEST_F(DlgSaveAsTest, NameXmlWithoutAStopIsAName)
{
    AddFiles({u"xml"_s});
    m_guard.Messages().PresetAnswer(platform::Answer::Yes);
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"xml"_s);
    ExpectOnlyMessage(MessageKind::Question, OverwriteText);
    ExpectChosen(dialog, PathOf(u"xml.xml"_s));
}

TEST_F(DlgSaveAsTest, AnotherExtensionGetsXmlBehindIt)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"abc.txt"_s);
    ExpectChosen(dialog, PathOf(u"abc.txt.xml"_s));
}

TEST_F(DlgSaveAsTest, NameThatDiffersInLetterCaseOnlyIsNotFound)
{
    AddFiles({u"abc"_s});
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    SaveUnder(dialog, u"ABC"_s);
    ExpectSilence();
    ExpectChosen(dialog, PathOf(u"ABC.xml"_s));
}

TEST_F(DlgSaveAsTest, ChineseNameBecomesAPath)
{
    DlgSaveAs dialog(DlgSaveAs::New, nullptr, {});
    SaveUnder(dialog, u"给排水 规则"_s);
    ExpectChosen(dialog, PathOf(u"给排水 规则.xml"_s));
}

TEST_P(DlgSaveAsBadName, IsRefusedWithAWarning)
{
    DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
    test::Open(dialog);
    dialog.Item<QLineEdit>(NameEdit).setText(GetParam().name);
    test::Click(dialog, Save);
    EXPECT_TRUE(dialog.isVisible());
    ExpectOnlyMessage(MessageKind::Warning, GetParam().warning);
}

const CString DeviceText = u"文件名不能使用系统保留的设备名!"_s;
const CString ControlText = u"文件名不能包含控制字符或无效字符!"_s;
const CString LongText = u"文件名过长!"_s;

INSTANTIATE_TEST_SUITE_P(
    Names, DlgSaveAsBadName,
    ::testing::Values(BadName{u"CON"_s, DeviceText}, BadName{u"prn"_s, DeviceText},
                      BadName{u"Aux.xml"_s, DeviceText}, BadName{u"nul.a.b"_s, DeviceText},
                      BadName{u"com1"_s, DeviceText}, BadName{u"LPT9.XML"_s, DeviceText},
                      BadName{u"con .x"_s, DeviceText}, BadName{u"CONIN$"_s, DeviceText},
                      BadName{u"conout$.xml"_s, DeviceText}, BadName{u"a\tb"_s, ControlText},
                      BadName{u"a\u007Fb"_s, ControlText},
                      BadName{u"a"_s + QChar(0xD800) + u"b"_s, ControlText},
                      BadName{CString(84, u'长'), LongText}, BadName{CString(252, u'x'), LongText}));

TEST_F(DlgSaveAsTest, LongestNameThatAFileSystemHoldsIsTaken)
{
    for (const CString& name : {CString(83, u'长') + u"ab"_s, CString(251, u'x')}) {
        DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
        SaveUnder(dialog, name);
        ExpectChosen(dialog, PathOf(name + u".xml"_s));
    }
}

TEST_F(DlgSaveAsTest, FullStopOrBlankBeforeTheExtensionIsPartOfTheName)
{
    const std::pair<CString, CString> names[] = {
        {u"a "_s, u"a .xml"_s},         {u"a."_s, u"a..xml"_s},
        {u" "_s, u" .xml"_s},           {u"abc.xml "_s, u"abc.xml .xml"_s},
        {u"abc..xml"_s, u"abc..xml"_s}, {u"abc\u3000"_s, u"abc\u3000.xml"_s}};
    for (const auto& [name, file] : names) {
        DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
        SaveUnder(dialog, name);
        ExpectChosen(dialog, PathOf(file));
    }
    ExpectSilence();
}

TEST_F(DlgSaveAsTest, NamesThatOnlyBeginLikeDevicesAreTaken)
{
    for (const CString& name : {u"console"_s, u"com0"_s, u"com10"_s, u"lptx"_s, u"xcon"_s}) {
        DlgSaveAs dialog(DlgSaveAs::SaveAs, nullptr, {});
        SaveUnder(dialog, name);
        ExpectChosen(dialog, PathOf(name + u".xml"_s));
    }
}

TEST_F(DlgSaveAsTest, LoadModeTakesAnExistingFileWhateverItsName)
{
    AddFiles({u"aux"_s});
    DlgSaveAs dialog(DlgSaveAs::Load, nullptr, {});
    test::Open(dialog);
    test::ClickLine(dialog, FileList, 0);
    test::Click(dialog, Save);
    ExpectChosen(dialog, PathOf(u"aux.xml"_s));
}
