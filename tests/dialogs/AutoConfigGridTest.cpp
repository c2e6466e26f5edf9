#include "dialogs/AutoConfigFixture.h"

#include <QtCore/QAbstractItemModel>
#include <QtGui/QColor>

using namespace test::autoconfig;

// What the grid shows of a rule, when an edit reaches the tree, and deleting.

namespace {

/// The dialog on 给水管 with one rule, which is selected, and the default rule.
class AutoConfigGrid : public AutoConfigTest
{
protected:
    AutoConfigGrid() { m_id = PrepareRule({}); }
    const QdStruct& BillRecord(int id = 1) const { return Rule(m_id).GetQd(id)->GetRecord(); }
    const DeStruct& QuotaRecord() const { return Rule(m_id).GetQd(1)->GetDe(1)->GetRecord(); }
    QColor BackOf(int row, int column) const
    {
        const auto* model = Grid().model();
        return model->data(model->index(row - 1, column - 1), Qt::BackgroundRole).value<QColor>();
    }

    int m_id = 0;
};

using AutoConfigDelete = AutoConfigGrid;

} // namespace

TEST_F(AutoConfigGrid, ShowsQuotaRowsBelowTheirBillRowWithKindAndIdInTheItemData)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s, u"8-2"_s});
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    EXPECT_EQ(GridColumn(), (CStringArray{u"031001001001"_s, u"8-1"_s, u"8-2"_s, u"031001001002"_s}));
    const std::vector<std::pair<int, int>> kindsAndIds{{0, 1}, {1, 1}, {1, 2}, {0, 2}};
    for (int row = 1; row <= 4; ++row) {
        EXPECT_EQ(Grid().GetItemData(row, 1), kindsAndIds[std::size_t(row - 1)].first);
        EXPECT_EQ(Grid().GetItemData(row, 0), kindsAndIds[std::size_t(row - 1)].second);
    }
    EXPECT_EQ(GridColumn(2).first(), u"清单031001001001"_s);
    EXPECT_EQ(GridColumn(3), (CStringArray{u"m"_s, u"10m"_s, u"10m"_s, u"m"_s}));
    EXPECT_EQ(GridColumn(4).first(), u"L"_s);
    EXPECT_EQ(GridColumn(5), (CStringArray{u"是"_s, u"否"_s, u"否"_s, u"是"_s}));
}

TEST_F(AutoConfigGrid, ColoursColumnsOneToFourOfBillRowsOnly)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    Open();
    const QColor bill(0x80, 0xFF, 0xFF);
    const QColor plain(0xFF, 0xFF, 0xE0);
    for (int column = 1; column <= 4; ++column) {
        EXPECT_EQ(BackOf(1, column), bill);
        EXPECT_EQ(BackOf(2, column), plain);
    }
    EXPECT_EQ(BackOf(1, 5), plain);
}

TEST_F(AutoConfigGrid, NumberIsReadOnlyOnEveryRow)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    Open();
    const auto* model = Grid().model();
    for (int row = 0; row < 2; ++row) {
        EXPECT_FALSE(model->flags(model->index(row, 0)).testFlag(Qt::ItemIsEditable));
        EXPECT_TRUE(model->flags(model->index(row, 1)).testFlag(Qt::ItemIsEditable));
    }
}

TEST_F(AutoConfigGrid, HidesItemsOfOtherLibrariesAndKeepsThemInTheFile)
{
    Prepare([this](CQdDeConfigPresenter& presenter) {
        CPath path = WaterPipes;
        path.configId = m_id;
        std::vector<ConfigNode*> rules;
        QdStruct other = Bill(u"011111111001"_s);
        other.strQdCode = u"QD1999"_s;
        presenter.AddQd(other, path, rules);
        path.qdId = 1;
        presenter.AddDe2QdNode(Quota(u"1-1"_s), path, rules);
    });
    Open();
    EXPECT_EQ(GridColumn(), CStringArray());
    Close();
    EXPECT_EQ(Saved().first(), u"2  [011111111001(1-1)]"_s);
}

