#include "dialogs/AutoConfigFixture.h"

#include <QtGui/QAccessible>

using namespace test::autoconfig;

// The value panel: building, replacing and removing the conditions of a rule.

namespace {

/// The dialog on 给水管 with one rule without conditions, which is selected, and the default rule.
class AutoConfigConditions : public AutoConfigTest
{
protected:
    AutoConfigConditions() { m_id = PrepareRule({}); }
    CString Conditions() const { return Rule(m_id).GetConditionString(); }
    const ConditionNode& Only() const
    {
        const auto conditions = Rule(m_id).GetCondition();
        if (conditions.size() != 1) throw std::logic_error("not one condition");
        return *conditions.front();
    }

    int m_id = 0;
};

} // namespace

TEST_F(AutoConfigConditions, ValueConditionHoldsTheOperatorAndTheValueAndNoRange)
{
    Open();
    Choose(EqualOperator, u"≠"_s);
    AddValue(u"材质"_s, u"PPR"_s);
    EXPECT_EQ(Only().GetCFType(), u"材质"_s);
    EXPECT_TRUE(Only().IsEqual());
    EXPECT_EQ(Only().GetEqualOperator(), u"≠"_s);
    EXPECT_EQ(Only().GetValue(), u"PPR"_s);
    EXPECT_EQ(Only().GetRangeOperator1() + Only().GetRangeOperator2(), CString());
    EXPECT_EQ(Only().GetRange1() + Only().GetRange2(), CString());
    EXPECT_EQ(ConditionTexts(), CStringArray{u"材质≠PPR"_s});
    EXPECT_EQ(RuleTexts().first(), u"材质≠PPR;"_s);
}

TEST_F(AutoConfigConditions, RangeConditionHoldsOperatorsAndBoundsAndNoValue)
{
    Open();
    SelectPage(1);
    Choose(LowerOperator, u"≥"_s);
    Choose(UpperOperator, u"≤"_s);
    AddRange(u"管径"_s, u"20"_s, u"50"_s);
    EXPECT_EQ(Only().GetCFType(), u"管径"_s);
    EXPECT_FALSE(Only().IsEqual());
    EXPECT_EQ(Only().GetEqualOperator() + Only().GetValue(), CString());
    EXPECT_EQ(Only().GetRangeOperator1(), u"≥"_s);
    EXPECT_EQ(Only().GetRangeOperator2(), u"≤"_s);
    EXPECT_EQ(Only().GetRange1(), u"20"_s);
    EXPECT_EQ(Only().GetRange2(), u"50"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"20≤管径≤50"_s});
}

TEST_F(AutoConfigConditions, OperatorsAreTheFullWidthOnesOfTheSortedListsWithTheFirstPreselected)
{
    Open();
    EXPECT_EQ(test::Entries(*m_dialog, EqualOperator), (CStringArray{u"＝"_s, u"≠"_s}));
    EXPECT_EQ(test::Entries(*m_dialog, LowerOperator), (CStringArray{u"＞"_s, u"≥"_s}));
    EXPECT_EQ(test::Entries(*m_dialog, UpperOperator), (CStringArray{u"＜"_s, u"≤"_s}));
    EXPECT_EQ(TextOf(EqualOperator), u"＝"_s);
    EXPECT_EQ(TextOf(LowerOperator), u"＞"_s);
    EXPECT_EQ(TextOf(UpperOperator), u"＜"_s);
}

TEST_F(AutoConfigConditions, EachPageShowsItsOwnCombosAndKeepsTheTexts)
{
    Open();
    const std::vector values{EqualOperator, ValueCombo};
    const std::vector ranges{LowerOperator, UpperOperator, LowerBound, UpperBound};
    const auto shown = [this](const std::vector<ControlId>& ids, bool visible) {
        for (const ControlId id : ids)
            EXPECT_EQ(IsVisible(id), visible) << id;
    };
    shown(values, true);
    shown(ranges, false);
    TypeInto(ValueCombo, u"PPR"_s);
    SelectPage(1);
    shown(values, false);
    shown(ranges, true);
    TypeInto(LowerBound, u"1"_s);
    TypeInto(UpperBound, u"2"_s);
    SelectPage(0);
    shown(values, true);
    EXPECT_EQ(TextOf(ValueCombo), u"PPR"_s);
    SelectPage(1);
    EXPECT_EQ(TextOf(LowerBound), u"1"_s);
    EXPECT_EQ(TextOf(UpperBound), u"2"_s);
}

