#include "dialogs/AutoConfigFixture.h"

#include "dialogs/grid/GridEditors.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>

using namespace test::autoconfig;

// The keys that run commands: where they act, where they belong to a text, and what holding them down does.
// And the keys of the clipboard.

namespace {

/// The dialog on 给水管 with the rules 2, 3, 4 without items and the default rule.
class AutoConfigKeys : public AutoConfigTest
{
protected:
    AutoConfigKeys()
    {
        for (const CString& value : {u"DN15"_s, u"DN20"_s, u"DN25"_s})
            PrepareRule({value});
    }
    void Focus(ControlId control) { m_dialog->GetDlgItem(control)->setFocus(); }
    /// Presses a key and keeps it down until it has repeated twice.
    void Hold(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        for (const bool repeated : {false, true, true})
            QTest::simulateEvent(m_dialog->focusWidget(), true, key, modifiers, CString(), repeated);
        QTest::simulateEvent(m_dialog->focusWidget(), false, key, modifiers, CString(), false);
    }
    void PressAllCommandKeys()
    {
        Key(Qt::Key_Insert);
        Key(Qt::Key_Up, Qt::ControlModifier);
        Key(Qt::Key_Down, Qt::ControlModifier);
    }
};

} // namespace

TEST_F(AutoConfigKeys, ActWithTheFocusInTreeListGridAndOnAButton)
{
    Open();
    for (const ControlId control : {CategoryTree, RuleRows, ControlId::Grid, MoveUpButton}) {
        SCOPED_TRACE(control);
        const std::size_t rules = RuleIds().size();
        Focus(control);
        Key(Qt::Key_Insert);
        EXPECT_EQ(RuleIds().size(), rules + 1);
        const int row = SelectedRuleRow();
        Focus(control);
        Key(Qt::Key_Up, Qt::ControlModifier);
        EXPECT_EQ(SelectedRuleRow(), row - 1);
        Focus(control);
        Key(Qt::Key_Down, Qt::ControlModifier);
        EXPECT_EQ(SelectedRuleRow(), row);
    }
    EXPECT_EQ(SelectedCategory(), u"给水管"_s);
}

TEST_F(AutoConfigKeys, BelongToTheTextOfACellThatIsEdited)
{
    PrepareBill(3, u"031001001001"_s);
    Open();
    SelectRule(1);
    EditCell(1, 2, u"编辑中"_s);
    PressAllCommandKeys();
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 1));
    const auto* line = Grid().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), u"编辑中"_s);
}

TEST_F(AutoConfigKeys, DoNotActWhileTheListOfACellIsOpen)
{
    PrepareBill(3, u"031001001001"_s);
    Open();
    SelectRule(1);
    ClickCell(1, 3);
    Key(Qt::Key_F2);
    ASSERT_NE(Grid().viewport()->findChild<GridChoiceEditor*>(), nullptr);
    PressAllCommandKeys();
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 1));
}

TEST_F(AutoConfigKeys, DoNotActInTheCombosOfTheValuePanel)
{
    Open();
    SelectRule(1);
    for (const int page : {0, 1}) {
        SelectPage(page);
        for (const ControlId combo :
             {EqualOperator, ValueCombo, LowerOperator, UpperOperator, LowerBound, UpperBound}) {
            if (!IsVisible(combo)) continue;
            Focus(combo);
            PressAllCommandKeys();
            EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 1)) << combo;
        }
    }
}

TEST_F(AutoConfigKeys, InsertHeldDownAddsOneRule)
{
    Open();
    Focus(RuleRows);
    Hold(Qt::Key_Insert);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 4, 5, 1));
}

TEST_F(AutoConfigKeys, DeleteHeldDownDeletesOneSelection)
{
    for (const CString& number : {u"031001001001"_s, u"031001001002"_s, u"031001001003"_s, u"031001001004"_s})
        PrepareBill(2, number);
    Open();
    ClickCell(4, 1);
    Hold(Qt::Key_Delete);
    EXPECT_EQ(GridColumn(), (CStringArray{u"031001001001"_s, u"031001001002"_s, u"031001001003"_s}));
}

TEST_F(AutoConfigKeys, RuleMovesOnWhileItsKeysAreHeldDown)
{
    Open();
    SelectRule(0);
    Hold(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_THAT(RuleIds(), ElementsAre(3, 4, 2, 1));
}

TEST_F(AutoConfigKeys, DeleteRightAfterOpeningTakesNoItemAway)
{
    PrepareBill(2, u"031001001001"_s);
    Open();
    EXPECT_EQ(m_dialog->focusWidget(), m_dialog->GetDlgItem(NewFileButton));
    Key(Qt::Key_Delete);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
}

namespace {

/// The rule 2 has a bill item, over whose name, unit, rule and fittings a row is pasted.
class AutoConfigPaste : public AutoConfigKeys
{
protected:
    AutoConfigPaste()
    {
        PrepareBill(2, u"031001001001"_s);
        Open();
    }
    void PasteRow()
    {
        QGuiApplication::clipboard()->setText(u"新名\t10m\tL*2\t否"_s);
        ClickCell(1, 2);
        Key(Qt::Key_V, Qt::ControlModifier);
    }
    CString Shown() const
    {
        CStringArray texts;
        for (int column = 1; column < Grid().GetColumnCount(); ++column)
            texts.append(Grid().GetItemText(1, column));
        return texts.join(u'|');
    }
    CString StoredRecord() const { return Texts(Rule(2).GetQd(1)->GetRecord()); }
    const CString m_before = Texts(Bill(u"031001001001"_s));
};

} // namespace

TEST_F(AutoConfigPaste, WaitsInAllColumnsUntilTheCategoryChanges)
{
    PasteRow();
    EXPECT_EQ(Shown(), u"031001001001|新名|10m|L*2|否"_s);
    EXPECT_EQ(StoredRecord(), m_before);
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(StoredRecord(), u"031001001001||新名|10m|10||QD2013|L*2|否"_s);
}

TEST_F(AutoConfigPaste, IsDroppedWhenTheRuleChanges)
{
    PasteRow();
    SelectRule(1);
    SelectRule(0);
    EXPECT_EQ(Shown(), u"031001001001|清单031001001001|m|L|是"_s);
    EXPECT_EQ(StoredRecord(), m_before);
}

TEST_F(AutoConfigPaste, UnitThatIsCutWaits)
{
    ClickCell(1, 3);
    Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Shown(), u"031001001001|清单031001001001||L|是"_s);
    EXPECT_EQ(StoredRecord(), m_before);
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(Rule(2).GetQd(1)->GetRecord().strUnit, CString());
    EXPECT_EQ(Rule(2).GetQd(1)->GetRecord().strUnitCode, u"1"_s);
}