TEST_F(AutoConfigGrid, ShowsABillAloneWhoseQuotaIsOfAnotherLibrary)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    Host().Libraries().qdDeCode = u"QDDE2024"_s;
    Open();
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
}

TEST_F(AutoConfigGrid, ComparesLibraryCodesWithoutCase)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    Host().Libraries().qdCode = u"qd2013"_s;
    Host().Libraries().qdDeCode = u"qdde2018"_s;
    Open();
    EXPECT_EQ(GridColumn(), (CStringArray{u"031001001001"_s, u"8-1"_s}));
}

TEST_F(AutoConfigGrid, QuotaModeShowsTheRulesOwnQuotasAndSelectsNoRow)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    PrepareQuota(m_id, u"9-1"_s);
    PrepareQuota(m_id, u"9-2"_s);
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    EXPECT_EQ(GridColumn(), (CStringArray{u"9-1"_s, u"9-2"_s}));
    EXPECT_EQ(Grid().GetItemData(1, 1), 1);
    EXPECT_EQ(SelectedGridRow(), -1);
    EXPECT_FALSE(Grid().IsValid(Grid().GetSelectedCellRange()));
}

TEST_F(AutoConfigGrid, FirstBillRowIsSelectedAndHasTheFocus)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    SelectRule(1);
    SelectRule(0);
    EXPECT_EQ(SelectedGridRow(), 1);
    EXPECT_EQ(Grid().GetSelectedCellRange(), (GridRange{1, 1, 1, 5}));
    EXPECT_EQ(Grid().GetFocusCell(), (GridCellId{1, 1}));
    EXPECT_EQ(m_dialog->focusWidget(), &Grid());
}

TEST_F(AutoConfigGrid, UnitIsCommittedWhenItIsChosen)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    Open();
    ChooseInCell(1, 3, 2);
    EXPECT_EQ(BillRecord().strUnit, u"m3"_s);
    ChooseInCell(2, 3, 0);
    EXPECT_EQ(QuotaRecord().strUnit, u"m"_s);
    EXPECT_EQ(QuotaRecord().strUnitCode, u"1"_s);
}

TEST_F(AutoConfigGrid, FittingsAreCommittedWhenTheyAreChosen)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    Open();
    ChooseInCell(1, 5, 1);
    EXPECT_EQ(BillRecord().strAnnex, u"否"_s);
    ChooseInCell(2, 5, 0);
    EXPECT_EQ(QuotaRecord().strAnnex, u"是"_s);
}

TEST_F(AutoConfigGrid, FormulaIsCommittedWhenTheCalculatorReturnsAnotherText)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    m_windows.SetCalculation(u"L*2"_s);
    Open();
    ClickCell(2, 4);
    EXPECT_EQ(m_windows.Calculations(), CStringArray{u"给排水\\管道\\给水管|L"_s});
    EXPECT_EQ(QuotaRecord().strFormula, u"L*2"_s);
    EXPECT_EQ(GridColumn(4), (CStringArray{u"L"_s, u"L*2"_s}));
}

TEST_F(AutoConfigGrid, CancelledCalculatorChangesNothing)
{
    PrepareBill(m_id, u"031001001001"_s);
    m_windows.SetCalculation(std::nullopt);
    Open();
    EditCell(1, 2, u"新名"_s);
    ClickCell(1, 4);
    EXPECT_EQ(m_windows.Calculations().size(), 1);
    EXPECT_EQ(GridColumn(4), CStringArray{u"L"_s});
    EXPECT_EQ(BillRecord().strName, u"清单031001001001"_s);
}

TEST_F(AutoConfigGrid, CalculatorWithTheSameTextCommitsNothing)
{
    PrepareBill(m_id, u"031001001001"_s);
    m_windows.SetCalculation(u"L"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    ClickCell(1, 4);
    EXPECT_EQ(BillRecord().strName, u"清单031001001001"_s);
}

TEST_F(AutoConfigGrid, ClicksOnOtherColumnsAndOnTheHeaderOpenNoCalculator)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    for (const int column : {1, 2, 3, 5})
        ClickCell(1, column);
    emit Grid().Notify({NM_CLICK, 0, 4, {}});
    emit Grid().Notify({NM_CLICK, 7, 4, {}});
    EXPECT_EQ(m_windows.Calculations(), CStringArray());
}