TEST_F(AutoConfigConditions, AttributeThatAssistiveTechnologySelectsIsTheOneOfTheCondition)
{
    Open();
    SelectAttribute(u"材质"_s);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(m_dialog->GetDlgItem(Attributes));
    list->child(1)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), (CStringArray{u"DN15"_s, u"DN20"_s, u"DN25"_s}));
    TypeInto(ValueCombo, u"DN20"_s);
    Press(AddConditionButton);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN20"_s});
}

TEST_F(AutoConfigConditions, EmptyValueIsRefusedWithoutAWord)
{
    Open();
    AddValue(u"材质"_s, CString());
    EXPECT_EQ(Conditions(), CString());
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigConditions, BlankValueIsAValue)
{
    Open();
    AddValue(u"材质"_s, u" "_s);
    EXPECT_EQ(Only().GetValue(), u" "_s);
}

TEST_F(AutoConfigConditions, BlankBoundIsABoundAndCountsAsZero)
{
    Open();
    AddRange(u"管径"_s, u" "_s, CString());
    EXPECT_EQ(Only().GetRange1(), u" "_s);
    AddRange(u"管径"_s, u" "_s, u"-1"_s); // below 0, so refused
    EXPECT_EQ(Only().GetRange2(), CString());
    AddRange(u"管径"_s, u" "_s, u"1"_s);
    EXPECT_EQ(Only().GetRange2(), u"1"_s);
}

TEST_F(AutoConfigConditions, RangeWithoutBoundsIsRefusedWithoutAWord)
{
    Open();
    AddRange(u"管径"_s, CString(), CString());
    EXPECT_EQ(Conditions(), CString());
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

struct Bounds
{
    const char16_t* lower;
    const char16_t* upper;
    bool taken;
};

class AutoConfigBounds : public AutoConfigConditions, public ::testing::WithParamInterface<Bounds>
{
};

TEST_P(AutoConfigBounds, AreTakenWhenOneIsMissingOrTheyDifferByAHundredthInDoubles)
{
    const auto& [lower, upper, taken] = GetParam();
    Open();
    AddRange(u"管径"_s, CString::fromUtf16(lower), CString::fromUtf16(upper));
    EXPECT_EQ(Rule(m_id).GetCondition().size(), taken ? 1U : 0U);
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

INSTANTIATE_TEST_SUITE_P(All, AutoConfigBounds,
                         ::testing::Values(Bounds{u"5", u"5.005", false}, Bounds{u"5", u"5.01", false},
                                           Bounds{u"5", u"5.02", true}, Bounds{u"0", u"0.01", true},
                                           Bounds{u"5", u"5", false}, Bounds{u"9", u"5", false},
                                           Bounds{u"", u"-7", true}, Bounds{u"7", u"", true},
                                           Bounds{u"甲", u"1", true}, Bounds{u"1", u"甲", false},
                                           Bounds{u"", u"甲", true}));

TEST_F(AutoConfigConditions, SecondConditionOnAnAttributeReplacesTheFirst)
{
    Open();
    AddValue(u"材质"_s, u"PPR"_s);
    AddValue(u"材质"_s, u"PVC"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"材质＝PVC"_s});
    EXPECT_EQ(Only().GetId(), 1);
}

TEST_F(AutoConfigConditions, ConditionOfTheOtherPageReplacesTheFirstWithAllItsFields)
{
    Open();
    AddValue(u"管径"_s, u"20"_s);
    AddRange(u"管径"_s, u"5"_s, u"9"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"5＜管径＜9"_s});
    EXPECT_FALSE(Only().IsEqual());
    EXPECT_EQ(Only().GetValue(), CString());
    EXPECT_EQ(Only().GetEqualOperator(), CString());
}

TEST_F(AutoConfigConditions, AttributeWhoseNameIsPartOfAChosenOneReplacesThatOne)
{
    Host().AddAttribute(u"111"_s, u"几何属性"_s, u"公称管径"_s, CString(), u"GG"_s);
    Open();
    AddValue(u"公称管径"_s, u"20"_s);
    AddValue(u"管径"_s, u"15"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝15"_s});
}

TEST_F(AutoConfigConditions, AttributeWhoseNameIsPartOfAChosenValueReplacesThatLine)
{
    Open();
    AddValue(u"材质"_s, u"依管径"_s);
    AddValue(u"管径"_s, u"15"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝15"_s});
}

TEST_F(AutoConfigConditions, FirstLineFoundIsTheOneReplaced)
{
    Open();
    AddValue(u"长度"_s, u"依材质"_s);
    AddValue(u"管径"_s, u"依材质"_s);
    AddValue(u"材质"_s, u"PPR"_s);
    EXPECT_EQ(ConditionTexts(), (CStringArray{u"材质＝PPR"_s, u"管径＝依材质"_s}));
}

TEST_F(AutoConfigConditions, ConcreteComponentTakesFreeTextOnEitherPageAndOffersNoValues)
{
    Open();
    SelectAttribute(u"管径"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), (CStringArray{u"DN15"_s, u"DN20"_s, u"DN25"_s}));
    SelectAttribute(u"具体构件"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray());
    AddValue(u"具体构件"_s, u"甲"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"具体构件＝甲"_s});
    AddRange(u"具体构件"_s, u"1"_s, u"2"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"1＜具体构件＜2"_s});
}

