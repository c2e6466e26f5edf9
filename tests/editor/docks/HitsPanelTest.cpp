#include "editor/docks/takeoff/HitsPanel.h"

#include "editor/docks/DocksFixture.h"
#include "support/Patience.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

using namespace Qt::StringLiterals;
using editor::HitsPanel;
using editor::TakeoffHits;

namespace {

class HitsPanelTest : public test::DocksFixture
{
protected:
    HitsPanelTest() : m_hits(m_session), m_panel(m_session, m_hits)
    {
        m_session.ChooseCategory(m_pipe);
        m_panel.resize(600, 500);
        m_panel.show();
    }

    void OpenTable()
    {
        m_hits.Open(Sample(u"PlumbingTakeoff.csv"_s));
        WaitUntilCurrent();
    }
    void WaitUntilCurrent() const
    {
        test::WaitInLoopFor(u"the prices"_s, [&] { return m_hits.IsCurrent(); });
    }
    QTableView& Table() const { return *m_panel.findChild<QTableView*>(); }
    int Rows() const { return Table().model()->rowCount(); }
    QComboBox& Scope() const { return *m_panel.findChild<QComboBox*>(); }
    QString State() const
    {
        for (QLabel* label : m_panel.findChildren<QLabel*>())
            if (label->accessibleName() == u"构件表"_s) return label->text();
        throw std::out_of_range("state");
    }
    widgets::NotifyingStatic& Default() const { return LinkOf(m_panel); }
    QPushButton& Button(const QString& text) const
    {
        for (QPushButton* button : m_panel.findChildren<QPushButton*>())
            if (button->text() == text) return *button;
        throw std::out_of_range(text.toStdString());
    }
    std::size_t DefaultRule() const { return m_session.Category()->rules.size() - 1; }

    TakeoffHits m_hits;
    HitsPanel m_panel;
};

} // namespace

TEST_F(HitsPanelTest, TheComponentsOfTheChosenRulesAreListed)
{
    OpenTable();
    std::size_t rule = 0;
    while (m_hits.HitsOf(m_pipe, rule) == 0U)
        ++rule;
    m_session.ChooseRules({rule}, rule);
    EXPECT_EQ(static_cast<std::uint64_t>(Rows()), m_hits.HitsOf(m_pipe, rule));
    m_session.ChooseRules({rule, DefaultRule()}, rule);
    EXPECT_EQ(static_cast<std::uint64_t>(Rows()),
              *m_hits.HitsOf(m_pipe, rule) + *m_hits.HitsOf(m_pipe, DefaultRule()));
}

TEST_F(HitsPanelTest, WhatRulesLookAtStandsBesideTheComponent)
{
    OpenTable();
    Scope().setCurrentIndex(1);
    EXPECT_EQ(static_cast<std::uint64_t>(Rows()), m_hits.ComponentsOf(m_pipe));
    QStringList headings;
    for (int column = 0; column < Table().model()->columnCount(); ++column)
        headings.append(Table().model()->headerData(column, Qt::Horizontal).toString());
    EXPECT_EQ(headings.first(3), (QStringList{u"构件编号"_s, u"具体构件"_s, u"规则"_s}));
    QStringList tested;
    for (const rules::Rule& one : m_session.Category()->rules)
        for (const rules::Condition& condition : one.conditions)
            if (!tested.contains(condition.attribute)) tested.append(condition.attribute);
    EXPECT_EQ(headings.mid(3, tested.size()), tested);
    EXPECT_FALSE(headings.contains(u"类别"_s));
}

TEST_F(HitsPanelTest, TheShareOfTheDefaultRuleStandsOutAndLeadsToIt)
{
    OpenTable();
    for (const auto& [text, hits] : m_hits.Figures()->categories) {
        if (hits.onDefault == 0) continue;
        m_session.ChooseCategory(text);
        EXPECT_TRUE(Default().text().startsWith(u"默认规则 %1 个"_s.arg(hits.onDefault)));
        EXPECT_TRUE(Default().font().bold());
        Default().Click();
        EXPECT_EQ(m_session.CurrentRule(), DefaultRule());
        EXPECT_EQ(static_cast<std::uint64_t>(Rows()), hits.onDefault);
        return;
    }
    FAIL() << "the sample leaves nothing to a default rule";
}

