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
    void EndEditAndStrikeEscape()
    {
        Strike(Qt::Key_Return);
        Strike(Qt::Key_Escape);
    }
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

} // namespace

TEST_F(OnlineAutoConfigSteps, ResultStartsAtZero)
{
    EXPECT_EQ(m_wizard->StepResult(), 0);
}

TEST_F(OnlineAutoConfigSteps, NextGivesOneAndSavesAnOpenEdit)
{
    EditName(NewName);
    Click(NextStepButton);
    ExpectEnded(dialogs::IdOk, 1);
}

TEST_F(OnlineAutoConfigSteps, BackGivesMinusOneAndSavesAnOpenEdit)
{
    EditName(NewName);
    Click(PreviousStepButton);
    ExpectEnded(dialogs::IdOk, -1);
}

TEST_F(OnlineAutoConfigSteps, CancelGivesZeroAndSavesAnOpenEditNevertheless)
{
    EditName(NewName);
    Click(CancelStepButton);
    ExpectEnded(dialogs::IdCancel, 0);
}

TEST_F(OnlineAutoConfigSteps, CloseBoxGivesZeroAndSavesAnOpenEdit)
{
    EditName(NewName);
    m_wizard->close();
    ExpectEnded(dialogs::IdCancel, 0);
}

TEST_F(OnlineAutoConfigSteps, EscapeGivesZeroAndSaves)
{
    EditName(NewName);
    EndEditAndStrikeEscape();
    ExpectEnded(dialogs::IdCancel, 0);
}

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

TEST_F(OnlineAutoConfigSteps, NextThatCannotSaveLeavesTheDialogOpenWithoutAResult)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    Click(NextStepButton);
    ExpectOpenWithTheEdit();
    files.Heal();
    Click(NextStepButton);
    ExpectEnded(dialogs::IdOk, 1);
}

TEST_F(OnlineAutoConfigSteps, BackThatCannotSaveLeavesTheDialogOpenWithoutAResult)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    Click(PreviousStepButton);
    ExpectOpenWithTheEdit();
    files.Heal();
    Click(PreviousStepButton);
    ExpectEnded(dialogs::IdOk, -1);
}

TEST_F(OnlineAutoConfigSteps, CancelThatCannotSaveLeavesTheDialogOpenWithoutAResult)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    Click(CancelStepButton);
    ExpectOpenWithTheEdit();
    files.Heal();
    Click(CancelStepButton);
    ExpectEnded(dialogs::IdCancel, 0);
}

TEST_F(OnlineAutoConfigSteps, CloseBoxThatCannotSaveLeavesTheDialogOpenWithoutAResult)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    m_wizard->close();
    ExpectOpenWithTheEdit();
    files.Heal();
    m_wizard->close();
    ExpectEnded(dialogs::IdCancel, 0);
}

TEST_F(OnlineAutoConfigSteps, EscapeThatCannotSaveLeavesTheDialogOpenWithoutAResult)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    EndEditAndStrikeEscape();
    ExpectOpenWithTheEdit();
    files.Heal();
    Strike(Qt::Key_Escape);
    ExpectEnded(dialogs::IdCancel, 0);
}

// A host that read 1 here would go on to its next step although the user has closed the dialog.
TEST_F(OnlineAutoConfigSteps, EscapeAndCloseBoxAfterAFailedStepGiveZero)
{
    for (const bool byEscape : {true, false}) {
        test::Open(*m_wizard);
        EditName(NewName);
        test::FaultyFileSystem files;
        files.Inject(test::Fault::RefuseOpen);
        Click(NextStepButton);
        ExpectOpenWithTheEdit();
        files.Heal();
        if (byEscape)
            Strike(Qt::Key_Escape);
        else
            m_wizard->close();
        ExpectEnded(dialogs::IdCancel, 0);
    }
}

TEST_F(OnlineAutoConfigSteps, CancelAfterAFailedStepGivesZero)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    Click(NextStepButton);
    ExpectOpenWithTheEdit();
    files.Heal();
    Click(CancelStepButton);
    ExpectEnded(dialogs::IdCancel, 0);
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
