#include "dialogs/AutoConfigFixture.h"

#include <QtWidgets/QListWidget>

using namespace test::autoconfig;

// Picking bill items and quota items.

namespace {

/// The dialog on 给水管 with one rule, which is selected, and the default rule.
class AutoConfigPicking : public AutoConfigTest
{
protected:
    AutoConfigPicking() { m_id = PrepareRule({}); }
    void AddLibraryItem(const SQdInfo& item) { Host().AddBillItem(item); }
    std::vector<QdNode*> Bills() const { return Rule(m_id).GetQd(); }
    void ExpectSilenceAndNothingAdded(const CStringArray& before)
    {
        EXPECT_EQ(Stored(), before);
        EXPECT_EQ(Messages().Texts(), CStringArray());
    }
    void ExpectWarning(const CString& text)
    {
        ASSERT_EQ(Messages().Messages().size(), 1U);
        EXPECT_EQ(Messages().Messages().front().text, text);
        EXPECT_EQ(Messages().Messages().front().kind, platform::MessageKind::Warning);
        EXPECT_EQ(Messages().Messages().front().caption, u"Norvasoft"_s);
        EXPECT_TRUE(Messages().Messages().front().owned);
    }

    int m_id = 0;
};

using AutoConfigBillPicked = AutoConfigPicking;
using AutoConfigQuotaPicked = AutoConfigPicking;

} // namespace

TEST_F(AutoConfigBillPicked, FillsTheRecordFromTheLibraryUnderTheNumberOfTheDialog)
{
    Open();
    EXPECT_EQ(PickBill(u"031001001"_s), 0);
    ASSERT_EQ(Bills().size(), 1U);
    EXPECT_EQ(Texts(Bills()[0]->GetRecord()), u"031001001003||镀锌钢管|m|1||QD2013|按设计图示尺寸计算|是"_s);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001003"_s});
    EXPECT_EQ(SelectedGridRow(), 1);
    EXPECT_EQ(Grid().GetFocusCell(), (GridCellId{1, 1}));
    EXPECT_EQ(m_dialog->focusWidget(), &Grid());
}

TEST_F(AutoConfigBillPicked, WithoutFittingsIsNo)
{
    AddLibraryItem({0, 7, 0, u"030101001"_s, u"泵"_s, u"台"_s, u"N"_s, {}, {}});
    Open();
    PickBill(u"030101001"_s);
    EXPECT_EQ(Texts(Bills()[0]->GetRecord()), u"030101001001||泵|台|7||QD2013|N|否"_s);
}

TEST_F(AutoConfigBillPicked, NullRecordIsAnsweredWithMinusOne)
{
    Open();
    const CStringArray before = Stored();
    EXPECT_EQ(m_windows.Bill().PickBill(nullptr), -1);
    ExpectSilenceAndNothingAdded(before);
}

TEST_F(AutoConfigBillPicked, CancelledNumberLeavesTheRule)
{
    Open();
    const CStringArray before = Stored();
    InNextDialog([](dialogs::TemplateDialog& dialog) { test::Click(dialog, dialogs::IdCancel); });
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    EXPECT_EQ(m_windows.Bill().PickBill(&picked), 0);
    ExpectSilenceAndNothingAdded(before);
}

TEST_F(AutoConfigBillPicked, NumberThatTheLibraryLacksIsNotAdded)
{
    Open();
    const CStringArray before = Stored();
    PickBill(u"039999999"_s);
    ExpectSilenceAndNothingAdded(before);
}

TEST_F(AutoConfigBillPicked, WithoutASelectedRuleNoDialogComesUp)
{
    Open();
    const CStringArray before = Stored();
    SelectCategory(u"管道"_s);
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    EXPECT_EQ(m_windows.Bill().PickBill(&picked), 0);
    ExpectSilenceAndNothingAdded(before);
}

TEST_F(AutoConfigBillPicked, NumberOfTheRuleIsNotTakenTwiceFromTheHistory)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    InNextDialog([](dialogs::TemplateDialog& dialog) {
        test::Click(dialog, 1111);
        test::ClickLine(dialog, 1113, 0);
        test::Click(dialog, dialogs::IdOk);
        EXPECT_TRUE(dialog.isVisible());
        test::Click(dialog, dialogs::IdCancel);
    });
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    m_windows.Bill().PickBill(&picked);
    ExpectWarning(u"同一构件不能多次套同一清单 !"_s);
    EXPECT_EQ(Bills().size(), 1U);
}

