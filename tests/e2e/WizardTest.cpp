#include "e2e/ExpectedRule.h"
#include "e2e/ModeJourney.h"

#include <optional>
#include <ostream>

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;
using namespace test;

namespace {

/// A way out of the wizard, and what then comes out of the program.
struct WizardEnd
{
    const char* name;
    std::optional<ControlId> button; ///< none is the close box
    QByteArray printed;
    int status;
};

void PrintTo(const WizardEnd& end, std::ostream* out)
{
    *out << end.name;
}

class WizardEnds : public EditorTest, public ::testing::WithParamInterface<WizardEnd>
{
protected:
    WizardEnds() { MakeProject(SQdDeInfo::BillMode); }

    void Leave()
    {
        if (GetParam().button)
            Click(WizardTitle, *GetParam().button);
        else
            m_desktop.Press({u"alt+F4"_s});
    }
};

using WizardModes = ModeJourney;

class WizardFromWindow : public EditorTest
{
protected:
    WizardFromWindow() { MakeProject(SQdDeInfo::BillMode); }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Way, WizardEnds,
                         ::testing::Values(WizardEnd{"Next", NextStepButton, "1\n", 0},
                                           WizardEnd{"Back", PreviousStepButton, "-1\n", 3},
                                           WizardEnd{"Cancel", CancelStepButton, "0\n", 4},
                                           WizardEnd{"CloseBox", {}, "0\n", 4}),
                         [](const auto& end) { return end.param.name; });

INSTANTIATE_TEST_SUITE_P(In, WizardModes, Modes(), NameOfMode);

// Every way out writes the file, the cancelled ones, too.
TEST_P(WizardEnds, GiveTheirResultAndWriteTheFile)
{
    Start({ProjectFolder(), u"--wizard"_s, u"DefaultConfig"_s});
    SelectWaterPipes(WizardTitle);
    AddRangeRule(WizardTitle);
    Leave();
    EXPECT_EQ(WaitForEnd(), GetParam().status);
    EXPECT_EQ(m_editor.readAllStandardOutput(), GetParam().printed);
    ExpectRuleInFile(BareRule());
}

TEST_P(WizardModes, WriteTheNamedFileAndLeaveTheProjectOnItsOwn)
{
    const QByteArray other = MakeOtherFile();
    Start({ProjectFolder(), u"--wizard"_s, u"Other"_s});
    SelectWaterPipes(WizardTitle);
    AddRangeRule(WizardTitle);
    PickItems(WizardTitle);
    Click(WizardTitle, NextStepButton);
    EXPECT_EQ(WaitForEnd(), 0);
    ExpectSameXml(RuleFile(u"Other"_s), WithRule(other, ItemRule()));
    EXPECT_EQ(RuleFile(), m_firstRuleFile);

    StartOnProject();
    Command(u"F2"_s, TitleOn(u"DefaultConfig"_s));
    CloseConfig();
    Quit();
}

TEST_F(WizardFromWindow, StartsOnTheSelectedFileAndReturnsToTheWindow)
{
    StartOnProject();
    Command(u"F3"_s, u"启动向导"_s);
    m_desktop.Press({u"Return"_s});
    SelectWaterPipes(WizardTitle);
    AddRangeRule(WizardTitle);
    Click(WizardTitle, NextStepButton);
    m_desktop.WaitUntilGone(WizardTitle);
    Quit();
    ExpectRuleInFile(BareRule());
}
