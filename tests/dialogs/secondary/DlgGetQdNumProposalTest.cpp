#include "dialogs/secondary/DlgGetQdNumFixture.h"

#include <QtWidgets/QRadioButton>

#include <gtest/gtest.h>

using namespace test::billnumber;

// Coding rule 9, 3: the picked number is the base, the suffix follows the highest of the history.

TEST_F(DlgGetQdNumTest, NineThreeWithoutHistoryProposes001BehindThePickedNumber)
{
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(m_dialog.ItemText(Base), BaseNumber);
    EXPECT_EQ(Proposal(), u"001"_s);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"030801001001"_s);
}

TEST_F(DlgGetQdNumTest, NineThreeProposesTheSuffixBehindTheHighest)
{
    AddHistory(BaseNumber, {u"030801001007"_s, u"030801001041"_s, u"030801001012"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(Proposal(), u"042"_s);
}

TEST_F(DlgGetQdNumTest, NineThreeWithHighest999ProposesZeros)
{
    AddHistory(BaseNumber, {u"030801001999"_s, u"030801001001"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(Proposal(), u"000"_s);
}

TEST_F(DlgGetQdNumTest, NineThreeWithHighest998ProposesTheLastSuffix)
{
    AddHistory(BaseNumber, {u"030801001998"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(Proposal(), u"999"_s);
}

TEST_F(DlgGetQdNumTest, SuffixOfTheHistoryThatIsNoNumberCountsAsZero)
{
    AddHistory(BaseNumber, {u"030801001abc"_s});
    OpenWith(9, 3, BaseNumber);
    EXPECT_EQ(Proposal(), u"001"_s);
}

// Coding rule 10, 2: as 9, 3 with two characters.

TEST_F(DlgGetQdNumTest, TenTwoKeepsThePickedNumberAndProposesTwoDigits)
{
    OpenWith(10, 2, u"0308010010"_s);
    EXPECT_EQ(m_dialog.ItemText(Base), u"0308010010"_s);
    EXPECT_EQ(Proposal(), u"01"_s);
}

TEST_F(DlgGetQdNumTest, TenTwoWithHighest99ProposesZeros)
{
    AddHistory(u"0308010010"_s, {u"030801001099"_s});
    OpenWith(10, 2, u"0308010010"_s);
    EXPECT_EQ(Proposal(), u"00"_s);
}

// Coding rule 12, 1: the last character is the suffix.

TEST_F(DlgGetQdNumTest, TwelveOneCutsOneCharacterAndProposesBehindTheHighest)
{
    AddHistory(u"03080100100"_s, {u"030801001004"_s});
    OpenWith(12, 1, u"030801001001"_s);
    EXPECT_EQ(m_dialog.ItemText(Base), u"03080100100"_s);
    EXPECT_EQ(Proposal(), u"5"_s);
}

TEST_F(DlgGetQdNumTest, TwelveOneWithHighest9ProposesZero)
{
    AddHistory(u"03080100100"_s, {u"030801001009"_s});
    OpenWith(12, 1, u"030801001001"_s);
    EXPECT_EQ(Proposal(), u"0"_s);
}

// Coding rule 12, 3: the last three characters are the suffix, which is kept where it is free.

TEST_F(DlgGetQdNumTest, TwelveThreeWithoutHistoryCutsThePickedNumberAndDisablesTheExistingOnes)
{
    AddToLibrary({u"030801001005"_s});
    OpenWith(12, 3, u"030801001005"_s);
    EXPECT_EQ(m_dialog.ItemText(Base), BaseNumber);
    EXPECT_EQ(Proposal(), u"005"_s);
    EXPECT_FALSE(IsEnabled(Existing));
    EXPECT_EQ(m_guard.Host().Calls(test::Operation::IsInQdk), 0);
}

TEST_F(DlgGetQdNumTest, TwelveThreeWithoutHistoryReadsThePickedSuffixAsANumber)
{
    OpenWith(12, 3, u"030801001abc"_s);
    EXPECT_EQ(Proposal(), u"000"_s);
}

TEST_F(DlgGetQdNumTest, TwelveThreeWithAnEmptyPickedNumberProposes001)
{
    OpenWith(12, 3, {});
    EXPECT_EQ(Proposal(), u"001"_s);
}

TEST_F(DlgGetQdNumTest, TwelveThreeKeepsAPickedSuffixThatTheHistoryDoesNotHold)
{
    AddHistory(BaseNumber, {u"030801001001"_s});
    AddToLibrary({u"030801001x7y"_s});
    OpenWith(12, 3, u"030801001x7y"_s);
    EXPECT_EQ(Proposal(), u"x7y"_s);
    EXPECT_EQ(m_guard.Host().Calls(test::Operation::IsInQdk), 0);
}

TEST_F(DlgGetQdNumTest, TwelveThreeCountsPastTheLibraryAndTheHistory)
{
    AddHistory(BaseNumber, {u"030801001001"_s, u"030801001003"_s});
    AddToLibrary({u"030801001001"_s, u"030801001002"_s, u"030801001004"_s});
    OpenWith(12, 3, u"030801001001"_s);
    EXPECT_EQ(Proposal(), u"005"_s);
}

TEST_F(DlgGetQdNumTest, TwelveThreeMayOutgrowThreeDigitsAndIsThenRefused)
{
    AddHistory(BaseNumber, {u"030801001999"_s});
    OpenWith(12, 3, u"030801001999"_s);
    EXPECT_EQ(Proposal(), u"1000"_s);
    test::Click(m_dialog, Ok);
    ExpectRefusal(LengthText);
    EXPECT_EQ(Proposal(), u"000"_s);
}

TEST_F(DlgGetQdNumTest, TwelveThreeEndsItsCountWhereTheLibraryKnowsEveryNumber)
{
    AddHistory(BaseNumber, {u"030801001999"_s});
    for (int suffix = 999; suffix <= 10001; ++suffix)
        AddToLibrary({BaseNumber + CString::number(suffix)});
    OpenWith(12, 3, u"030801001999"_s);
    EXPECT_EQ(Proposal(), u"9999"_s);
    test::Click(m_dialog, Ok);
    ExpectRefusal(LengthText);
}

// A missing or unknown coding rule.

TEST_F(DlgGetQdNumTest, MissingRuleLeavesTheDialogAsItsTemplateMadeIt)
{
    AddHistory(BaseNumber, {u"030801001001"_s});
    for (const auto& [length, suffixLength] : {std::pair{-1, 3}, std::pair{9, -1}, std::pair{8, 2}}) {
        m_guard.Host().SetEnCodeRule(length, suffixLength);
        CDlgGetQdNum dialog;
        dialog.SetNumber(BaseNumber);
        test::Open(dialog);
        EXPECT_EQ(dialog.ItemText(Base), CString());
        EXPECT_EQ(dialog.ItemText(Suffix), CString());
        EXPECT_EQ(test::Lines(dialog, History), CStringArray());
        EXPECT_EQ(test::Entries(dialog, Source), CStringArray());
        EXPECT_TRUE(dialog.Item<QRadioButton>(New).isChecked());
        EXPECT_TRUE(dialog.GetDlgItem(Existing)->isEnabled());
        EXPECT_TRUE(dialog.GetDlgItem(History)->isEnabled());
    }
}

TEST_F(DlgGetQdNumTest, UnknownRuleRefusesASuffixOfAnotherLength)
{
    OpenWith(8, 2, BaseNumber);
    test::Type(m_dialog, Suffix, u"123"_s);
    test::Click(m_dialog, Ok);
    ExpectRefusal(LengthText);
    EXPECT_EQ(Proposal(), u"01"_s);
}

TEST_F(DlgGetQdNumTest, UnknownRuleGivesANumberWithoutABase)
{
    OpenWith(8, 2, BaseNumber);
    test::Type(m_dialog, Suffix, u"12"_s);
    test::Click(m_dialog, Ok);
    ExpectNumber(u"12"_s);
}

TEST_F(DlgGetQdNumTest, MissingRuleRefusesEverySuffix)
{
    OpenWith(-1, -1, BaseNumber);
    test::Click(m_dialog, Ok);
    ExpectRefusal(LengthText);
    EXPECT_EQ(Proposal(), u"0"_s);
    test::Click(m_dialog, Ok);
    ExpectRefusal(LengthText);
}

TEST_F(DlgGetQdNumTest, UnknownRuleGivesNoNumberWhereAnExistingOneIsChosen)
{
    OpenWith(8, 2, BaseNumber);
    test::Click(m_dialog, Existing);
    test::Click(m_dialog, Ok);
    ExpectNumber(CString());
}
