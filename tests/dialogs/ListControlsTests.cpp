#include "dialogs/ListControls.h"

#include "dialogs/Collation.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Collation, FullWidthOperatorsComeFirst)
{
    EXPECT_LT(dialogs::Collate(u"＝"_s, u"≠"_s), 0);
    EXPECT_LT(dialogs::Collate(u"＜"_s, u"≤"_s), 0);
    EXPECT_LT(dialogs::Collate(u"＞"_s, u"≥"_s), 0);
}

TEST(Collation, ChineseIsOrderedByItsSoundAndNumbersByTheirValue)
{
    EXPECT_LT(dialogs::Collate(u"安"_s, u"波"_s), 0);
    EXPECT_LT(dialogs::Collate(u"波"_s, u"张"_s), 0);
    EXPECT_LT(dialogs::Collate(u"规则9"_s, u"规则10"_s), 0);
    EXPECT_EQ(dialogs::Collate(u"规则9"_s, u"规则9"_s), 0);
}

TEST(ListControls, SortedListPutsEntriesInTheirPlace)
{
    QListWidget list;
    dialogs::SetSorted(list, true);
    EXPECT_EQ(dialogs::AddString(list, u"张"_s), 0);
    EXPECT_EQ(dialogs::AddString(list, u"安"_s), 0);
    EXPECT_EQ(dialogs::AddString(list, u"波"_s), 1);
}

TEST(ListControls, InsertingByIndexDisregardsTheOrderOfASortedList)
{
    QListWidget list;
    dialogs::SetSorted(list, true);
    dialogs::InsertString(list, 0, u"张"_s);
    dialogs::InsertString(list, 1, u"安"_s);
    EXPECT_EQ(list.item(0)->text(), u"张"_s);
}

TEST(ListControls, UnsortedListKeepsTheOrderOfAdding)
{
    QListWidget list;
    EXPECT_EQ(dialogs::AddString(list, u"b"_s), 0);
    EXPECT_EQ(dialogs::AddString(list, u"a"_s), 1);
}

TEST(ListControls, SortedComboPreselectsTheFirstOperatorByEntryZero)
{
    for (const auto& [first, second] :
         {std::pair{u"＝"_s, u"≠"_s}, std::pair{u"＜"_s, u"≤"_s}, std::pair{u"＞"_s, u"≥"_s}}) {
        QComboBox combo;
        dialogs::SetSorted(combo, true);
        dialogs::AddString(combo, second);
        dialogs::AddString(combo, first);
        dialogs::SetCurSel(combo, 0);
        EXPECT_EQ(combo.currentText(), first);
    }
}

TEST(ListControls, AddedEntrySelectsNothing)
{
    QComboBox combo;
    dialogs::AddString(combo, u"a"_s);
    EXPECT_EQ(combo.currentIndex(), -1);
    QListWidget list;
    dialogs::AddString(list, u"a"_s);
    EXPECT_EQ(dialogs::GetCurSel(list), -1);
}

TEST(ListControls, AddedEntryKeepsATypedTextAndASelection)
{
    QComboBox combo;
    combo.setEditable(true);
    combo.setEditText(u"typed"_s);
    dialogs::AddString(combo, u"a"_s);
    EXPECT_EQ(combo.currentText(), u"typed"_s);
    dialogs::SetCurSel(combo, 0);
    dialogs::AddString(combo, u"b"_s);
    EXPECT_EQ(combo.currentText(), u"a"_s);
}

TEST(ListControls, ResetTakesEntriesAndTypedText)
{
    QComboBox combo;
    combo.setEditable(true);
    dialogs::AddString(combo, u"a"_s);
    combo.setEditText(u"typed"_s);
    dialogs::ResetContent(combo);
    EXPECT_EQ(combo.count(), 0);
    EXPECT_EQ(combo.currentText(), CString());
}

TEST(ListControls, EntryIsFoundByItsExactTextOnly)
{
    QListWidget list;
    for (const CString& text : {u"abc"_s, u"ab"_s, u"ab"_s})
        dialogs::AddString(list, text);
    EXPECT_EQ(dialogs::FindStringExact(list, u"ab"_s), 1);
    EXPECT_EQ(dialogs::FindStringExact(list, u"AB"_s), -1);
}

TEST(ListControls, SelectionOfAListCanBeTakenAway)
{
    QListWidget list;
    dialogs::AddString(list, u"a"_s);
    dialogs::SetCurSel(list, 0);
    EXPECT_EQ(dialogs::GetCurSel(list), 0);
    dialogs::SetCurSel(list, -1);
    EXPECT_EQ(dialogs::GetCurSel(list), -1);
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
    dialogs::AddString(list, u"a"_s);
    dialogs::AddString(combo, u"a"_s);
    dialogs::SetCurSel(list, 0);
    dialogs::SetCurSel(combo, 0);
    dialogs::SetCurSel(tab, 1);
    dialogs::ResetContent(list);
    dialogs::ResetContent(combo);
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(tab.currentIndex(), 1);
}
