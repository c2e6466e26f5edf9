#include "dialogs/AutoConfigFixture.h"

#include "dialogs/RecordingStore.h"
#include "store/CXmlQdDeConfig.h"

using namespace test::autoconfig;

// What the dialog asks of its presenter, in which order and by which ids. What was typed into the grid
// reaches the tree by the Reset operations, so a list without them shows that nothing was flushed.

namespace {

/// The dialog on 给水管 over a store that notes what it is asked. Rule 2 is selected.
class AutoConfigCalls : public AutoConfigTest
{
protected:
    AutoConfigCalls() { m_id = PrepareRule({}); }
    /// The dialog goes first: what it does on its way out is noted, too.
    ~AutoConfigCalls() override { m_dialog.reset(); }

    void Open()
    {
        auto store = std::make_unique<RecordingStore>(
            std::make_unique<CXmlQdDeConfig>(FilePath(u"DefaultConfig"_s), u"给排水"_s), m_log);
        m_dialog = std::make_unique<OpenAutoConfigDlg>(std::make_unique<CQdDeConfigPresenter>(
            std::move(store), std::make_unique<CXmlAttrConfig>(u"给排水"_s)));
        test::Open(*m_dialog);
        m_log.Take();
    }
    /// What a press of the button asks for.
    CStringArray CallsOf(ControlId button)
    {
        m_log.Take();
        Press(button);
        return m_log.Take();
    }
    /// Types a name that no flush has taken over.
    void TypeName(int row)
    {
        EditCell(row, 2, u"新名"_s);
        Key(Qt::Key_Return);
        m_log.Take();
    }
    /// Three conditions, the first of which is gone: lines 0 and 1 show the ids 2 and 3.
    void PrepareConditionsWithoutTheFirst()
    {
        CPath path = WaterPipes;
        path.configId = m_id;
        path.conditionId = 1;
        Prepare([&](CQdDeConfigPresenter& presenter) {
            for (const CString& attribute : {u"长度"_s, u"材质"_s, u"管径"_s})
                presenter.AddCondition(path, ValueCondition(attribute, u"1"_s));
            std::vector<ConfigNode*> rules;
            presenter.DelCondition(path, rules);
        });
    }
    /// Three bills, the first of which is gone: rows 1 and 2 show the ids 2 and 3.
    void PrepareBillsWithoutTheFirst()
    {
        for (const CString& number : {u"031001001001"_s, u"031001001002"_s, u"031001001003"_s})
            PrepareBill(m_id, number);
        CPath path = WaterPipes;
        path.configId = m_id;
        Prepare([&](CQdDeConfigPresenter& presenter) { presenter.DelQd(path, {1}); });
    }
    /// Four quotas of quota mode, the first of which is gone: rows 1 to 3 show the ids 2 to 4.
    void PrepareQuotasWithoutTheFirst()
    {
        for (const CString& number : {u"9-1"_s, u"9-2"_s, u"9-3"_s, u"9-4"_s})
            PrepareQuota(m_id, number);
        CPath path = WaterPipes;
        path.configId = m_id;
        Prepare([&](CQdDeConfigPresenter& presenter) { presenter.DelDeInConfigNode(path, {1}); });
        SetMode(SQdDeInfo::QuotaMode);
    }

    int m_id = 0;
    RecordingStore::Log m_log;
};

} // namespace

// Rules

TEST_F(AutoConfigCalls, EachRuleCommandAsksForItsChangeAndThenForTheRules)
{
    PrepareRule({u"DN20"_s});
    Open();
    EXPECT_EQ(CallsOf(MoveDownButton), (CStringArray{u"MoveDownConfig rule 2"_s, u"GetConfig"_s}));
    EXPECT_EQ(CallsOf(MoveUpButton), (CStringArray{u"MoveUpConfig rule 2"_s, u"GetConfig"_s}));
    EXPECT_EQ(CallsOf(CopyRuleButton), (CStringArray{u"AddConfigByCopy rule 2"_s, u"GetConfig"_s}));
    EXPECT_EQ(CallsOf(DeleteRuleButton), (CStringArray{u"DelConfig rule 4"_s, u"GetConfig"_s}));
    EXPECT_EQ(CallsOf(AddRuleButton), (CStringArray{u"AddConfig"_s, u"GetConfig"_s}));
}

TEST_F(AutoConfigCalls, RefusedRuleCommandsAskForNoRules)
{
    Open();
    m_log.refused = {u"MoveDownConfig"_s, u"MoveUpConfig"_s, u"AddConfigByCopy"_s, u"AddConfig"_s};
    EXPECT_EQ(CallsOf(MoveDownButton), CStringArray{u"MoveDownConfig rule 2"_s});
    EXPECT_EQ(CallsOf(MoveUpButton), CStringArray{u"MoveUpConfig rule 2"_s});
    EXPECT_EQ(CallsOf(CopyRuleButton), CStringArray{u"AddConfigByCopy rule 2"_s});
    EXPECT_EQ(CallsOf(AddRuleButton), CStringArray{u"AddConfig"_s});
}

