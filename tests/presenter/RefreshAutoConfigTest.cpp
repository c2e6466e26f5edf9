#include "presenter/RefreshAutoConfig.h"

#include "presenter/CAutoQdDeConfigFacade.h"
#include "store/StoreTesting.h"

#include "support/FaultyFileSystem.h"
#include "xml/Error.h"

using namespace Qt::StringLiterals;

namespace {

class Refresh : public test::FileFixture
{
protected:
    /// The current configuration "cur" has a file as only another program writes it.
    Refresh()
    {
        Put(u"project\\SysRegedit.ini"_s, u"[QdDeConfigInfo]\nConfigName=cur\n"_s);
        m_host.Folder().MakeFolder(u"app\\自动套配置"_s);
        m_current = Put(CurrentName(), test::RuleFile(test::PlumbingRules(u"<rule id='4'/>"_s)));
        m_before = Bytes(CurrentName());
    }

    static CString CurrentName() { return u"app\\自动套配置\\cur.xml"_s; }
    /// Whether the current file has been saved: rules are then called `Config`.
    bool CurrentSaved() const { return Bytes(CurrentName()).contains("<Config id=\"4\""); }
    QByteArray Ini() const { return Bytes(u"project\\SysRegedit.ini"_s); }

    /// That `path` is refused with the words for the caller, and that the ini stays.
    void ExpectRefused(const CString& path)
    {
        CString message = u"before"_s;
        EXPECT_FALSE(RefreshAutoConfig(message, path));
        EXPECT_EQ(message, u"文件功能不匹配"_s);
        EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\nConfigName=cur\n"));
    }

    CString m_current;
    QByteArray m_before;
    CString m_message = u"before"_s;
};

} // namespace

TEST_F(Refresh, AnotherFileBecomesTheCurrentOneAfterTheOldOneWasSaved)
{
    const CString path = Put(u"new.xml"_s, test::RuleFile(test::Plumbing()));
    const QByteArray before = Bytes(u"new.xml"_s);
    EXPECT_TRUE(RefreshAutoConfig(m_message, path));
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\nConfigName=new\n"));
    EXPECT_TRUE(CurrentSaved());
    EXPECT_EQ(Bytes(u"new.xml"_s), before);
}

TEST_F(Refresh, SuccessLeavesTheMessageOfTheCaller)
{
    EXPECT_TRUE(RefreshAutoConfig(m_message, Put(u"new.xml"_s, test::RuleFile(test::Plumbing()))));
    EXPECT_EQ(m_message, u"before"_s);
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(Refresh, CurrentFileIsLoadedAgainWithoutBeingSavedAndItsNameIsWritten)
{
    const test::FaultyFileSystem files;
    EXPECT_TRUE(RefreshAutoConfig(m_message, m_current));
    EXPECT_EQ(Bytes(CurrentName()), m_before);
    EXPECT_EQ(files.WritePoints(), 0); // the ini already names it
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\nConfigName=cur\n"));
}

TEST_F(Refresh, CurrentFileInAnotherCaseIsLoadedWithoutSavingAndItsSpellingIsWritten)
{
    Put(u"project\\SysRegedit.ini"_s, u"[QdDeConfigInfo]\nConfigName=CUR\n"_s);
    Put(u"app\\自动套配置\\CUR.xml"_s, test::RuleFile(test::PlumbingRules(u"<rule id='4'/>"_s)));
    const QByteArray before = Bytes(u"app\\自动套配置\\CUR.xml"_s);
    EXPECT_TRUE(RefreshAutoConfig(m_message, m_current));
    EXPECT_EQ(Bytes(u"app\\自动套配置\\CUR.xml"_s), before);
    EXPECT_EQ(Bytes(CurrentName()), m_before);
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\nConfigName=cur\n"));
}

TEST_F(Refresh, MissingFileIsWarnedOfAfterTheCurrentFileWasSaved)
{
    ExpectRefused(File(u"missing.xml"_s));
    ASSERT_EQ(Messages().Messages().size(), 1U);
    EXPECT_EQ(Messages().Messages().front().text, u"文件不存在，请重新选择调用文件!"_s);
    EXPECT_EQ(Messages().Messages().front().kind, platform::MessageKind::Warning);
    EXPECT_TRUE(CurrentSaved());
}

TEST_F(Refresh, FileThatDoesNotParseIsRefusedWithoutABox)
{
    ExpectRefused(PutBroken(u"broken.xml"_s, "<自动套"));
    EXPECT_TRUE(Messages().Messages().empty());
    EXPECT_TRUE(CurrentSaved());
}

TEST_F(Refresh, FileWithAnotherDocumentElementIsRefusedWithoutABox)
{
    ExpectRefused(Put(u"other.xml"_s, u"<其它/>"_s));
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(Refresh, WrappedFileIsRefusedWithoutABox)
{
    const CString path = Put(u"done.xml"_s, test::RuleFile(test::Plumbing()));
    MayBeBroken(u"done.xml"_s);
    CAutoQdDeConfigFacade::WriteHead(path);
    ExpectRefused(path);
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(Refresh, ProjectWithoutAConfigurationGetsTheDefaultFileFirst)
{
    Put(u"project\\SysRegedit.ini"_s, {});
    EXPECT_TRUE(RefreshAutoConfig(m_message, Put(u"new.xml"_s, test::RuleFile(test::Plumbing()))));
    EXPECT_TRUE(Exists(u"app\\自动套配置\\DefaultConfig.xml"_s));
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\r\nConfigName=new\r\n"));
}

TEST_F(Refresh, ErrorsOfTheXmlLayerGoOnToTheHost)
{
    const CString path = Put(u"new.xml"_s, test::RuleFile(test::Plumbing()));
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    EXPECT_THROW(RefreshAutoConfig(m_message, path), xml::Error);
    EXPECT_EQ(m_message, u"before"_s);
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\nConfigName=cur\n"));
    EXPECT_EQ(Bytes(CurrentName()), m_before);
}