TEST_F(AutoConfigGrid, GridThatIsRebuiltUnderTheOpenCalculatorTakesNoResult)
{
    PrepareBill(m_id, u"031001001001"_s);
    m_windows.SetCalculation(u"L*2"_s);
    Open();
    m_windows.DuringCalculation([this] {
        CPath path = WaterPipes;
        path.configId = m_id;
        m_dialog->Presenter().DelQd(path, {1});
        Rules().setCurrentItem(Rules().topLevelItem(1));
    });
    ClickCell(1, 4);
    EXPECT_EQ(Stored(), (CStringArray{u"2 "_s, u"1 其它"_s}));
    EXPECT_EQ(GridColumn(), CStringArray());
}

TEST_F(AutoConfigGrid, NameIsNotCommittedBeforeAFlush)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    Key(Qt::Key_Return);
    EXPECT_EQ(GridColumn(2), CStringArray{u"新名"_s});
    EXPECT_EQ(BillRecord().strName, u"清单031001001001"_s);
    Close();
    EXPECT_EQ(BillRecord().strName, u"新名"_s);
}

TEST_F(AutoConfigGrid, NameIsCommittedAlongWithAnotherColumnOfItsRow)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    Key(Qt::Key_Return);
    ChooseInCell(1, 3, 1);
    EXPECT_EQ(BillRecord().strName, u"新名"_s);
}

TEST_F(AutoConfigGrid, NameIsDroppedWhenTheRuleChanges)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    EditCell(1, 2, u"新名"_s);
    Key(Qt::Key_Return);
    SelectRule(1);
    SelectRule(0);
    EXPECT_EQ(GridColumn(2), CStringArray{u"清单031001001001"_s});
}

TEST_F(AutoConfigGrid, CommitReplacesTheWholeRecord)
{
    Prepare([this](CQdDeConfigPresenter& presenter) {
        CPath path = WaterPipes;
        path.configId = m_id;
        std::vector<ConfigNode*> rules;
        QdStruct record = Bill(u"031001001001"_s);
        record.strQdIdUser = u"用户"_s;
        record.strtypeid = u"类型"_s;
        record.strQdCode = u"qd2013"_s;
        presenter.AddQd(record, path, rules);
    });
    Open();
    ChooseInCell(1, 3, 1);
    EXPECT_EQ(Texts(BillRecord()), u"031001001001||清单031001001001|m2|1||QD2013|L|是"_s);
}

TEST_F(AutoConfigGrid, FiveColumnGridReadsBackAnEmptyAnnex)
{
    Host().SetAttType(u"111"_s, 0);
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    EXPECT_EQ(Grid().GetColumnCount(), 5);
    ChooseInCell(1, 3, 1);
    EXPECT_EQ(BillRecord().strAnnex, CString());
}

TEST_F(AutoConfigGrid, QuotaModeCommitsIntoTheRulesOwnQuotas)
{
    PrepareQuota(m_id, u"9-1"_s);
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    EditCell(1, 2, u"新名"_s);
    Key(Qt::Key_Return);
    ChooseInCell(1, 3, 1);
    EXPECT_EQ(Texts(Rule(m_id).GetDe(1)->GetRecord()), u"新名|m2|1|9-1|DE2018|L|否"_s);
}

TEST_F(AutoConfigGrid, FlushOfAnEmptyGridCommitsNothing)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    SelectRule(1);
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(Texts(BillRecord()), Texts(Bill(u"031001001001"_s)));
}

TEST_F(AutoConfigGrid, FlushLeavesTheFocusCellInTheLastRow)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s, u"8-2"_s});
    Open();
    SelectCategory(u"管道"_s);
    EXPECT_EQ(Grid().GetFocusCell(), (GridCellId{3, 1}));
    EXPECT_EQ(m_dialog->focusWidget(), &Grid());
}

