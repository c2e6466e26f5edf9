#include "presenter/CQdDeConfigPresenter.h"

#include "store/StoreTesting.h"

#include "support/FaultyFileSystem.h"
#include "xml/Error.h"

#include <utility>

using namespace Qt::StringLiterals;
using test::RulePath;

// Which rule file a presenter works on, and what the project's ini file remembers.

namespace {

/// A project that names one specialty after the other.
class AnsweringProject : public host::IProject
{
public:
    AnsweringProject(test::MemoryHost& host, CStringArray specs)
        : m_host(host), m_specs(std::move(specs)), m_installed(host::Install(RolesWith(host, this)))
    {
    }
    int Asked() const noexcept { return m_asked; }

    CString GetPrjPath() override { return m_host.GetPrjPath(); }
    CString GetCurrentSpec() override { return m_specs.value(m_asked++); }
    SNvKtSpecId GetCurrentSpecId() override { return m_host.GetCurrentSpecId(); }
    SQdDeInfo::EQdDeMode GetQdDeMode() override { return m_host.GetQdDeMode(); }

private:
    static host::Roles RolesWith(test::MemoryHost& host, host::IProject* project)
    {
        host::Roles roles = host.Roles();
        roles.project = project;
        return roles;
    }

    test::MemoryHost& m_host;
    CStringArray m_specs;
    int m_asked = 0;
    host::Installation m_installed;
};

class PresenterFile : public test::FileFixture
{
protected:
    CString RuleFolder() const { return m_host.AppFolder() + u"\\自动套配置"_s; }
    void PutIni(const CString& text) const { Put(u"project\\SysRegedit.ini"_s, text); }
    QByteArray Ini() const { return Bytes(u"project\\SysRegedit.ini"_s); }
    bool HasIni() const { return Exists(u"project\\SysRegedit.ini"_s); }
    /// A rule file whose category 给水管 has the rule 4.
    CString PutRules(const CString& name) const
    {
        return Put(name, test::RuleFile(test::PlumbingRules(u"<c id='4'/>"_s)));
    }
    /// A presenter on a file of its own, so that the current configuration stays out of it.
    CQdDeConfigPresenter OnOwnFile() const { return CQdDeConfigPresenter(PutRules(u"own.xml"_s)); }
};

} // namespace

