#include "e2e/EditorUser.h"
#include "e2e/ExpectedRule.h"

using namespace Qt::StringLiterals;
using namespace test;

namespace {

class KilledEditor : public EditorTest
{
protected:
    KilledEditor() { MakeProject(SQdDeInfo::BillMode); }

    void Kill()
    {
        m_editor.kill();
        EXPECT_EQ(WaitForEnd(), -1);
    }
};

} // namespace

TEST_F(KilledEditor, LosesOnlyWhatWasNotSavedAndWorksAgain)
{
    StartOnProject();
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    PickBillWithQuota(ConfigTitle, u"031001001"_s);
    Kill();
    EXPECT_EQ(RuleFile(), m_firstRuleFile);

    Start({}); // the last project is opened
    m_desktop.Focus(ProjectTitle);
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    CloseConfig();
    Quit();
    ExpectRuleInFile(BareRule());
}

TEST_F(KilledEditor, AfterCallingAFileKeepsTheFormerOneSavedAndTheOtherUntouched)
{
    const QByteArray other = MakeOtherFile();
    StartOnProject();
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    CallFile(u"Other"_s);
    AddRangeRule(ConfigTitle);
    PickBillWithQuota(ConfigTitle, u"031001001"_s);
    Kill();
    ExpectRuleInFile(BareRule());
    EXPECT_EQ(RuleFile(u"Other"_s), other);
    ExpectGivenBack(u"DefaultConfig"_s, m_firstRuleFile);

    Start({}); // the last project is opened, on the file that was called
    m_desktop.Focus(ProjectTitle);
    OpenConfig();
    m_desktop.Focus(TitleOn(u"Other"_s));
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    CloseConfig();
    Quit();
    ExpectSameXml(RuleFile(u"Other"_s), WithRule(other, BareRule()));
    ExpectGivenBack(u"Other"_s, other);
}
