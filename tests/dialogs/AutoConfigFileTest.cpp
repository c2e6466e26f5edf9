#include "dialogs/AutoConfigFixture.h"

#include "support/FaultyFileSystem.h"
#include "support/StandardCatalogue.h"

#include <optional>
#include <stdexcept>
#include <tuple>
#include <utility>

using namespace test::autoconfig;

// The file commands.

namespace {

const CString DefaultCaption = u"自动套配置-[ 清单模式: DefaultConfig ]"_s;

/// The dialog on DefaultConfig with the rule 管径＝DN15; another file "别的" holds the rule 管径＝DN99.
class AutoConfigFiles : public AutoConfigTest
{
protected:
    AutoConfigFiles()
    {
        PrepareRule({u"DN15"_s});
        CQdDeConfigPresenter other(FilePath(u"别的"_s));
        CPath path = WaterPipes;
        other.AddConfig(path, path.configId);
        other.AddCondition(path, ValueCondition(u"管径"_s, u"DN99"_s));
        other.Save();
        m_guard.Folder().WriteFile(u"app\\QdDeConfig.def"_s, "<自动套清单定额配置信息 Version=\"1.2.3\"/>");
    }
    void WriteConfig(const CString& name, const QByteArray& bytes)
    {
        m_guard.Folder().WriteFile(u"app\\自动套配置\\"_s + name + u".xml"_s, bytes);
    }
    void CancelFile(ControlId button)
    {
        InNextDialog([](dialogs::TemplateDialog& dialog) { test::Click(dialog, dialogs::IdCancel); });
        Press(button);
    }
    void ExpectMessage(platform::MessageKind kind, const CString& text)
    {
        ASSERT_EQ(Messages().Texts(), CStringArray{text});
        EXPECT_EQ(Messages().Messages().front().kind, kind);
        EXPECT_EQ(Messages().Messages().front().caption, u"Norvasoft"_s);
        EXPECT_TRUE(Messages().Messages().front().owned);
    }
    /// Loads a file with other roles in force from the moment when its name is taken until this ends.
    void LoadUnder(const host::Roles& roles, const CString& name) { CallUnder(LoadFileButton, roles, name); }
    void CallUnder(ControlId button, const host::Roles& roles, const CString& name)
    {
        std::optional<host::Installation> other;
        InNextDialog([&](dialogs::TemplateDialog& dialog) {
            if (button == NewFileButton)
                test::Type(dialog, 1069, name);
            else
                test::ClickLine(dialog, 1000, static_cast<int>(test::Lines(dialog, 1000).indexOf(name)));
            other.emplace(host::Install(roles));
            test::Click(dialog, dialogs::IdOk);
        });
        Press(button);
    }
    void ExpectNothingHappened()
    {
        EXPECT_EQ(Caption(), DefaultCaption);
        EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
        EXPECT_EQ(Messages().Texts(), CStringArray());
    }
};

/// A host that does not find its project's file.
class WithoutProjectFile : public test::MemoryHost
{
public:
    WithoutProjectFile() { test::FillStandardCatalogue(*this); }
    CString GetPrjPath() override { throw std::runtime_error("no project"); }
};

/// A project that does not know its mode the first time that it is asked.
class WithoutModeAtFirst : public host::IProject
{
public:
    explicit WithoutModeAtFirst(host::IProject& project) : m_project(project) {}
    CString GetPrjPath() override { return m_project.GetPrjPath(); }
    CString GetCurrentSpec() override { return m_project.GetCurrentSpec(); }
    SNvKtSpecId GetCurrentSpecId() override { return m_project.GetCurrentSpecId(); }
    SQdDeInfo::EQdDeMode GetQdDeMode() override
    {
        if (!std::exchange(m_wasAsked, true)) throw std::runtime_error("no mode");
        return m_project.GetQdDeMode();
    }

private:
    host::IProject& m_project;
    bool m_wasAsked = false;
};

} // namespace

