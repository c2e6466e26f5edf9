#include "e2e/ExpectedRule.h"
#include "e2e/ModeJourney.h"

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;
using namespace test;

namespace {

class FileCommands : public ModeJourney
{
protected:
    /// Starts the program and adds a rule to the first file, not saved yet.
    void BeginWork()
    {
        StartOnProject();
        OpenConfig();
        SelectWaterPipes(ConfigTitle);
        AddRangeRule(ConfigTitle);
    }

    /// Adds a rule with items to the file that the dialog is on by now, closes the dialog, and opens it once
    /// more to see that the project stays on that file.
    void EndWorkOn(const QString& configuration)
    {
        AddRangeRule(ConfigTitle);
        PickItems(ConfigTitle);
        CloseConfig();
        Command(u"F2"_s, TitleOn(configuration));
        CloseConfig();
        Quit();
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(In, FileCommands, Modes(), NameOfMode);

TEST_P(FileCommands, CallingAFileSavesTheFormerOneAndGoesOnInTheOther)
{
    const QByteArray other = MakeOtherFile();
    BeginWork();
    CallFile(u"Other"_s);
    ExpectRuleInFile(BareRule());
    EndWorkOn(u"Other"_s);
    ExpectRuleInFile(BareRule());
    ExpectSameXml(RuleFile(u"Other"_s), WithRule(other, ItemRule()));
    ExpectGivenBack(u"Other"_s, other);
}

// The click into the list is held up, and the keys must not go before it.
TEST_P(FileCommands, FileIsCalledWhileTheWindowManagerIsBusy)
{
    MakeOtherFile();
    StartOnProject();
    OpenConfig();
    Click(ConfigTitle, LoadFileButton);
    m_desktop.Focus(u"调用"_s);
    m_desktop.KeepManagerBusy();
    ChooseFile(u"Other"_s);
    CloseConfig();
    Quit();
}

TEST_P(FileCommands, NewFileStartsFromTheTemplateAndSavesTheFormerOne)
{
    const QByteArray ownTemplate = WithNote(m_firstRuleFile, "of the house");
    m_desktop.Home().WriteFile(u"project\\app\\QdDeConfig.def"_s, ownTemplate);
    BeginWork();
    NewFile(u"Fresh"_s);
    EndWorkOn(u"Fresh"_s);
    ExpectRuleInFile(BareRule());
    ExpectSameXml(RuleFile(u"Fresh"_s), WithRule(ownTemplate, ItemRule()));
}

TEST_P(FileCommands, SavingUnderAnotherNameStaysOnTheFormerFile)
{
    BeginWork();
    SaveAs(u"Copy"_s);
    ConfirmBox();
    EXPECT_EQ(RuleFile(), m_firstRuleFile);
    m_desktop.Focus(TitleOn(u"DefaultConfig"_s));
    PickItems(ConfigTitle);
    CloseConfig();
    Quit();
    ExpectRuleInFile(ItemRule());
    ExpectSameXml(RuleFile(u"Copy"_s), WithRule(m_firstRuleFile, BareRule()));
}

TEST_P(FileCommands, SavingOverAFileSparesItUnlessTheUserInsists)
{
    const QByteArray other = MakeOtherFile();
    BeginWork();
    SaveAs(u"Other"_s);
    ConfirmBox(); // its default is no
    m_desktop.Focus(u"另存"_s);
    EXPECT_EQ(RuleFile(u"Other"_s), other);
    m_desktop.Press({u"Return"_s});
    m_desktop.Focus(BoxTitle);
    m_desktop.Press({u"alt+y"_s});
    m_desktop.WaitUntilGone(u"另存"_s);
    ConfirmBox();
    m_desktop.Focus(ConfigTitle);
    CloseConfig();
    Quit();
    ExpectSameXml(RuleFile(u"Other"_s), WithRule(m_firstRuleFile, BareRule()));
    ExpectGivenBack(u"Other"_s, other);
}

TEST_P(FileCommands, TemplateFromTheCloudDiskBecomesTheCurrentFile)
{
    const QByteArray shared = WithNote(m_firstRuleFile, "of all offices");
    const TempFolder& home = m_desktop.Home();
    home.MakeFolder(u"project\\云盘\\自动套模板"_s);
    home.WriteFile(u"project\\云盘\\自动套模板\\Shared.xml"_s, shared);
    BeginWork();
    Click(ConfigTitle, NetDiskButton);
    m_desktop.Focus(CloudTitle);
    m_desktop.Press({u"alt+i"_s});
    CloseBy(u"alt+c"_s, CloudTitle);
    m_desktop.Focus(TitleOn(u"Shared"_s));
    EndWorkOn(u"Shared"_s);
    ExpectRuleInFile(BareRule());
    ExpectSameXml(RuleFile(u"Shared"_s), WithRule(shared, ItemRule()));
    EXPECT_EQ(home.ReadFile(u"project\\云盘\\自动套模板\\Shared.xml"_s), shared);
}
