#include "dialogs/OnlineAutoConfigFixture.h"

#include "support/FaultyFileSystem.h"

#include <QtCore/QTimer>

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
    void ExpectOpenWithTheEdit(int stepResult)
    {
        EXPECT_TRUE(m_wizard->isVisible());
        EXPECT_EQ(m_wizard->StepResult(), stepResult);
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

TEST_F(OnlineAutoConfigSteps, CancelHidesThePicker)
{
    Click(PickerButton);
    Click(CancelStepButton);
    EXPECT_FALSE(m_windows.Bill().IsVisible());
    EXPECT_TRUE(m_windows.Bill().IsCreated());
}

TEST_F(OnlineAutoConfigSteps, NextThatCannotSaveLeavesTheDialogOpenWithTheResultSet)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    Click(NextStepButton);
    ExpectOpenWithTheEdit(1);
    files.Heal();
    Click(NextStepButton);
    ExpectEnded(dialogs::IdOk, 1);
}

TEST_F(OnlineAutoConfigSteps, BackThatCannotSaveLeavesTheDialogOpenWithTheResultSet)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    Click(PreviousStepButton);
    ExpectOpenWithTheEdit(-1);
    files.Heal();
    Click(PreviousStepButton);
    ExpectEnded(dialogs::IdOk, -1);
}

TEST_F(OnlineAutoConfigSteps, CancelThatCannotSaveLeavesTheDialogOpenWithZero)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    Click(CancelStepButton);
    ExpectOpenWithTheEdit(0);
    files.Heal();
    Click(CancelStepButton);
    ExpectEnded(dialogs::IdCancel, 0);
}

TEST_F(OnlineAutoConfigSteps, CloseBoxThatCannotSaveLeavesTheDialogOpenWithZero)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    m_wizard->close();
    ExpectOpenWithTheEdit(0);
    files.Heal();
    m_wizard->close();
    ExpectEnded(dialogs::IdCancel, 0);
}

TEST_F(OnlineAutoConfigSteps, EscapeThatCannotSaveLeavesTheDialogOpenWithZero)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::NoRoom);
    EndEditAndStrikeEscape();
    ExpectOpenWithTheEdit(0);
    files.Heal();
    Strike(Qt::Key_Escape);
    ExpectEnded(dialogs::IdCancel, 0);
}

// The steps set the result before they save, and nothing but a step sets it again: a host that reads 1 here
// goes on to its next step although the user has closed the dialog. The edits are in the file in any case.
TEST_F(OnlineAutoConfigSteps, EscapeAndCloseBoxAfterAFailedStepKeepTheStepsResult)
{
    for (const bool byEscape : {true, false}) {
        test::Open(*m_wizard);
        EditName(NewName);
        test::FaultyFileSystem files;
        files.Inject(test::Fault::RefuseOpen);
        Click(NextStepButton);
        ExpectOpenWithTheEdit(1);
        files.Heal();
        if (byEscape)
            Strike(Qt::Key_Escape);
        else
            m_wizard->close();
        ExpectEnded(dialogs::IdCancel, 1);
    }
}

TEST_F(OnlineAutoConfigSteps, CancelAfterAFailedStepTakesItsResultBack)
{
    EditName(NewName);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    Click(NextStepButton);
    ExpectOpenWithTheEdit(1);
    files.Heal();
    Click(CancelStepButton);
    ExpectEnded(dialogs::IdCancel, 0);
}

TEST_F(OnlineAutoConfigSteps, ModalRunEndsAsTheOkStepDoes)
{
    m_wizard->hide();
    QTimer::singleShot(0, m_wizard.get(), [this] { Click(NextStepButton); });
    EXPECT_EQ(m_wizard->DoModal(), dialogs::IdOk);
}
