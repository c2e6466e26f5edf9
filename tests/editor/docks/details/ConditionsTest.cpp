#include "editor/docks/details/DetailsFixture.h"
#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtGui/QAction>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include <functional>

using namespace Qt::StringLiterals;
using editor::ConditionTable;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class DetailConditions : public test::DetailsFixture
{
protected:
    DetailConditions()
    {
        HaveRules({test::RuleOf({test::Equals(u"材质"_s, u"镀锌钢管"_s),
                                 test::Between(u"公称直径"_s, u"50"_s, u"65"_s)}),
                   test::RuleOf({test::Equals(u"材质"_s, u"PPR管"_s)})});
        Show();
    }

    CString Cell(int row, int column) const { return Conditions().item(row, column)->text(); }
    /// Chooses an operator as with the list of the cell.
    void ChooseForm(int row, const CString& sign)
    {
        GoTo(row, ConditionTable::FormColumn);
        Press(Qt::Key_F2);
        auto* combo = qobject_cast<QComboBox*>(QApplication::focusWidget());
        ASSERT_NE(combo, nullptr);
        ASSERT_GE(combo->findText(sign), 0);
        combo->setCurrentIndex(combo->findText(sign));
        Press(Qt::Key_Return);
    }
    /// Another window becomes the active one, then this one again.
    void LeaveAndComeBack(const std::function<void()>& meanwhile = [] {})
    {
        QWidget other;
        other.show();
        other.activateWindow();
        test::WaitUntilActive(other);
        meanwhile();
        m_panel->activateWindow();
        test::WaitUntilActive(*m_panel);
    }
};

} // namespace

TEST_F(DetailConditions, ShowsAttributeOperatorAndBoundsOfTheChosenRule)
{
    ASSERT_EQ(Conditions().rowCount(), 2);
    EXPECT_EQ(Cell(0, ConditionTable::AttributeColumn), u"材质"_s);
    EXPECT_EQ(Cell(0, ConditionTable::FormColumn), u"＝"_s);
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), u"镀锌钢管"_s);
    EXPECT_EQ(Cell(1, ConditionTable::FormColumn), u"＜..≤"_s);
    EXPECT_EQ(Cell(1, ConditionTable::ValueColumn), u"50"_s);
    EXPECT_EQ(Cell(1, ConditionTable::UpperColumn), u"65"_s);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("第 1 条规则，共 3 条"));
    Choose({1});
    EXPECT_EQ(Conditions().rowCount(), 1);
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), u"PPR管"_s);
}

TEST_F(DetailConditions, EditedValueIsOneStepThatKeepsTheIdAndCanBeUndone)
{
    const int id = Rule().conditions[0].id;
    Enter(0, ConditionTable::ValueColumn, u"铜管"_s);
    EXPECT_EQ(Text(), u"材质＝铜管;50＜公称直径≤65;"_s);
    EXPECT_EQ(Rule().conditions[0].id, id);
    EXPECT_EQ(m_session.Undo().count(), 1);
    EXPECT_EQ(m_session.Undo().undoText(), u"修改条件 材质＝铜管"_s);
    Undo();
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;50＜公称直径≤65;"_s);
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), u"镀锌钢管"_s);
}

