#include "dialogs/secondary/wizard/OnlineAutoConfigFixture.h"

#include "support/FaultyFileSystem.h"

#include <QtCore/QTimer>

#include <utility>

using namespace test::autoconfig;

// The ways out of the wizard form.

namespace {

/// Longer than the former name, so that the file needs more room.
const CString NewName = u"一个比原来长得多的新名字，文件因此要在磁盘上占更多的地方"_s;

/// The wizard form on a rule with a bill item.
class OnlineAutoConfigSteps : public OnlineAutoConfigTest
{
protected:
    OnlineAutoConfigSteps() { OpenOnABill(); }
    void ExpectEnded(int modalResult, int stepResult)
    {
        EXPECT_FALSE(m_wizard->isVisible());
        EXPECT_EQ(m_wizard->result(), modalResult);
        EXPECT_EQ(m_wizard->StepResult(), stepResult);
        EXPECT_EQ(SavedName(), NewName);
        EXPECT_EQ(Messages().Texts(), CStringArray());
    }
    void ExpectOpenWithTheEdit()
    {
        EXPECT_TRUE(m_wizard->isVisible());
        EXPECT_EQ(m_wizard->StepResult(), 0);
        EXPECT_EQ(ShownName(), NewName);
        ASSERT_EQ(Messages().Texts().size(), 1);
        EXPECT_TRUE(Messages().Texts().first().contains(u"DefaultConfig.xml"_s));
        Messages().Clear();
    }
};

/// A way out of the wizard form and what it gives.
struct WayOut
{
    const char* name;
    int modalResult;
    int stepResult;
    void (*leave)(COnlineAutoConfigDlg&); ///< null for Escape, which ends an edit before it leaves
};

void PrintTo(const WayOut& way, std::ostream* out)
{
    *out << way.name;
}

class OnlineAutoConfigWaysOut : public OnlineAutoConfigSteps, public testing::WithParamInterface<WayOut>
{
protected:
    /// Leaves while the name is being edited.
    void Leave()
    {
        if (GetParam().leave == nullptr) Strike(Qt::Key_Return);
        LeaveAgain();
    }
    void LeaveAgain()
    {
        if (GetParam().leave == nullptr)
            Strike(Qt::Key_Escape);
        else
            GetParam().leave(*m_wizard);
    }
    /// Leaves in vain first, since the edit cannot be saved.
    void LeaveAfter(test::Fault fault)
    {
        EditName(NewName);
        test::FaultyFileSystem files;
        files.Inject(fault);
        Leave();
        ExpectOpenWithTheEdit();
        files.Heal();
        LeaveAgain();
        ExpectEnded(GetParam().modalResult, GetParam().stepResult);
    }
};

} // namespace

TEST_F(OnlineAutoConfigSteps, ResultStartsAtZero)
{
    EXPECT_EQ(m_wizard->StepResult(), 0);
}

TEST_P(OnlineAutoConfigWaysOut, GivesItsResultAndSavesAnOpenEdit)
{
    EditName(NewName);
    Leave();
    ExpectEnded(GetParam().modalResult, GetParam().stepResult);
}

TEST_P(OnlineAutoConfigWaysOut, ThatFindsNoRoomLeavesTheDialogOpenWithoutAResult)
{
    LeaveAfter(test::Fault::NoRoom);
}

TEST_P(OnlineAutoConfigWaysOut, ThatMayNotWriteLeavesTheDialogOpenWithoutAResult)
{
    LeaveAfter(test::Fault::RefuseOpen);
}

// A host that read 1 here would go on to its next step although the user has left by another way.
TEST_P(OnlineAutoConfigWaysOut, GivesItsOwnResultAfterAStepThatCouldNotSave)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    Click(NextStepButton);
    ExpectOpenWithTheEdit();
    files.Heal();
    LeaveAgain();
    ExpectEnded(GetParam().modalResult, GetParam().stepResult);
}

INSTANTIATE_TEST_SUITE_P(
    Each, OnlineAutoConfigWaysOut,
    testing::Values(
        WayOut{"Next", dialogs::IdOk, 1, [](auto& wizard) { test::Click(wizard, NextStepButton); }},
        WayOut{"Back", dialogs::IdOk, -1, [](auto& wizard) { test::Click(wizard, PreviousStepButton); }},
        WayOut{"Cancel", dialogs::IdCancel, 0, [](auto& wizard) { test::Click(wizard, CancelStepButton); }},
        WayOut{"CloseBox", dialogs::IdCancel, 0, [](auto& wizard) { wizard.close(); }},
        WayOut{"Escape", dialogs::IdCancel, 0, nullptr}),
    [](const auto& way) { return std::string(way.param.name); });

