#include "dialogs/template/TemplateDialog.h"

#include "dialogs/DialogUser.h"
#include "dialogs/template/SampleDialog.h"
#include "widgets/ListControls.h"
#include "widgets/TreeControl.h"

#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QTabWidget>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace test::sample;
using test::PlainDialog;

TEST(TemplateDialog, MakesEveryKindOfControlFindableByItsId)
{
    PlainDialog dialog(AllKinds, nullptr);
    dialog.Create();
    EXPECT_TRUE(dialog.Item<QPushButton>(1).isDefault());
    EXPECT_TRUE(dialog.Item<QListWidget>(11).isVisibleTo(&dialog));
    EXPECT_FALSE(dialog.Item<QLineEdit>(12).isReadOnly());
    EXPECT_TRUE(dialog.Item<QPlainTextEdit>(13).isReadOnly());
    EXPECT_FALSE(dialog.Item<QComboBox>(14).isEditable());
    EXPECT_TRUE(dialog.Item<QComboBox>(15).isEditable());
    EXPECT_EQ(dialog.Item<QRadioButton>(16).text(), u"甲"_s);
    EXPECT_EQ(dialog.Item<QAbstractButton>(19).text(), u"丁"_s);
    EXPECT_TRUE(dialog.Item<widgets::TreeControl>(20).isHeaderHidden());
    EXPECT_FALSE(dialog.Item<QTreeWidget>(21).rootIsDecorated());
    EXPECT_EQ(dialog.Item<QTabWidget>(22).count(), 0);
    EXPECT_EQ(dialog.Item<QFrame>(23).objectName(), u"id23"_s);
    EXPECT_FALSE(dialog.GetDlgItem(25)->isVisibleTo(&dialog));
    EXPECT_FALSE(dialog.GetDlgItem(26)->isEnabled());
    EXPECT_EQ(dialog.windowTitle(), u"样板"_s);
}

TEST(TemplateDialog, UnknownIdIsNullOrAnErrorThatNamesIt)
{
    PlainDialog dialog(AllKinds, nullptr);
    dialog.Create();
    EXPECT_EQ(dialog.GetDlgItem(4711), nullptr);
    EXPECT_EQ(dialog.GetDlgItem(NoId), nullptr);
    EXPECT_THROW(dialog.Item<QLineEdit>(4711), std::out_of_range);
    EXPECT_THROW(dialog.Item<QLineEdit>(11), std::out_of_range);
}

TEST(TemplateDialog, EveryControlHasAnAccessibleName)
{
    PlainDialog dialog(AllKinds, nullptr);
    dialog.Create();
    EXPECT_EQ(dialog.GetDlgItem(1)->accessibleName(), u"确定"_s);
    EXPECT_EQ(dialog.GetDlgItem(12)->accessibleName(), u"名称"_s);
    EXPECT_EQ(dialog.GetDlgItem(13)->accessibleName(), u"说明文字"_s);
    for (const ControlRow& row : AllKindsRows) {
        if (row.id == NoId) continue;
        EXPECT_FALSE(dialog.GetDlgItem(row.id)->accessibleName().isEmpty()) << row.id;
    }
}

// A radio group is one stop.
TEST(TemplateDialog, TabFollowsTheTable)
{
    PlainDialog dialog(AllKinds, nullptr);
    test::Open(dialog);
    dialog.GetDlgItem(1)->setFocus();
    CStringArray visited;
    for (int step = 0; step < 13; ++step) {
        visited.append(dialog.focusWidget()->objectName());
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    }
    const CStringArray expected{u"id1"_s,  u"id2"_s,  u"id10"_s, u"id11"_s, u"id12"_s, u"id13"_s, u"id14"_s,
                                u"id15"_s, u"id16"_s, u"id18"_s, u"id19"_s, u"id20"_s, u"id21"_s};
    EXPECT_EQ(visited, expected);
}

TEST(TemplateDialog, MnemonicOfALabelLeadsToItsControl)
{
    PlainDialog dialog(AllKinds, nullptr);
    test::Open(dialog);
    QTest::keyClick(&dialog, Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(dialog.focusWidget(), dialog.GetDlgItem(12));
}

TEST(TemplateDialog, GroupBoxNeverTakesTheClicksOfWhatItSurrounds)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::ListSelection, 11, u"list"_s);
    test::Open(dialog);
    widgets::AddString(dialog.Item<QListWidget>(11), u"a"_s);
    auto& list = dialog.Item<QListWidget>(11);
    const QPoint inDialog = list.viewport()->mapTo(&dialog, list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(dialog.childAt(inDialog), list.viewport());
}