TEST_F(AutoConfigConditions, SelectingALineLeavesThePanelAndRemovingTakesThatLine)
{
    Open();
    AddValue(u"材质"_s, u"PPR"_s);
    AddValue(u"管径"_s, u"DN15"_s);
    SelectAttribute(u"长度"_s);
    SelectPage(1);
    TypeInto(LowerBound, u"7"_s);
    test::ClickLine(*m_dialog, ControlId::Conditions, 1);
    EXPECT_EQ(SelectedAttribute(), u"长度"_s);
    EXPECT_EQ(Page(), 1);
    EXPECT_EQ(TextOf(LowerBound), u"7"_s);
    Press(RemoveConditionButton);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"材质＝PPR"_s});
    EXPECT_EQ(Conditions(), u"材质＝PPR;"_s);
}

TEST_F(AutoConfigConditions, RemovingWithoutALineDoesNothing)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    Press(RemoveConditionButton);
    EXPECT_EQ(GridColumn(2), CStringArray{u"新名"_s}); // nothing was rebuilt
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigConditions, AddingEmptiesTheValueAndKeepsBoundsAndPage)
{
    Open();
    AddValue(u"材质"_s, u"PPR"_s);
    EXPECT_EQ(TextOf(ValueCombo), CString());
    AddRange(u"管径"_s, u"5"_s, u"9"_s);
    EXPECT_EQ(Page(), 1);
    EXPECT_EQ(TextOf(LowerBound), u"5"_s);
    EXPECT_EQ(TextOf(UpperBound), u"9"_s);
    EXPECT_EQ(SelectedAttribute(), u"管径"_s);
}

TEST_F(AutoConfigConditions, RuleThatIsNotTheFirstStaysSelected)
{
    const int second = PrepareRule({u"DN15"_s});
    Open();
    SelectRule(1);
    AddValue(u"材质"_s, u"PPR"_s);
    EXPECT_EQ(SelectedRuleRow(), 1);
    EXPECT_EQ(ConditionTexts(), (CStringArray{u"管径＝DN15"_s, u"材质＝PPR"_s}));
    EXPECT_EQ(Rule(second).GetConditionString(), u"管径＝DN15;材质＝PPR;"_s);
    test::ClickLine(*m_dialog, ControlId::Conditions, 0);
    Press(RemoveConditionButton);
    EXPECT_EQ(SelectedRuleRow(), 1);
    EXPECT_EQ(Rule(second).GetConditionString(), u"材质＝PPR;"_s);
}

TEST_F(AutoConfigConditions, AddingDropsAnUncommittedEditOfTheGrid)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    AddValue(u"材质"_s, u"PPR"_s);
    EXPECT_EQ(GridColumn(2), CStringArray{u"清单031001001001"_s});
}

TEST_F(AutoConfigConditions, DefaultRuleCanNeitherBeGivenConditionsNorCopiedNorDeleted)
{
    Open();
    SelectRule(1);
    for (const ControlId id : {Attributes, ControlId::Conditions, LowerOperator, UpperOperator, LowerBound,
                               UpperBound, EqualOperator, ValueCombo, AddConditionButton,
                               RemoveConditionButton, CopyRuleButton, DeleteRuleButton})
        EXPECT_FALSE(IsEnabled(id)) << id;
    for (const ControlId id : {AddRuleButton, MoveUpButton, MoveDownButton, DeleteItemsButton, PickerButton})
        EXPECT_TRUE(IsEnabled(id)) << id;
    SelectRule(0);
    for (const ControlId id : {Attributes, ControlId::Conditions, LowerOperator, UpperOperator, LowerBound,
                               UpperBound, EqualOperator, ValueCombo, AddConditionButton,
                               RemoveConditionButton, CopyRuleButton, DeleteRuleButton, PageTab})
        EXPECT_TRUE(IsEnabled(id)) << id;
}

