#include "editor/session/SessionFixture.h"

#include "editor/workbench/CategoryPanel.h"
#include "editor/workbench/ConflictDialog.h"
#include "editor/workbench/CopyDialog.h"
#include "editor/workbench/RuleTable.h"
#include "editor/workbench/Workbench.h"
#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtCore/QMimeData>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QInputMethodEvent>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QTreeWidget>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using editor::RuleTableModel;
using editor::SearchScope;
using editor::Workbench;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

/// The workbench on the sample project, driven by keys.
class WorkbenchOnSample : public test::SessionTest
{
protected:
    WorkbenchOnSample()
        : m_window(*m_session, {.run = [](const auto& step) { step(); },
                                .openFile = [this](const editor::RuleRow& found) { m_wanted = found.file; },
                                .readOthers = [this] { return m_others; },
                                .save = [this] { ++m_saves; },
                                .tell = {}})
    {
        OpenAt(Pipes);
        m_window.resize(1000, 700);
        m_window.show();
        m_window.activateWindow();
        test::WaitUntilActive(m_window);
        m_window.FocusRules();
    }
    ~WorkbenchOnSample() override { QGuiApplication::clipboard()->clear(); }

    QWidget& Rules() const { return *m_window.RuleList(); }
    QAbstractItemModel& Model() const { return *static_cast<QTableView&>(Rules()).model(); }
    int Lines() const { return Model().rowCount(); }
    CString Cell(int line, int column) const { return Model().index(line, column).data().toString(); }
    QLineEdit& Search() const { return *m_window.findChild<QLineEdit*>(u"find"_s); }
    editor::CategoryPanel& Categories() const
    {
        return dynamic_cast<editor::CategoryPanel&>(
            *dynamic_cast<QScrollArea&>(*m_window.FindDock(u"categories"_s)->widget()).widget());
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(&Rules(), key, modifiers);
    }
    std::vector<CString> Conditions() const
    {
        std::vector<CString> texts;
        for (const rules::Rule& rule : m_session->Category()->rules)
            texts.push_back(rule.Text());
        return texts;
    }

    CString m_wanted;
    std::vector<editor::OtherFile> m_others;
    int m_saves = 0;
    Workbench m_window;
};

std::vector<CString> FirstTwo(std::vector<CString> texts)
{
    texts.resize(2);
    return texts;
}

rules::Conflict ConflictOf(const CString& mine, const CString& theirs)
{
    rules::Conflict conflict;
    conflict.category = u"给排水\\管道\\给水管"_s;
    for (const auto& [value, side] : {std::pair(mine, &conflict.mine), std::pair(theirs, &conflict.theirs)}) {
        rules::Rule rule;
        rule.id = 2;
        rules::Condition condition;
        condition.attribute = u"材质"_s;
        condition.equalOperator = u"＝"_s;
        condition.value = value;
        rule.conditions.push_back(condition);
        *side = rule;
    }
    return conflict;
}

QPushButton& Button(const QWidget& window, const QString& text)
{
    for (QPushButton* button : window.findChildren<QPushButton*>())
        if (button->text().startsWith(text)) return *button;
    throw std::runtime_error("no such button");
}

} // namespace

TEST_F(WorkbenchOnSample, ShowsTheRulesOfTheChosenCategoryALineEach)
{
    ASSERT_EQ(Lines(), static_cast<int>(m_session->Category()->rules.size()));
    EXPECT_EQ(Cell(0, RuleTableModel::PositionColumn), u"1"_s);
    EXPECT_EQ(Cell(0, RuleTableModel::ConditionColumn), Conditions().front());
    EXPECT_THAT(Cell(0, RuleTableModel::BillColumn).toStdString(), HasSubstr("031001001001"));
    EXPECT_EQ(Cell(Lines() - 1, RuleTableModel::ConditionColumn), u"其它"_s);
    m_session->ChooseCategory(HotPipes);
    EXPECT_EQ(Lines(), static_cast<int>(m_session->Category()->rules.size()));
}

