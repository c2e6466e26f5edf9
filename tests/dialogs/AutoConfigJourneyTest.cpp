#include "dialogs/AutoConfigFixture.h"

#include "embedded/NewProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "support/StrictXml.h"

using namespace test::autoconfig;

// A whole piece of work over the default host and its data, from an empty project to the file.

namespace {

/// 给水管 and 热水管 of the default catalogue.
constexpr CPath ColdWater{1, 101, 10101, 1, 0, 0, 0, 0};
constexpr CPath HotWater{1, 101, 10102, 1, 0, 0, 0, 0};

const CString BuiltConditions = u"材质＝镀锌钢管;15＜公称直径＜50;壁厚＞3;公称压力＜1.6;具体构件＝立管;"_s;

class AutoConfigJourney : public AutoConfigTest
{
protected:
    explicit AutoConfigJourney(SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode)
    {
        const QString folder = m_guard.Folder().Native(u"journey"_s);
        test::PutNewProject(folder, {mode, u"给排水"_s});
        m_host = std::make_unique<embedded::EmbeddedHost>(folder);
        host::Roles roles = m_host->Roles();
        roles.windows = &m_windows;
        m_installed = std::make_unique<host::Installation>(host::Install(roles));
        Open();
    }

    /// The journey's own end of the dialog: its host must still be there.
    ~AutoConfigJourney() override { m_dialog.reset(); }

    CString File() const { return m_dialog->Presenter().GetCurConfigDetailPath(); }
    static CStringArray RulesOf(CQdDeConfigPresenter& presenter, const CPath& category)
    {
        std::vector<ConfigNode*> rules;
        presenter.GetConfig(category, rules);
        CStringArray texts;
        for (const ConfigNode* rule : rules)
            texts.append(Described(*rule));
        return texts;
    }

    void BuildConditions();
    void PickItems();
    /// Edits all that can be edited of row 2, and the name of row 1.
    void EditItems(const CString& name);
    /// Ends with a copy of the rule in front of it, which lacks the item of a row.
    void Rearrange(int deletedRow);

    std::unique_ptr<embedded::EmbeddedHost> m_host;
    std::unique_ptr<host::Installation> m_installed;
};

void AutoConfigJourney::BuildConditions()
{
    Press(AddRuleButton);
    AddValue(u"材质"_s, u"镀锌钢管"_s);
    AddRange(u"公称直径"_s, u"15"_s, u"50"_s);
    AddRange(u"壁厚"_s, u"3"_s, CString());
    AddRange(u"公称压力"_s, CString(), u"1.6"_s);
    AddValue(u"具体构件"_s, u"立管"_s);
}

void AutoConfigJourney::PickItems()
{
    PickBill(u"031001001"_s);
    PickQuota(u"示10-1"_s);
    ClickCell(1, 1);
    PickQuota(u"示10-2"_s);
    PickBill(u"031001006"_s);
    PickQuota(u"示10-9"_s);
}

void AutoConfigJourney::EditItems(const CString& name)
{
    m_windows.SetCalculation(u"管道长度*1.02"_s);
    ClickCell(2, 4);
    ChooseInCell(2, 3, 2);
    ChooseInCell(2, 5, 1);
    EditCell(1, 2, name);
}

void AutoConfigJourney::Rearrange(int deletedRow)
{
    SelectCategory(u"热水管"_s); // the flush takes the name along
    Press(AddRuleButton);
    SelectCategory(u"给水管"_s);
    Press(CopyRuleButton);
    Press(MoveUpButton);
    ClickCell(deletedRow, 1);
    Press(DeleteItemsButton);
    Press(AddRuleButton);
    Press(DeleteRuleButton);
}

class AutoConfigQuotaJourney : public AutoConfigJourney
{
protected:
    AutoConfigQuotaJourney() : AutoConfigJourney(SQdDeInfo::QuotaMode) {}
};

} // namespace

TEST_F(AutoConfigJourney, FileHoldsExactlyWhatWasDone)
{
    BuildConditions();
    PickItems();
    EditItems(u"镀锌钢管（室内）"_s);
    Rearrange(4);
    Close();
    EXPECT_EQ(Messages().Texts(), CStringArray());

    CQdDeConfigPresenter reopened(File());
    EXPECT_EQ(
        RulesOf(reopened, ColdWater),
        (CStringArray{u"3 "_s + BuiltConditions + u" [031001001003(示10-1,示10-2)]"_s,
                      u"2 "_s + BuiltConditions + u" [031001001003(示10-1,示10-2) 031001006001(示10-9)]"_s,
                      u"1 其它"_s}));
    EXPECT_EQ(RulesOf(reopened, HotWater), (CStringArray{u"2 "_s, u"1 其它"_s}));

    CPath path = ColdWater;
    path.configId = 2;
    const QdNode& bill = *reopened.GetConfig(path)->GetQd(1);
    EXPECT_EQ(bill.GetRecord().strName, u"镀锌钢管（室内）"_s);
    EXPECT_EQ(Texts(bill.GetDe(1)->GetRecord()), u"定额示10-1|m3|1|示10-1|DEMO-QDDE-2024|管道长度*1.02|否"_s);
}

TEST_F(AutoConfigQuotaJourney, FileHoldsExactlyWhatWasDone)
{
    BuildConditions();
    PickQuota(u"示10-1"_s);
    PickQuota(u"示10-2"_s);
    PickQuota(u"示10-9"_s);
    EditItems(u"镀锌钢管（室内）"_s);
    Rearrange(3);
    Close();
    EXPECT_EQ(Messages().Texts(), CStringArray());

    CQdDeConfigPresenter reopened(File());
    EXPECT_EQ(RulesOf(reopened, ColdWater),
              (CStringArray{u"3 "_s + BuiltConditions + u" 示10-1 示10-2"_s,
                            u"2 "_s + BuiltConditions + u" 示10-1 示10-2 示10-9"_s, u"1 其它"_s}));
    EXPECT_EQ(RulesOf(reopened, HotWater), (CStringArray{u"2 "_s, u"1 其它"_s}));

    CPath path = ColdWater;
    path.configId = 2;
    const ConfigNode& rule = *reopened.GetConfig(path);
    EXPECT_EQ(Texts(rule.GetDe(1)->GetRecord()), u"镀锌钢管（室内）|m|1|示10-1|DEMO-DE-2024|L|是"_s);
    EXPECT_EQ(Texts(rule.GetDe(2)->GetRecord()), u"定额示10-2|m3|1|示10-2|DEMO-DE-2024|管道长度*1.02|否"_s);
}
