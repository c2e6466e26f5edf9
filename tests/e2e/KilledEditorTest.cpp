#include "e2e/EditorUser.h"
#include "e2e/ExpectedRule.h"

using namespace Qt::StringLiterals;
using namespace test;

namespace {

class KilledEditor : public EditorTest
{
protected:
    KilledEditor() { MakeProject(SQdDeInfo::BillMode); }
};

} // namespace

TEST_F(KilledEditor, LosesOnlyWhatWasNotSavedAndWorksAgain)
{
    StartOnProject();
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    PickBillWithQuota(ConfigTitle, u"031001001"_s);
    m_editor.kill();
    EXPECT_EQ(WaitForEnd(), -1);
    EXPECT_EQ(RuleFile(), m_firstRuleFile);

    Start({}); // the last project is opened
    m_desktop.Focus(u"project - KtQdDeConfig"_s);
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    m_desktop.Press({u"Escape"_s});
    m_desktop.WaitUntilGone(ConfigTitle);
    Quit();
    ExpectRuleInFile(BareRule());
}