TEST(TemplateDialog, SizeIsFixed)
{
    PlainDialog dialog(AllKinds, nullptr);
    test::Open(dialog);
    EXPECT_EQ(dialog.minimumSize(), dialog.maximumSize());
}

TEST(TemplateDialog, LargerFontMakesRoomAndTellsTheDialog)
{
    NotingDialog dialog;
    test::Open(dialog);
    const QRect before = dialog.GetDlgItem(12)->geometry();
    const int layouts = dialog.m_layouts;
    QFont larger = dialog.font();
    larger.setPointSizeF(larger.pointSizeF() * 1.5);
    dialog.setFont(larger);
    const QRect after = dialog.GetDlgItem(12)->geometry();
    EXPECT_GT(after.width(), before.width());
    EXPECT_GT(after.x(), before.x());
    EXPECT_GT(dialog.m_layouts, layouts);
}

TEST(TemplateDialog, LongerCaptionGetsItsRoom)
{
    PlainDialog dialog(AllKinds, nullptr);
    test::Open(dialog);
    const CString caption = u"一个比原来长得多的按钮文字"_s;
    dialog.SetItemText(10, caption);
    EXPECT_GE(dialog.GetDlgItem(10)->width(),
              dialog.GetDlgItem(10)->fontMetrics().horizontalAdvance(caption));
}

TEST(TemplateDialog, NewCaptionIsAlsoSpoken)
{
    PlainDialog dialog(AllKinds, nullptr);
    test::Open(dialog);
    dialog.SetItemText(10, u"新建(&N)"_s);
    EXPECT_EQ(dialog.GetDlgItem(10)->accessibleName(), u"新建"_s);
}

TEST(TemplateDialog, DialogLargerThanTheScreenScrolls)
{
    static constexpr ControlRow rows[] = {{10, PushButton, u"远", {2000, 2000, 50, 14}}};
    static constexpr DialogTemplate huge{u"", 2100, 2100, rows};
    PlainDialog dialog(huge, nullptr);
    test::Open(dialog);
    EXPECT_LE(dialog.width(), dialog.screen()->availableSize().width());
    EXPECT_LE(dialog.height(), dialog.screen()->availableSize().height());
    test::Press(dialog, Qt::Key_Tab);
    dialog.GetDlgItem(10)->setFocus(Qt::TabFocusReason);
    EXPECT_GT(dialog.Content()->width(), dialog.width());
}

TEST(TemplateDialog, InitStepShowsTheMembers)
{
    NotingDialog dialog;
    dialog.m_text = u"文字"_s;
    test::Open(dialog);
    EXPECT_EQ(dialog.ItemText(12), u"文字"_s);
    EXPECT_TRUE(dialog.Item<QRadioButton>(17).isChecked());
}

TEST(TemplateDialog, ControlsAreMadeOnce)
{
    NotingDialog dialog;
    dialog.Create();
    const QWidget* edit = dialog.GetDlgItem(12);
    dialog.Create();
    EXPECT_EQ(dialog.GetDlgItem(12), edit);
    EXPECT_EQ(dialog.Notes(), CStringArray{u"init"_s});
}

TEST(TemplateDialog, OkStepReadsTheControls)
{
    NotingDialog dialog;
    test::Open(dialog);
    test::Type(dialog, 12, u"新"_s);
    test::Click(dialog, 16);
    test::Click(dialog, 1);
    EXPECT_EQ(dialog.m_text, u"新"_s);
    EXPECT_EQ(dialog.m_radio, 0);
    EXPECT_EQ(dialog.result(), IdOk);
}

TEST(TemplateDialog, RadioGroupsAreIndependent)
{
    PlainDialog dialog(AllKinds, nullptr);
    test::Open(dialog);
    test::Click(dialog, 16);
    test::Click(dialog, 18);
    EXPECT_TRUE(dialog.Item<QRadioButton>(16).isChecked());
    EXPECT_TRUE(dialog.Item<QRadioButton>(18).isChecked());
    test::Click(dialog, 17);
    EXPECT_FALSE(dialog.Item<QRadioButton>(16).isChecked());
}

TEST(TemplateDialog, ArrowKeyInARadioGroupCountsAsAClick)
{
    NotingDialog dialog;
    dialog.Note(DialogEvent::Command, 17, u"乙"_s);
    dialog.m_radio = 0;
    test::Open(dialog);
    dialog.GetDlgItem(16)->setFocus();
    test::Press(dialog, Qt::Key_Right);
    EXPECT_TRUE(dialog.Item<QRadioButton>(17).isChecked());
    EXPECT_TRUE(dialog.Notes().contains(u"乙"_s));
}
