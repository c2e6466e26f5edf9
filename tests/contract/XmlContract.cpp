#include "HostContract.h"

#include "host/NvKtDataMng.h"
#include "host/NvWindowsTool.h"
#include "support/FaultyFileSystem.h"
#include "support/StrictXml.h"

using namespace Qt::StringLiterals;

namespace test {

using NvKtDataMng::NvKtXmlVertion::SetXmlVersion;
using NvWindowsTool::MSXMLUtilityPtr;

namespace {

const QByteArray Broken = "<a><b></a>";

} // namespace

TEST_P(HostContract, VersionIsAddedToTheDocumentElement)
{
    const CString path = Folder().WriteFile(u"a.xml"_s, "<?xml version=\"1.0\"?>\r\n<根 a='1'>\n <b/> </根>");
    EXPECT_TRUE(SetXmlVersion(u"1.2"_s, path));
    EXPECT_EQ(CanonicalXml(Folder().ReadFile(u"a.xml"_s)), u"<根 a=\"1\" Version=\"1.2\">\n <b>\n"_s);
}

TEST_P(HostContract, VersionLeavesEveryOtherByteAlone)
{
    const QByteArray before = "<?xml version='1.0'?>\r\n<!-- c -->\n<根  x = '&#49;'  Version='";
    const QByteArray after = "' >\n <b a=\"1\"  ></b>\t</根 >\n<!-- end -->";
    const CString path = Folder().WriteFile(u"a.xml"_s, before + "old" + after);
    EXPECT_TRUE(SetXmlVersion(u"1.2"_s, path));
    const QByteArray now = Folder().ReadFile(u"a.xml"_s);
    EXPECT_EQ(QByteArray(now).replace('"', '\''), QByteArray(before + "1.2" + after).replace('"', '\''));
}

TEST_P(HostContract, VersionMayHoldCharactersThatXmlEscapes)
{
    const CString path = Folder().WriteFile(u"a.xml"_s, "<a/>");
    EXPECT_TRUE(SetXmlVersion(u"<1> & '2' \"3\""_s, path));
    EXPECT_EQ(CanonicalXml(Folder().ReadFile(u"a.xml"_s)), u"<a Version=\"<1> & '2' \"3\"\">\n"_s);
}

TEST_P(HostContract, FileThatHasTheVersionIsNotWritten)
{
    const CString path = Folder().WriteFile(u"a.xml"_s, "<a/>");
    const FaultyFileSystem watched;
    EXPECT_TRUE(SetXmlVersion(u"1.2"_s, path));
    const int writePoints = watched.WritePoints();
    EXPECT_GT(writePoints, 0);
    EXPECT_TRUE(SetXmlVersion(u"1.2"_s, path));
    EXPECT_EQ(watched.WritePoints(), writePoints);
}

TEST_P(HostContract, VersionOfAMissingFileIsFalseAndCreatesNone)
{
    EXPECT_FALSE(SetXmlVersion(u"1.2"_s, Folder().Path(u"a.xml"_s)));
    EXPECT_FALSE(Folder().Exists(u"a.xml"_s));
}

TEST_P(HostContract, VersionOfAFileWithABrokenHeadIsFalseAndLeavesItAlone)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("no XML"), QByteArray("<a b=1>"), QByteArray("<a b='1'")}) {
        const CString path = Folder().WriteFile(u"a.xml"_s, bytes);
        EXPECT_FALSE(SetXmlVersion(u"1.2"_s, path)) << bytes.toStdString();
        EXPECT_EQ(Folder().ReadFile(u"a.xml"_s), bytes);
    }
}

TEST_P(HostContract, VersionThatCannotBeWrittenIsFalseAndLeavesTheFileAlone)
{
    const CString path = Folder().WriteFile(u"a.xml"_s, "<a/>");
    for (const Fault fault : {Fault::RefuseOpen, Fault::NoRoom}) {
        FaultyFileSystem faulty;
        faulty.Inject(fault);
        EXPECT_FALSE(SetXmlVersion(u"1.2"_s, path));
        EXPECT_EQ(Folder().ReadFile(u"a.xml"_s), "<a/>");
    }
}

TEST_P(HostContract, XmlToolSetsAnAttributeOfTheDocumentElement)
{
    const CString path = Folder().WriteFile(u"a.xml"_s, "<根 a=\"1\"><b>清单</b></根>");
    MSXMLUtilityPtr tool;
    EXPECT_TRUE(tool.CreateDOMObj());
    EXPECT_TRUE(tool.OpenXml(path));
    EXPECT_TRUE(tool.SelectNode(u"根"_s));
    EXPECT_TRUE(tool.SetAttribute(u"名称"_s, u"值"_s));
    EXPECT_TRUE(tool.SetAttribute(u"a"_s, u"2"_s));
    EXPECT_TRUE(tool.SaveXml(Folder().Path(u"b.xml"_s)));
    EXPECT_EQ(CanonicalXml(Folder().ReadFile(u"b.xml"_s)),
              u"<根 a=\"2\" 名称=\"值\">\n <b>\n  text 清单\n"_s);
    EXPECT_EQ(Folder().ReadFile(u"a.xml"_s), "<根 a=\"1\"><b>清单</b></根>");
}