TEST_F(WorkbenchOnSample, HomeAndEndGoToTheFirstAndTheLastRule)
{
    const std::size_t last = m_session->Category()->rules.size() - 1;
    ASSERT_GT(last, 1U);
    Press(Qt::Key_End);
    EXPECT_THAT(m_session->ChosenRules(), ElementsAre(last));
    Press(Qt::Key_Home);
    EXPECT_THAT(m_session->ChosenRules(), ElementsAre(0U));
    EXPECT_EQ(m_session->CurrentRule(), 0U);
}

TEST_F(WorkbenchOnSample, HomeAndEndWithShiftChooseAllRulesUpToThere)
{
    const std::size_t last = m_session->Category()->rules.size() - 1;
    m_session->ChooseRules({last - 1}, last - 1);
    Press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_THAT(m_session->ChosenRules(), ElementsAre(last - 1, last));
    Press(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(m_session->ChosenRules().size(), last) << "from the rule where it began to the first one";
    EXPECT_EQ(m_session->CurrentRule(), 0U);
}

TEST_F(WorkbenchOnSample, KeysAddMoveAndDeleteRulesAndUndoTakesThemBack)
{
    const auto before = Conditions();
    Press(Qt::Key_Insert);
    EXPECT_EQ(m_session->CurrentRule(), 1U);
    Press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(m_session->CurrentRule(), 0U);
    EXPECT_EQ(Conditions().front(), CString());
    Press(Qt::Key_Delete);
    EXPECT_EQ(Conditions(), before);
    for (int i = 0; i < 3; ++i)
        m_window.UndoAction()->trigger();
    EXPECT_EQ(Conditions(), before);
    EXPECT_FALSE(m_session->Undo().canUndo());
}

TEST_F(WorkbenchOnSample, DefaultRuleIsNeitherDeletedNorMoved)
{
    const auto before = Conditions();
    m_session->ChooseRules({before.size() - 1}, before.size() - 1);
    Press(Qt::Key_Delete);
    Press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Conditions(), before);
    EXPECT_FALSE(m_window.Commands().remove->isEnabled());
}

TEST_F(WorkbenchOnSample, TypingFindsRulesByValueOfAnAttributeByTextAndByItem)
{
    Search().setText(u"公称直径"_s);
    QTest::keyClicks(&Search(), u" 40"_s);
    ASSERT_EQ(Lines(), 1);
    EXPECT_THAT(Cell(0, RuleTableModel::ConditionColumn).toStdString(), HasSubstr("≤40"));
    Search().setText(u"031001006002"_s);
    EXPECT_EQ(Lines(), 1);
    Search().setText(u"热熔"_s);
    EXPECT_EQ(Lines(), 3);
    QTest::keyClick(&Search(), Qt::Key_Escape);
    EXPECT_EQ(Lines(), static_cast<int>(m_session->Category()->rules.size()));
}

TEST_F(WorkbenchOnSample, WiderScopesShowWhereARuleStandsAndChoosingItGoesThere)
{
    const CString valves = u"给排水\\阀门附件\\阀门"_s;
    m_window.Find(m_session->Draft().Find(valves)->rules.front().bills.front().record.strQdId,
                  SearchScope::Specialty);
    ASSERT_EQ(Lines(), 1);
    EXPECT_EQ(Cell(0, RuleTableModel::PlaceColumn), valves);
    m_window.FocusRules();
    Press(Qt::Key_Home);
    Press(Qt::Key_Space);
    EXPECT_EQ(m_session->CategoryText(), valves);
    EXPECT_EQ(Lines(), 1) << "the search stays";
}

