#include "e2e/EditorUser.h"
#include "e2e/ExpectedRule.h"

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;
using namespace test;

namespace {

/// A button that ends the wizard, and what then comes out of the program.
struct End
{
    const char* name;
    ControlId button;
    QByteArray printed;
    int status;
};

class WizardJourney : public EditorTest, public ::testing::WithParamInterface<End>
{
protected:
    WizardJourney() { MakeProject(SQdDeInfo::BillMode); }
};

} // namespace

// Every way out writes the file, the cancelled one, too.
TEST_P(WizardJourney, EveryEndGivesItsResultAndWritesTheFile)
{
    Start({ProjectFolder(), u"--wizard"_s, u"DefaultConfig"_s});
    SelectWaterPipes(WizardTitle);
    AddRangeRule(WizardTitle);
    Click(WizardTitle, GetParam().button);
    EXPECT_EQ(WaitForEnd(), GetParam().status);
    EXPECT_EQ(m_editor.readAllStandardOutput(), GetParam().printed);
    ExpectRuleInFile(BareRule());
}

INSTANTIATE_TEST_SUITE_P(Ends, WizardJourney,
                         ::testing::Values(End{"Next", NextStepButton, "1\n", 0},
                                           End{"Back", PreviousStepButton, "-1\n", 3},
                                           End{"Cancel", CancelStepButton, "0\n", 4}),
                         [](const auto& end) { return end.param.name; });

namespace {

class WizardFromWindow : public EditorTest
{
protected:
    WizardFromWindow() { MakeProject(SQdDeInfo::BillMode); }
};

} // namespace

TEST_F(WizardFromWindow, StartsOnTheSelectedFileAndReturnsToTheWindow)
{
    StartOnProject();
    m_desktop.Press({u"F3"_s});
    m_desktop.Focus(u"启动向导"_s);
    m_desktop.Press({u"Return"_s});
    SelectWaterPipes(WizardTitle);
    AddRangeRule(WizardTitle);
    Click(WizardTitle, NextStepButton);
    m_desktop.WaitUntilGone(WizardTitle);
    Quit();
    ExpectRuleInFile(BareRule());
}
