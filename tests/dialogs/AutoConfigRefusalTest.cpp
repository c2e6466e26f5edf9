#include "dialogs/AutoConfigFixture.h"

#include "support/FaultyFileSystem.h"

#include <QtTest/QTest>

#include <vector>

using namespace test::autoconfig;

// What the dialog does when the store or the host refuses an operation or raises.

namespace {

/// The dialog on 给水管 with the rules 2 and 3 (conditions DN15 and DN20), each with a bill item and, for
/// quota mode, a quota item, and the default rule.
class AutoConfigRefusals : public AutoConfigInBothModes
{
protected:
    AutoConfigRefusals()
    {
        for (const CString& value : {u"DN15"_s, u"DN20"_s})
            PrepareItem(PrepareRule({value}), u"031001001001"_s);
    }
    static CPath PathOf(int ruleId)
    {
        CPath path = WaterPipes;
        path.configId = ruleId;
        return path;
    }
    /// The rule goes behind the dialog's back, as a host may take it away.
    void TakeRuleAway(int ruleId) { m_dialog->Presenter().DelConfig(PathOf(ruleId)); }
    /// Edits a name without a flush: any rebuild of the views would drop the edit.
    void EditAName()
    {
        EditCell(1, 2, u"编辑中"_s);
        Key(Qt::Key_Return);
    }
    void ExpectNothingRebuilt()
    {
        EXPECT_EQ(GridColumn(2), CStringArray{u"编辑中"_s});
        EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"管径＝DN20;"_s, u"其它"_s}));
        EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN15"_s});
    }
    void ExpectRulesForgotten()
    {
        EXPECT_EQ(RuleTexts().size(), 3);
        SelectRule(1);
        AddValue(u"材质"_s, u"PPR"_s);
        EXPECT_EQ(RuleTexts(), CStringArray());
        SelectCategory(u"排水管"_s);
        SelectCategory(u"给水管"_s);
        EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN20;材质＝PPR;"_s, u"其它"_s}));
    }
    void ExpectSilence() { EXPECT_EQ(Messages().Texts(), CStringArray()); }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Modes, AutoConfigRefusals,
                         ::testing::Values(SQdDeInfo::BillMode, SQdDeInfo::QuotaMode));

TEST_P(AutoConfigRefusals, AddedConditionThatIsRefusedRebuildsNothingAndKeepsTheValue)
{
    Open();
    EditAName();
    TakeRuleAway(2);
    AddValue(u"材质"_s, u"PPR"_s);
    ExpectNothingRebuilt();
    EXPECT_EQ(TextOf(ValueCombo), u"PPR"_s);
    ExpectSilence();
}

TEST_P(AutoConfigRefusals, ReplacedConditionThatIsRefusedIsNotAddedInstead)
{
    Open();
    EditAName();
    std::vector<ConfigNode*> rules;
    CPath path = PathOf(2);
    path.conditionId = 1;
    m_dialog->Presenter().DelCondition(path, rules);
    AddValue(u"管径"_s, u"DN99"_s);
    ExpectNothingRebuilt();
    EXPECT_EQ(TextOf(ValueCombo), u"DN99"_s);
    EXPECT_TRUE(Rule(2).GetCondition().empty());
    ExpectSilence();
}

TEST_P(AutoConfigRefusals, RemovedConditionThatIsRefusedLeavesTheViewsAndForgetsTheRulesUntilTheNextReload)
{
    Open();
    EditAName();
    TakeRuleAway(2);
    Press(RemoveConditionButton);
    ExpectNothingRebuilt();
    ExpectSilence();
    SelectRule(1);
    EXPECT_EQ(ConditionTexts(), CStringArray());
    EXPECT_EQ(GridColumn(), CStringArray());
    SelectCategory(u"排水管"_s);
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN20;"_s, u"其它"_s}));
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN20"_s});
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
}

TEST_P(AutoConfigRefusals, AddedRuleThatIsRefusedRebuildsNothing)
{
    Host().RenameSmall(u"121"_s, u"配管配线"_s);
    Open();
    SelectCategory(u"阀门"_s); // a leaf by now, of which the store knows nothing
    Messages().Clear();
    Press(AddRuleButton);
    EXPECT_EQ(RuleTexts(), (CStringArray{u"管径＝DN15;"_s, u"管径＝DN20;"_s, u"其它"_s}));
    ExpectSilence();
}

TEST_P(AutoConfigRefusals, BillThatIsRefusedLeavesTheGridWithoutAWord)
{
    Open();
    EditAName();
    InNextDialog([this](dialogs::TemplateDialog& dialog) {
        TakeRuleAway(2);
        test::Click(dialog, dialogs::IdOk);
    });
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    EXPECT_EQ(m_windows.Bill().PickBill(&picked), 0);
    ExpectNothingRebuilt();
    ExpectSilence();
    EXPECT_EQ(Stored().size(), 2);
}

TEST_P(AutoConfigRefusals, BillForARuleThatIsGoneBringsNoDialogUp)
{
    Open();
    EditAName();
    TakeRuleAway(2);
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    EXPECT_EQ(m_windows.Bill().PickBill(&picked), 0);
    ExpectNothingRebuilt();
    ExpectSilence();
}