TEST_F(WorkbenchOnSample, RulesOfSeveralCategoriesAreChosenAndDeletedTogether)
{
    m_window.Find(u"DN"_s, SearchScope::File);
    m_window.FocusRules();
    QTest::keyClick(&Rules(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_GT(m_session->ChosenPlaces().size(), 1U);
    const int found = Lines();
    ASSERT_GT(found, 1);
    Press(Qt::Key_Delete);
    EXPECT_LT(Lines(), found);
    m_session->Undo().undo();
    EXPECT_EQ(Lines(), found);
}

TEST_F(WorkbenchOnSample, RuleOfAnotherFileIsOpenedByEnter)
{
    m_others = {{Path(u"给排水示例"_s), Saved(u"给排水示例"_s)}};
    m_window.Find(u"水泵"_s, SearchScope::Project);
    ASSERT_GT(Lines(), 0);
    static_cast<editor::RuleTable&>(Rules()).ChooseLines({Lines() - 1}, Lines() - 1);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_wanted, Path(u"给排水示例"_s));
}

TEST_F(WorkbenchOnSample, SearchInOtherFilesEndsWithTheOpenFile)
{
    m_others = {{Path(u"给排水示例"_s), Saved(u"给排水示例"_s)}};
    m_window.Find(u"水泵"_s, SearchScope::Project);
    ASSERT_GT(Lines(), 0);
    m_session->Open(Path(u"给排水示例"_s)); // one of those that were read as others
    for (int line = 0; line < Lines(); ++line)
        EXPECT_FALSE(Cell(line, RuleTableModel::PlaceColumn).contains(u"："_s)) << "of another file";
}

TEST_F(WorkbenchOnSample, SearchInOtherFilesShowsWhatTheyHoldNow)
{
    m_others = {{Path(u"给排水示例"_s), Saved(u"给排水示例"_s)}};
    m_window.Find(u"铜金合金"_s, SearchScope::Project);
    ASSERT_EQ(Lines(), 0);
    rules::Draft other(Saved(u"给排水示例"_s), m_session->Facts()->offered);
    other.Apply(rules::InsertRules(other, Pipes, 0, {RuleFor(u"材质"_s, u"铜金合金"_s)}, {}));
    m_others.front().rules = other.Snapshot();
    m_window.OtherFilesChanged();
    EXPECT_EQ(Lines(), 1);
}

TEST_F(WorkbenchOnSample, CategoryThatAnAidForTheDisabledSelectsIsChosen)
{
    auto& tree = *Categories().findChild<QTreeView*>();
    const QModelIndex wanted = tree.model()->index(1, 0, tree.model()->index(0, 0));
    const CString text = wanted.data(Qt::UserRole).toString();
    test::SelectByAid(tree, wanted);
    ASSERT_NE(text, Pipes);
    test::WaitInLoopFor(u"the category"_s, [&] { return m_session->CategoryText() == text; });
}

TEST_F(WorkbenchOnSample, InputMethodTypesTheNameOfACategory)
{
    auto& tree = *Categories().findChild<QTreeView*>();
    tree.setFocus();
    EXPECT_TRUE(tree.testAttribute(Qt::WA_InputMethodEnabled)) << "else it types nothing at all";
    QInputMethodEvent typed;
    typed.setCommitString(u"热水管"_s);
    QCoreApplication::sendEvent(&tree, &typed);
    EXPECT_EQ(m_session->CategoryText(), HotPipes);
    for (QLineEdit* editor : tree.findChildren<QLineEdit*>())
        ADD_FAILURE() << "opens an editor: " << editor->text().toStdString();
}

TEST_F(WorkbenchOnSample, TabPassesByThePanelsBehindOthers)
{
    auto* shown = new QLineEdit;
    auto* hidden = new QLineEdit;
    m_window.AddDock(u"hidden"_s, u"后面"_s, hidden, Qt::BottomDockWidgetArea)->show();
    m_window.AddDock(u"shown"_s, u"前面"_s, shown, Qt::BottomDockWidgetArea)->show();
    m_window.FindDock(u"shown"_s)->raise();
    const auto isInFront = [&](const QString& name) {
        return !m_window.FindDock(name)->visibleRegion().isEmpty();
    };
    test::WaitInLoopFor(u"the dock in front"_s,
                        [&] { return isInFront(u"shown"_s) && !isInFront(u"hidden"_s); });
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        m_window.FocusRules();
        bool isReached = false;
        for (int i = 0; i < 40; ++i) {
            QTest::keyClick(QGuiApplication::focusWindow(), key);
            ASSERT_NE(m_window.focusWidget(), hidden);
            isReached = isReached || m_window.focusWidget() == shown;
        }
        EXPECT_TRUE(isReached);
    }
    m_window.FindDock(u"hidden"_s)->raise();
    test::WaitInLoopFor(u"the other dock in front"_s,
                        [&] { return isInFront(u"hidden"_s) && !isInFront(u"shown"_s); });
    bool isReached = false;
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_Tab);
        ASSERT_NE(m_window.focusWidget(), shown);
        isReached = isReached || m_window.focusWidget() == hidden;
    }
    EXPECT_TRUE(isReached);
}

