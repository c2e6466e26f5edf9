#include "editor/docks/findings/FindingsPanel.h"

#include "editor/docks/DocksFixture.h"
#include "support/Patience.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

using namespace Qt::StringLiterals;
using editor::FindingsPanel;
using editor::FindingsWatch;

namespace {

class FindingsPanelTest : public test::DocksFixture
{
protected:
    FindingsPanelTest() : m_watch(m_session), m_panel(m_session, m_watch)
    {
        m_session.ChooseCategory(m_pipe);
        m_panel.resize(500, 500);
        m_panel.show();
    }

    void WaitUntilCurrent() const
    {
        test::WaitInLoopFor(u"the findings"_s, [&] { return m_watch.IsCurrent(); });
    }
    QTreeView& List() const { return *m_panel.findChild<QTreeView*>(); }
    QPushButton& Button(const QString& text) const
    {
        for (QPushButton* button : m_panel.findChildren<QPushButton*>())
            if (button->text() == text) return *button;
        throw std::out_of_range(text.toStdString());
    }
    QComboBox& Box(const QString& name) const
    {
        for (QComboBox* box : m_panel.findChildren<QComboBox*>())
            if (box->accessibleName() == name) return *box;
        throw std::out_of_range(name.toStdString());
    }
    QLabel& Label(const QString& name) const
    {
        for (QLabel* label : m_panel.findChildren<QLabel*>())
            if (label->accessibleName() == name) return *label;
        throw std::out_of_range(name.toStdString());
    }
    QString Cell(int row, int column) const { return List().model()->index(row, column).data().toString(); }
    int RowOf(const QString& place, const QString& severity) const
    {
        for (int row = 0; row < List().model()->rowCount(); ++row)
            if (Cell(row, 1) == place && Cell(row, 0) == severity) return row;
        return -1;
    }
    void Click(int row) const
    {
        List().scrollTo(List().model()->index(row, 2));
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                          List().visualRect(List().model()->index(row, 2)).center());
    }
    void InsertReversed() { Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)})); }

    FindingsWatch m_watch;
    FindingsPanel m_panel;
};

} // namespace

TEST_F(FindingsPanelTest, AClickGoesToTheRule)
{
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)}), 2);
    WaitUntilCurrent();
    m_session.ChooseRules({0}, 0);
    const int row = RowOf(u"第 3 条"_s, u"错误"_s);
    ASSERT_GE(row, 0);
    Click(row);
    EXPECT_EQ(m_session.CurrentRule(), 2U);
    EXPECT_TRUE(Label(u"问题的说明"_s).text().contains(u"下限在上限之上"_s));
}

TEST_F(FindingsPanelTest, EnterGoesToTheRuleOfAnotherCategory)
{
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)}), 2);
    m_session.ChooseCategory(u"给排水\\管道\\排水管"_s);
    Box(u"哪里的问题"_s).setCurrentIndex(1);
    Box(u"哪些级别的问题"_s).setCurrentIndex(2);
    WaitUntilCurrent();
    const int row = RowOf(u"给水管 第 3 条"_s, u"错误"_s);
    ASSERT_GE(row, 0);
    List().setCurrentIndex(List().model()->index(row, 2));
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(m_session.CategoryText(), m_pipe);
    EXPECT_EQ(m_session.CurrentRule(), 2U);
}

TEST_F(FindingsPanelTest, OnlyTheWantedSeveritiesOfTheWantedPlaceAreListed)
{
    InsertReversed();
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"没有的管"_s)})); // a warning
    WaitUntilCurrent();
    const int all = List().model()->rowCount();
    Box(u"哪些级别的问题"_s).setCurrentIndex(2);
    const int errors = List().model()->rowCount();
    EXPECT_GT(errors, 0);
    EXPECT_LT(errors, all);
    for (int row = 0; row < errors; ++row)
        EXPECT_EQ(Cell(row, 0), u"错误"_s);
    Box(u"哪些级别的问题"_s).setCurrentIndex(0);
    Box(u"哪里的问题"_s).setCurrentIndex(1);
    EXPECT_GT(List().model()->rowCount(), all);
    EXPECT_TRUE(Label(u"检查的结果"_s).text().startsWith(u"错误"_s));
}