TEST_F(OnlineAutoConfigSteps, EveryStepSavesOnceAndTheCloseBoxTwice)
{
    test::FaultyFileSystem files;
    Click(AddRuleButton);
    Click(NextStepButton);
    const int once = files.WritePoints();
    EXPECT_GT(once, 0);
    int expected = once;
    for (const ControlId step : {PreviousStepButton, CancelStepButton}) {
        test::Open(*m_wizard);
        Click(AddRuleButton);
        Click(step);
        EXPECT_EQ(files.WritePoints(), expected += once) << step;
    }
    test::Open(*m_wizard);
    Click(AddRuleButton);
    m_wizard->close();
    EXPECT_EQ(files.WritePoints(), expected + 2 * once);
}

TEST_F(OnlineAutoConfigSteps, StepsLeaveThePickerToEndWithTheDialog)
{
    for (const ControlId step : {NextStepButton, PreviousStepButton}) {
        test::Open(*m_wizard);
        Click(PickerButton);
        Click(step);
        EXPECT_TRUE(m_windows.Bill().IsVisible()) << step;
        m_windows.Bill().Close();
    }
    test::Open(*m_wizard);
    Click(PickerButton);
    Click(NextStepButton);
    m_wizard.reset();
    EXPECT_FALSE(m_windows.Bill().IsVisible());
    EXPECT_FALSE(m_windows.Bill().IsCreated());
}

TEST_F(OnlineAutoConfigSteps, StepsLeaveTheQuotaPickerToEndWithTheDialogAndCancelHidesIt)
{
    SetMode(SQdDeInfo::QuotaMode);
    OpenWizard();
    for (const ControlId step : {NextStepButton, PreviousStepButton, CancelStepButton}) {
        test::Open(*m_wizard);
        Click(PickerButton);
        ASSERT_TRUE(m_windows.Quota().IsVisible()) << step;
        Click(step);
        EXPECT_EQ(m_windows.Quota().IsVisible(), step != CancelStepButton) << step;
        m_windows.Quota().Close();
    }
    test::Open(*m_wizard);
    Click(PickerButton);
    Click(PreviousStepButton);
    m_wizard.reset();
    EXPECT_FALSE(m_windows.Quota().IsVisible());
    EXPECT_FALSE(m_windows.Quota().IsCreated());
}

TEST_F(OnlineAutoConfigSteps, CancelHidesThePicker)
{
    Click(PickerButton);
    Click(CancelStepButton);
    EXPECT_FALSE(m_windows.Bill().IsVisible());
    EXPECT_TRUE(m_windows.Bill().IsCreated());
}

// Such a file cannot be saved, which no step looks at: the dialog ends without a word and the file stays.
TEST_F(OnlineAutoConfigSteps, FileOfAnotherKindIsLeftAloneAndTheStepsGiveTheirResults)
{
    const QByteArray other = "<other/>";
    m_guard.Folder().WriteFile(u"app\\自动套配置\\别类.xml"_s, other);
    WizardArguments arguments;
    arguments.configFile = FilePath(u"别类"_s);
    for (const auto& [step, result] : {std::pair(NextStepButton, 1), std::pair(PreviousStepButton, -1)}) {
        OpenWizard(arguments);
        Messages().Clear(); // the dialog's word about the category that it cannot show
        Click(step);
        EXPECT_FALSE(m_wizard->isVisible());
        EXPECT_EQ(m_wizard->result(), dialogs::IdOk);
        EXPECT_EQ(m_wizard->StepResult(), result);
        EXPECT_EQ(Messages().Texts(), CStringArray());
        EXPECT_EQ(m_guard.Folder().ReadFile(u"app\\自动套配置\\别类.xml"_s), other);
    }
}

TEST_F(OnlineAutoConfigSteps, ModalRunEndsAsTheOkStepDoes)
{
    m_wizard->hide();
    QTimer::singleShot(0, m_wizard.get(), [this] { Click(NextStepButton); });
    EXPECT_EQ(m_wizard->DoModal(), dialogs::IdOk);
}
