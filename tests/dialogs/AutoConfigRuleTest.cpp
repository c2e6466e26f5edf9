#include "dialogs/AutoConfigFixture.h"

#include <QtTest/QTest>

#include <stdexcept>

using namespace test::autoconfig;

// The rule list and the commands on rules, in both modes where items are looked at.

namespace {

/// The dialog on 给水管 with the rules 2, 3, 4 (conditions DN15, DN20, DN25) and the default rule.
class AutoConfigRules : public AutoConfigInBothModes
{
protected:
    AutoConfigRules()
    {
        for (const CString& value : {u"DN15"_s, u"DN20"_s, u"DN25"_s})
            PrepareRule({value});
    }
    QTreeWidgetItem* RowOf(int ruleId) const
    {
        for (int row = 0; row < Rules().topLevelItemCount(); ++row)
            if (Rules().topLevelItem(row)->data(0, Qt::UserRole) == ruleId) return Rules().topLevelItem(row);
        throw std::invalid_argument("no row of that rule");
    }
    /// The stored name of a rule's first item.
    CString ItemName(int ruleId) const
    {
        const ConfigNode& rule = Rule(ruleId);
        return GetParam() == SQdDeInfo::BillMode ? rule.GetQd(1)->GetRecord().strName
                                                 : rule.GetDe(1)->GetRecord().strName;
    }
};

const CStringArray Start{u"管径＝DN15;"_s, u"管径＝DN20;"_s, u"管径＝DN25;"_s, u"其它"_s};

} // namespace

INSTANTIATE_TEST_SUITE_P(Modes, AutoConfigRules,
                         ::testing::Values(SQdDeInfo::BillMode, SQdDeInfo::QuotaMode));

TEST_P(AutoConfigRules, ListShowsPositionsAndKeepsIds)
{
    Open();
    EXPECT_EQ(RuleTexts(), Start);
    EXPECT_EQ(RuleNumbers(), (CStringArray{u"1"_s, u"2"_s, u"3"_s, u"4"_s}));
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 1));
}

TEST_P(AutoConfigRules, SelectingARuleShowsItsConditionsAndItems)
{
    PrepareItem(3, u"A1"_s);
    Open();
    EXPECT_EQ(GridColumn(), CStringArray());
    SelectRule(1);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN20"_s});
    EXPECT_EQ(GridColumn(), CStringArray{u"A1"_s});
    SelectRule(3);
    EXPECT_EQ(ConditionTexts(), CStringArray());
    EXPECT_EQ(GridColumn(), CStringArray());
}

TEST_P(AutoConfigRules, NewRuleStandsInFrontOfTheLastAndIsSelected)
{
    Open();
    Press(AddRuleButton);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 5, 1));
    EXPECT_EQ(SelectedRuleRow(), 3);
    EXPECT_EQ(RuleNumbers().last(), u"5"_s);
    EXPECT_EQ(Stored()[3], u"5 "_s);
    EXPECT_EQ(ConditionTexts(), CStringArray());
}

TEST_P(AutoConfigRules, CopyStandsInFrontOfTheLastWithEverythingAndIsSelected)
{
    PrepareItem(3, u"A1"_s);
    Open();
    SelectRule(1);
    Press(CopyRuleButton);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 5, 1));
    EXPECT_EQ(SelectedRuleRow(), 3);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN20"_s});
    EXPECT_EQ(GridColumn(), CStringArray{u"A1"_s});
    EXPECT_EQ(Stored()[3].mid(2), Stored()[1].mid(2));
}

TEST_P(AutoConfigRules, DeletingRenumbersAndSelectsTheFirst)
{
    Open();
    SelectRule(1);
    Press(DeleteRuleButton);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 4, 1));
    EXPECT_EQ(RuleNumbers(), (CStringArray{u"1"_s, u"2"_s, u"3"_s}));
    EXPECT_EQ(SelectedRuleRow(), 0);
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_P(AutoConfigRules, DefaultRuleIsSelectedWhenItIsTheLastLeft)
{
    Open();
    for (int time = 0; time < 3; ++time)
        Press(DeleteRuleButton);
    EXPECT_THAT(RuleIds(), ElementsAre(1));
    EXPECT_EQ(SelectedRuleRow(), 0);
    EXPECT_FALSE(IsEnabled(DeleteRuleButton));
    Press(DeleteRuleButton);
    EXPECT_THAT(RuleIds(), ElementsAre(1));
}

TEST_P(AutoConfigRules, MovedRuleStaysSelected)
{
    Open();
    SelectRule(1);
    Press(MoveUpButton);
    EXPECT_THAT(RuleIds(), ElementsAre(3, 2, 4, 1));
    EXPECT_EQ(SelectedRuleRow(), 0);
    Press(MoveDownButton);
    Press(MoveDownButton);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 4, 3, 1));
    EXPECT_EQ(SelectedRuleRow(), 2);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN20"_s});
}

