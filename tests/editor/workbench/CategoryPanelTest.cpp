#include "editor/workbench/CategoryPanel.h"

#include "editor/workbench/WorkbenchFixture.h"
#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtGui/QInputMethodEvent>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using test::WorkbenchOnSample;
using ::testing::HasSubstr;

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