TEST_P(AutoConfigRefusals, QuotaThatIsRefusedIsWarnedOfAndLeavesTheGrid)
{
    Open();
    EditAName();
    TakeRuleAway(2);
    PickQuota(u"8-87"_s);
    ASSERT_EQ(Messages().Texts(), CStringArray{u"套定额失败!"_s});
    EXPECT_EQ(Messages().Messages().front().kind, platform::MessageKind::Warning);
    ExpectNothingRebuilt();
}

TEST_P(AutoConfigRefusals, RefusedBillForgetsTheRulesSoThatAnAddedConditionEmptiesTheListUntilTheNextReload)
{
    Open();
    InNextDialog([this](dialogs::TemplateDialog& dialog) {
        TakeRuleAway(2);
        test::Click(dialog, dialogs::IdOk);
    });
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    m_windows.Bill().PickBill(&picked);
    ExpectRulesForgotten();
    ExpectSilence();
}

TEST_P(AutoConfigRefusals, RefusedQuotaForgetsTheRulesSoThatAnAddedConditionEmptiesTheListUntilTheNextReload)
{
    Open();
    TakeRuleAway(2);
    PickQuota(u"8-87"_s);
    ExpectRulesForgotten();
}

TEST_P(AutoConfigRefusals, DeletingWithOnlyTheHeaderSelectedDeletesNothingAndSelectsRowOne)
{
    Open();
    Grid().SetSelectedRange(0, 1, 0, 5);
    const CStringArray before = Stored();
    Press(DeleteItemsButton);
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
    EXPECT_EQ(SelectedGridRow(), 1);
}

TEST_P(AutoConfigRefusals, SaveAsThatFailsReportsNoSuccess)
{
    Open();
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    NameFile(SaveAsButton, u"副本"_s);
    EXPECT_EQ(Messages().Texts(), CStringArray{u"文件另存为出错,请稍候在试!"_s});
    EXPECT_TRUE(m_dialog->isVisible());
    files.Heal();
    Messages().Clear();
    Press(AddRuleButton);
    Close();
    EXPECT_EQ(Saved().size(), 4);
    ExpectSilence();
}

TEST_P(AutoConfigRefusals, ExplanationDoesNothingInThisDialog)
{
    Open();
    EditAName();
    m_dialog->GetDlgItem(NoteLink)->show();
    test::Click(*m_dialog, NoteLink);
    ExpectNothingRebuilt();
    EXPECT_TRUE(m_dialog->isVisible());
    ExpectSilence();
}

TEST_P(AutoConfigRefusals, HostThatRaisesOnACategoryLeavesListAndGridEmpty)
{
    Open();
    {
        host::Roles roles = Host().Roles();
        roles.attributes = nullptr;
        const host::Installation lacking = host::Install(roles);
        SelectCategory(u"排水管"_s);
    }
    EXPECT_EQ(Messages().Texts().size(), 1);
    EXPECT_EQ(SelectedCategory(), u"排水管"_s);
    EXPECT_EQ(RuleTexts(), CStringArray());
    EXPECT_EQ(GridColumn(), CStringArray());
    Press(DeleteRuleButton);
    EXPECT_EQ(Stored(DrainPipes), CStringArray{u"1 其它"_s});
    SelectCategory(u"给水管"_s);
    EXPECT_EQ(RuleTexts().size(), 3);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
}

TEST_P(AutoConfigRefusals, RulesAddedWhereTheGridCouldNotBeSetUpKeepItEmpty)
{
    Open();
    SelectCategory(u"排水管"_s);
    {
        host::Roles roles = Host().Roles();
        roles.attributes = nullptr;
        const host::Installation lacking = host::Install(roles);
        SelectCategory(u"给水管"_s);
    }
    const CStringArray before = Stored();
    Press(AddRuleButton);
    EXPECT_EQ(Stored().size(), before.size() + 1);
    EXPECT_EQ(RuleTexts().size(), Stored().size());
    SelectRule(0); // has an item, which this grid could not hold
    EXPECT_EQ(Grid().GetRowCount(), 0);
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(Stored().first(), before.first());
}

TEST_P(AutoConfigRefusals, CalculatorsResultIsDroppedWhenAnotherRuleIsShownByThen)
{
    m_windows.SetCalculation(u"L*2"_s);
    Open();
    m_windows.DuringCalculation([this] { Rules().setCurrentItem(Rules().topLevelItem(1)); });
    ClickCell(1, 4);
    EXPECT_EQ(SelectedRuleRow(), 1);
    EXPECT_EQ(GridColumn(4), CStringArray{u"L"_s});
    SelectRule(0);
    EXPECT_EQ(GridColumn(4), CStringArray{u"L"_s});
    SelectRule(1);
    EXPECT_EQ(GridColumn(4), CStringArray{u"L"_s});
}

TEST_P(AutoConfigRefusals, GridFilledWithoutASelectedRuleHasItsHeaderOnly)
{
    Open();
    QTest::mouseClick(Rules().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Rules().visualItemRect(Rules().topLevelItem(0)).center());
    ASSERT_EQ(SelectedRuleRow(), -1);
    m_dialog->FillGrid({&Rule(2)});
    EXPECT_EQ(Grid().GetRowCount(), 1);
    EXPECT_EQ(Grid().GetColumnCount(), 6);
}
