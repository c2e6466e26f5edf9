#include "widgets/ListControls.h"

#include "widgets/Collation.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Collation, FullWidthOperatorsComeFirst)
{
    EXPECT_LT(widgets::Collate(u"＝"_s, u"≠"_s), 0);
    EXPECT_LT(widgets::Collate(u"＜"_s, u"≤"_s), 0);
    EXPECT_LT(widgets::Collate(u"＞"_s, u"≥"_s), 0);
}

TEST(Collation, ChineseIsOrderedByItsSoundAndNumbersByTheirValue)
{
    EXPECT_LT(widgets::Collate(u"安"_s, u"波"_s), 0);
    EXPECT_LT(widgets::Collate(u"波"_s, u"张"_s), 0);
    EXPECT_LT(widgets::Collate(u"规则9"_s, u"规则10"_s), 0);
    EXPECT_EQ(widgets::Collate(u"规则9"_s, u"规则9"_s), 0);
}

TEST(ListControls, SortedListPutsEntriesInTheirPlace)
{
    QListWidget list;
    widgets::SetSorted(list, true);
    EXPECT_EQ(widgets::AddString(list, u"张"_s), 0);
    EXPECT_EQ(widgets::AddString(list, u"安"_s), 0);
    EXPECT_EQ(widgets::AddString(list, u"波"_s), 1);
}

TEST(ListControls, InsertingByIndexDisregardsTheOrderOfASortedList)
{
    QListWidget list;
    widgets::SetSorted(list, true);
    widgets::InsertString(list, 0, u"张"_s);
    widgets::InsertString(list, 1, u"安"_s);
    EXPECT_EQ(list.item(0)->text(), u"张"_s);
}

TEST(ListControls, UnsortedListKeepsTheOrderOfAdding)
{
    QListWidget list;
    EXPECT_EQ(widgets::AddString(list, u"b"_s), 0);
    EXPECT_EQ(widgets::AddString(list, u"a"_s), 1);
}

TEST(ListControls, SortedComboPreselectsTheFirstOperatorByEntryZero)
{
    for (const auto& [first, second] :
         {std::pair{u"＝"_s, u"≠"_s}, std::pair{u"＜"_s, u"≤"_s}, std::pair{u"＞"_s, u"≥"_s}}) {
        QComboBox combo;
        widgets::SetSorted(combo, true);
        widgets::AddString(combo, second);
        widgets::AddString(combo, first);
        widgets::SetCurSel(combo, 0);
        EXPECT_EQ(combo.currentText(), first);
    }
}

TEST(ListControls, AddedEntrySelectsNothing)
{
    QComboBox combo;
    widgets::AddString(combo, u"a"_s);
    EXPECT_EQ(combo.currentIndex(), -1);
    QListWidget list;
    widgets::AddString(list, u"a"_s);
    EXPECT_EQ(widgets::GetCurSel(list), -1);
}

TEST(ListControls, AddedEntryKeepsATypedTextAndASelection)
{
    QComboBox combo;
    combo.setEditable(true);
    combo.setEditText(u"typed"_s);
    widgets::AddString(combo, u"a"_s);
    EXPECT_EQ(combo.currentText(), u"typed"_s);
    widgets::SetCurSel(combo, 0);
    widgets::AddString(combo, u"b"_s);
    EXPECT_EQ(combo.currentText(), u"a"_s);
}

TEST(ListControls, ResetTakesEntriesAndTypedText)
{
    QComboBox combo;
    combo.setEditable(true);
    widgets::AddString(combo, u"a"_s);
    combo.setEditText(u"typed"_s);
    widgets::ResetContent(combo);
    EXPECT_EQ(combo.count(), 0);
    EXPECT_EQ(combo.currentText(), CString());
}

TEST(ListControls, EntryIsFoundByItsExactTextOnly)
{
    QListWidget list;
    for (const CString& text : {u"abc"_s, u"ab"_s, u"ab"_s})
        widgets::AddString(list, text);
    EXPECT_EQ(widgets::FindStringExact(list, u"ab"_s), 1);
    EXPECT_EQ(widgets::FindStringExact(list, u"AB"_s), -1);
}

TEST(ListControls, SelectionOfAListCanBeTakenAway)
{
    QListWidget list;
    widgets::AddString(list, u"a"_s);
    widgets::SetCurSel(list, 0);
    EXPECT_EQ(widgets::GetCurSel(list), 0);
    widgets::SetCurSel(list, -1);
    EXPECT_EQ(widgets::GetCurSel(list), -1);
}

TEST(ListControls, SelectionByCodeIsSilent)
{
    QListWidget list;
    QTabWidget tab;
    tab.addTab(new QWidget, u"0"_s);
    tab.addTab(new QWidget, u"1"_s);
    QComboBox combo;
    int heard = 0;
    QObject::connect(&list, &QListWidget::itemSelectionChanged, [&] { ++heard; });
    QObject::connect(&tab, &QTabWidget::currentChanged, [&] { ++heard; });
    QObject::connect(&combo, &QComboBox::currentIndexChanged, [&] { ++heard; });
    widgets::AddString(list, u"a"_s);
    widgets::AddString(combo, u"a"_s);
    widgets::SetCurSel(list, 0);
    widgets::SetCurSel(combo, 0);
    widgets::SetCurSel(tab, 1);
    widgets::ResetContent(list);
    widgets::ResetContent(combo);
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(tab.currentIndex(), 1);
}
