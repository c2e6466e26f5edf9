#include "dialogs/secondary/CExListBox.h"

#include "support/Patience.h"
#include "support/PrintText.h"
#include "support/WindowWaits.h"
#include "widgets/ListControls.h"

#include <QtGui/QAccessible>
#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocumentFragment>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class CExListBoxTest : public ::testing::Test
{
protected:
    CExListBoxTest()
    {
        m_list.resize(120, 160);
        m_list.addItems({u"周长(mm)"_s, u"长边(mm)"_s, u"具体构件"_s});
        m_list.OnSelected([this] { ++m_selected; });
        m_list.show();
        m_list.activateWindow();
        test::WaitUntilActive(m_list);
    }

    QPoint PointIn(int row) const { return m_list.visualItemRect(m_list.item(row)).topLeft() + QPoint(6, 6); }
    void RestAt(const QPoint& point)
    {
        QHelpEvent rest(QEvent::ToolTip, point, m_list.viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_list.viewport(), &rest);
    }
    /// What a reader of the tip sees.
    static CString Shown()
    {
        const CString text = QToolTip::isVisible() ? QToolTip::text() : CString();
        return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    }

    CExListBox m_list;
    int m_selected = 0;
};

TEST_F(CExListBoxTest, EveryRowTellsItsWholeText)
{
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(m_list.ToolText(row), m_list.item(row)->text());
}

TEST_F(CExListBoxTest, RowBeyondTheCountIsEmpty)
{
    EXPECT_EQ(m_list.ToolText(3), CString());
    EXPECT_EQ(m_list.ToolText(65535), CString());
    EXPECT_EQ(m_list.ToolText(-1), CString());
}

TEST_F(CExListBoxTest, HitTestGivesRowAndRectangle)
{
    QRect rect;
    EXPECT_EQ(m_list.ToolHitTest(PointIn(1), &rect), 1);
    EXPECT_EQ(rect, m_list.visualItemRect(m_list.item(1)));
}

TEST_F(CExListBoxTest, HitTestOutsideTheRowsGivesTheNearest)
{
    EXPECT_EQ(m_list.ToolHitTest({5, 150}), 2);
    EXPECT_EQ(m_list.ToolHitTest({5, -5}), 0);
}

TEST_F(CExListBoxTest, HitTestOfAnEmptyListGivesNone)
{
    m_list.clear();
    EXPECT_EQ(m_list.ToolHitTest({5, 5}), -1);
}

TEST_F(CExListBoxTest, RestOverARowShowsItsText)
{
    RestAt(PointIn(1));
    EXPECT_EQ(Shown(), u"长边(mm)"_s);
}

TEST_F(CExListBoxTest, RestOverAnotherRowShowsThatOne)
{
    RestAt(PointIn(1));
    RestAt(PointIn(2));
    EXPECT_EQ(Shown(), u"具体构件"_s);
}

TEST_F(CExListBoxTest, RestBelowTheRowsShowsNothing)
{
    RestAt({5, 150});
    EXPECT_EQ(Shown(), CString());
}

TEST_F(CExListBoxTest, LongRowIsShownWhole)
{
    CString text;
    for (int part = 0; part < 200; ++part)
        text += u"半周长%1 "_s.arg(part);
    text = text.trimmed();
    m_list.item(0)->setText(text);
    RestAt(PointIn(0));
    EXPECT_EQ(Shown(), text);
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QTipLabel") && widget->isVisible()) {
            EXPECT_LE(widget->width(), m_list.screen()->availableGeometry().width());
        }
    }
}

TEST_F(CExListBoxTest, RowThatLooksLikeMarkupIsShownAsItStands)
{
    m_list.item(0)->setText(u"<b>DN</b> & 25"_s);
    RestAt(PointIn(0));
    EXPECT_EQ(Shown(), u"<b>DN</b> & 25"_s);
}

TEST_F(CExListBoxTest, ClickOfTheUserIsTold)
{
    QTest::mouseClick(m_list.viewport(), Qt::LeftButton, {}, PointIn(1));
    EXPECT_EQ(m_selected, 1);
    EXPECT_EQ(m_list.currentRow(), 1);
}

TEST_F(CExListBoxTest, ClickWithControlDoesNotTakeTheSelectionAway)
{
    QTest::mouseClick(m_list.viewport(), Qt::LeftButton, {}, PointIn(1));
    QTest::mouseClick(m_list.viewport(), Qt::LeftButton, Qt::ControlModifier, PointIn(1));
    ASSERT_EQ(m_list.selectedItems().size(), 1);
    EXPECT_EQ(m_list.selectedItems().first(), m_list.item(1));
    EXPECT_EQ(m_selected, 1);
}

TEST_F(CExListBoxTest, KeyOfTheUserIsTold)
{
    widgets::SetCurSel(m_list, 0);
    QTest::keyClick(&m_list, Qt::Key_Down);
    EXPECT_EQ(m_selected, 1);
    EXPECT_EQ(m_list.currentRow(), 1);
}

TEST_F(CExListBoxTest, SelectionFromCodeIsNotTold)
{
    widgets::SetCurSel(m_list, 2);
    widgets::SetCurSel(m_list, 1);
    widgets::ResetContent(m_list);
    EXPECT_EQ(m_selected, 0);
}

TEST_F(CExListBoxTest, SelectionFromCodeInsideTheTellingIsNotTold)
{
    m_list.OnSelected([this] { widgets::SetCurSel(m_list, 0); });
    QTest::mouseClick(m_list.viewport(), Qt::LeftButton, {}, PointIn(2));
    EXPECT_EQ(m_selected, 1);
    EXPECT_EQ(widgets::GetCurSel(m_list), 0);
}

TEST_F(CExListBoxTest, SelectionByAssistiveTechnologyIsTold)
{
    widgets::SetCurSel(m_list, 0);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&m_list);
    ASSERT_NE(list, nullptr);
    QAccessibleActionInterface* row = list->child(2)->actionInterface();
    ASSERT_NE(row, nullptr);
    row->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(widgets::GetCurSel(m_list), 2);
    EXPECT_EQ(m_selected, 1);
    ASSERT_TRUE(list->tableInterface()->selectRow(1));
    EXPECT_EQ(widgets::GetCurSel(m_list), 1);
    EXPECT_EQ(m_selected, 2);
}

TEST_F(CExListBoxTest, ThousandListsLeaveNothingBehind)
{
    const auto before = QApplication::allWidgets().size();
    for (int round = 0; round < 1000; ++round) {
        CExListBox list;
        list.addItem(u"a"_s);
        QHelpEvent rest(QEvent::ToolTip, {5, 5}, {5, 5});
        QApplication::sendEvent(list.viewport(), &rest);
    }
    QToolTip::hideText();
    test::WaitInLoopFor(u"end of the tip"_s,
                        [before] { return QApplication::allWidgets().size() <= before; });
}

} // namespace
