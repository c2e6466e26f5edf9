#include "editor/workbench/WorkbenchFixture.h"

#include "editor/workbench/RuleTable.h"
#include "support/Patience.h"

#include <QtCore/QMimeData>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using editor::RuleTableModel;
using editor::SearchScope;
using test::WorkbenchOnSample;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

std::vector<CString> FirstTwo(std::vector<CString> texts)
{
    texts.resize(2);
    return texts;
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
