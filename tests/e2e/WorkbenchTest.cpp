#include "e2e/WorkbenchUser.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace test;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

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

TEST_F(WorkbenchJourney, RuleFromNothingReachesTheBill)
{
    m_desktop.Home().WriteFile(u"table.csv"_s, QByteArray("构件编号,类别,公称直径,水平管长度,立管长度\n"
                                                          "A1,给排水\\管道\\给水管,40,12.5,0\n"
                                                          "A2,给排水\\管道\\给水管,65,3,0\n"));
    StartOnWorkbench();
    m_desktop.Press({u"Insert"_s, u"F4"_s, u"Insert"_s});
    m_desktop.Press({u"alt+Down"_s, u"Home"_s, u"Down"_s, u"Down"_s, u"Return"_s}); // 公称直径
    m_desktop.Press({u"Right"_s, u"Right"_s});
    m_desktop.Type(u"<=50"_s);
    m_desktop.Press({u"Return"_s, u"Tab"_s, u"Insert"_s});
    PickBill(u"031001001"_s);
    WaitForDraft(3);
    m_desktop.Focus(BillPickerTitle);
    m_desktop.Press({u"alt+d"_s});
    WaitForDraft(4);
    CloseBy(u"alt+c"_s, BillPickerTitle);
    SaveRules(ProjectTitle);
    EXPECT_THAT(RulesInFile(), ElementsAre(u"公称直径≤50;"_s, u"其它"_s));

    CommandIn(6, u"ctrl+shift+o"_s, TableTitle); // 构件
    NameFile(TableTitle, m_desktop.Home().Native(u"table.csv"_s));
    CommandIn(7, u"ctrl+shift+e"_s, ExportTitle); // 清单
    NameFile(ExportTitle, m_desktop.Home().Native(u"bill.csv"_s));
    Desktop::WaitFor(u"bill"_s, [this] { return m_desktop.Home().Exists(u"bill.csv"_s); });
    Quit();
    EXPECT_THAT(m_desktop.Home().ReadFile(u"bill.csv"_s).toStdString(),
                AllOf(HasSubstr("1,031001001003,镀锌钢管,1.公称直径：≤50,m,12.50,清单"),
                      HasSubstr("示10-1-1,室内镀锌钢管 螺纹连接 公称直径(mm以内)15,,10m,1.250,定额")));
}

TEST_F(WorkbenchJourney, ConflictWithASecondEditorIsDecidedAndKeepsTheRestOfBoth)
{
    HaveDiameters({u"20"_s, u"25"_s, u"32"_s});
    StartOnWorkbench();
    StartSecond();
    // Each moves the first rule to another place and adds a rule: the second one 公称直径＝15, the first one
    // a rule without conditions.
    m_desktop.Press({u"ctrl+Down"_s, u"ctrl+Down"_s, u"Insert"_s, u"ctrl+l"_s});
    ChooseDiameters(1);
    WaitForDraft(4);
    m_desktop.Focus(ProjectTitle);
    m_desktop.Press({u"ctrl+Down"_s, u"Insert"_s});
    WaitForDraft(6);
    SaveRules(ProjectTitle);
    EXPECT_THAT(RulesInFile(),
                ElementsAre(u"公称直径＝25;"_s, u"公称直径＝20;"_s, u""_s, u"公称直径＝32;"_s, u"其它"_s));

    PressUntil(SecondTitle, u"ctrl+s"_s, MergeTitle, [this] { return m_desktop.Shows(MergeTitle); });
    DecideForOwn();
    QuitSecond();
    Quit();
    EXPECT_THAT(RulesInFile(), ElementsAre(u"公称直径＝25;"_s, u""_s, u"公称直径＝32;"_s, u"公称直径＝20;"_s,
                                           u"公称直径＝15;"_s, u"其它"_s));
}

TEST_F(WorkbenchJourney, BillItemThatIsFoundIsReplacedInAllRules)
{
    HaveDiameters({u"15"_s, u"20"_s, u"25"_s}, u"031001001001"_s);
    StartOnWorkbench();
    m_desktop.Press({u"ctrl+f"_s});
    m_desktop.Type(u"031001001"_s);
    m_desktop.Press({u"Down"_s, u"ctrl+a"_s, u"F4"_s, u"Tab"_s, u"ctrl+Return"_s});
    PickBill(u"031001005"_s);
    WaitForDraft(1);
    CloseBy(u"alt+c"_s, BillPickerTitle);
    SaveRules(ProjectTitle);
    Quit();
    EXPECT_THAT(BillsInFile(), ElementsAre(u"031001005001"_s, u"031001005001"_s, u"031001005001"_s));
}

TEST_F(WorkbenchJourney, SeriesOfTenDiametersReachesTheFileInOrder)
{
    StartOnWorkbench();
    m_desktop.Press({u"Insert"_s, u"ctrl+l"_s});
    ChooseDiameters(10);
    SaveRules(ProjectTitle);
    Quit();
    EXPECT_THAT(RulesInFile(),
                ElementsAre(u"公称直径＝15;"_s, u"公称直径＝20;"_s, u"公称直径＝25;"_s, u"公称直径＝32;"_s,
                            u"公称直径＝40;"_s, u"公称直径＝50;"_s, u"公称直径＝65;"_s, u"公称直径＝80;"_s,
                            u"公称直径＝100;"_s, u"公称直径＝125;"_s, u"其它"_s));
}
