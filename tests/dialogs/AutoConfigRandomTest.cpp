#include "dialogs/AutoConfigFixture.h"

#include "support/StrictXml.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>

#include <algorithm>
#include <random>

using namespace test::autoconfig;

// A user who clicks, types and picks at random. After each step the views must agree with the store, and what
// is written must be a well-formed file that holds what was seen.

namespace {

constexpr int Steps = 2500;
/// More rules than this in one category only make the steps slower.
constexpr int ManyRules = 12;

class AutoConfigRandomUser : public AutoConfigInBothModes
{
protected:
    int Below(std::size_t limit) { return static_cast<int>(m_random() % limit); }
    bool Once(int inHowMany) { return Below(std::size_t(inHowMany)) == 0; }
    template <typename T>
    const T& Any(const std::vector<T>& values)
    {
        return values[std::size_t(Below(values.size()))];
    }
    CString AnyText()
    {
        return Any<CString>({CString(), u"1"_s, u"2.5"_s, u"-7"_s, u"PPR"_s, u"管径"_s, u"<&\"'>"_s, u" "_s,
                             u"a\u0001b"_s, CString(QChar(0xD800)), u"😀"_s, u"10m"_s});
    }

    void Step();
    void StepInLists();
    void StepInPanel();
    void StepInGrid();
    void StepInFiles();
    void StepWithKeys();
    void Pick();
    /// Answers the next dialog, if the step brings one up.
    void AnswerIfAsked();
    void CheckAgreement();
    void CheckRule(const ConfigNode& rule);
    CStringArray ShownNumbers(const ConfigNode& rule) const;
    void CheckFileAndReopen();