// Wherever it stands: a file may hold it in front of others.
TEST_F(AutoConfigConditions, DefaultRuleIsTheOneWithTheIdOne)
{
    const CString name = u"app\\自动套配置\\DefaultConfig.xml"_s;
    QByteArray file = m_guard.Folder().ReadFile(name);
    const QByteArray first = "<Config id=\"2\"";
    const QByteArray second = "<Config id=\"1\"";
    const qsizetype firstAt = file.indexOf(first);
    const qsizetype secondAt = file.indexOf(second, firstAt);
    ASSERT_TRUE(firstAt >= 0 && secondAt >= 0);
    file.replace(secondAt, second.size(), first).replace(firstAt, first.size(), second);
    m_guard.Folder().WriteFile(name, file);
    Open();
    ASSERT_THAT(RuleIds(), ElementsAre(1, 2));
    SelectRule(1);
    EXPECT_TRUE(IsEnabled(DeleteRuleButton));
    SelectRule(0);
    EXPECT_FALSE(IsEnabled(DeleteRuleButton));
}

TEST_F(AutoConfigConditions, DefaultRuleHasTheTabEnabledAgain)
{
    Open();
    SelectRule(1);
    EXPECT_TRUE(IsEnabled(PageTab));
}

TEST_F(AutoConfigConditions, DefaultRuleHasTheTabDisabledOnAnAttributeForEqualityOnly)
{
    MakeEqualityOnly(u"材质"_s, u"CZ"_s);
    Open();
    SelectRule(1);
    EXPECT_EQ(SelectedAttribute(), u"材质"_s);
    EXPECT_FALSE(IsEnabled(PageTab));
}

TEST_F(AutoConfigConditions, AttributeForEqualityOnlyForcesTheValuePage)
{
    MakeEqualityOnly(u"材质"_s, u"CZ"_s);
    Open();
    SelectAttribute(u"管径"_s);
    SelectPage(1);
    SelectAttribute(u"长度"_s);
    EXPECT_EQ(Page(), 1); // stays across attributes
    SelectAttribute(u"材质"_s);
    EXPECT_EQ(Page(), 0);
    EXPECT_FALSE(IsEnabled(PageTab));
    EXPECT_TRUE(IsVisible(ValueCombo));
    EXPECT_FALSE(IsVisible(LowerBound));
    SelectAttribute(u"具体构件"_s);
    EXPECT_TRUE(IsEnabled(PageTab));
    EXPECT_EQ(Page(), 0);
}

TEST_F(AutoConfigConditions, ValuesOfTypeNineComeFromTheDropListWithTheExtrasOfAllAttributes)
{
    Open();
    SelectAttribute(u"材质"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), (CStringArray{u"PPR"_s, u"镀锌钢管"_s, u"铸铁管"_s}));
    EXPECT_EQ(Host().LastExtras(), (CStringArray{u"管材"_s, CString(), CString()}));
    EXPECT_EQ(TextOf(ValueCombo), CString());
}

TEST_F(AutoConfigConditions, FailingDropListOffersNoValues)
{
    Host().SetCellData(u"CZ"_s, 9, {u"不该出现"_s});
    Host().Fail(test::Operation::GetDropList);
    Open();
    SelectAttribute(u"材质"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray());
}

TEST_F(AutoConfigConditions, AttributeWithoutAValueSourceOffersNoValues)
{
    Open();
    SelectAttribute(u"管径"_s);
    SelectAttribute(u"长度"_s);
    EXPECT_EQ(test::Entries(*m_dialog, ValueCombo), CStringArray());
    AddValue(u"长度"_s, u"3"_s);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"长度＝3"_s});
}

TEST_F(AutoConfigConditions, ValueChosenFromTheListIsTaken)
{
    Open();
    SelectAttribute(u"管径"_s);
    Choose(ValueCombo, u"DN20"_s);
    Press(AddConditionButton);
    EXPECT_EQ(ConditionTexts(), CStringArray{u"管径＝DN20"_s});
}

TEST_F(AutoConfigConditions, ForbiddenCharactersCannotBeTyped)
{
    Open();
    SelectAttribute(u"材质"_s);
    TypeInto(ValueCombo, u"P\u0001P\uFFFFR"_s);
    EXPECT_EQ(TextOf(ValueCombo), u"PPR"_s);
}

TEST_F(AutoConfigConditions, CopiedRulesConditionsShareAnIdSoTheFirstOneIsReplaced)
{
    Open();
    AddValue(u"材质"_s, u"PPR"_s);
    AddValue(u"管径"_s, u"DN15"_s);
    Press(CopyRuleButton);
    AddValue(u"管径"_s, u"DN20"_s);
    EXPECT_EQ(ConditionTexts(), (CStringArray{u"管径＝DN20"_s, u"管径＝DN15"_s}));
}