TEST_F(AutoConfigFiles, LoadingShowsTheOtherFilesRulesAndName)
{
    Open();
    NameFile(LoadFileButton, u"别的"_s);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN99;"_s, u"其它"_s}));
    EXPECT_EQ(Caption(), u"自动套配置-[ 清单模式: 别的 ]"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN99"_s});
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigFiles, FileThatDoesNotFitIsWarnedOfAndTheFormerStays)
{
    WriteConfig(u"坏的"_s, "<other/>");
    Open();
    NameFile(LoadFileButton, u"坏的"_s);
    ExpectMessage(platform::MessageKind::Warning, u"文件功能不匹配!"_s);
    EXPECT_EQ(Caption(), DefaultCaption);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
    Press(AddRuleButton);
    Close();
    EXPECT_EQ(Saved().size(), 3);
}

TEST_F(AutoConfigFiles, NewFileHasOnlyTheDefaultRules)
{
    Open();
    NameFile(NewFileButton, u"新的"_s);
    EXPECT_EQ(RuleTexts(), CStringArray{u"其它"_s});
    EXPECT_EQ(Caption(), u"自动套配置-[ 清单模式: 新的 ]"_s);
    Press(AddRuleButton);
    Close();
    EXPECT_EQ(Saved(WaterPipes, u"新的"_s).size(), 2);
    EXPECT_EQ(Saved().size(), 2);
}

TEST_F(AutoConfigFiles, NewFileThatCannotBeMadeIsPassedOverInSilence)
{
    m_guard.Folder().WriteFile(u"app\\QdDeConfig.def"_s, "<other/>");
    Open();
    NameFile(NewFileButton, u"新的"_s);
    ExpectNothingHappened();
}

TEST_F(AutoConfigFiles, SavingAsReportsAndLeavesTitleAndLaterSavesWithTheFormerFile)
{
    Open();
    NameFile(SaveAsButton, u"副本"_s);
    ExpectMessage(platform::MessageKind::Information, u"另存成功."_s);
    EXPECT_EQ(Caption(), DefaultCaption);
    Press(AddRuleButton);
    Close();
    EXPECT_EQ(Saved(WaterPipes, u"副本"_s), (CStringArray{u"2 管径＝DN15;"_s, u"1 其它"_s}));
    EXPECT_EQ(Saved().size(), 3);
}

TEST_F(AutoConfigFiles, SavingAsDoesNotFlushTheGrid)
{
    PrepareBill(2, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    NameFile(SaveAsButton, u"副本"_s);
    EXPECT_EQ(Rule(2).GetQd(1)->GetRecord().strName, u"清单031001001001"_s);
}

TEST_F(AutoConfigFiles, CancelledFileDialogsDoNothing)
{
    Open();
    for (const ControlId button : {NewFileButton, LoadFileButton, SaveAsButton})
        CancelFile(button);
    ExpectNothingHappened();
}

TEST_F(AutoConfigFiles, LoadingLeavesAnUncommittedEditOfTheFormerFileBehind)
{
    PrepareBill(2, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    NameFile(LoadFileButton, u"别的"_s);
    EXPECT_EQ(GridColumn(), CStringArray());
    NameFile(LoadFileButton, u"DefaultConfig"_s);
    EXPECT_EQ(GridColumn(2), CStringArray{u"清单031001001001"_s});
}

TEST_F(AutoConfigFiles, LoadingWithABigCategorySelectedShowsNoRulesUntilOneIsSelected)
{
    PrepareBill(2, u"031001001001"_s);
    Open();
    SelectCategory(u"管道"_s);
    NameFile(LoadFileButton, u"别的"_s);
    EXPECT_EQ(RuleTexts(), CStringArray());
    EXPECT_EQ(Caption(), u"自动套配置-[ 清单模式: 别的 ]"_s);
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN99;"_s, u"其它"_s}));
}

TEST_F(AutoConfigFiles, CloudDiskRereadsTheCurrentFileEvenWhenNothingWasImported)
{
    Open();
    Press(AddRuleButton);
    EXPECT_EQ(RuleTexts().size(), 3);
    Press(NetDiskButton);
    EXPECT_EQ(m_windows.NetDisks(), CStringArray{u"自动套模板 1"_s});
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigFiles, CloudDiskShowsWhatWasImportedUnderTheCurrentName)
{
    Open();
    m_windows.DuringNetDisk([this] {
        WriteConfig(u"DefaultConfig"_s, m_guard.Folder().ReadFile(u"app\\自动套配置\\别的.xml"_s));
    });
    Press(NetDiskButton);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN99;"_s, u"其它"_s}));
}

TEST_F(AutoConfigFiles, CloudDiskThatMakesAnotherConfigurationCurrentChangesTitleAndRules)
{
    Open();
    m_windows.DuringNetDisk([this] {
        m_guard.Folder().WriteFile(u"project\\SysRegedit.ini"_s,
                                   u"[QdDeConfigInfo]\r\nConfigName=别的\r\n"_s.toUtf8());
    });
    Press(NetDiskButton);
    EXPECT_EQ(Caption(), u"自动套配置-[ 清单模式: 别的 ]"_s);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN99;"_s, u"其它"_s}));
}

TEST_F(AutoConfigFiles, CloudDiskWithABrokenFileKeepsTheRulesInMemory)
{
    Open();
    Press(AddRuleButton);
    m_windows.DuringNetDisk([this] { WriteConfig(u"DefaultConfig"_s, "<broken"); });
    Press(NetDiskButton);
    EXPECT_EQ(RuleTexts().size(), 3);
}

TEST_F(AutoConfigFiles, LoadWhoseFormerFileCannotBeSavedIsReportedAndLeavesEverythingAsItIsShown)
{
    PrepareRule({u"DN20"_s});
    PrepareBill(3, u"031001001001"_s);
    Open();
    Press(AddRuleButton);
    SelectRule(1);
    EditCell(1, 2, u"新名"_s);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen); // the former file cannot be saved, which raises
    NameFile(LoadFileButton, u"别的"_s);
    ASSERT_EQ(Messages().Texts().size(), 1);
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(Caption(), DefaultCaption);
    EXPECT_EQ(RuleTexts().size(), 4);
    EXPECT_EQ(SelectedRuleRow(), 1);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN20"_s});
    EXPECT_EQ(GridColumn(2), CStringArray{u"新名"_s});
    files.Heal();
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(Rule(3).GetQd(1)->GetRecord().strName, u"新名"_s);
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(RuleTexts().size(), 4);
}

TEST_F(AutoConfigFiles, LoadThatCannotSaveTheFormerFileWithABigCategorySelectedLeavesTheRulesShown)
{
    PrepareRule({u"DN20"_s});
    Open();
    SelectRule(1);
    SelectCategory(u"管道"_s);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    NameFile(LoadFileButton, u"别的"_s);
    EXPECT_EQ(Messages().Texts().size(), 1);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"管径＝DN20;"_s, u"其它"_s}));
    EXPECT_EQ(SelectedRuleRow(), 1);
}

