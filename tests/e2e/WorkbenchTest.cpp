#include "e2e/WorkbenchUser.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace test;
using ::testing::ElementsAre;

namespace {

class WorkbenchJourney : public WorkbenchTest
{
protected:
    WorkbenchJourney() { MakeProject(SQdDeInfo::BillMode); }
};

} // namespace

TEST_F(WorkbenchJourney, KillBetweenEditAndSaveLosesNothing)
{
    StartOnWorkbench();
    m_desktop.Press({u"Insert"_s});
    WaitForDraft(1);
    m_editor.kill();
    EXPECT_EQ(WaitForEnd(), -1);
    EXPECT_EQ(RuleFile(), m_firstRuleFile);

    Start({}); // the last project is opened
    Desktop::WaitFor(u"project"_s, [this] { return m_desktop.Shows(ProjectTitle); });
    m_desktop.Focus(OwnBoxTitle);
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(OwnBoxTitle);
    SaveRules(ProjectTitle);
    Quit();
    EXPECT_THAT(RulesInFile(), ElementsAre(u""_s, u"其它"_s));
    EXPECT_EQ(CountDraftEdits(), 0);
}

TEST_F(WorkbenchJourney, SeriesOfTenDiametersReachesTheFileInOrder)
{
    StartOnWorkbench();
    m_desktop.Press({u"Insert"_s, u"ctrl+l"_s});
    m_desktop.Focus(SeriesTitle);
    m_desktop.Press({u"alt+a"_s, u"Home"_s, u"Down"_s, u"Down"_s}); // 公称直径
    KeepFirstValues(10);
    m_desktop.Press({u"Return"_s});
    m_desktop.WaitUntilGone(SeriesTitle);
    SaveRules(ProjectTitle);
    Quit();
    EXPECT_THAT(RulesInFile(),
                ElementsAre(u"公称直径＝15;"_s, u"公称直径＝20;"_s, u"公称直径＝25;"_s, u"公称直径＝32;"_s,
                            u"公称直径＝40;"_s, u"公称直径＝50;"_s, u"公称直径＝65;"_s, u"公称直径＝80;"_s,
                            u"公称直径＝100;"_s, u"公称直径＝125;"_s, u"其它"_s));
}
