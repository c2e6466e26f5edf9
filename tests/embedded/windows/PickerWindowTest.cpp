#include "embedded/windows/BillPickerWindow.h"
#include "embedded/windows/ItemModel.h"
#include "embedded/windows/PickerFixture.h"
#include "embedded/windows/QuotaPickerWindow.h"
#include "embedded/windows/WindowUser.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>

#include <memory>

using namespace Qt::StringLiterals;
using namespace test;
using embedded::ItemModel;

// What pickers of both kinds do.

namespace {

using PickerWindows = EmbeddedWindowsTest;

TEST_F(PickerWindows, RememberTheirArrangementWhenTheyEndVisibleWithTheirParent)
{
    auto parent = std::make_unique<PickerParent>();
    NvQdDeMng::CSelQdDeDlg first(parent.get());
    first.ShowWindow(true);
    auto& window = *parent->findChild<QDialog*>();
    window.resize(640, 480);
    window.findChildren<QSplitter*>()[1]->setSizes({260, 340});
    const QList<int> chapters = window.findChildren<QSplitter*>()[1]->sizes();
    parent.reset();

    NvQdDeMng::CSelQdDeDlg next(&m_parent);
    const auto& restored = *m_parent.findChildren<QDialog*>().last();
    EXPECT_EQ(restored.size(), QSize(640, 480));
    next.ShowWindow(true);
    EXPECT_EQ(restored.findChildren<QSplitter*>()[1]->sizes(), chapters);
}

TEST_F(PickerWindows, LeaveNoBillAndNoQuotaToPickWhenTheLibraryHasBecomeEmpty)
{
    embedded::LibraryContents contents = m_host->Contents();
    PickerParent parent;
    embedded::BillPickerWindow window(parent, contents, std::make_shared<embedded::PickerMemory>());
    window.Load();
    ASSERT_TRUE(Button(window, u"选用清单"_s).isEnabled());
    ASSERT_TRUE(Button(window, u"选用定额"_s).isEnabled());
    contents = {};
    window.Load();
    EXPECT_FALSE(Button(window, u"选用清单"_s).isEnabled());
    EXPECT_FALSE(Button(window, u"选用定额"_s).isEnabled());
}

TEST_F(PickerWindows, LeaveNoQuotaToPickWhenTheLibraryHasBecomeEmpty)
{
    embedded::LibraryContents contents = m_host->Contents();
    PickerParent parent;
    embedded::QuotaPickerWindow window(parent, contents, std::make_shared<embedded::PickerMemory>());
    window.Load();
    ASSERT_TRUE(Button(window, u"选用定额"_s).isEnabled());
    contents = {};
    window.Load();
    EXPECT_FALSE(Button(window, u"选用定额"_s).isEnabled());
}

/// The place of the selected chapter in the part of the tree that is seen.
QRect SelectedChapter(const QTreeWidget& tree)
{
    return tree.visualItemRect(tree.currentItem());
}

TEST_F(PickerWindows, ShowTheChapterOfAPositionWithItsNeighbours)
{
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    Window().resize(400, 500); // the tree scrolls
    picker.InitQdDeData();
    const auto& tree = Named<QTreeWidget>(Window(), u"章节"_s);
    for (const CString& position : {u"0310.031001"_s, u"0301.030104"_s}) {
        picker.SetTreePosition(position);
        const QRect place = SelectedChapter(tree);
        const QRect seen = tree.viewport()->rect();
        EXPECT_TRUE(seen.contains(place.translated(0, -place.height()))) << position.toStdString();
        EXPECT_TRUE(seen.contains(place.translated(0, place.height()))) << position.toStdString();
    }
}

TEST_F(PickerWindows, KeepTheNamesReadableWhenTheyBecomeNarrow)
{
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    picker.InitQdDeData();
    const auto& table = Named<QTableView>(Window(), u"项目"_s);
    const int wide = table.columnWidth(ItemModel::Name);
    Window().resize(Window().minimumSizeHint());
    const int narrow = table.columnWidth(ItemModel::Name);
    EXPECT_LT(narrow, wide);
    EXPECT_GE(narrow, table.fontMetrics().horizontalAdvance(u"室内镀锌钢管螺纹连接"_s));
    Window().resize(2 * Window().sizeHint());
    EXPECT_EQ(table.horizontalHeader()->length(), table.viewport()->width());
}

TEST_F(PickerWindows, LeaveTheNamesWhatAColumnSizedByHandLeaves)
{
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    picker.InitQdDeData();
    Window().resize(2 * Window().sizeHint());
    const auto& table = Named<QTableView>(Window(), u"项目"_s);
    const int names = table.columnWidth(ItemModel::Name);
    table.horizontalHeader()->resizeSection(ItemModel::Rule, table.columnWidth(ItemModel::Rule) + 20);
    EXPECT_EQ(table.columnWidth(ItemModel::Name), names - 20);
}

TEST_F(PickerWindows, LeaveTheTreeWhereItIsForAChapterThatIsSeen)
{
    NvQdDeMng::CSelQdDeDlg picker(&m_parent);
    picker.ShowWindow(true);
    Window().resize(400, 500); // the tree scrolls
    picker.InitQdDeData();
    const auto& tree = Named<QTreeWidget>(Window(), u"章节"_s);
    picker.SetTreePosition(u"0310.031001"_s);
    const QRect first = SelectedChapter(tree);
    picker.SetTreePosition(u"0310.031002"_s);
    EXPECT_EQ(SelectedChapter(tree), first.translated(0, first.height()));
}

} // namespace