TEST_F(WorkbenchOnSample, CopiedRulesArePastedIntoAnotherCategory)
{
    m_session->ChooseRules({0, 1}, 0);
    const auto source = Conditions();
    Press(Qt::Key_C, Qt::ControlModifier);
    m_session->ChooseCategory(HotPipes);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(FirstTwo(Conditions()), FirstTwo(source));
    EXPECT_THAT(m_session->ChosenRules(), ElementsAre(0U, 1U));
    ASSERT_EQ(m_session->Category()->rules.front().bills.size(), 1U);
}

TEST_F(WorkbenchOnSample, CopiedRulesAreATableForWorkbooksAndComeBackFromOne)
{
    m_session->ChooseRules({0, 1}, 0);
    Press(Qt::Key_C, Qt::ControlModifier);
    const QString table = QGuiApplication::clipboard()->text();
    EXPECT_EQ(table.count(Pipes), 2) << table.toStdString();
    EXPECT_TRUE(table.startsWith(u"类别\t"_s));
    QGuiApplication::clipboard()->setText(table);
    m_session->ChooseCategory(HotPipes);
    Press(Qt::Key_V, Qt::ControlModifier);
    // In the order of the columns.
    EXPECT_EQ(Conditions().front(), u"材质＝镀锌钢管;公称直径≤15;连接方式＝螺纹连接;"_s);
    EXPECT_EQ(Conditions()[1], u"材质＝镀锌钢管;15＜公称直径≤20;连接方式＝螺纹连接;"_s);
    EXPECT_EQ(m_session->Category()->rules.front().bills.front().record.strQdId, u"031001001001"_s);
}

TEST_F(WorkbenchOnSample, FaultyTableIsToldAndNothingIsPasted)
{
    QGuiApplication::clipboard()->setText(u"类别\t公称直径\t清单\t定额\nx\t50＜..＜\t999\t\n"_s);
    const auto before = Conditions();
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Conditions(), before);
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_THAT(m_messages.Texts().first().toStdString(), HasSubstr("第 2 行"));
}

TEST_F(WorkbenchOnSample, TextThatIsNoTableOfRulesCannotBePasted)
{
    QGuiApplication::clipboard()->setText(u"hello"_s);
    EXPECT_FALSE(m_window.Commands().paste->isEnabled());
}

TEST_F(WorkbenchOnSample, RulesDroppedBeforeAnotherOneStandThere)
{
    const auto before = Conditions();
    m_session->ChooseRules({0}, 0);
    const std::unique_ptr<QMimeData> dragged(Model().mimeData({Model().index(0, 0)}));
    ASSERT_TRUE(Model().canDropMimeData(dragged.get(), Qt::MoveAction, 3, 0, {}));
    Model().dropMimeData(dragged.get(), Qt::MoveAction, 3, 0, {});
    test::WaitInLoopFor(u"the move"_s, [&] { return m_session->IsChanged(); });
    EXPECT_EQ(Conditions()[2], before[0]);
    EXPECT_EQ(m_session->CurrentRule(), 2U);
}