TEST_F(AutoConfigBillPicked, LastOfEqualNumbersIsSelected)
{
    PrepareBill(m_id, u"031001001003"_s, {u"8-87"_s});
    PrepareBill(m_id, u"031001001009"_s);
    Open();
    PickBill(u"031001001"_s);
    EXPECT_EQ(GridColumn(),
              (CStringArray{u"031001001003"_s, u"8-87"_s, u"031001001009"_s, u"031001001003"_s}));
    EXPECT_EQ(SelectedGridRow(), 4);
}

TEST_F(AutoConfigBillPicked, MissingRuleComesFromTheFirstCalculationItemOfTheCategory)
{
    AddLibraryItem({0, 1, 1, u"030101001"_s, u"泵"_s, u"台"_s, {}, {}, {}});
    Open();
    PickBill(u"030101001"_s);
    EXPECT_EQ(Bills()[0]->GetRecord().strFormula, u"AM_Length"_s);
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigBillPicked, FurtherCalculationItemsOfTheCategoryAreNotLookedAt)
{
    Host().AddCalItem(u"给排水\\管道\\给水管"_s, {u"N"_s, 0, u"AM_Count"_s, u"个数"_s});
    AddLibraryItem({0, 1, 1, u"030101001"_s, u"泵"_s, u"台"_s, {}, {}, {}});
    Open();
    PickBill(u"030101001"_s);
    EXPECT_EQ(Bills()[0]->GetRecord().strFormula, u"AM_Length"_s);
    EXPECT_EQ(Host().Calls(test::Operation::GetCalItemInfo), 1);
}

TEST_F(AutoConfigBillPicked, MissingRuleOfACategoryWithoutCalculationItemsIsWarnedOfAndTheAddGoesOn)
{
    Host().Fail(test::Operation::GetCalItems);
    AddLibraryItem({0, 1, 1, u"030101001"_s, u"泵"_s, u"台"_s, {}, {}, {}});
    Open();
    PickBill(u"030101001"_s);
    ExpectWarning(u"计算规则不对应!"_s);
    ASSERT_EQ(Bills().size(), 1U);
    EXPECT_EQ(Bills()[0]->GetRecord().strFormula, CString());
}

TEST_F(AutoConfigBillPicked, UnknownCalculationItemLeavesTheRuleEmptyWithoutAWord)
{
    Host().Fail(test::Operation::GetCalItemInfo);
    AddLibraryItem({0, 1, 1, u"030101001"_s, u"泵"_s, u"台"_s, {}, {}, {}});
    Open();
    PickBill(u"030101001"_s);
    ASSERT_EQ(Bills().size(), 1U);
    EXPECT_EQ(Bills()[0]->GetRecord().strFormula, CString());
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigBillPicked, RuleThatIsThereIsNeverLookedUp)
{
    Host().Fail(test::Operation::GetCalItems);
    Open();
    PickBill(u"031001001"_s);
    EXPECT_EQ(Host().Calls(test::Operation::GetCalItems), 0);
    EXPECT_EQ(Bills()[0]->GetRecord().strFormula, u"按设计图示尺寸计算"_s);
}

TEST_F(AutoConfigBillPicked, RuleThatGoesWhileTheNumberIsAskedForIsNotAddedTo)
{
    Open();
    InNextDialog([this](dialogs::TemplateDialog& dialog) {
        // The host, not the user: the tree is behind a modal dialog.
        Tree().setCurrentItem(Category(u"管道"_s));
        test::Click(dialog, dialogs::IdOk);
    });
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    EXPECT_EQ(m_windows.Bill().PickBill(&picked), 0);
    EXPECT_TRUE(Bills().empty());
    EXPECT_EQ(Messages().Texts(), CStringArray());
}