TEST_F(AutoConfigCalls, DeletionThatWasRefusedStillRebuildsTheViewsFromTheFirstRule)
{
    PrepareBill(PrepareRule({u"DN20"_s}), u"031001001001"_s);
    Open();
    SelectRule(1);
    TypeName(1);
    m_log.refused = {u"DelConfig"_s};
    EXPECT_EQ(CallsOf(DeleteRuleButton), (CStringArray{u"DelConfig rule 3"_s, u"GetConfig"_s}));
    EXPECT_EQ(SelectedRuleRow(), 0);
    EXPECT_THAT(RuleIds(), ElementsAre(2, 3, 1));
    SelectRule(1);
    EXPECT_EQ(GridColumn(2), CStringArray{u"清单031001001001"_s}); // the edit went with the rebuild
}

// Conditions

TEST_F(AutoConfigCalls, AddedConditionReplacesTheOneFoundByItsIdAndNotByItsLine)
{
    PrepareConditionsWithoutTheFirst();
    Open();
    AddValue(u"管径"_s, u"DN15"_s);
    EXPECT_EQ(m_log.Take(), CStringArray{u"ResetCondition rule 2 condition 3"_s});
    EXPECT_EQ(ConditionTexts(), (CStringArray{u"材质＝1"_s, u"管径＝DN15"_s}));
    AddValue(u"材质"_s, u"PPR"_s);
    EXPECT_EQ(m_log.Take(), CStringArray{u"ResetCondition rule 2 condition 2"_s});
    AddValue(u"长度"_s, u"7"_s);
    EXPECT_EQ(m_log.Take(), CStringArray{u"AddCondition rule 2"_s});
}

TEST_F(AutoConfigCalls, RemovedConditionIsTheSelectedOneByItsIdAndNotByItsLine)
{
    PrepareConditionsWithoutTheFirst();
    Open();
    test::ClickLine(*m_dialog, ControlId::Conditions, 1);
    EXPECT_EQ(CallsOf(RemoveConditionButton), CStringArray{u"DelCondition rule 2 condition 3"_s});
    EXPECT_EQ(ConditionTexts(), CStringArray{u"材质＝1"_s});
}

// Items

TEST_F(AutoConfigCalls, PickedBillIsAddedAfterOneLookAtItsRuleAndWithoutAFlush)
{
    PrepareBill(m_id, u"031001001009"_s);
    Open();
    TypeName(1);
    PickBill(u"031001001"_s);
    EXPECT_EQ(m_log.Take(), (CStringArray{u"GetConfig rule 2"_s, u"AddQd rule 2"_s}));
}

TEST_F(AutoConfigCalls, PickedQuotaIsAddedToTheBillByItsId)
{
    PrepareBillsWithoutTheFirst();
    Open();
    ClickCell(2, 1);
    PickQuota(u"8-87"_s);
    EXPECT_EQ(m_log.Take(), CStringArray{u"AddDe2QdNode rule 2 bill 3"_s});
}

TEST_F(AutoConfigCalls, PickedQuotaOfQuotaModeIsAddedToTheRule)
{
    SetMode(SQdDeInfo::QuotaMode);
    Open();
    PickQuota(u"8-87"_s);
    EXPECT_EQ(m_log.Take(), CStringArray{u"AddDe2ConfigNode rule 2"_s});
}

TEST_F(AutoConfigCalls, DeletionInBillModeTakesBillsByIdThenQuotasByTheirBillsId)
{
    PrepareBill(m_id, u"031001001001"_s);
    PrepareBill(m_id, u"031001001002"_s, {u"8-1"_s, u"8-2"_s});
    CPath path = WaterPipes;
    path.configId = m_id;
    Prepare([&](CQdDeConfigPresenter& presenter) { presenter.DelQd(path, {1}); });
    Open();
    ClickCell(1, 1);
    ClickCell(3, 1, Qt::ShiftModifier);
    EXPECT_EQ(CallsOf(DeleteItemsButton),
              (CStringArray{u"DelQd rule 2 bills 2"_s, u"DelDeInQdNode rule 2 bill 2 quotas 1,2"_s,
                            u"GetConfig"_s}));
}