TEST_F(PresenterFile, NewProjectOpensDefaultConfigCreatingFolderAndFile)
{
    const CQdDeConfigPresenter presenter{CString()};
    EXPECT_TRUE(Exists(u"app\\自动套配置\\DefaultConfig.xml"_s));
    EXPECT_EQ(presenter.GetCurConfig(), u"DefaultConfig"_s);
    EXPECT_EQ(presenter.GetCurConfigDetailPath(), RuleFolder() + u"\\DefaultConfig.xml"_s);
    EXPECT_FALSE(HasIni());
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(PresenterFile, EmptyPathOpensTheConfigurationThatTheIniNames)
{
    PutIni(u"[QdDeConfigInfo]\nConfigName=我的\n"_s);
    m_host.Folder().MakeFolder(u"app\\自动套配置"_s);
    PutRules(u"app\\自动套配置\\我的.xml"_s);
    CQdDeConfigPresenter presenter{CString()};
    EXPECT_NE(presenter.GetConfig(RulePath(4)), nullptr);
    EXPECT_EQ(presenter.GetCurConfigDetailPath(), RuleFolder() + u"\\我的.xml"_s);
    EXPECT_FALSE(Exists(u"app\\自动套配置\\DefaultConfig.xml"_s));
}

TEST_F(PresenterFile, ExplicitPathIsOpenedWithoutFolderAndIni)
{
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_NE(presenter.GetConfig(RulePath(4)), nullptr);
    EXPECT_FALSE(Exists(u"app\\自动套配置"_s));
    EXPECT_FALSE(HasIni());
    EXPECT_EQ(presenter.GetCurConfig(), u"DefaultConfig"_s);
}

TEST_F(PresenterFile, RulesAreThoseOfTheProjectsSpecialty)
{
    Host().SetCurrentSpec(u"电气"_s);
    CQdDeConfigPresenter presenter{CString()};
    EXPECT_EQ(Specialties(u"app\\自动套配置\\DefaultConfig.xml"_s), CStringArray{u"电气/电气"_s});
    EXPECT_NE(presenter.GetConfig(CPath{2, 21, 211, 1, 0, 0, 0, 0}), nullptr);
}

TEST_F(PresenterFile, CurrentPathCreatesTheRuleFolderOneLevel)
{
    const CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_EQ(presenter.GetCurConfigDetailPath(), RuleFolder() + u"\\DefaultConfig.xml"_s);
    EXPECT_TRUE(Exists(u"app\\自动套配置"_s));
    EXPECT_FALSE(Exists(u"app\\自动套配置\\DefaultConfig.xml"_s));
    Host().SetAppFolder(File(u"not\\there"_s));
    presenter.GetCurConfigDetailPath();
    EXPECT_FALSE(Exists(u"not"_s));
}

TEST_F(PresenterFile, RuleFolderThatCannotBeCreatedShowsInTheOpeningOnly)
{
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseCreateFolder);
    EXPECT_THROW(CQdDeConfigPresenter{CString()}, xml::Error);
    EXPECT_FALSE(Exists(u"app\\自动套配置"_s));
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(PresenterFile, CurrentNameIsDefaultWhereTheIniNamesNone)
{
    const CQdDeConfigPresenter presenter = OnOwnFile();
    for (const CString& ini : {u""_s, u"[Other]\nConfigName=x\n"_s, u"[QdDeConfigInfo]\nOther=x\n"_s,
                               u"[QdDeConfigInfo]\nConfigName=\n"_s, u"no ini at all"_s}) {
        PutIni(ini);
        EXPECT_EQ(presenter.GetCurConfig(), u"DefaultConfig"_s) << ini.toStdString();
    }
}

TEST_F(PresenterFile, CurrentNameIsReadAnewAtEachCall)
{
    const CQdDeConfigPresenter presenter = OnOwnFile();
    PutIni(u"[QdDeConfigInfo]\nConfigName=甲\n"_s);
    EXPECT_EQ(presenter.GetCurConfig(), u"甲"_s);
    PutIni(u"[QdDeConfigInfo]\nConfigName=乙\n"_s);
    EXPECT_EQ(presenter.GetCurConfig(), u"乙"_s);
}

TEST_F(PresenterFile, IniStandsBesideTheProjectFile)
{
    m_host.Folder().MakeFolder(u"p.q\\r"_s);
    Host().SetProjectPath(File(u"p.q\\r\\a.b.prj"_s));
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_TRUE(presenter.ReLoad(PutRules(u"x.xml"_s)));
    EXPECT_TRUE(Exists(u"p.q\\r\\SysRegedit.ini"_s));
}

TEST_F(PresenterFile, NameLongerThan99CharactersComesBackCut)
{
    const CQdDeConfigPresenter presenter = OnOwnFile();
    PutIni(u"[QdDeConfigInfo]\nConfigName="_s + u"长"_s.repeated(120) + u"\n"_s);
    EXPECT_EQ(presenter.GetCurConfig(), u"长"_s.repeated(99));
}

TEST_F(PresenterFile, ReLoadWritesTheNameToTheIni)
{
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_TRUE(presenter.ReLoad(PutRules(u"我的.xml"_s)));
    EXPECT_EQ(Ini(), u"[QdDeConfigInfo]\r\nConfigName=我的\r\n"_s.toUtf8());
    EXPECT_EQ(presenter.GetCurConfig(), u"我的"_s);
}

TEST_F(PresenterFile, ReLoadOfANameWithTwoFullStopsWritesWhatStandsBeforeTheLast)
{
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_TRUE(presenter.ReLoad(PutRules(u"a.b.xml"_s)));
    EXPECT_EQ(presenter.GetCurConfig(), u"a.b"_s);
}

TEST_F(PresenterFile, ReLoadOfANameWithoutFullStopWritesAnEmptyNameWhichReadsAsDefault)
{
    PutIni(u"[QdDeConfigInfo]\nConfigName=old\n"_s);
    CQdDeConfigPresenter presenter = OnOwnFile();
    m_host.Folder().MakeFolder(u"with.stop"_s);
    EXPECT_TRUE(presenter.ReLoad(PutRules(u"with.stop\\plain"_s)));
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\nConfigName=\n"));
    EXPECT_EQ(presenter.GetCurConfig(), u"DefaultConfig"_s);
}

TEST_F(PresenterFile, NameIsWrittenAlsoWhereItIsTheCurrentOneAlready)
{
    m_host.Folder().MakeFolder(u"app\\自动套配置"_s);
    const CString path = PutRules(u"app\\自动套配置\\DefaultConfig.xml"_s);
    CQdDeConfigPresenter presenter{CString()};
    ASSERT_EQ(presenter.GetCurConfig(), u"DefaultConfig"_s);
    ASSERT_FALSE(HasIni());
    EXPECT_TRUE(presenter.ReLoad(path));
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\r\nConfigName=DefaultConfig\r\n"));
    PutRules(u"app\\QdDeConfig.def"_s);
    PutIni(u"[QdDeConfigInfo]\nConfigName=\n"_s);
    EXPECT_TRUE(presenter.NewFile(path));
    EXPECT_EQ(Ini(), QByteArray("[QdDeConfigInfo]\nConfigName=DefaultConfig\n"));
}

TEST_F(PresenterFile, SpecialtyIsAskedForOnceForEachStore)
{
    Put(u"app\\AttrConfig.xml"_s,
        u"<属性类型配置信息><给排水 name='给排水'><管道><给水管><CZ name='材质'/></给水管></管道></给排水>"
        "<电气 name='电气'><电缆桥架><桥架><GG name='规格'/></桥架></电缆桥架></电气></属性类型配置信息>"_s);
    AnsweringProject project(Host(), {u"给排水"_s, u"电气"_s});
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_EQ(project.Asked(), 2);
    EXPECT_NE(presenter.GetConfig(RulePath(4)), nullptr) << "the first answer is the rule store's";
    AttrConfig config;
    EXPECT_TRUE(presenter.GetAttConfig(u"电气\\电缆桥架\\桥架"_s, u"规格"_s, config));
    EXPECT_FALSE(presenter.GetAttConfig(u"给排水\\管道\\给水管"_s, u"材质"_s, config));
    EXPECT_TRUE(presenter.Save());
    EXPECT_EQ(project.Asked(), 2) << "the answers are kept in the stores";
}

TEST_F(PresenterFile, IniWithBytesThatAreNoTextTakesTheNameAndKeepsThem)
{
    const QByteArray before = "[A]\r\nx=\xFF\xFF\r\n[QdDeConfigInfo]\r\nConfigName=old\r\ny=\xFF\r\n";
    m_host.Folder().WriteFile(u"project\\SysRegedit.ini"_s, before);
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_EQ(presenter.GetCurConfig(), u"old"_s);
    EXPECT_TRUE(presenter.ReLoad(PutRules(u"我的.xml"_s)));
    EXPECT_EQ(presenter.GetCurConfig(), u"我的"_s);
    EXPECT_EQ(Ini(), QByteArray(before).replace("old", "我的"));
}

TEST_F(PresenterFile, RestOfTheIniStays)
{
    PutIni(
        u"; 注\r\n[A]\r\nConfigName=keep\r\n\r\n[QdDeConfigInfo]\r\nX=1\r\nConfigName=old\r\n[B]\r\ny=2"_s);
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_TRUE(presenter.ReLoad(PutRules(u"new.xml"_s)));
    EXPECT_EQ(Ini(), u"; 注\r\n[A]\r\nConfigName=keep\r\n\r\n[QdDeConfigInfo]\r\nX=1\r\nConfigName=new\r\n"
                     "[B]\r\ny=2"_s.toUtf8());
}

TEST_F(PresenterFile, RefusedReLoadLeavesTheIni)
{
    PutIni(u"[QdDeConfigInfo]\nConfigName=old\n"_s);
    const QByteArray before = Ini();
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_FALSE(presenter.ReLoad(File(u"missing.xml"_s)));
    EXPECT_FALSE(presenter.ReLoad(PutBroken(u"broken.xml"_s, "<")));
    EXPECT_FALSE(presenter.ReLoad(Put(u"other.xml"_s, u"<其它/>"_s)));
    EXPECT_EQ(Ini(), before);
    EXPECT_EQ(Messages().Texts(), CStringArray{u"文件不存在，请重新选择调用文件!"_s});
}

TEST_F(PresenterFile, NewFileLoadsTheTemplateAndWritesTheName)
{
    PutRules(u"app\\QdDeConfig.def"_s);
    CQdDeConfigPresenter presenter{CString()};
    EXPECT_EQ(presenter.GetConfig(RulePath(4)), nullptr);
    EXPECT_TRUE(presenter.NewFile(RuleFolder() + u"\\新.建.xml"_s));
    EXPECT_NE(presenter.GetConfig(RulePath(4)), nullptr);
    EXPECT_EQ(presenter.GetCurConfig(), u"新.建"_s);
}

TEST_F(PresenterFile, RefusedNewFileLeavesTheIni)
{
    PutIni(u"[QdDeConfigInfo]\nConfigName=old\n"_s);
    const QByteArray before = Ini();
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_FALSE(presenter.NewFile(File(u"made.xml"_s))); // there is no template
    EXPECT_EQ(Ini(), before);
}

TEST_F(PresenterFile, SaveAsLeavesTheIni)
{
    PutIni(u"[QdDeConfigInfo]\nConfigName=old\n"_s);
    const QByteArray before = Ini();
    CQdDeConfigPresenter presenter = OnOwnFile();
    EXPECT_TRUE(presenter.SaveAs(File(u"second.xml"_s)));
    EXPECT_EQ(Ini(), before);
    EXPECT_EQ(presenter.GetCurConfig(), u"old"_s);
    EXPECT_TRUE(presenter.AddCondition(RulePath(4), CStringArray(8, u"1"_s)));
    EXPECT_TRUE(presenter.Save());
    EXPECT_TRUE(Bytes(u"own.xml"_s).contains("strCFType=\"1\""));
}

TEST_F(PresenterFile, IniThatCannotBeWrittenIsIgnored)
{
    PutIni(u"[QdDeConfigInfo]\nConfigName=old\n"_s);
    const QByteArray before = Ini();
    CQdDeConfigPresenter presenter = OnOwnFile();
    const CString path = PutRules(u"a-rather-long-name.xml"_s);
    using enum test::Fault;
    for (const test::Fault fault : {RefuseOpen, NoRoom, Write, Resize, Sync}) {
        EXPECT_TRUE(presenter.ReLoad(File(u"own.xml"_s)));
        m_host.Folder().WriteFile(u"project\\SysRegedit.ini"_s, before);
        test::FaultyFileSystem files;
        files.Inject(fault);
        if (fault == Write) files.FailAfter(30); // in the middle of the name
        files.OnlyAt(1);                         // behind the saving of the old file
        EXPECT_TRUE(presenter.ReLoad(path));
        EXPECT_EQ(Ini(), before);
        EXPECT_EQ(presenter.GetCurConfig(), u"old"_s);
    }
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(PresenterFile, DestructionSavesNothing)
{
    const QByteArray before = test::RuleFile(test::PlumbingRules(u"<c id='4'/>"_s)).toUtf8();
    {
        CQdDeConfigPresenter presenter = OnOwnFile();
        EXPECT_TRUE(presenter.AddCondition(RulePath(4), CStringArray(8, u"1"_s)));
    }
    EXPECT_EQ(Bytes(u"own.xml"_s), before);
}