TEST_F(HitsPanelTest, EnterGoesToTheRuleOfAComponentWhereItStandsNow)
{
    OpenTable();
    Scope().setCurrentIndex(1);
    const QString rule = Table().model()->index(0, 2).data().toString();
    Table().setCurrentIndex(Table().model()->index(0, 0));
    QTest::keyClick(&Table(), Qt::Key_Return);
    ASSERT_TRUE(m_session.CurrentRule());
    EXPECT_EQ(rule, u"第 %1 条"_s.arg(*m_session.CurrentRule() + 1));
    const std::size_t before = *m_session.CurrentRule();
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"没有的管"_s)}));
    QTest::keyClick(&Table(), Qt::Key_Return); // not priced again yet
    EXPECT_EQ(m_session.CurrentRule(), before + 1);
}

TEST_F(HitsPanelTest, TheChosenComponentCanBeTried)
{
    OpenTable();
    Scope().setCurrentIndex(1);
    EXPECT_FALSE(m_panel.ChosenComponent());
    EXPECT_FALSE(Button(u"试套"_s).isEnabled());
    Table().setCurrentIndex(Table().model()->index(0, 0));
    std::optional<editor::Component> tried;
    QObject::connect(&m_panel, &HitsPanel::TryWanted, &m_panel,
                     [&](const editor::Component& component) { tried = component; });
    QTest::mouseClick(&Button(u"试套"_s), Qt::LeftButton);
    ASSERT_TRUE(tried);
    EXPECT_EQ(tried->category, m_pipe);
    EXPECT_EQ(tried->id, Table().model()->index(0, 0).data().toString());
    EXPECT_EQ(tried->cells.size(), static_cast<std::size_t>(tried->headers.size()));
}

TEST_F(HitsPanelTest, TheChosenComponentStaysChosenWhenItIsPricedAgain)
{
    OpenTable();
    Scope().setCurrentIndex(1);
    Table().setCurrentIndex(Table().model()->index(2, 0));
    const QString id = m_panel.ChosenComponent()->id;
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"0"_s, u"40"_s)}));
    WaitUntilCurrent();
    ASSERT_TRUE(m_panel.ChosenComponent());
    EXPECT_EQ(m_panel.ChosenComponent()->id, id);
}

TEST_F(HitsPanelTest, ComponentsWithoutAPriceAreListedWithTheReason)
{
    OpenTable();
    Scope().setCurrentIndex(3);
    EXPECT_EQ(static_cast<std::uint64_t>(Rows()), m_hits.Figures()->bill.totals.refused);
    ASSERT_GT(Rows(), 0);
    EXPECT_FALSE(Table().model()->index(0, 2).data().toString().isEmpty());
}

TEST_F(HitsPanelTest, TheStateOfTheTableIsSaid)
{
    EXPECT_EQ(State(), u"没有打开构件表"_s);
    EXPECT_FALSE(Button(u"关闭"_s).isEnabled());
    OpenTable();
    EXPECT_TRUE(State().contains(u"构件 303 个 ＝ 已套价"_s)) << State().toStdString();
    m_hits.Open(m_folder.Path(u"missing.csv"_s));
    test::WaitInLoopFor(u"the refusal"_s, [&] { return m_hits.Now() == TakeoffHits::State::Failed; });
    EXPECT_EQ(State(), m_hits.Error());
    EXPECT_EQ(Rows(), 0);
    QTest::mouseClick(&Button(u"关闭"_s), Qt::LeftButton);
    EXPECT_EQ(State(), u"没有打开构件表"_s);
}

TEST_F(HitsPanelTest, ItFitsIntoANarrowDock)
{
    OpenTable();
    constexpr int Narrow = 300;
    m_panel.resize(Narrow, m_panel.height());
    EXPECT_EQ(m_panel.width(), Narrow);
}