TEST_F(AutoConfigCalls, DeletionInQuotaModeTakesEachRowsIdWithThoseBeforeIt)
{
    PrepareQuotasWithoutTheFirst();
    Open();
    ClickCell(2, 1);
    ClickCell(3, 1, Qt::ShiftModifier);
    EXPECT_EQ(CallsOf(DeleteItemsButton),
              (CStringArray{u"DelDeInConfigNode rule 2 quotas 4"_s, u"DelDeInConfigNode rule 2 quotas 3,4"_s,
                            u"GetConfig"_s}));
    EXPECT_EQ(GridColumn(), CStringArray{u"9-2"_s});
}

TEST_F(AutoConfigCalls, ChoiceCommitsItsOwnRowOnly)
{
    PrepareBillsWithoutTheFirst();
    Open();
    TypeName(1);
    ChooseInCell(2, 3, 1);
    EXPECT_EQ(m_log.Take(), CStringArray{u"ResetQd rule 2 bill 3"_s});
    EXPECT_EQ(Rule(m_id).GetQd(2)->GetRecord().strName, u"清单031001001002"_s);
    EXPECT_EQ(GridColumn(2).first(), u"新名"_s);
}

TEST_F(AutoConfigCalls, CalculatorCommitsItsOwnRowOnly)
{
    PrepareBillsWithoutTheFirst();
    m_windows.SetCalculation(u"L*2"_s);
    Open();
    TypeName(1);
    ClickCell(2, 4);
    EXPECT_EQ(m_log.Take(), CStringArray{u"ResetQd rule 2 bill 3"_s});
    EXPECT_EQ(Rule(m_id).GetQd(2)->GetRecord().strName, u"清单031001001002"_s);
}

TEST_F(AutoConfigCalls, ChoiceInQuotaModeCommitsItsOwnRowOnly)
{
    PrepareQuotasWithoutTheFirst();
    Open();
    TypeName(1);
    ChooseInCell(3, 3, 1);
    EXPECT_EQ(m_log.Take(), CStringArray{u"ResetDeToConfig rule 2 quota 4"_s});
}

// Tree, files and ways out

TEST_F(AutoConfigCalls, TreeMoveFlushesEveryRowFromTheTopBeforeItAsksForTheRules)
{
    PrepareBill(m_id, u"031001001001"_s, {u"8-1"_s});
    PrepareBill(m_id, u"031001001002"_s);
    Open();
    SelectCategory(u"排水管"_s);
    EXPECT_EQ(m_log.Take(), (CStringArray{u"ResetQd rule 2 bill 1"_s, u"ResetDeToQd rule 2 bill 1 quota 1"_s,
                                          u"ResetQd rule 2 bill 2"_s, u"GetConfig"_s}));
}

TEST_F(AutoConfigCalls, RuleChangeAsksForNothing)
{
    PrepareBill(m_id, u"031001001001"_s);
    Open();
    TypeName(1);
    SelectRule(1);
    EXPECT_EQ(m_log.Take(), CStringArray());
}

TEST_F(AutoConfigCalls, FileCommandsNeitherFlushNorSaveBeforehand)
{
    m_guard.Folder().WriteFile(u"app\\QdDeConfig.def"_s, "<自动套清单定额配置信息 Version=\"1.2.3\"/>");
    PrepareBill(m_id, u"031001001001"_s);
    CQdDeConfigPresenter(FilePath(u"别的"_s)).Save();
    Open();
    TypeName(1);
    NameFile(SaveAsButton, u"副本"_s);
    EXPECT_EQ(m_log.Take(), CStringArray{u"SaveAs 副本.xml"_s});
    Press(NetDiskButton);
    EXPECT_EQ(m_log.Take(), (CStringArray{u"ReLoad DefaultConfig.xml"_s, u"GetConfig"_s}));
    TypeName(1);
    NameFile(NewFileButton, u"新的"_s);
    EXPECT_EQ(m_log.Take(), (CStringArray{u"NewFile 新的.xml"_s, u"GetConfig"_s}));
    NameFile(LoadFileButton, u"别的"_s);
    EXPECT_EQ(m_log.Take(), (CStringArray{u"ReLoad 别的.xml"_s, u"GetConfig"_s}));
    const auto saved = std::make_unique<CQdDeConfigPresenter>(FilePath(u"DefaultConfig"_s));
    CPath path = WaterPipes;
    path.configId = m_id;
    EXPECT_EQ(saved->GetConfig(path)->GetQd(1)->GetRecord().strName, u"清单031001001001"_s);
}

TEST_F(AutoConfigCalls, EscapeFlushesAndSavesOnceAndTheCloseBoxTwice)
{
    PrepareBill(m_id, u"031001001001"_s);
    const CStringArray once{u"ResetQd rule 2 bill 1"_s, u"Save"_s};
    Open();
    Key(Qt::Key_Escape);
    EXPECT_EQ(m_log.Take(), once);
    Open();
    Close();
    EXPECT_EQ(m_log.Take(), once + once);
}
