#include "dialogs/AutoConfigFixture.h"

#include "dialogs/secondary/CTTComboBox.h"

#include <QtCore/QAbstractItemModel>
#include <QtWidgets/QListWidget>

using namespace test::autoconfig;

// In which order the events of one user action nest. The refills are seen at the models of the widgets, the
// questions to the host by a host that notes them.

namespace {

/// Notes what the dialog asks about attributes.
class NotingAttributes : public host::IAttributes
{
public:
    NotingAttributes(host::IAttributes& target, CStringArray& notes) : m_target(target), m_notes(notes) {}

    bool GetAttributeList(const SNvKtSmallCategoryId& id, CStringArray& list) override
    {
        m_notes.append(u"GetAttributeList"_s);
        return m_target.GetAttributeList(id, list);
    }
    int GetAttType(const SNvKtSmallCategoryId& id) override
    {
        m_notes.append(u"GetAttType"_s);
        return m_target.GetAttType(id);
    }
    bool GetDropList(const CString& code, CStringArray& values, CStringArray& extras) override
    {
        return m_target.GetDropList(code, values, extras);
    }
    std::unique_ptr<host::CellData> CreateCellData(const CString& code) override
    {
        m_notes.append(u"values of "_s + code);
        return m_target.CreateCellData(code);
    }

private:
    host::IAttributes& m_target;
    CStringArray& m_notes;
};

/// Notes each save of a rule file: the last step of one records the version.
class NotingSaves : public host::IXmlTools
{
public:
    NotingSaves(host::IXmlTools& target, CStringArray& notes) : m_target(target), m_notes(notes) {}

    std::unique_ptr<host::IXmlTool> CreateXmlTool() override { return m_target.CreateXmlTool(); }
    bool SetXmlVersion(const CString& version, const CString& file) override
    {
        m_notes.append(u"saved"_s);
        return m_target.SetXmlVersion(version, file);
    }

private:
    host::IXmlTools& m_target;
    CStringArray& m_notes;
};

/// The dialog on 给水管 with the rules 2 and 3, each with one item; 截止阀 has a rule with a condition. The
/// picker of the mode is visible.
class AutoConfigOrder : public AutoConfigInBothModes
{
protected:
    AutoConfigOrder() : m_attributes(Host(), m_notes), m_saves(Host(), m_notes)
    {
        PrepareItem(PrepareRule({u"DN15"_s}), u"031001001001"_s);
        PrepareItem(PrepareRule({u"DN20"_s}), u"031001001002"_s);
        PrepareRule({u"DN25"_s}, {1, 12, 121, 1, 0, 0, 0, 0});
        host::Roles roles = Host().Roles();
        roles.attributes = &m_attributes;
        roles.xml = &m_saves;
        m_installed = std::make_unique<host::Installation>(host::Install(roles));
        Open();
        Press(PickerButton);
        WatchPickers();
        Watch(Grid().model(), u"grid"_s);
        Watch(Rules().model(), u"rules"_s);
        Watch(m_dialog->Item<QListWidget>(Conditions).model(), u"conditions"_s);
        Watch(m_dialog->Item<QListWidget>(Attributes).model(), u"attributes"_s);
        QObject::connect(Grid().selectionModel(), &QItemSelectionModel::currentChanged, m_dialog.get(),
                         [this](const QModelIndex& cell) {
                             if (cell.isValid()) Note(u"cell "_s + CString::number(cell.row() + 1));
                         });
        m_notes.clear();
    }

    /// The dialog goes first: what it does on its way out is noted, too.
    ~AutoConfigOrder() override { m_dialog.reset(); }