    std::mt19937 m_random{20240517};
    /// The most that one rule was seen with: a user who gets nowhere proves nothing.
    qsizetype m_mostConditions = 0;
    qsizetype m_mostItems = 0;
};

void AutoConfigRandomUser::AnswerIfAsked()
{
    const bool accepts = !Once(4);
    const CString name = Any<CString>({u"DefaultConfig"_s, u"甲"_s, u"乙"_s, u"a:b"_s});
    QTimer::singleShot(0, qApp, [accepts, name] {
        auto* dialog = dynamic_cast<dialogs::TemplateDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        if (auto* edit = dynamic_cast<QLineEdit*>(dialog->GetDlgItem(1069)); edit != nullptr && accepts) {
            const auto line = static_cast<int>(test::Lines(*dialog, 1000).indexOf(name));
            if (line >= 0) test::ClickLine(*dialog, 1000, line);
            if (edit->isEnabled()) test::Type(*dialog, 1069, name);
        }
        if (accepts) test::Click(*dialog, dialogs::IdOk);
        if (dialog->isVisible()) test::Click(*dialog, dialogs::IdCancel);
    });
}

void AutoConfigRandomUser::Step()
{
    switch (Below(6)) {
    case 0:
        StepInLists();
        break;
    case 1:
        StepInPanel();
        break;
    case 2:
        StepInGrid();
        break;
    case 3:
        StepWithKeys();
        break;
    case 4:
        Pick();
        break;
    default:
        if (Once(8))
            StepInFiles();
        else
            Press(Any<ControlId>({AddRuleButton, CopyRuleButton, DeleteRuleButton, MoveUpButton,
                                  MoveDownButton, PickerButton}));
    }
    while (Rules().topLevelItemCount() > ManyRules && IsEnabled(DeleteRuleButton) && SelectedRuleRow() >= 0 &&
           !SelectedCategory().isEmpty() && Category(SelectedCategory())->childCount() == 0)
        Press(DeleteRuleButton);
}

void AutoConfigRandomUser::StepInLists()
{
    if (Once(2) && Rules().topLevelItemCount() > 0)
        SelectRule(Below(std::size_t(Rules().topLevelItemCount())));
    else
        SelectCategory(
            Any<CString>({u"给水管"_s, u"给水管"_s, u"排水管"_s, u"截止阀"_s, u"管道"_s, u"给排水"_s}));
}

void AutoConfigRandomUser::StepInPanel()
{
    const CStringArray names = AttributeNames();
    SelectAttribute(names[Below(std::size_t(names.size()))]);
    SelectPage(Below(2));
    for (const ControlId combo : {ValueCombo, LowerBound, UpperBound})
        if (IsVisible(combo) && IsEnabled(combo)) TypeInto(combo, AnyText());
    if (const int lines = int(ConditionTexts().size()); lines > 0)
        test::ClickLine(*m_dialog, ControlId::Conditions, Below(std::size_t(lines)));
    Press(Any<ControlId>({AddConditionButton, AddConditionButton, RemoveConditionButton}));
}

void AutoConfigRandomUser::StepInGrid()
{
    const int rows = Grid().GetRowCount() - 1;
    if (rows < 1) return;
    const int row = 1 + Below(std::size_t(rows));
    switch (Below(5)) {
    case 0:
        EditCell(row, 2, AnyText());
        break;
    case 1:
        ChooseInCell(row, 3, Below(3));
        break;
    case 2:
        m_windows.SetCalculation(Once(3) ? std::nullopt
                                         : std::optional(AnyText().remove(QChar(0xD800)).remove(u'\u0001')));
        ClickCell(row, 4);
        break;
    case 3:
        ClickCell(row, 1);
        Press(DeleteItemsButton);
        break;
    default:
        ClickCell(row, 1,
                  Any<Qt::KeyboardModifiers>({Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}));
    }
}

void AutoConfigRandomUser::StepWithKeys()
{
    const auto key = Any<Qt::Key>({Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,
                                   Qt::Key_End, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return, Qt::Key_F2,
                                   Qt::Key_Space, Qt::Key_Delete, Qt::Key_Insert, Qt::Key_X, Qt::Key_Escape});
    AnswerIfAsked(); // a key may press a button
    Key(key, Once(4) ? Qt::ControlModifier : Qt::NoModifier);
}

void AutoConfigRandomUser::StepInFiles()
{
    AnswerIfAsked();
    Press(Any<ControlId>({NewFileButton, LoadFileButton, SaveAsButton, NetDiskButton}));
}

void AutoConfigRandomUser::Pick()
{
    AnswerIfAsked();
    if (Once(2)) {
        const SPickedQd picked{0, 0, 0, Any<CString>({u"031001001"_s, u"031001006"_s, u"039999999"_s})};
        m_windows.Bill().PickBill(&picked);
    } else {
        PickQuota(Any<CString>({u"8-1"_s, u"8-2"_s, u"8-3"_s}), Any<CString>({CString(), u"L"_s}));
    }
}

CStringArray AutoConfigRandomUser::ShownNumbers(const ConfigNode& rule) const
{
    CStringArray numbers;
    if (GetParam() != SQdDeInfo::BillMode) {
        for (const DeNode* quota : rule.GetDe())
            numbers.append(quota->GetRecord().strDeId);
        return numbers;
    }
    for (const QdNode* bill : rule.GetQd()) {
        numbers.append(bill->GetRecord().strQdId);
        for (const DeNode* quota : bill->GetDe())
            numbers.append(quota->GetRecord().strDeId);
    }
    return numbers;
}

void AutoConfigRandomUser::CheckRule(const ConfigNode& rule)
{
    CStringArray conditions;
    for (const ConditionNode* condition : rule.GetCondition())
        conditions.append(condition->GetConditionString());
    m_mostConditions = std::max(m_mostConditions, conditions.size());
    m_mostItems = std::max(m_mostItems, GridColumn().size());
    EXPECT_EQ(ConditionTexts(), conditions);
    EXPECT_EQ(GridColumn(), ShownNumbers(rule));
    EXPECT_EQ(IsEnabled(AddConditionButton), rule.GetId() != 1);
}

// With a big category selected the lists show what they last showed, which nothing has to agree with.
void AutoConfigRandomUser::CheckAgreement()
{
    const QList<QTreeWidgetItem*> selected = Tree().selectedItems();
    ASSERT_EQ(selected.size(), 1);
    const QTreeWidgetItem* small = selected.first();
    if (small->childCount() > 0) return;
    const auto id = [](const QTreeWidgetItem* item) { return item->data(0, Qt::UserRole).toInt(); };
    const CPath path{id(small->parent()->parent()), id(small->parent()), id(small), 0, 0, 0, 0, 0};
    std::vector<ConfigNode*> rules;
    ASSERT_TRUE(m_dialog->Presenter().GetConfig(path, rules));
    CStringArray texts;
    std::vector<int> ids;
    for (const ConfigNode* rule : rules) {
        texts.append(rule->GetConditionString());
        ids.push_back(rule->GetId());
    }
    EXPECT_EQ(RuleTexts(), texts);
    EXPECT_EQ(RuleIds(), ids);
    if (const int row = SelectedRuleRow(); row >= 0) CheckRule(*rules[std::size_t(row)]);
}

void AutoConfigRandomUser::CheckFileAndReopen()
{
    if (m_dialog->isVisible()) Close();
    const CString name = m_dialog->Presenter().GetCurConfig();
    const QByteArray bytes = m_guard.Folder().ReadFile(u"app\\自动套配置\\"_s + name + u".xml"_s);
    ASSERT_TRUE(test::IsStrictXml(bytes));
    for (const CPath& category : {WaterPipes, DrainPipes})
        EXPECT_EQ(Saved(category, name), Stored(category));
    Open();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Modes, AutoConfigRandomUser,
                         ::testing::Values(SQdDeInfo::BillMode, SQdDeInfo::QuotaMode));

TEST_P(AutoConfigRandomUser, NeverLeavesTheViewsAgainstTheStoreAndWritesWellFormedFiles)
{
    m_guard.Folder().WriteFile(u"app\\QdDeConfig.def"_s, "<自动套清单定额配置信息 Version=\"1.2.3\"/>");
    Open();
    for (int step = 0; step < Steps; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        Step();
        QCoreApplication::processEvents();
        if (!m_dialog->isVisible() || Once(100)) CheckFileAndReopen();
        CheckAgreement();
        if (HasFailure()) break;
    }
    CheckFileAndReopen();
    EXPECT_GE(m_mostConditions, 3);
    EXPECT_GE(m_mostItems, 3);
}