TEST_F(DetailConditions, EditorThatChangesNothingMakesNoStep)
{
    Enter(0, ConditionTable::ValueColumn, u" 镀锌钢管 "_s);
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(DetailConditions, ValueCellTakesAWholeConditionAsTablesWriteIt)
{
    Enter(1, ConditionTable::ValueColumn, u"80<=..<100"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;80≤公称直径＜100;"_s);
    Enter(1, ConditionTable::ValueColumn, u">50"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;公称直径＞50;"_s);
    Enter(1, ConditionTable::ValueColumn, u"≠65"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;公称直径≠65;"_s);
    Enter(1, ConditionTable::ValueColumn, u"80"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;公称直径≠80;"_s) << "a value alone leaves the operator";
    EXPECT_EQ(m_session.Undo().count(), 4);
}

TEST_F(DetailConditions, FullWidthNumberIsFoldedAndTold)
{
    Enter(1, ConditionTable::UpperColumn, u"８０"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;50＜公称直径≤80;"_s);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("全角"));
}

TEST_F(DetailConditions, OperatorMovesBoundsToTheirSide)
{
    ChooseForm(1, u"≤"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;公称直径≤65;"_s);
    ChooseForm(1, u"≤..≤"_s);
    EXPECT_EQ(Cell(1, ConditionTable::UpperColumn), u"65"_s);
    EXPECT_EQ(m_session.Undo().count(), 1) << "a lower bound is missing";
    Enter(1, ConditionTable::ValueColumn, u"65"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;65≤公称直径≤65;"_s);
}

TEST_F(DetailConditions, BoundThatIsNoNumberStaysInTheLineWithTheReason)
{
    Enter(1, ConditionTable::ValueColumn, u"五十"_s);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_EQ(Cell(1, ConditionTable::ValueColumn), u"五十"_s);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("第 2 行还不是条件：“五十”不是数"));
    EXPECT_EQ(Conditions().item(1, ConditionTable::ValueColumn)->data(Qt::AccessibleDescriptionRole),
              u"“五十”不是数"_s);
    Enter(1, ConditionTable::ValueColumn, u"40"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;40＜公称直径≤65;"_s);
    EXPECT_THAT(Labels().toStdString(), Not(HasSubstr("还不是条件")));
}

TEST_F(DetailConditions, RangeInWhichNoNumberLiesIsRefused)
{
    Enter(1, ConditionTable::UpperColumn, u"50"_s);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("上限没有比下限大"));
}

TEST_F(DetailConditions, HalfARangeIsNoValue)
{
    Enter(1, ConditionTable::ValueColumn, u"50＜.."_s);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("“50＜..”不是数"));
}

TEST_F(DetailConditions, EscapeGivesUpALineThatIsNoCondition)
{
    Enter(0, ConditionTable::ValueColumn, {});
    ASSERT_THAT(Labels().toStdString(), HasSubstr("没有值"));
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), u"镀锌钢管"_s);
    EXPECT_THAT(Labels().toStdString(), Not(HasSubstr("没有值")));
}

TEST_F(DetailConditions, InputOfARuleIsThereAgainWhenTheUserComesBack)
{
    Enter(1, ConditionTable::ValueColumn, u"五十"_s);
    Choose({1});
    EXPECT_THAT(Labels().toStdString(), Not(HasSubstr("五十")));
    Choose({0});
    EXPECT_EQ(Cell(1, ConditionTable::ValueColumn), u"五十"_s);
}

TEST_F(DetailConditions, InputGoesWithItsFile)
{
    Enter(1, ConditionTable::ValueColumn, u"五十"_s);
    m_session.RefreshFacts();
    EXPECT_EQ(Cell(1, ConditionTable::ValueColumn), u"五十"_s) << "the file is the same";
    const CString file = m_session.File().Path();
    m_session.Open(m_project->RuleFolder() + u"\\other.xml"_s);
    m_session.Open(file);
    m_session.GoTo(Category, 0);
    EXPECT_EQ(Cell(1, ConditionTable::ValueColumn), u"50"_s);
}

TEST_F(DetailConditions, WithoutARuleThePanelSaysSo)
{
    m_session.Close();
    EXPECT_EQ(Labels(), u"没有选中规则"_s);
    EXPECT_EQ(Conditions().rowCount(), 0);
    EXPECT_EQ(Tree().topLevelItemCount(), 0);
}

TEST_F(DetailConditions, FocusOfThePanelIsThatOfTheConditions)
{
    Tree().setFocus();
    m_panel->setFocus();
    EXPECT_TRUE(Conditions().hasFocus());
}

TEST_F(DetailConditions, OpenEditorGoesIntoItsRuleWhenTheChoiceMoves)
{
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_F2);
    Type(u"铜管"_s);
    Choose({1});
    EXPECT_EQ(Text(0), u"材质＝铜管;50＜公称直径≤65;"_s);
    EXPECT_EQ(Text(1), u"材质＝PPR管;"_s);
    EXPECT_EQ(m_session.ChosenRules(), std::vector<std::size_t>{1});
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), u"PPR管"_s);
}

TEST_F(DetailConditions, OpenEditorIsTakenOverByCommit)
{
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_F2);
    Type(u"铜管"_s);
    m_panel->Commit();
    EXPECT_EQ(Text(), u"材质＝铜管;50＜公称直径≤65;"_s);
}