    void Watch(const QAbstractItemModel* model, const CString& name)
    {
        QObject::connect(model, &QAbstractItemModel::modelReset, m_dialog.get(),
                         [this, name] { Note(name + u" emptied"_s); });
        QObject::connect(model, &QAbstractItemModel::rowsRemoved, m_dialog.get(),
                         [this, name] { Note(name + u" emptied"_s); });
        QObject::connect(model, &QAbstractItemModel::rowsInserted, m_dialog.get(),
                         [this, name] { Note(name + u" filled"_s); });
    }
    void WatchPickers()
    {
        m_windows.Bill().OnCall([this](const CString& call) { Note(u"bill picker: "_s + call); });
        m_windows.Quota().OnCall([this](const CString& call) { Note(u"quota picker: "_s + call); });
    }
    /// What `note` gives in bill mode; nothing in quota mode.
    static CStringArray InBillMode(const CString& note)
    {
        return GetParam() == SQdDeInfo::BillMode ? CStringArray{note} : CStringArray();
    }
    /// What it takes to show a rule. Only a bill item is selected by that.
    static CStringArray Shown(bool conditions = true, bool items = true)
    {
        CStringArray notes{u"conditions emptied"_s};
        if (conditions) notes << u"conditions filled"_s;
        notes << u"grid emptied"_s;
        if (items) notes += CStringArray{u"grid filled"_s} + InBillMode(u"cell 1"_s);
        return notes << u"values of CZ"_s;
    }
    static CStringArray Values() { return {u"values of CZ"_s}; }
    static CStringArray Closed() { return {u"saved"_s, u"bill picker: hide"_s, u"quota picker: hide"_s}; }
    static CStringArray ListShown() { return {u"rules emptied"_s, u"rules filled"_s}; }
    CString StoredName(int ruleId) const
    {
        const ConfigNode& rule = Rule(ruleId);
        return GetParam() == SQdDeInfo::BillMode ? rule.GetQd(1)->GetRecord().strName
                                                 : rule.GetDe(1)->GetRecord().strName;
    }
    /// What a press of the button does.
    CStringArray NotesOf(ControlId button)
    {
        m_notes.clear();
        Press(button);
        return m_notes;
    }
    /// What is noted several times in a row counts once; the questions to the host count each.
    void Note(const CString& note)
    {
        if (m_notes.isEmpty() || m_notes.last() != note) m_notes.append(note);
    }