TEST_P(HostContract, XmlToolNeedsItsDocumentFirst)
{
    const CString path = Folder().WriteFile(u"a.xml"_s, "<a/>");
    MSXMLUtilityPtr tool;
    EXPECT_FALSE(tool.OpenXml(path));
    EXPECT_FALSE(tool.SelectNode(u"a"_s));
    EXPECT_FALSE(tool.SetAttribute(u"x"_s, u"1"_s));
    EXPECT_FALSE(tool.SaveXml(Folder().Path(u"b.xml"_s)));
    EXPECT_FALSE(Folder().Exists(u"b.xml"_s));
}

TEST_P(HostContract, XmlToolRefusesMissingAndBrokenFiles)
{
    MSXMLUtilityPtr tool;
    EXPECT_TRUE(tool.CreateDOMObj());
    EXPECT_FALSE(tool.OpenXml(Folder().Path(u"missing.xml"_s)));
    EXPECT_FALSE(tool.OpenXml(Folder().WriteFile(u"broken.xml"_s, Broken)));
}

TEST_P(HostContract, XmlToolKeepsItsDocumentWhenAnotherIsRefused)
{
    MSXMLUtilityPtr tool;
    EXPECT_TRUE(tool.CreateDOMObj());
    EXPECT_TRUE(tool.OpenXml(Folder().WriteFile(u"a.xml"_s, "<a/>")));
    EXPECT_FALSE(tool.OpenXml(Folder().WriteFile(u"broken.xml"_s, Broken)));
    EXPECT_TRUE(tool.SaveXml(Folder().Path(u"b.xml"_s)));
    EXPECT_EQ(CanonicalXml(Folder().ReadFile(u"b.xml"_s)), u"<a>\n"_s);
}

TEST_P(HostContract, XmlToolSelectsTheDocumentElementOnly)
{
    MSXMLUtilityPtr tool;
    EXPECT_TRUE(tool.CreateDOMObj());
    EXPECT_TRUE(tool.OpenXml(Folder().WriteFile(u"a.xml"_s, "<a><b/></a>")));
    EXPECT_FALSE(tool.SelectNode(u"b"_s));
    EXPECT_FALSE(tool.SelectNode(u"A"_s));
    EXPECT_FALSE(tool.SelectNode(CString()));
    EXPECT_FALSE(tool.SetAttribute(u"x"_s, u"1"_s)) << "nothing is selected";
}

TEST_P(HostContract, XmlToolRefusesWhatNoXmlFileCanHold)
{
    MSXMLUtilityPtr tool;
    EXPECT_TRUE(tool.CreateDOMObj());
    EXPECT_TRUE(tool.OpenXml(Folder().WriteFile(u"a.xml"_s, "<a/>")));
    EXPECT_TRUE(tool.SelectNode(u"a"_s));
    EXPECT_FALSE(tool.SetAttribute(u"two words"_s, u"1"_s));
    EXPECT_FALSE(tool.SetAttribute(CString(), u"1"_s));
    EXPECT_FALSE(tool.SetAttribute(u"x"_s, CString(QChar(1))));
    EXPECT_TRUE(tool.SaveXml(Folder().Path(u"b.xml"_s)));
    EXPECT_EQ(CanonicalXml(Folder().ReadFile(u"b.xml"_s)), u"<a>\n"_s);
}

TEST_P(HostContract, XmlToolThatCannotSaveIsFalse)
{
    const CString path = Folder().WriteFile(u"a.xml"_s, "<a/>");
    MSXMLUtilityPtr tool;
    EXPECT_TRUE(tool.CreateDOMObj());
    EXPECT_FALSE(tool.SaveXml(Folder().Path(u"b.xml"_s))) << "there is nothing to save";
    EXPECT_TRUE(tool.OpenXml(path));
    EXPECT_FALSE(tool.SaveXml(Folder().Path(u"missing\\b.xml"_s)));
    FaultyFileSystem faulty;
    faulty.Inject(Fault::RefuseOpen);
    EXPECT_FALSE(tool.SaveXml(path));
    EXPECT_EQ(Folder().ReadFile(u"a.xml"_s), "<a/>");
}

} // namespace test