TEST_F(DetailConditions, InsertBeginsALineThatIsAddedWhenItIsWhole)
{
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_Insert);
    ASSERT_EQ(Conditions().rowCount(), 3);
    Type(u"连接方式"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("没有值"));
    Enter(2, ConditionTable::ValueColumn, u"焊接"_s);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;50＜公称直径≤65;连接方式＝焊接;"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
    EXPECT_EQ(m_session.Undo().undoText(), u"加条件 连接方式＝焊接"_s);
    EXPECT_EQ(Conditions().rowCount(), 3);
}

TEST_F(DetailConditions, AttributeThatTheCategoryHasNotIsRefused)
{
    Enter(0, ConditionTable::AttributeColumn, u"颜色"_s);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_THAT(Labels().toStdString(), HasSubstr("小类没有属性“颜色”"));
}

TEST_F(DetailConditions, OtherAttributeAsksForOneOfItsOwnValues)
{
    Enter(0, ConditionTable::AttributeColumn, u"连接方式"_s);
    EXPECT_EQ(m_session.Undo().count(), 0);
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), CString());
    Enter(0, ConditionTable::ValueColumn, u"焊接"_s);
    EXPECT_EQ(Text(), u"连接方式＝焊接;50＜公称直径≤65;"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
}

TEST_F(DetailConditions, ListsOfferAttributesAndValuesOfTheCategory)
{
    GoTo(0, ConditionTable::AttributeColumn);
    Press(Qt::Key_F2);
    auto* names = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(names, nullptr);
    EXPECT_GE(names->findText(u"公称直径"_s), 0);
    EXPECT_GE(names->findText(u"具体构件"_s), 0);
    Press(Qt::Key_Escape);
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_F2);
    auto* values = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(values, nullptr);
    EXPECT_GE(values->findText(u"钢塑复合管"_s), 0);
    Press(Qt::Key_Escape);
    EXPECT_EQ(m_session.Undo().count(), 0);
}

TEST_F(DetailConditions, DeleteRemovesTheSelectedLinesInOneStep)
{
    GoTo(0, ConditionTable::ValueColumn);
    Conditions().selectAll();
    Press(Qt::Key_Delete);
    EXPECT_EQ(Text(), CString());
    EXPECT_EQ(m_session.Undo().count(), 1);
    Undo();
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;50＜公称直径≤65;"_s);
}

TEST_F(DetailConditions, DefaultRuleHasNoConditions)
{
    Choose({2});
    EXPECT_FALSE(Command(u"加条件"_s).isEnabled());
    EXPECT_THAT(Labels().toStdString(), HasSubstr("默认规则没有条件"));
    GoTo(0, 0);
    Press(Qt::Key_Insert);
    EXPECT_EQ(Conditions().rowCount(), 0);
}

TEST_F(DetailConditions, KeysOfTheTableComeBeforeShortcutsOfTheWindow)
{
    QAction window;
    window.setShortcut(Qt::Key_Delete);
    bool isTriggered = false;
    QObject::connect(&window, &QAction::triggered, [&] { isTriggered = true; });
    m_panel->addAction(&window);
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_Delete);
    EXPECT_FALSE(isTriggered);
    EXPECT_EQ(Text(), u"50＜公称直径≤65;"_s);
}

TEST_F(DetailConditions, ConditionsThatAFileHasInAnotherWayAreShownAsTheyAre)
{
    rules::Condition odd = test::Equals(u"颜色"_s, u"红"_s);
    odd.equalOperator = u"~"_s;
    HaveRules({test::RuleOf({odd})});
    EXPECT_EQ(Cell(0, ConditionTable::AttributeColumn), u"颜色"_s);
    EXPECT_EQ(Cell(0, ConditionTable::FormColumn), u"？"_s);
    EXPECT_EQ(Cell(0, ConditionTable::ValueColumn), u"红"_s);
    EXPECT_THAT(Labels().toStdString(), Not(HasSubstr("还不是条件")));
}

TEST_F(DetailConditions, KeysAfterEnterGoToTheTableThoughTheEditorIsStillOpen)
{
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_F2);
    Type(u"PPR管"_s);
    QWidget* const field = QApplication::focusWidget();
    QTest::keyClick(field, Qt::Key_Return); // the program is too busy to close the editor
    QTest::keyClick(field, Qt::Key_Left);
    EXPECT_EQ(Conditions().currentColumn(), ConditionTable::FormColumn);
    EXPECT_EQ(Rule().conditions.front().value, u"PPR管"_s);
    EXPECT_EQ(m_session.Undo().count(), 1);
}