TEST_F(FindingsPanelTest, TheMendOfAFindingIsOneStepThatCanBeUndone)
{
    InsertReversed();
    WaitUntilCurrent();
    const int steps = m_session.Undo().index();
    Click(RowOf(u"第 1 条"_s, u"错误"_s));
    EXPECT_TRUE(Label(u"问题的说明"_s).text().contains(u"建议："_s));
    QTest::mouseClick(&Button(u"按建议修改"_s), Qt::LeftButton);
    const rules::Condition& mended = m_session.Draft().Find(m_pipe)->rules.front().conditions.front();
    EXPECT_EQ(mended.lowerBound, u"50"_s);
    EXPECT_EQ(mended.upperBound, u"80"_s);
    EXPECT_EQ(m_session.Undo().index(), steps + 1);
    WaitUntilCurrent();
    EXPECT_EQ(RowOf(u"第 1 条"_s, u"错误"_s), -1);
    m_session.Undo().undo();
    EXPECT_EQ(m_session.Draft().Find(m_pipe)->rules.front().conditions.front().lowerBound, u"80"_s);
}

TEST_F(FindingsPanelTest, TheMendOfAFormerStateIsNotDone)
{
    InsertReversed();
    WaitUntilCurrent();
    Click(RowOf(u"第 1 条"_s, u"错误"_s));
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"PE管"_s)}), 4);
    const int steps = m_session.Undo().index();
    QTest::keyClick(&List(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(m_session.Undo().index(), steps);
    WaitUntilCurrent();
    QTest::keyClick(&List(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(m_session.Undo().index(), steps + 1);
}

TEST_F(FindingsPanelTest, AllMendsOfTheCategoryAreOneStep)
{
    // They take nothing from other rules when they are mended, so that there is nothing to mend then.
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"自造数"_s, u"80"_s, u"50"_s)}));
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"自造数"_s, u"300"_s, u"200"_s)}), 1);
    rules::Rule never = RuleLike(m_pipe, {});
    never.conditions = m_session.Draft().Find(m_pipe)->rules[2].conditions;
    Insert(m_pipe, never, 3); // the rule before takes all of it
    WaitUntilCurrent();
    const std::size_t rules = m_session.Draft().Find(m_pipe)->rules.size();
    const int steps = m_session.Undo().index();
    QTest::mouseClick(&Button(u"全部按建议修改"_s), Qt::LeftButton);
    EXPECT_EQ(m_session.Undo().index(), steps + 1);
    EXPECT_EQ(m_session.Undo().undoText(), u"按建议修改 3 处"_s);
    EXPECT_EQ(m_session.Draft().Find(m_pipe)->rules.size(), rules - 1);
    WaitUntilCurrent();
    EXPECT_FALSE(Button(u"全部按建议修改"_s).isEnabled());
    m_session.Undo().undo();
    EXPECT_EQ(m_session.Draft().Find(m_pipe)->rules.size(), rules);
}

TEST_F(FindingsPanelTest, TheChosenFindingStaysChosenWhenOthersCome)
{
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)}), 2);
    WaitUntilCurrent();
    Click(RowOf(u"第 3 条"_s, u"错误"_s));
    InsertReversed();
    WaitUntilCurrent();
    EXPECT_EQ(List().currentIndex().row(), RowOf(u"第 4 条"_s, u"错误"_s));
}

TEST_F(FindingsPanelTest, ACategoryWithoutFindingsSaysSo)
{
    WaitUntilCurrent();
    for (const rules::Specialty& specialty : m_session.Draft().Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                if (m_watch.Of(small->text).empty()) {
                    m_session.ChooseCategory(small->text);
                    EXPECT_EQ(Label(u"检查的结果"_s).text(), u"没有发现问题"_s);
                    EXPECT_FALSE(Button(u"按建议修改"_s).isEnabled());
                    return;
                }
    FAIL() << "every category has findings";
}

TEST_F(FindingsPanelTest, WhatSavingAloneMendsIsNoEditThatIsOffered)
{
    const CString without = u"<自动套清单定额配置信息 Version=\"1.0.0\"><给排水 id=\"1\" name=\"给排水\">"
                            "<LMember id=\"101\" name=\"管道\"><SMember id=\"10101\" name=\"给水管\"/>"
                            "</LMember></给排水></自动套清单定额配置信息>"_s;
    m_session.Open(m_folder.WriteFile(u"bare.xml"_s, without.toUtf8()));
    m_session.ChooseCategory(m_pipe);
    WaitUntilCurrent();
    ASSERT_EQ(m_watch.Of(m_pipe).size(), 1U);
    ASSERT_EQ(m_watch.Of(m_pipe).front().code, rules::FindingCode::NoDefault);
    EXPECT_FALSE(Button(u"全部按建议修改"_s).isEnabled());
}