TEST_F(WorkbenchOnSample, KnowledgeOfOthersStandsBesideTheRules)
{
    m_window.SetKnowledge(
        {.severity = [](const CString&, std::size_t position) -> std::optional<rules::Severity> {
             return position == 0 ? std::optional(rules::Severity::Error) : std::nullopt;
         },
         .findings = [](const CString&, std::size_t) { return u"有问题"_s; },
         .hits =
             [](const CString&, std::size_t) {
                 return editor::RuleHits{30, 0.25};
             },
         .trial =
             [](std::size_t position) {
                 return position == 1 ? std::optional(editor::TrialMark{.applies = true, .reason = {}})
                                      : std::nullopt;
             }},
        [](const CString&) { return std::nullopt; });
    m_window.ShowHits(true);
    EXPECT_TRUE(Model().index(0, RuleTableModel::PositionColumn).data(Qt::DecorationRole).isValid());
    EXPECT_FALSE(Model().index(1, RuleTableModel::PositionColumn).data(Qt::DecorationRole).isValid());
    EXPECT_EQ(Cell(0, RuleTableModel::HitColumn), u"30（25.0%）"_s);
    EXPECT_EQ(Cell(0, RuleTableModel::NoteColumn), u"有问题"_s);
    EXPECT_EQ(Cell(1, RuleTableModel::NoteColumn), u"试套：就是这一条"_s);
    EXPECT_TRUE(Model().index(1, 0).data(RuleTableModel::AppliesRole).toBool());
}

TEST_F(WorkbenchOnSample, InsertAndEnterAmongTheCategoriesGoToTheRules)
{
    auto& tree = *m_window.FindDock(u"categories"_s)->findChild<QTreeView*>();
    const int lines = Lines();
    tree.setFocus();
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_TRUE(Rules().hasFocus());
    EXPECT_EQ(Lines(), lines);
    tree.setFocus();
    QTest::keyClick(&tree, Qt::Key_Insert);
    EXPECT_TRUE(Rules().hasFocus());
    EXPECT_EQ(Lines(), lines + 1);
    tree.setFocus();
    tree.setCurrentIndex(tree.currentIndex().parent()); // a big category: opened and closed by Enter
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_TRUE(tree.hasFocus());
}

TEST_F(WorkbenchOnSample, ColumnsOfTheRulesShareTheWidthThatThereIs)
{
    auto& table = static_cast<QTableView&>(Rules());
    for (const bool withHits : {false, true}) {
        m_window.ShowHits(withHits);
        EXPECT_EQ(table.horizontalHeader()->length(), table.viewport()->width()) << withHits;
    }
    EXPECT_GT(table.columnWidth(RuleTableModel::ConditionColumn),
              table.columnWidth(RuleTableModel::BillColumn));
}

TEST_F(WorkbenchOnSample, PageIsLowEnoughForAScreenOf1366By768AtTwiceTheSize)
{
    auto* high = new QWidget;
    high->setMinimumSize(100, 2000);
    m_window.AddDock(u"high"_s, u"高"_s, high, Qt::BottomDockWidgetArea);
    EXPECT_LT(m_window.minimumSizeHint().height(), 768 / 2 - 100); // menus, status bar and frame
}

TEST_F(WorkbenchOnSample, CategoriesAreFilteredCountedAndMarkedWhenChanged)
{
    editor::CategoryPanel& panel = Categories();
    auto& tree = *panel.findChild<QTreeView*>();
    const auto named = [&](const QString& name) {
        return tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, name, -1,
                                   Qt::MatchRecursive | Qt::MatchStartsWith);
    };
    ASSERT_EQ(named(u"给水管"_s).size(), 1);
    EXPECT_EQ(named(u"给水管"_s).first().siblingAtColumn(1).data().toString(), u"10"_s);
    Press(Qt::Key_Insert);
    EXPECT_EQ(named(u"给水管"_s).first().data().toString(), u"给水管 *"_s);
    EXPECT_EQ(named(u"给水管"_s).first().siblingAtColumn(1).data().toString(), u"11"_s);
    auto& filter = *panel.findChild<QLineEdit*>();
    filter.setText(u"热水"_s);
    EXPECT_TRUE(named(u"给水管"_s).isEmpty());
    QTest::keyClick(&filter, Qt::Key_Down);
    ASSERT_EQ(named(u"热水管"_s).size(), 1);
    tree.setCurrentIndex(named(u"热水管"_s).first());
    EXPECT_EQ(m_session->CategoryText(), HotPipes);
    auto& specialties = *panel.findChild<QComboBox*>();
    EXPECT_THAT(specialties.currentText().toStdString(), HasSubstr("给排水（"));
    specialties.setCurrentIndex(specialties.findData(u"电气"_s));
    EXPECT_EQ(m_session->Specialty(), u"电气"_s);
}