TEST_P(AutoConfigRules, RefusedMovesRebuildNothing)
{
    PrepareItem(2, u"A1"_s);
    PrepareItem(4, u"A2"_s);
    PrepareItem(1, u"A3"_s);
    Open();
    const auto refused = [this](int row, ControlId button) {
        SelectRule(row);
        EditCell(1, 2, u"编辑中"_s);
        Press(button);
        EXPECT_EQ(RuleTexts(), Start);
        EXPECT_EQ(SelectedRuleRow(), row);
        EXPECT_EQ(GridColumn(2), CStringArray{u"编辑中"_s}); // a rebuild would drop the edit
    };
    refused(0, MoveUpButton);
    refused(2, MoveDownButton);
    refused(3, MoveUpButton);
    refused(3, MoveDownButton);
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_P(AutoConfigRules, MovingDownALoneDefaultRuleIsReportedAndChangesNothing)
{
    Open();
    SelectCategory(u"排水管"_s);
    Press(MoveDownButton);
    EXPECT_EQ(Messages().Texts().size(), 1);
    EXPECT_EQ(Messages().Messages().front().kind, platform::MessageKind::Warning);
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(Stored(DrainPipes), CStringArray{u"1 其它"_s});
    EXPECT_THAT(RuleIds(), ElementsAre(1));
}

TEST_P(AutoConfigRules, MovingUpALoneDefaultRuleDoesNothing)
{
    Open();
    SelectCategory(u"排水管"_s);
    Press(MoveUpButton);
    EXPECT_EQ(Messages().Texts(), CStringArray());
    EXPECT_THAT(RuleIds(), ElementsAre(1));
}

TEST_P(AutoConfigRules, CommandsDoNotFlushTheGrid)
{
    PrepareItem(2, u"A1"_s);
    Open();
    const CString before = ItemName(2);
    for (const ControlId button : {AddRuleButton, CopyRuleButton, MoveDownButton, MoveUpButton}) {
        Rules().setCurrentItem(RowOf(2));
        EditCell(1, 2, u"新名"_s);
        Press(button);
        EXPECT_EQ(ItemName(2), before) << button;
    }
}

TEST_P(AutoConfigRules, KeysRunTheCommands)
{
    Open();
    SelectRule(1);
    Key(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_THAT(RuleIds(), ElementsAre(3, 2, 4, 1));
    Key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 1));
    Key(Qt::Key_Insert);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 5, 1));
}

TEST_P(AutoConfigRules, ListWithoutRulesLeavesConditionsAndPanelOfTheFormerRule)
{
    Open();
    m_dialog->Presenter().DelConfig(DrainPipes);
    SelectAttribute(u"管径"_s);
    TypeInto(LowerBound, u"7"_s);
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(RuleTexts(), CStringArray());
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN15"_s});
    EXPECT_EQ(TextOf(LowerBound), u"7"_s);
    EXPECT_EQ(GridColumn(), CStringArray());
    for (const ControlId button : {CopyRuleButton, DeleteRuleButton, MoveUpButton, MoveDownButton,
                                   AddConditionButton, RemoveConditionButton, DeleteItemsButton})
        Press(button);
    EXPECT_EQ(Messages().Texts(), CStringArray());
    EXPECT_EQ(Stored(DrainPipes), CStringArray());
}

TEST_P(AutoConfigRules, AddingToAListWithoutRulesIsReportedAndChangesNothing)
{
    Open();
    m_dialog->Presenter().DelConfig(DrainPipes);
    SelectCategory(u"排水管"_s);
    Press(AddRuleButton);
    EXPECT_EQ(Messages().Texts().size(), 1);
    EXPECT_EQ(Stored(DrainPipes), CStringArray());
}

TEST_P(AutoConfigRules, CommandsOnARuleThatIsGoneRebuildNothingButDeletingDoes)
{
    Open();
    m_dialog->Presenter().DelConfig({1, 11, 111, 2, 0, 0, 0, 0});
    for (const ControlId button : {CopyRuleButton, MoveUpButton, MoveDownButton})
        Press(button);
    TypeInto(ValueCombo, u"PPR"_s);
    Press(AddConditionButton);
    Press(RemoveConditionButton);
    EXPECT_EQ(RuleTexts(), Start);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN15"_s});
    Press(DeleteRuleButton);
    EXPECT_THAT(RuleIds(), ElementsAre(3, 4, 1));
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_P(AutoConfigRules, RowThatTheUserDeselectsLeavesTheViewsAndStopsTheCommands)
{
    Open();
    QTest::mouseClick(Rules().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Rules().visualItemRect(Rules().topLevelItem(0)).center());
    ASSERT_EQ(SelectedRuleRow(), -1);
    const CStringArray before = Stored();
    for (const ControlId button : {CopyRuleButton, DeleteRuleButton, MoveUpButton, MoveDownButton,
                                   AddConditionButton, RemoveConditionButton, DeleteItemsButton})
        Press(button);
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN15"_s});
    EXPECT_EQ(Messages().Texts(), CStringArray());
}