TEST_F(AutoConfigBillPicked, PickedUnitCodeGivesWayToTheUnitsNumberAtTheFirstFlush)
{
    AddLibraryItem({0, 5, 1, u"030101001"_s, u"管"_s, u"m"_s, u"L"_s, {}, {}});
    AddLibraryItem({0, 5, 1, u"030101002"_s, u"管"_s, u" 10m"_s, u"L"_s, {}, {}});
    AddLibraryItem({0, 5, 1, u"030101003"_s, u"管"_s, u"0.5m"_s, u"L"_s, {}, {}});
    AddLibraryItem({0, 5, 1, u"030101004"_s, u"管"_s, u"-3m"_s, u"L"_s, {}, {}});
    Open();
    for (const CString& number : {u"030101001"_s, u"030101002"_s, u"030101003"_s, u"030101004"_s})
        PickBill(number);
    const auto codes = [this] {
        CStringArray texts;
        for (const QdNode* bill : Bills())
            texts.append(bill->GetRecord().strUnitCode);
        return texts;
    };
    EXPECT_EQ(codes(), (CStringArray{u"5"_s, u"5"_s, u"5"_s, u"5"_s}));
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(codes(), (CStringArray{u"1"_s, u"10"_s, u"1"_s, u"1"_s}));
}

TEST_F(AutoConfigQuotaPicked, GoesUnderTheSelectedBill)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    EXPECT_EQ(PickQuota(u"8-87"_s), 0);
    ASSERT_EQ(Bills()[0]->GetDe().size(), 2U);
    EXPECT_EQ(Texts(Bills()[0]->GetDe()[1]->GetRecord()), u"定额8-87|m|5|8-87|QDDE2018|L|是"_s);
    EXPECT_EQ(GridColumn(), (CStringArray{u"031001001001"_s, u"8-1"_s, u"8-87"_s, u"031001001002"_s}));
    EXPECT_EQ(SelectedGridRow(), 3);
}

TEST_F(AutoConfigQuotaPicked, GoesUnderTheBillAboveASelectedQuotaRow)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s, u"8-2"_s});
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    ClickCell(3, 1);
    PickQuota(u"8-87"_s);
    EXPECT_EQ(Stored().first(), u"2  [031001001001(8-1,8-2,8-87) 031001001002]"_s);
}

TEST_F(AutoConfigQuotaPicked, WithAnEmptyGridDoesNothingInBillMode)
{
    Open();
    const CStringArray before = Stored();
    EXPECT_EQ(PickQuota(u"8-87"_s), 0);
    ExpectSilenceAndNothingAdded(before);
}

TEST_F(AutoConfigQuotaPicked, WithTwoRowsSelectedDoesNothingInBillMode)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s, u"8-2"_s});
    Open();
    ClickCell(2, 1);
    ClickCell(3, 1, Qt::ShiftModifier);
    const CStringArray before = Stored();
    PickQuota(u"8-87"_s);
    ExpectSilenceAndNothingAdded(before);
}

TEST_F(AutoConfigQuotaPicked, WithTheHeaderSelectedAfterADeletionDoesNothingInBillMode)
{
    PrepareBill(m_id, u"031001001001"_s);
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    ClickCell(1, 1);
    Press(DeleteItemsButton);
    const CStringArray before = Stored();
    PickQuota(u"8-87"_s);
    ExpectSilenceAndNothingAdded(before);
    ClickCell(1, 1);
    PickQuota(u"8-87"_s);
    EXPECT_EQ(Stored().first(), u"2  [031001001002(8-87)]"_s);
}

TEST_F(AutoConfigQuotaPicked, GoesIntoTheRuleInQuotaMode)
{
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    PickQuota(u"8-87"_s);
    ASSERT_EQ(Rule(m_id).GetDe().size(), 1U);
    EXPECT_EQ(Texts(Rule(m_id).GetDe()[0]->GetRecord()), u"定额8-87|m|5|8-87|DE2018|L|是"_s);
    EXPECT_EQ(GridColumn(), CStringArray{u"8-87"_s});
    EXPECT_EQ(SelectedGridRow(), 1);
}

TEST_F(AutoConfigQuotaPicked, MissingRuleIsResolvedFromTheCategory)
{
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    PickQuota(u"8-87"_s, CString());
    EXPECT_EQ(Rule(m_id).GetDe()[0]->GetRecord().strFormula, u"AM_Length"_s);
}

TEST_F(AutoConfigQuotaPicked, RefusedAddIsWarnedOfAndTheGridStays)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    // The bill goes behind the dialog's back, as a host may take it away.
    CPath path = WaterPipes;
    path.configId = m_id;
    m_dialog->Presenter().DelQd(path, {1});
    PickQuota(u"8-87"_s);
    ExpectWarning(u"套定额失败!"_s);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
}

