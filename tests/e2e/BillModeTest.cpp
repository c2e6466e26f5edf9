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

    void OpenBillPicker()
    {
        SelectWaterPipes(ConfigTitle);
        AddRangeRule(ConfigTitle);
        Click(ConfigTitle, dialogs::autoconfig::PickerButton);
        m_desktop.Focus(BillPickerTitle);
    }
    void CloseBillPicker()
    {
        CloseBy(u"alt+c"_s, BillPickerTitle);
        m_desktop.Focus(ConfigTitle);
    }
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

TEST_F(BillModeJourney, DialogStandsInTheMiddleOfTheMainWindow)
{
    StartOnProject();
    // Their frames differ: only a window that can be resized has a border to grip at below.
    OpenConfig();
    // The window manager shows the dialog first and then moves it.
    Desktop::WaitFor(u"the dialog in the middle"_s, [this] {
        const QRect outer = m_desktop.FrameGeometry(ProjectTitle);
        const QRect own = m_desktop.FrameGeometry(ConfigTitle);
        return own.topLeft() == QPoint(outer.width() / 2 - own.width() / 2 + outer.x(),
                                       outer.height() / 2 - own.height() / 2 + outer.y());
    });
    CloseConfig();
    Quit();
}

TEST_F(BillModeJourney, DialogMakesWayForThePickerSoThatNothingIsCovered)
{
    StartOnProject();
    OpenConfig();
    const int before = m_desktop.FrameGeometry(ConfigTitle).x();
    OpenBillPicker();
    Desktop::WaitFor(u"the picker beside the dialog"_s, [&] {
        const QRect dialog = m_desktop.FrameGeometry(ConfigTitle);
        return dialog.x() < before && !dialog.intersects(m_desktop.FrameGeometry(BillPickerTitle));
    });
    CloseBillPicker();
    CloseConfig();
    Quit();
}

TEST_F(BillModeJourney, PickerStandsAtTheRightWithItsTitleInLineWithTheDialog)
{
    StartOnProject();
    OpenConfig();
    OpenBillPicker();
    // The window manager shows the picker first and then moves it.
    Desktop::WaitFor(u"the picker beside the dialog"_s, [this] {
        const QRect dialog = m_desktop.Geometry(ConfigTitle);
        const QRect picker = m_desktop.Geometry(BillPickerTitle);
        return picker.y() == dialog.y() && picker.x() >= dialog.x() + dialog.width();
    });
    CloseBillPicker();
    CloseConfig();
    Quit();
}

// A busy window manager tells of a frame when the window has long been where it stays. The one of this
// desktop may do so, too, behind the test's back; the frame is then told and the picker called anew.
TEST_F(BillModeJourney, PickerStandsBesideTheFrameThatTheDialogGotLast)
{
    StartOnProject();
    OpenConfig();
    const QMargins frame(1, 33, 1, 5);
    const auto toldFrame = [&] { return m_desktop.Geometry(ConfigTitle).marginsAdded(frame); };
    m_desktop.TellFrame(ConfigTitle, frame);
    OpenBillPicker();
    Desktop::WaitFor(u"the picker beside the frame"_s, [&] {
        const QRect dialog = toldFrame();
        const QRect picker = m_desktop.FrameGeometry(BillPickerTitle);
        if (picker.x() > dialog.right() && picker.y() == dialog.y()) return true;
        if (m_desktop.FrameGeometry(ConfigTitle) != dialog) {
            CloseBillPicker();
            m_desktop.TellFrame(ConfigTitle, frame);
            Click(ConfigTitle, dialogs::autoconfig::PickerButton);
            m_desktop.Focus(BillPickerTitle);
        }
        return false;
    });
    CloseBillPicker();
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