TEST_F(DetailConditions, AltAndDownOpensTheListOfACell)
{
    GoTo(0, ConditionTable::ValueColumn);
    QTest::keyClick(&Conditions(), Qt::Key_Down, Qt::AltModifier);
    auto* combo = Conditions().findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);
    EXPECT_TRUE(combo->view()->isVisible());
    combo->hidePopup();
}

TEST_F(DetailConditions, AltAndDownOpensNothingWhereThereIsNoList)
{
    for (const int row : {0, 1}) { // a value has no upper bound; that of a range is a plain field
        GoTo(row, ConditionTable::UpperColumn);
        Press(Qt::Key_Down, Qt::AltModifier);
        EXPECT_EQ(QApplication::focusWidget(), &Conditions()) << row;
    }
}

TEST_F(DetailConditions, ListOfAnEditorThatHasClosedIsStillThereForKeysTypedWhileItWasOpen)
{
    GoTo(0, ConditionTable::AttributeColumn);
    Press(Qt::Key_F2);
    auto* combo = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(combo, nullptr);
    combo->showPopup();
    const QPointer<QWindow> list = combo->view()->window()->windowHandle();
    ASSERT_NE(list, nullptr);
    QTest::keyPress(list, Qt::Key_Return);
    test::WaitInLoopFor(u"end of the editor"_s, [&] { return !combo->isVisible(); });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_NE(list, nullptr);
    EXPECT_FALSE(list->isVisible());
}

// A window system takes the keyboard from the window for a moment whenever it shuts a list, and on a busy
// machine the next keys are there by then.
TEST_F(DetailConditions, WhatIsBeingTypedGoesOnWhenTheWindowHasTheKeyboardAgain)
{
    GoTo(1, ConditionTable::ValueColumn);
    QTest::keyClicks(QApplication::focusWidget(), u"<"_s);
    LeaveAndComeBack();
    QTest::keyClicks(QApplication::focusWidget(), u"=50"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;公称直径≤50;"_s);
}

TEST_F(DetailConditions, EntryThatIsTheBeginningOfWhatIsBeingTypedIsNotTakenWithoutTheKeyboard)
{
    HaveRules({test::RuleOf({test::Equals(u"公称直径"_s, u"65"_s)})});
    GoTo(0, ConditionTable::ValueColumn);
    QTest::keyClicks(QApplication::focusWidget(), u"2"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"0"_s);
    LeaveAndComeBack();
    QTest::keyClicks(QApplication::focusWidget(), u"0"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(Text(), u"公称直径＝200;"_s);
}

TEST_F(DetailConditions, EditorThatClosesWithoutTheKeyboardLeavesTheTableTheFocus)
{
    GoTo(0, ConditionTable::ValueColumn);
    Press(Qt::Key_F2);
    Type(u"PPR管"_s);
    QWidget* const field = QApplication::focusWidget();
    LeaveAndComeBack([&] {
        QTest::keyClick(field, Qt::Key_Return);
        test::WaitInLoopFor(u"end of the editor"_s, [&] { return !field->isVisible(); });
    });
    EXPECT_EQ(QApplication::focusWidget(), &Conditions());
}

TEST_F(DetailConditions, WhatIsBeingTypedIsTakenWhenTheUserGoesOnInAnotherWindowOfTheProgram)
{
    GoTo(1, ConditionTable::ValueColumn);
    QTest::keyClicks(QApplication::focusWidget(), u"6"_s);
    QWidget other;
    auto* field = new QLineEdit(&other);
    other.show();
    other.activateWindow();
    test::WaitInLoopFor(u"the other field"_s, [&] { return QApplication::focusWidget() == field; });
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;6＜公称直径≤65;"_s);
}

TEST_F(DetailConditions, WhatIsBeingTypedIsTakenWhenTheUserComesBackToSomethingElse)
{
    auto* field = new QLineEdit(m_panel.get());
    field->show();
    GoTo(1, ConditionTable::ValueColumn);
    QTest::keyClicks(QApplication::focusWidget(), u"6"_s);
    LeaveAndComeBack([&] { field->setFocus(); });
    test::WaitInLoopFor(u"the other field"_s, [&] { return QApplication::focusWidget() == field; });
    EXPECT_EQ(Text(), u"材质＝镀锌钢管;6＜公称直径≤65;"_s);
}
