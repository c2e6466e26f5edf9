#include "dialogs/secondary/DlgGetQdNumFixture.h"

#include "widgets/GroupBox.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QRadioButton>

#include <gtest/gtest.h>

#include <QtTest/QTest>

using namespace test::billnumber;

// The looks.

TEST_F(DlgGetQdNumTest, FrameOfTheNewNumberRunsBehindNoRadioButton)
{
    OpenWith(9, 3, BaseNumber);
    const auto& group = *m_dialog.findChild<QGroupBox*>();
    const auto& framed = dynamic_cast<const widgets::GroupBox&>(group);
    const QRect frame = framed.FrameRect().translated(group.pos());
    for (const int id : {Existing, New}) {
        const auto* radio = m_dialog.GetDlgItem(id);
        const QRect text(radio->pos(), radio->sizeHint().boundedTo(radio->size()));
        EXPECT_LT(text.center().y() + radio->fontMetrics().height() / 2, frame.top()) << id;
    }
}

// The history.

TEST_F(DlgGetQdNumTest, HistoryIsListedInItsOwnOrder)
{
    const CStringArray numbers{u"030801001009"_s, u"030801001001"_s, u"030801001005"_s};
    AddHistory(BaseNumber, numbers);
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(test::Lines(m_dialog, History), numbers);
    EXPECT_EQ(test::Entries(m_dialog, Source), CStringArray{CString()} + numbers);
    EXPECT_EQ(SelectedLine(), 0);
}

