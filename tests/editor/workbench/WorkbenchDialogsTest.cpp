#include "editor/workbench/ConflictDialog.h"
#include "editor/workbench/CopyDialog.h"
#include "editor/workbench/WorkbenchFixture.h"
#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using test::WorkbenchOnSample;
using ::testing::ElementsAre;

namespace {

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
