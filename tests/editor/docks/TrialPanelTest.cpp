#include "editor/docks/trial/TrialPanel.h"

#include "editor/docks/DocksFixture.h"
#include "editor/docks/trial/TrialFields.h"
#include "rules/draft/RuleEdits.h"
#include "shared/PricingText.h"

#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QTreeWidget>

using namespace Qt::StringLiterals;
using editor::TrialOutcome;
using editor::TrialPanel;

namespace {

class TrialPanelTest : public test::DocksFixture
{
protected:
    TrialPanelTest() : m_panel(m_session)
    {
        m_session.ChooseCategory(m_pipe);
        m_panel.resize(400, 700);
        m_panel.show();
    }

    QComboBox& Box(const QString& field) const
    {
        auto* box = m_panel.findChild<QComboBox*>(field);
        if (box == nullptr) throw std::out_of_range(field.toStdString());
        return *box;
    }
    /// As a user who types.
    void Type(const QString& field, const QString& text) const
    {
        QComboBox& box = Box(field);
        box.lineEdit()->selectAll();
        QTest::keyClick(box.lineEdit(), Qt::Key_Delete);
        box.lineEdit()->insert(text);
    }
    QPushButton& Button(const QString& text) const
    {
        for (QPushButton* button : m_panel.findChildren<QPushButton*>())
            if (button->text() == text) return *button;
        throw std::out_of_range(text.toStdString());
    }
    QString Applies() const { return LinkOf(m_panel).text(); }
    QTreeView& Misses() const
    {
        for (QTreeView* view : m_panel.findChildren<QTreeView*>())
            if (view->accessibleName() == u"不适用的规则"_s) return *view;
        throw std::out_of_range("misses");
    }
    QStringList Items() const
    {
        QStringList items;
        const auto* tree = m_panel.findChild<QTreeWidget*>();
        for (int row = 0; row < tree->topLevelItemCount(); ++row) {
            items.append(tree->topLevelItem(row)->text(0) + u' ' + tree->topLevelItem(row)->text(3));
            for (int below = 0; below < tree->topLevelItem(row)->childCount(); ++below)
                items.append(tree->topLevelItem(row)->child(below)->text(0) + u' ' +
                             tree->topLevelItem(row)->child(below)->text(3));
        }
        return items;
    }
    void TypeSample() const
    {
        Type(u"材质"_s, u"镀锌钢管"_s);
        Type(u"连接方式"_s, u"螺纹连接"_s);
        Type(u"公称直径"_s, u"65"_s);
        Type(u"水平管长度"_s, u"12.5"_s);
    }

    TrialPanel m_panel;
};

} // namespace

TEST_F(TrialPanelTest, TabGoesFromTheButtonsToTheFieldsInTheirOrder)
{
    QLineEdit behind;
    auto* window = new QWidget; // the panel beside another field, as in a dock
    auto* line = new QHBoxLayout(window);
    line->addWidget(&m_panel);
    line->addWidget(&behind);
    window->show();
    Type(u"材质"_s, u"镀锌钢管"_s);
    m_session.ChooseCategory(u"给排水\\管道\\热水管"_s); // fields are made anew
    m_session.ChooseCategory(m_pipe);
    const QWidget* at = &Button(u"清空"_s);
    QStringList fields;
    while ((at = at->nextInFocusChain()) != &behind && fields.size() < 3)
        if (const auto* box = qobject_cast<const QComboBox*>(at)) fields.append(box->objectName());
    EXPECT_EQ(fields, (QStringList{u"材质"_s, u"连接方式"_s, u"公称直径"_s}));
    EXPECT_EQ(m_panel.focusProxy(), &Box(u"材质"_s));
    m_panel.setParent(nullptr);
    behind.setParent(nullptr);
    delete window;
}

TEST_F(TrialPanelTest, AFilledInComponentGetsTheRuleAndItemsThatPricingGivesIt)
{
    TypeSample();
    const CStringArray headers{u"材质"_s, u"连接方式"_s, u"公称直径"_s, u"水平管长度"_s};
    const std::vector<CString> cells{u"镀锌钢管"_s, u"螺纹连接"_s, u"65"_s, u"12.5"_s};
    rules::BillBuilder builder(m_session.Draft().Snapshot(), m_session.Facts()->pricing, headers);
    const rules::ComponentResult result = builder.Add({{}, m_pipe, {}, cells});
    ASSERT_NE(result.rule, rules::NoRule);
    ASSERT_FALSE(result.lines.empty());
    ASSERT_NE(m_panel.Outcome(), nullptr);
    EXPECT_EQ(m_panel.Outcome()->Applies(), static_cast<std::size_t>(result.rule));
    EXPECT_TRUE(Applies().startsWith(u"适用的规则：第 %1 条"_s.arg(result.rule + 1)))
        << Applies().toStdString();
    QStringList expected;
    for (const rules::ItemLine& line : result.lines) {
        const rules::BillRow& row = builder.RowAt(line.row);
        const auto textOf = [](const rules::BillRow& item, const rules::Quantity& quantity) {
            const CString number = shared::QuantityIn(quantity, item.unit);
            return item.number + u' ' +
                   (quantity.IsKnown() ? number : u"缺："_s + shared::FaultText(quantity));
        };
        expected.append(textOf(row, line.quantity));
        for (const rules::ItemLine& quota : line.quotas)
            expected.append(textOf(row.quotas[quota.row], quota.quantity));
    }
    EXPECT_EQ(Items(), expected);
}