TEST(ConflictDialog, CanBeAcceptedWhenEveryConflictHasAnAnswer)
{
    const std::vector conflicts{ConflictOf(u"甲"_s, u"乙"_s), ConflictOf(u"丙"_s, u"丁"_s)};
    editor::ConflictDialog dialog(conflicts, editor::ConflictDialog::WordsForFile(u"DefaultConfig"_s),
                                  nullptr);
    QPushButton& accept = Button(dialog, u"合并并保存"_s);
    EXPECT_EQ(test::ButtonsWithoutTip(dialog), QStringList());
    EXPECT_FALSE(accept.isEnabled());
    Button(dialog, u"用我的"_s).click();
    EXPECT_FALSE(accept.isEnabled());
    EXPECT_EQ(dialog.findChild<QTreeWidget*>()->currentIndex().row(), 1) << "the next one";
    Button(dialog, u"用文件里的"_s).click();
    EXPECT_TRUE(accept.isEnabled());
    EXPECT_THAT(dialog.Answers(), ElementsAre(rules::Side::Mine, rules::Side::Theirs));
    Button(dialog, u"全部用文件里的"_s).click();
    EXPECT_THAT(dialog.Answers(), ElementsAre(rules::Side::Theirs, rules::Side::Theirs));
}

TEST(ConflictDialog, AnswersTheConflictThatAnAidForTheDisabledSelects)
{
    const std::vector conflicts{ConflictOf(u"甲"_s, u"乙"_s), ConflictOf(u"丙"_s, u"丁"_s)};
    editor::ConflictDialog dialog(conflicts, editor::ConflictDialog::WordsForFile(u"DefaultConfig"_s),
                                  nullptr);
    auto& list = *dialog.findChild<QTreeWidget*>();
    test::SelectByAid(list, list.model()->index(1, 0));
    test::WaitInLoopFor(u"the conflict"_s, [&] { return list.currentIndex().row() == 1; });
    Button(dialog, u"用文件里的"_s).click();
    EXPECT_EQ(list.topLevelItem(0)->text(2), u"未定"_s);
    EXPECT_EQ(list.topLevelItem(1)->text(2), u"用文件里的"_s);
}

TEST_F(WorkbenchOnSample, CopyDialogTellsWhatDoesNotGoWithTheCheckedCategories)
{
    editor::CopyDialog dialog(
        m_session->Draft(), Pipes, 2,
        [&](const CString& category) {
            std::vector<rules::Misfit> misfits;
            if (category == HotPipes) misfits.push_back({0, u"没有属性“甲”"_s});
            return misfits;
        },
        nullptr);
    auto& tree = *dialog.findChild<QTreeWidget*>();
    const auto found = tree.findItems(u"热水管"_s, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(test::ButtonsWithoutTip(dialog), QStringList());
    EXPECT_TRUE(tree.findItems(u"给水管"_s, Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
    EXPECT_FALSE(Button(dialog, u"复制"_s).isEnabled());
    found.first()->setCheckState(0, Qt::Checked);
    EXPECT_TRUE(Button(dialog, u"复制"_s).isEnabled());
    EXPECT_EQ(dialog.Chosen(), CStringArray{HotPipes});
    bool isTold = false;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        isTold = isTold || label->text().contains(u"没有属性“甲”"_s);
    EXPECT_TRUE(isTold);
}