TEST_F(AutoConfigFiles, LoadThatTheHostBreaksOffLeavesTheFormerRulesShownAndTheyAreSaved)
{
    PrepareRule({u"DN20"_s});
    Open();
    SelectRule(1);
    const CStringArray before = Saved();
    host::Roles roles = Host().Roles();
    roles.categories = nullptr; // asked for when the tree is built anew
    LoadUnder(roles, u"DefaultConfig"_s);
    EXPECT_EQ(Messages().Texts().size(), 1);
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"管径＝DN20;"_s, u"其它"_s}));
    EXPECT_EQ(SelectedRuleRow(), 1);
    Close();
    EXPECT_EQ(Saved(), before);
}

TEST_F(AutoConfigFiles, LoadThatFailsWhenTheNewRulesAreInMemoryShowsThem)
{
    Open();
    WithoutProjectFile host;
    host::Roles roles = Host().Roles();
    roles.project = &host; // asked for its file when the name of the configuration is kept
    LoadUnder(roles, u"别的"_s);
    EXPECT_EQ(Messages().Texts(), CStringArray{u"no project"_s});
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN99;"_s, u"其它"_s}));
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN99"_s});
    EXPECT_EQ(Stored().first(), u"2 管径＝DN99;"_s);
}

TEST_F(AutoConfigFiles, CaptionThatCannotBeMadeAfterALoadLeavesTheNewRules)
{
    Open();
    const CStringArray loaded{u"管径＝DN99;"_s, u"其它"_s};
    for (const auto& [button, name, rules] :
         {std::tuple(LoadFileButton, u"别的"_s, loaded),
          std::tuple(NewFileButton, u"新的"_s, CStringArray{u"其它"_s})}) {
        SCOPED_TRACE(name.toStdString());
        WithoutModeAtFirst project(*Host().Roles().project);
        host::Roles roles = Host().Roles();
        roles.project = &project; // asked for its mode when the title is made
        CallUnder(button, roles, name);
        EXPECT_EQ(Messages().Texts().last(), u"no mode"_s);
        EXPECT_EQ(RuleTexts(), rules);
        SelectRule(0); // reads the rule
        EXPECT_EQ(ConditionTexts(), rules.size() == 2 ? CStringArray{u"管径＝DN99"_s} : CStringArray());
    }
}

TEST_F(AutoConfigFiles, NewFileRefusesTheNameOfTheCurrentFile)
{
    Open();
    InNextDialog([](dialogs::TemplateDialog& dialog) {
        test::Type(dialog, 1069, u"DefaultConfig"_s);
        test::Click(dialog, dialogs::IdOk);
        EXPECT_TRUE(dialog.isVisible());
        test::Click(dialog, dialogs::IdCancel);
    });
    Press(NewFileButton);
    ExpectMessage(platform::MessageKind::Warning, u"当前配置文件不能覆盖!"_s);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"其它"_s}));
}

TEST_F(AutoConfigFiles, SavingAsMayOverwriteTheCurrentFile)
{
    Open();
    Press(AddRuleButton);
    Messages().PresetAnswer(platform::Answer::Yes);
    NameFile(SaveAsButton, u"DefaultConfig"_s);
    EXPECT_EQ(Messages().Texts(), (CStringArray{u"是否覆盖已有配置文件?"_s, u"另存成功."_s}));
    EXPECT_EQ(Saved().size(), 3);
    EXPECT_EQ(Caption(), DefaultCaption);
}
