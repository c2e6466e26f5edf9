#include "embedded/data/host/XmlTools.h"
#include "support/FaultyFileSystem.h"
#include "support/StrictXml.h"
#include "support/TempFolder.h"
#include "xml/Dom.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class XmlTools : public ::testing::Test
{
protected:
    test::TempFolder m_folder;
    const CString m_file = m_folder.WriteFile(u"规则.xml"_s, "<根 a=\"1\"><子/></根>\n");
    embedded::XmlTools m_tools;
    std::unique_ptr<host::IXmlTool> m_tool = m_tools.CreateXmlTool();
};

} // namespace

TEST_F(XmlTools, AttributesAreSetOnTheSelectedElementAndSaved)
{
    ASSERT_TRUE(m_tool->CreateDOMObj());
    ASSERT_TRUE(m_tool->OpenXml(m_file));
    ASSERT_TRUE(m_tool->SelectNode(u"根"_s));
    EXPECT_TRUE(m_tool->SetAttribute(u"a"_s, u"2"_s));
    EXPECT_TRUE(m_tool->SetAttribute(u"b"_s, u"清单版"_s));
    ASSERT_TRUE(m_tool->SaveXml(m_file));
    EXPECT_EQ(test::CanonicalXml(m_folder.ReadFile(u"规则.xml"_s)),
              test::CanonicalXml(QByteArray("<根 a=\"2\" b=\"清单版\"><子/></根>")));
}

TEST_F(XmlTools, NothingWorksBeforeCreateDomObj)
{
    EXPECT_FALSE(m_tool->OpenXml(m_file));
    EXPECT_FALSE(m_tool->SelectNode(u"根"_s));
    EXPECT_FALSE(m_tool->SetAttribute(u"a"_s, u"2"_s));
    EXPECT_FALSE(m_tool->SaveXml(m_file));
    EXPECT_EQ(m_folder.ReadFile(u"规则.xml"_s), "<根 a=\"1\"><子/></根>\n");
}

TEST_F(XmlTools, MissingEngineIsAFalseAnswer)
{
    xml::SetEngineAvailable(false);
    const bool created = m_tool->CreateDOMObj();
    xml::SetEngineAvailable(true);
    EXPECT_FALSE(created);
}

TEST_F(XmlTools, FailedOpenKeepsWhatWasOpenBefore)
{
    ASSERT_TRUE(m_tool->CreateDOMObj());
    ASSERT_TRUE(m_tool->OpenXml(m_file));
    ASSERT_TRUE(m_tool->SelectNode(u"根"_s));
    EXPECT_FALSE(m_tool->OpenXml(m_folder.Path(u"none.xml"_s)));
    EXPECT_FALSE(m_tool->OpenXml(m_folder.WriteFile(u"bad.xml"_s, "<根>")));
    EXPECT_TRUE(m_tool->SetAttribute(u"a"_s, u"3"_s));
    EXPECT_TRUE(m_tool->SaveXml(m_file));
    EXPECT_TRUE(m_folder.ReadFile(u"规则.xml"_s).contains("a=\"3\""));
}

TEST_F(XmlTools, OnlyTheDocumentElementCanBeSelected)
{
    ASSERT_TRUE(m_tool->CreateDOMObj());
    ASSERT_TRUE(m_tool->OpenXml(m_file));
    EXPECT_FALSE(m_tool->SelectNode(u"子"_s));
    EXPECT_FALSE(m_tool->SetAttribute(u"a"_s, u"2"_s));
}

TEST_F(XmlTools, ImpossibleAttributeIsRefused)
{
    ASSERT_TRUE(m_tool->CreateDOMObj());
    ASSERT_TRUE(m_tool->OpenXml(m_file));
    ASSERT_TRUE(m_tool->SelectNode(u"根"_s));
    EXPECT_FALSE(m_tool->SetAttribute(u"1 2"_s, u"x"_s));
    EXPECT_FALSE(m_tool->SetAttribute(u"a"_s, CString(QChar(1))));
}

TEST_F(XmlTools, EmptyDocumentIsNotSaved)
{
    ASSERT_TRUE(m_tool->CreateDOMObj());
    EXPECT_FALSE(m_tool->SaveXml(m_file));
    EXPECT_EQ(m_folder.ReadFile(u"规则.xml"_s), "<根 a=\"1\"><子/></根>\n");
}

TEST_F(XmlTools, SaveThatCannotBeWrittenIsAFalseAnswer)
{
    ASSERT_TRUE(m_tool->CreateDOMObj());
    ASSERT_TRUE(m_tool->OpenXml(m_file));
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    EXPECT_FALSE(m_tool->SaveXml(m_file));
}

TEST_F(XmlTools, VersionIsRecordedAndEveryOtherByteStays)
{
    ASSERT_TRUE(m_tools.SetXmlVersion(u"0.1.0"_s, m_file));
    EXPECT_EQ(m_folder.ReadFile(u"规则.xml"_s), "<根 a=\"1\" Version=\"0.1.0\"><子/></根>\n");
}

TEST_F(XmlTools, VersionThatStandsThereAlreadyIsNotWritten)
{
    ASSERT_TRUE(m_tools.SetXmlVersion(u"0.1.0"_s, m_file));
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    EXPECT_TRUE(m_tools.SetXmlVersion(u"0.1.0"_s, m_file));
    EXPECT_EQ(files.WritePoints(), 0);
}

TEST_F(XmlTools, VersionOfAFileThatIsMissingOrNoXmlIsAFalseAnswer)
{
    EXPECT_FALSE(m_tools.SetXmlVersion(u"1"_s, m_folder.Path(u"none.xml"_s)));
    EXPECT_FALSE(m_tools.SetXmlVersion(u"1"_s, m_folder.WriteFile(u"text.xml"_s, "no xml")));
    EXPECT_FALSE(m_folder.Exists(u"none.xml"_s));
}
