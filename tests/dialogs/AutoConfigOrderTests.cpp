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

/// The dialog on 给水管 with the rules 2 and 3, each with one bill item; 截止阀 has a rule with a condition.
class AutoConfigOrder : public AutoConfigTest
{
protected:
    AutoConfigOrder() : m_attributes(Host(), m_notes)
    {
        PrepareBill(PrepareRule({u"DN15"_s}), u"031001001001"_s);
        PrepareBill(PrepareRule({u"DN20"_s}), u"031001001002"_s);
        PrepareRule({u"DN25"_s}, {1, 12, 121, 1, 0, 0, 0, 0});
        host::Roles roles = Host().Roles();
        roles.attributes = &m_attributes;
        m_installed = std::make_unique<host::Installation>(host::Install(roles));
        Open();
        Press(PickerButton);
        Watch(Grid().model(), u"grid"_s);
        Watch(Rules().model(), u"rules"_s);
        Watch(m_dialog->Item<QListWidget>(Conditions).model(), u"conditions"_s);
        Watch(m_dialog->Item<QListWidget>(Attributes).model(), u"attributes"_s);
        QObject::connect(Grid().selectionModel(), &QItemSelectionModel::currentChanged, m_dialog.get(),
                         [this](const QModelIndex& cell) {
                             if (cell.isValid()) Note(u"cell "_s + CString::number(cell.row() + 1));
                         });
        m_windows.Bill().OnCall([this](const CString& call) { Note(call); });
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
    /// What comes several times in a row counts once.
    void Note(const CString& note)
    {
        if (m_notes.isEmpty() || m_notes.last() != note) m_notes.append(note);
    }

    CStringArray m_notes;
    NotingAttributes m_attributes;
    std::unique_ptr<host::Installation> m_installed;
};

} // namespace

TEST_F(AutoConfigOrder, TreeMoveFlushesFirstAndShowsTheRuleWhileTheFormerAttributesStand)
{
    EditCell(1, 2, u"新名"_s);
    m_notes.clear();
    SelectCategory(u"截止阀"_s);
    EXPECT_EQ(m_notes, (CStringArray{u"cell 1"_s,             // the flush, against the former selection
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
                                     u"values of GJ"_s,       // OnAttributeChanged
                                     u"position "_s}));       // SyncPickerPosition
    EXPECT_EQ(Rule(2).GetQd(1)->GetRecord().strName, u"新名"_s);
    EXPECT_EQ(m_dialog->focusWidget(), &Grid());
}

TEST_F(AutoConfigOrder, RuleChangeShowsConditionsThenItemsThenSelectsTheBillThenAsksForValues)
{
    SelectRule(1);
    EXPECT_EQ(m_notes, (CStringArray{u"conditions emptied"_s, u"conditions filled"_s, u"grid emptied"_s,
                                     u"grid filled"_s, u"cell 1"_s, u"values of CZ"_s}));
    EXPECT_EQ(m_dialog->focusWidget(), &Grid());
}

TEST_F(AutoConfigOrder, AddedConditionShowsTheFirstRuleOnTheWayToItsOwn)
{
    SelectRule(1);
    TypeInto(ValueCombo, u"PPR"_s);
    m_notes.clear();
    Press(AddConditionButton);
    const CStringArray oneRule{
        u"conditions emptied"_s, u"conditions filled"_s, u"grid emptied"_s, u"grid filled"_s, u"cell 1"_s,
        u"values of CZ"_s};
    EXPECT_EQ(m_notes, (CStringArray{u"rules emptied"_s, u"rules filled"_s} + oneRule + oneRule));
    EXPECT_EQ(SelectedRuleRow(), 1);
}

TEST_F(AutoConfigOrder, AddedConditionOfTheFirstRuleShowsItOnce)
{
    TypeInto(ValueCombo, u"PPR"_s);
    m_notes.clear();
    Press(AddConditionButton);
    EXPECT_EQ(m_notes.count(u"conditions emptied"_s), 1);
}
