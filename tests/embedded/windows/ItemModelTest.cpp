#include "embedded/windows/ItemModel.h"

#include "support/PrintText.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using embedded::ItemModel;

namespace {

void Fill(ItemModel& model)
{
    model.SetItems({{u"01"_s, u"甲"_s, u"m"_s, u"管道长度"_s, 1, 1, 0},
                    {u"02"_s, u"乙"_s, u"10m"_s, {}, 10, 0, 0},
                    {u"03"_s, u"丙"_s, u"个"_s, u"数量"_s, 1, 0, 1}});
}

CStringArray Row(const ItemModel& model, int row)
{
    CStringArray texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

TEST(ItemModel, ShowsEverythingOfAnItem)
{
    ItemModel model;
    Fill(model);
    EXPECT_EQ(Row(model, 0), (CStringArray{u"01"_s, u"甲"_s, u"m"_s, u"管道长度"_s, u"是"_s}));
    EXPECT_EQ(Row(model, 1), (CStringArray{u"02"_s, u"乙"_s, u"10m"_s, {}, u"否"_s}));
    EXPECT_EQ(model.headerData(ItemModel::Annex, Qt::Horizontal, Qt::DisplayRole).toString(),
              u"带管道配件"_s);
}

TEST(ItemModel, ShowsWhatASearchFindsInTheScope)
{
    ItemModel model;
    Fill(model);
    model.Show(std::vector{1, 2}, u"0"_s);
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.ItemAt(0), 1);
    EXPECT_EQ(model.RowOf(2), 1);
    EXPECT_EQ(model.RowOf(0), -1);
    model.Show(std::nullopt, u"甲"_s);
    EXPECT_EQ(Row(model, 0).first(), u"01"_s);
    EXPECT_EQ(model.rowCount(), 1);
}

TEST(ItemModel, HasNoItemBeyondItsRows)
{
    ItemModel model;
    Fill(model);
    EXPECT_EQ(model.ItemAt(-1), -1);
    EXPECT_EQ(model.ItemAt(3), -1);
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
}

TEST(ItemModel, NewItemsReplaceItemsAndSearch)
{
    ItemModel model;
    Fill(model);
    model.Show(std::nullopt, u"甲"_s);
    model.SetItems({{u"09"_s, u"丁"_s, {}, {}, 1, 0, 0}, {u"10"_s, u"戊"_s, {}, {}, 1, 0, 0}});
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(Row(model, 1).first(), u"10"_s);
}

TEST(ItemModel, SearchThatFindsTheSameResetsNothing)
{
    ItemModel model;
    Fill(model);
    int resets = 0;
    QObject::connect(&model, &QAbstractItemModel::modelReset, [&] { ++resets; });
    model.Show(std::nullopt, u"0"_s);
    EXPECT_EQ(resets, 0);
    model.Show(std::nullopt, u"乙"_s);
    EXPECT_EQ(resets, 1);
}

} // namespace