TEST_F(TrialPanelTest, EveryOtherRuleSaysWhyItDoesNotApply)
{
    TypeSample();
    const editor::TrialOutcomePtr outcome = m_panel.Outcome();
    ASSERT_TRUE(outcome && outcome->Applies());
    const rules::SmallCategoryPtr category = m_session.Category();
    for (std::size_t rule = 0; rule < category->rules.size(); ++rule) {
        const CString reason = outcome->ReasonOf(rule);
        const auto standing = outcome->StandingOf(rule);
        EXPECT_EQ(standing == TrialOutcome::Standing::Applies, rule == *outcome->Applies()) << rule;
        EXPECT_EQ(standing == TrialOutcome::Standing::Fails, reason.startsWith(u"不适用："_s)) << rule;
        EXPECT_EQ(category->rules[rule].isDefault, reason.startsWith(u"轮不到："_s)) << rule;
        const bool isBefore = rule < *outcome->Applies();
        EXPECT_TRUE(!isBefore || standing == TrialOutcome::Standing::Fails) << rule;
        EXPECT_FALSE(reason.isEmpty()) << rule;
    }
}

TEST_F(TrialPanelTest, NothingFilledInTriesNothing)
{
    EXPECT_EQ(m_panel.Outcome(), nullptr);
    Type(u"材质"_s, u"镀锌钢管"_s);
    EXPECT_NE(m_panel.Outcome(), nullptr);
    QTest::mouseClick(&Button(u"清空"_s), Qt::LeftButton);
    EXPECT_EQ(m_panel.Outcome(), nullptr);
    EXPECT_TRUE(Box(u"材质"_s).currentText().isEmpty());
}

TEST_F(TrialPanelTest, WhatIsHiddenLightsUpNothing)
{
    Type(u"材质"_s, u"镀锌钢管"_s);
    m_panel.hide();
    EXPECT_EQ(m_panel.Outcome(), nullptr);
    m_panel.show();
    EXPECT_NE(m_panel.Outcome(), nullptr);
}

TEST_F(TrialPanelTest, TheTrialFollowsEdits)
{
    TypeSample();
    int changes = 0;
    QObject::connect(&m_panel, &TrialPanel::OutcomeChanged, &m_panel, [&] { ++changes; });
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"公称直径"_s, u"65"_s)}));
    EXPECT_GT(changes, 0);
    ASSERT_TRUE(m_panel.Outcome());
    EXPECT_EQ(m_panel.Outcome()->Applies(), 0U);
    EXPECT_EQ(m_panel.Outcome()->Category(), m_session.Category());
    m_session.Undo().undo();
    EXPECT_NE(m_panel.Outcome()->Applies(), 0U);
}

TEST_F(TrialPanelTest, AClickOnAMissGoesToTheRule)
{
    TypeSample();
    ASSERT_GT(Misses().model()->rowCount(), 0);
    const QModelIndex first = Misses().model()->index(0, 0);
    QTest::mouseClick(Misses().viewport(), Qt::LeftButton, {}, Misses().visualRect(first).center());
    EXPECT_EQ(first.data().toString(), u"第 %1 条"_s.arg(*m_session.CurrentRule() + 1));
    LinkOf(m_panel).Click();
    EXPECT_EQ(m_session.CurrentRule(), m_panel.Outcome()->Applies());
}

TEST_F(TrialPanelTest, EachCategoryKeepsWhatWasFilledInForIt)
{
    Type(u"材质"_s, u"镀锌钢管"_s);
    m_session.ChooseCategory(u"给排水\\管道\\排水管"_s);
    EXPECT_EQ(m_panel.Outcome(), nullptr);
    m_session.ChooseCategory(m_pipe);
    EXPECT_EQ(Box(u"材质"_s).currentText(), u"镀锌钢管"_s);
    EXPECT_NE(m_panel.Outcome(), nullptr);
}