TEST_F(AutoConfigDelete, BillWithAllItsQuotasLeavesNoRowOfThem)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s, u"8-2"_s});
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    ClickCell(1, 1);
    ClickCell(3, 1, Qt::ShiftModifier);
    Press(DeleteItemsButton);
    EXPECT_EQ(Stored().first(), u"2  [031001001002]"_s);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001002"_s});
}

TEST_F(AutoConfigDelete, QuotasOfTwoBillsGoFromTheirOwnBills)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s, u"8-2"_s});
    PrepareBill(m_id, u"031001001002"_s, {u"8-3"_s, u"8-4"_s});
    Open();
    ClickCell(3, 1);
    ClickCell(5, 1, Qt::ControlModifier);
    Press(DeleteItemsButton);
    EXPECT_EQ(Stored().first(), u"2  [031001001001(8-1) 031001001002(8-4)]"_s);
    EXPECT_EQ(SelectedGridRow(), 2); // above the topmost row that was deleted
}

TEST_F(AutoConfigDelete, OfRowOneSelectsTheHeader)
{
    PrepareBill(m_id, u"031001001001"_s);
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    ClickCell(1, 1);
    Press(DeleteItemsButton);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001002"_s});
    EXPECT_EQ(Grid().GetSelectedCellRange(), (GridRange{0, 1, 0, 5}));
    EXPECT_EQ(SelectedGridRow(), -1);
    EXPECT_EQ(Grid().GetFocusCell(), (GridCellId{0, 1}));
    Press(DeleteItemsButton);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001002"_s});
    EXPECT_EQ(SelectedGridRow(), 1);
}

TEST_F(AutoConfigDelete, SelectsAllOfARowOrOfTheHeaderInAGridOfFiveColumnsToo)
{
    Host().SetAttType(u"111"_s, 0);
    PrepareBill(m_id, u"031001001001"_s);
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    ASSERT_EQ(Grid().GetColumnCount(), 5);
    EXPECT_EQ(Grid().GetSelectedCellRange(), (GridRange{1, 1, 1, 4}));
    Press(DeleteItemsButton);
    EXPECT_EQ(Grid().GetSelectedCellRange(), (GridRange{0, 1, 0, 4}));
    EXPECT_EQ(Grid().GetFocusCell(), (GridCellId{0, 1}));
    Press(DeleteItemsButton);
    EXPECT_EQ(Grid().GetSelectedCellRange(), (GridRange{1, 1, 1, 4}));
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001002"_s});
}

TEST_F(AutoConfigDelete, WithNothingSelectedSelectsRowOne)
{
    PrepareQuota(m_id, u"9-1"_s);
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    Press(DeleteItemsButton);
    EXPECT_EQ(GridColumn(), CStringArray{u"9-1"_s});
    EXPECT_EQ(SelectedGridRow(), 1);
}

TEST_F(AutoConfigDelete, EverySelectedQuotaGoesInQuotaMode)
{
    for (const CString& number : {u"9-1"_s, u"9-2"_s, u"9-3"_s, u"9-4"_s})
        PrepareQuota(m_id, number);
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    ClickCell(2, 1);
    ClickCell(4, 1, Qt::ControlModifier);
    Press(DeleteItemsButton);
    EXPECT_EQ(Stored().first(), u"2  9-1 9-3"_s);
    EXPECT_EQ(SelectedGridRow(), 1);
}

TEST_F(AutoConfigDelete, KeyInTheGridDeletesAndInAnOpenEditDoesNot)
{
    PrepareBill(m_id, u"031001001001"_s);
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    EditCell(2, 2, u"名"_s);
    Key(Qt::Key_Delete);
    EXPECT_EQ(GridColumn().size(), 2);
    Key(Qt::Key_Return);
    ClickCell(2, 1);
    Key(Qt::Key_Delete);
    EXPECT_EQ(GridColumn(), CStringArray{u"031001001001"_s});
}