    CStringArray m_notes;
    NotingAttributes m_attributes;
    NotingSaves m_saves;
    std::unique_ptr<host::Installation> m_installed;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Modes, AutoConfigOrder,
                         ::testing::Values(SQdDeInfo::BillMode, SQdDeInfo::QuotaMode));

TEST_P(AutoConfigOrder, TreeMoveFlushesFirstAndShowsTheRuleWhileTheFormerAttributesStand)
{
    EditCell(1, 2, u"新名"_s);
    m_notes.clear();
    SelectCategory(u"截止阀"_s);
    const CStringArray wanted{u"cell 1"_s,             // the flush, against the former selection
                              u"grid emptied"_s,       // ResetGridForCategory
                              u"GetAttType"_s,         //
                              u"grid emptied"_s,       //
                              u"rules emptied"_s,      // FillRuleList
                              u"rules filled"_s,       //
                              u"conditions emptied"_s, // OnRuleChanged inside it
                              u"conditions filled"_s,  //
                              u"values of CZ"_s,       // of the former category's attribute
                              u"attributes emptied"_s, // FillAttributeList
                              u"GetAttributeList"_s,   //
                              u"attributes filled"_s,  //
                              u"values of GJ"_s};      // OnAttributeChanged
    EXPECT_EQ(m_notes, wanted + InBillMode(u"bill picker: position "_s)); // SyncPickerPosition
    EXPECT_EQ(StoredName(2), u"新名"_s);
    EXPECT_EQ(m_dialog->focusWidget(), &Grid());
}

TEST_P(AutoConfigOrder, RuleChangeShowsConditionsThenItemsThenSelectsTheBillThenAsksForValues)
{
    SelectRule(1);
    EXPECT_EQ(m_notes, Shown());
    EXPECT_EQ(m_dialog->focusWidget() == &Grid(), GetParam() == SQdDeInfo::BillMode);
}

TEST_P(AutoConfigOrder, AddedConditionShowsTheFirstRuleOnTheWayToItsOwn)
{
    SelectRule(1);
    TypeInto(ValueCombo, u"PPR"_s);
    EXPECT_EQ(NotesOf(AddConditionButton), ListShown() + Shown() + Shown());
    EXPECT_EQ(SelectedRuleRow(), 1);
}

TEST_P(AutoConfigOrder, AddedConditionOfTheFirstRuleShowsItOnce)
{
    TypeInto(ValueCombo, u"PPR"_s);
    EXPECT_EQ(NotesOf(AddConditionButton), ListShown() + Shown());
}

TEST_P(AutoConfigOrder, RemovedConditionShowsTheFirstRuleOnTheWayToItsOwn)
{
    SelectRule(1);
    EXPECT_EQ(NotesOf(RemoveConditionButton), ListShown() + Shown() + Shown(false));
    EXPECT_EQ(SelectedRuleRow(), 1);
}

// The commands that leave another rule selected than the first ask for the values once more at the end.
TEST_P(AutoConfigOrder, AddedRuleIsShownAfterTheFirstAndItsValuesAreAskedForTwice)
{
    EXPECT_EQ(NotesOf(AddRuleButton), ListShown() + Shown() + Shown(false, false) + Values());
    EXPECT_EQ(SelectedRuleRow(), 2);
}

TEST_P(AutoConfigOrder, CopiedRuleIsShownAfterTheFirstAndItsValuesAreAskedForTwice)
{
    EXPECT_EQ(NotesOf(CopyRuleButton), ListShown() + Shown() + Shown() + Values());
    EXPECT_EQ(SelectedRuleRow(), 2);
}

TEST_P(AutoConfigOrder, RuleThatMovesToTheTopIsShownOnceAndItsValuesAreAskedForTwice)
{
    SelectRule(1);
    EXPECT_EQ(NotesOf(MoveUpButton), ListShown() + Shown() + Values());
    EXPECT_EQ(SelectedRuleRow(), 0);
}

TEST_P(AutoConfigOrder, RuleThatMovesDownIsShownAfterTheFirstAndItsValuesAreAskedForTwice)
{
    EXPECT_EQ(NotesOf(MoveDownButton), ListShown() + Shown() + Shown() + Values());
    EXPECT_EQ(SelectedRuleRow(), 1);
}

TEST_P(AutoConfigOrder, DeletedRuleGivesWayToTheFirstWhoseValuesAreAskedForOnce)
{
    SelectRule(1);
    EXPECT_EQ(NotesOf(DeleteRuleButton), ListShown() + Shown());
    EXPECT_EQ(SelectedRuleRow(), 0);
}

TEST_P(AutoConfigOrder, StartShowsTheFirstCategoryBeforeTheBillPickerAndThenTheQuotaPickerAreMade)
{
    m_dialog = std::make_unique<OpenAutoConfigDlg>(CString());
    WatchPickers();
    m_notes.clear();
    test::Open(*m_dialog);
    EXPECT_EQ(m_notes, (CStringArray{u"GetAttType"_s, u"GetAttributeList"_s, u"values of CZ"_s,
                                     u"bill picker: create"_s, u"quota picker: create"_s}));
}

TEST_P(AutoConfigOrder, EscapeFlushesThenSavesThenHidesTheBillPickerAndThenTheQuotaPicker)
{
    EditCell(1, 2, u"新名"_s);
    Key(Qt::Key_Return);
    m_notes.clear();
    Key(Qt::Key_Escape);
    EXPECT_EQ(m_notes, CStringArray{u"cell 1"_s} + Closed());
}

TEST_P(AutoConfigOrder, CloseBoxSavesAndHidesThePickersTwice)
{
    EditCell(1, 2, u"新名"_s);
    m_notes.clear();
    Close();
    EXPECT_EQ(m_notes, CStringArray{u"cell 1"_s} + Closed() + Closed());
}