TEST_F(DlgGetQdNumTest, HistoryItemShowsNameAndUnitOnTwoLines)
{
    AddHistory(BaseNumber, {u"030801001009"_s, u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(m_dialog.ItemText(Detail), u"名称030801001009\nm"_s);
    test::Click(m_dialog, Existing);
    test::ClickLine(m_dialog, History, 1);
    EXPECT_EQ(m_dialog.ItemText(Detail), u"名称030801001001\nm"_s);
}

TEST_F(DlgGetQdNumTest, ItemShownAnewDropsTheSelectionOfItsText)
{
    AddHistory(BaseNumber, {u"030801001009"_s, u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    m_dialog.Item<QPlainTextEdit>(Detail).selectAll();
    test::Click(m_dialog, Existing);
    test::ClickLine(m_dialog, History, 1);
    EXPECT_FALSE(m_dialog.Item<QPlainTextEdit>(Detail).textCursor().hasSelection());
}

TEST_F(DlgGetQdNumTest, HistoryOfTheCallerIsReplacedByTheProjects)
{
    SQdInfo item;
    item.strNumber = u"caller"_s;
    m_dialog.AddHistoryItem(item);
    AddHistory(BaseNumber, {u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(test::Lines(m_dialog, History), CStringArray{u"030801001001"_s});
    EXPECT_EQ(m_dialog.ItemText(Detail), u"名称030801001001\nm"_s);
}

TEST_F(DlgGetQdNumTest, FailingHistoryCountsAsAnEmptyOne)
{
    SQdInfo item;
    item.strNumber = u"caller"_s;
    m_dialog.AddHistoryItem(item);
    m_guard.Host().Fail(test::Operation::GetQdInfoByQdNum);
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(test::Lines(m_dialog, History), CStringArray());
    EXPECT_FALSE(IsEnabled(Existing));
    EXPECT_EQ(Proposal(), u"001"_s);
}

// The two states.

TEST_F(DlgGetQdNumTest, OpensOnTheNewNumber)
{
    AddHistory(BaseNumber, {u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_TRUE(m_dialog.Item<QRadioButton>(New).isChecked());
    EXPECT_FALSE(IsEnabled(History));
    EXPECT_TRUE(IsEnabled(Suffix));
    EXPECT_TRUE(IsEnabled(Source));
    EXPECT_FALSE(IsEnabled(Base));
    EXPECT_TRUE(IsEnabled(Existing));
}

TEST_F(DlgGetQdNumTest, ExistingNumberEnablesTheListOnly)
{
    AddHistory(BaseNumber, {u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Existing);
    EXPECT_TRUE(IsEnabled(History));
    EXPECT_FALSE(IsEnabled(Suffix));
    EXPECT_FALSE(IsEnabled(Source));
    EXPECT_FALSE(IsEnabled(Base));
}

TEST_F(DlgGetQdNumTest, SwitchingThereAndBackKeepsATypedSuffix)
{
    AddHistory(BaseNumber, {u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    test::Type(m_dialog, Suffix, u"77"_s);
    test::Click(m_dialog, Existing);
    test::Click(m_dialog, New);
    EXPECT_EQ(Proposal(), u"77"_s);
    EXPECT_FALSE(IsEnabled(History));
    EXPECT_TRUE(IsEnabled(Suffix));
    EXPECT_TRUE(IsEnabled(Source));
}

TEST_F(DlgGetQdNumTest, ReturningToTheNewNumberTakesTheRadioButtonAsItIs)
{
    AddHistory(BaseNumber, {u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Existing);
    EXPECT_TRUE(m_dialog.Item<QRadioButton>(Existing).isChecked());
    test::Click(m_dialog, New);
    EXPECT_TRUE(m_dialog.Item<QRadioButton>(New).isChecked());
    test::Click(m_dialog, Ok);
    EXPECT_EQ(m_dialog.GetNumber(), BaseNumber + u"002"_s);
}

// OK with an existing number.

TEST_F(DlgGetQdNumTest, ExistingNumberIsTakenFromTheList)
{
    AddHistory(BaseNumber, {u"030801001001"_s, u"030801001002"_s});
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Existing);
    test::ClickLine(m_dialog, History, 1);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001002"_s);
    EXPECT_EQ(m_dialog.GetCopySource(), CString());
}

TEST_F(DlgGetQdNumTest, ClickWithControlKeepsTheChosenNumber)
{
    AddHistory(BaseNumber, {u"030801001001"_s, u"030801001002"_s});
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Existing);
    test::ClickLine(m_dialog, History, 1);
    auto& list = m_dialog.Item<QListWidget>(History);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      list.visualItemRect(list.item(1)).center());
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001002"_s);
}

TEST_F(DlgGetQdNumTest, ExistingNumberThatTheRuleHasIsRefusedWithTheBlankInTheText)
{
    AddHistory(BaseNumber, {u"030801001001"_s});
    m_dialog.AddUsedNumber(u"other"_s);
    m_dialog.AddUsedNumber(u"030801001001"_s);
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Existing);
    test::Click(m_dialog, Ok);
    ExpectRefusal(UsedText);
}

TEST_F(DlgGetQdNumTest, UsedNumbersCountLetterCase)
{
    AddHistory(BaseNumber, {u"030801001a"_s});
    m_dialog.AddUsedNumber(u"030801001A"_s);
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Existing);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001a"_s);
}

// OK with a new number.

TEST_F(DlgGetQdNumTest, SuffixWithOneDigitTooFewIsRefusedAndProposedAnew)
{
    AddHistory(BaseNumber, {u"030801001004"_s});
    OpenWith(9, 3, BaseNumber);
    test::Type(m_dialog, Suffix, u"07"_s);
    test::Click(m_dialog, Ok);
    ExpectRefusal(LengthText);
    EXPECT_EQ(Proposal(), u"005"_s);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001005"_s);
}

TEST_F(DlgGetQdNumTest, RefusedSuffixOfTwelveThreeIsReplacedByTheOneBehindTheHighest)
{
    AddHistory(BaseNumber, {u"030801001004"_s});
    OpenWith(12, 3, u"030801001009"_s);
    EXPECT_EQ(Proposal(), u"009"_s);
    test::Type(m_dialog, Suffix, u"1"_s);
    test::Click(m_dialog, Ok);
    ExpectRefusal(LengthText);
    EXPECT_EQ(Proposal(), u"005"_s);
}

TEST_F(DlgGetQdNumTest, NewNumberThatTheHistoryHoldsIsRefusedAndMayBeChanged)
{
    AddHistory(BaseNumber, {u"030801001004"_s});
    OpenWith(9, 3, BaseNumber);
    test::Type(m_dialog, Suffix, u"004"_s);
    test::Click(m_dialog, Ok);
    ExpectRefusal(TakenText);
    EXPECT_EQ(m_dialog.GetNumber(), u"030801001004"_s);
    EXPECT_EQ(m_dialog.ItemText(Base), BaseNumber);
    test::Type(m_dialog, Suffix, u"006"_s);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001006"_s);
}

TEST_F(DlgGetQdNumTest, NewNumberMayBeOneThatTheRuleOrTheLibraryHas)
{
    m_dialog.AddUsedNumber(u"030801001001"_s);
    AddToLibrary({u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001001"_s);
}

TEST_F(DlgGetQdNumTest, NewSuffixNeedNotBeDigits)
{
    OpenWith(9, 3, BaseNumber);
    test::Type(m_dialog, Suffix, u"新a-"_s);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001新a-"_s);
}

TEST_F(DlgGetQdNumTest, CopySourceIsEmptyWhenNothingWasChosen)
{
    AddHistory(BaseNumber, {u"030801001004"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(m_dialog.Item<QComboBox>(Source).currentIndex(), -1);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001005"_s);
    EXPECT_EQ(m_dialog.GetCopySource(), CString());
}

TEST_F(DlgGetQdNumTest, CopySourceIsTheChosenEntry)
{
    AddHistory(BaseNumber, {u"030801001004"_s, u"030801001002"_s});
    OpenWith(9, 3, BaseNumber);
    m_dialog.GetDlgItem(Source)->setFocus();
    for (int step = 0; step < 3; ++step)
        test::Press(m_dialog, Qt::Key_Down);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001005"_s);
    EXPECT_EQ(m_dialog.GetCopySource(), u"030801001002"_s);
}

// Ways out.

TEST_F(DlgGetQdNumTest, CancelEndsWithoutANumber)
{
    OpenWith(9, 3, BaseNumber);
    test::Click(m_dialog, Cancel);
    EXPECT_FALSE(m_dialog.isVisible());
    EXPECT_EQ(m_dialog.result(), dialogs::IdCancel);
}

TEST_F(DlgGetQdNumTest, EnterInTheSuffixTakesTheNumber)
{
    OpenWith(9, 3, BaseNumber);
    m_dialog.GetDlgItem(Suffix)->setFocus();
    test::Press(m_dialog, Qt::Key_Return);
    ExpectNumber(u"030801001001"_s);
}

TEST_F(DlgGetQdNumTest, ThousandRoundsLeaveNoWidgetBehind)
{
    AddHistory(BaseNumber, {u"030801001004"_s, u"030801001002"_s});
    m_guard.Host().SetEnCodeRule(9, 3);
    const auto before = QApplication::allWidgets().size();
    for (int round = 0; round < 1000; ++round) {
        CDlgGetQdNum dialog;
        dialog.SetNumber(BaseNumber);
        test::Open(dialog);
        test::Click(dialog, Existing);
        test::ClickLine(dialog, History, 1);
        test::Click(dialog, round % 2 == 0 ? Ok : Cancel);
    }
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}
