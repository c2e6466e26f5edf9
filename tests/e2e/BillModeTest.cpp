#include "e2e/EditorUser.h"
#include "e2e/ExpectedRule.h"
#include "support/StrictXml.h"

using namespace Qt::StringLiterals;
using namespace test;

namespace {

class BillModeJourney : public EditorTest
{
protected:
    BillModeJourney() { MakeProject(SQdDeInfo::BillMode); }
};

} // namespace

TEST_F(BillModeJourney, RuleWithRangeBillAndQuotaReachesTheFile)
{
    StartOnProject();
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    PickBillWithQuota(ConfigTitle, u"031001001"_s);
    CloseConfig();
    Quit();
    ExpectRuleInFile(BillRule());
}

TEST_F(BillModeJourney, PickerStandsAtTheRightWithItsTitleInLineWithTheDialog)
{
    StartOnProject();
    OpenConfig();
    SelectWaterPipes(ConfigTitle);
    AddRangeRule(ConfigTitle);
    Click(ConfigTitle, dialogs::autoconfig::PickerButton);
    m_desktop.Focus(BillPickerTitle);
    // The window manager shows the picker first and then moves it.
    Desktop::WaitFor(u"the picker beside the dialog"_s, [this] {
        const QRect dialog = m_desktop.Geometry(ConfigTitle);
        const QRect picker = m_desktop.Geometry(BillPickerTitle);
        return picker.y() == dialog.y() && picker.x() >= dialog.x() + dialog.width();
    });
    m_desktop.Press({u"alt+c"_s});
    m_desktop.WaitUntilGone(BillPickerTitle);
    m_desktop.Focus(ConfigTitle);
    CloseConfig();
    Quit();
}

TEST_F(BillModeJourney, ClosingWithoutAnEditLeavesTheFileAsItWas)
{
    StartOnProject();
    OpenConfig();
    CloseConfig();
    Quit();
    EXPECT_EQ(RuleFile(), m_firstRuleFile);
}

TEST_F(BillModeJourney, UnreadableFileIsReportedAndKeptUnlessTheUserInsists)
{
    const QByteArray damaged = "<rules>\n  <broken\n";
    m_desktop.Home().WriteFile(RuleFileName(), damaged);
    StartOnProject();
    Command(u"F2"_s, OwnBoxTitle);
    m_desktop.Press({u"Escape"_s});
    m_desktop.WaitUntilGone(OwnBoxTitle);
    Quit();
    EXPECT_EQ(RuleFile(), damaged);

    StartOnProject();
    Command(u"F2"_s, OwnBoxTitle);
    m_desktop.Press({u"alt+o"_s});
    m_desktop.Focus(ConfigTitle);
    CloseConfig();
    Quit();
    EXPECT_EQ(CanonicalXml(RuleFile()), CanonicalXml(m_firstRuleFile));
}