TEST_F(AutoConfigQuotaPicked, NullRecordIsAnsweredWithMinusOne)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    EXPECT_EQ(m_windows.Bill().PickQuota(nullptr), -1);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
}

TEST_F(AutoConfigBillPicked, RuleOfACalculationItemIsTheSecondOfItsTexts)
{
    const RuleCodeStruct item{u"代号"_s, 7, u"AM_Rule*2"_s, u"名称"_s};
    Host().AddCalItem(u"给排水\\管道\\排水管"_s, item);
    AddLibraryItem({0, 1, 1, u"030101001"_s, u"泵"_s, u"台"_s, {}, {}, {}});
    Open();
    SelectCategory(u"排水管"_s);
    PickBill(u"030101001"_s);
    EXPECT_EQ(Rule(1, DrainPipes).GetQd(1)->GetRecord().strFormula, u"AM_Rule*2"_s);
}

// Nothing of the number's dialog shows the items then, so the test adds the line that belongs to the first.
TEST_F(AutoConfigBillPicked, BillsOfTheRuleWithTheSameNineCharactersAreTheHistoryWhereTheCodingRuleIsUnknown)
{
    Host().SetEnCodeRule(-1, -1);
    PrepareBill(m_id, u"031002001001"_s);
    PrepareBill(m_id, u"031001001005"_s);
    Open();
    InNextDialog([](dialogs::TemplateDialog& dialog) {
        EXPECT_EQ(test::Lines(dialog, 1113), CStringArray());
        dialog.Item<QListWidget>(1113).addItem(u"031001001005"_s);
        test::ClickLine(dialog, 1113, 0);
        EXPECT_EQ(dialog.ItemText(1069), u"清单031001001005\n"_s); // and the unit, which is not known
        test::Click(dialog, dialogs::IdCancel);
    });
    const SPickedQd picked{0, 0, 0, u"031001001"_s};
    m_windows.Bill().PickBill(&picked);
}

// A bill whose first eight characters agree is none of them, one whose nine stand inside the picked number
// is.
TEST_F(AutoConfigBillPicked, BillsOfTheHistoryShareNineCharactersWithAnyPartOfThePickedNumber)
{
    Host().SetEnCodeRule(-1, -1);
    PrepareBill(m_id, u"031001009001"_s);
    PrepareBill(m_id, u"031001001005"_s);
    Open();
    InNextDialog([](dialogs::TemplateDialog& dialog) {
        dialog.Item<QListWidget>(1113).addItem(u"the first"_s);
        test::ClickLine(dialog, 1113, 0);
        EXPECT_EQ(dialog.ItemText(1069), u"清单031001001005\n"_s);
        test::Click(dialog, dialogs::IdCancel);
    });
    const SPickedQd picked{0, 0, 0, u"A031001001B"_s};
    m_windows.Bill().PickBill(&picked);
}

TEST_F(AutoConfigQuotaPicked, NumberThatDiffersInLetterCaseIsAnotherNumber)
{
    PrepareBill(m_id, u"031001001001"_s);
    PrepareBill(m_id, u"031001001002"_s, {u"A8-87"_s});
    Open();
    PickQuota(u"a8-87"_s);
    ASSERT_EQ(GridColumn(), (CStringArray{u"031001001001"_s, u"a8-87"_s, u"031001001002"_s, u"A8-87"_s}));
    EXPECT_EQ(SelectedGridRow(), 2);
}

TEST_F(AutoConfigQuotaPicked, RuleOfABigCategoryWithoutChildrenIsAskedForUnderATextThatBeginsWithABackslash)
{
    SetMode(SQdDeInfo::QuotaMode);
    Host().RenameSmall(u"121"_s, u"配管配线"_s);
    Host().AddCalItem(u"\\给排水\\阀门"_s, {u"L"_s, 0, u"AM_Length"_s, u"长度"_s});
    Open();
    SelectCategory(u"阀门"_s); // a leaf by now, of which the store knows nothing
    Messages().Clear();
    PickQuota(u"8-87"_s, CString());
    EXPECT_EQ(Messages().Texts(), CStringArray{u"套定额失败!"_s}); // and not that it has no calculation items
}