TEST_F(TrialPanelTest, AComponentOfATableFillsItsFields)
{
    m_session.ChooseCategory(u"给排水\\管道\\排水管"_s);
    const editor::Component component{.id = u"1"_s,
                                      .name = u"给水支管"_s,
                                      .category = m_pipe,
                                      .headers = {u"材质"_s, u"公称直径(mm)"_s, u"管道长度"_s, u"楼层"_s},
                                      .cells = {u"镀锌钢管"_s, u"65"_s, u"7"_s, u"1"_s}};
    m_panel.SetComponentSource([&] { return std::optional(component); });
    QTest::mouseClick(&Button(u"取自构件"_s), Qt::LeftButton);
    EXPECT_EQ(m_session.CategoryText(), m_pipe);
    EXPECT_EQ(Box(u"材质"_s).currentText(), u"镀锌钢管"_s);
    EXPECT_EQ(Box(u"公称直径"_s).currentText(), u"65"_s);
    rules::BillBuilder builder(m_session.Draft().Snapshot(), m_session.Facts()->pricing, component.headers);
    const rules::ComponentResult result = builder.Add({{}, m_pipe, component.name, component.cells});
    EXPECT_EQ(m_panel.Outcome()->Applies(), static_cast<std::size_t>(result.rule));
}

TEST_F(TrialPanelTest, WithoutAChosenComponentItIsSaidWhatToDo)
{
    m_panel.SetComponentSource([] { return std::nullopt; });
    QTest::mouseClick(&Button(u"取自构件"_s), Qt::LeftButton);
    ASSERT_EQ(m_messages.Texts().size(), 1);
    EXPECT_TRUE(m_messages.Texts().first().contains(u"请先打开构件表"_s));
}

TEST_F(TrialPanelTest, FieldsThatRulesAskForComeFirstAndTheOthersAreFoldedAway)
{
    const std::vector<editor::TrialField> fields = editor::TrialFieldsOf(
        *m_session.Category(), m_session.Facts()->AttributesOf(m_pipe), m_session.Facts()->pricing);
    ASSERT_FALSE(fields.empty());
    EXPECT_TRUE(std::is_sorted(fields.begin(), fields.end(),
                               [](const auto& a, const auto& b) { return a.kind < b.kind; }));
    const auto& condition = m_session.Category()->rules.front().conditions.front();
    EXPECT_EQ(fields.front().name, condition.attribute);
    for (const editor::TrialField& field : fields) {
        const bool isOffered = field.kind == editor::TrialField::Kind::Offered;
        EXPECT_EQ(Box(field.name).isVisibleTo(&m_panel), !isOffered) << field.name.toStdString();
    }
}

TEST_F(TrialPanelTest, WhereNoListHasNumbersTheBoundsAndTheirNeighboursAreOffered)
{
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"自造数"_s, u"50"_s, u"65"_s)}));
    QStringList choices;
    for (int i = 0; i < Box(u"自造数"_s).count(); ++i)
        choices.append(Box(u"自造数"_s).itemText(i));
    EXPECT_EQ(choices, (QStringList{QString(), u"25"_s, u"50"_s, u"57.5"_s, u"65"_s, u"66"_s}));
}

TEST_F(TrialPanelTest, TheWheelScrollsTheFormAndChangesNoValue)
{
    QComboBox& box = Box(u"公称直径"_s);
    Type(u"公称直径"_s, u"65"_s);
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box, &wheel);
    EXPECT_EQ(box.currentText(), u"65"_s);
}

TEST_F(TrialPanelTest, AFieldHasItsUnitBehindItsNameWhereItHasOne)
{
    EXPECT_EQ(Box(u"材质"_s).accessibleName(), u"材质"_s);
    EXPECT_EQ(Box(u"公称直径"_s).accessibleName(), u"公称直径(mm)"_s);
}

TEST_F(TrialPanelTest, FormAndResultShareTheRoomBothInANarrowAndInAWideDock)
{
    const auto* const splitter = m_panel.findChild<QSplitter*>();
    for (const QSize& size : {QSize(300, 640), QSize(1000, 400)}) {
        m_panel.resize(size);
        const QList<int> sizes = splitter->sizes();
        EXPECT_GT(3 * sizes[0], sizes[1]) << size.width();
        EXPECT_GT(3 * sizes[1], sizes[0]) << size.width();
    }
    EXPECT_EQ(splitter->orientation(), Qt::Horizontal);
}

TEST_F(TrialPanelTest, AMissingQuantityLeavesRoomForTheNameOfTheItem)
{
    m_panel.resize(300, 700);
    Type(u"材质"_s, u"镀锌钢管"_s);
    Type(u"连接方式"_s, u"螺纹连接"_s);
    Type(u"公称直径"_s, u"65"_s);
    const auto* const items = m_panel.findChild<QTreeWidget*>();
    ASSERT_GT(items->topLevelItemCount(), 0);
    ASSERT_TRUE(items->topLevelItem(0)->text(3).startsWith(u"缺："_s));
    EXPECT_LE(items->header()->length(), items->viewport()->width());
}
