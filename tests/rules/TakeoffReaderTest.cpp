#include "rules/takeoff/TakeoffReader.h"

#include "support/PrintText.h"
#include "support/TempFolder.h"
#include "tables/CreateTable.h"
#include "tables/TableError.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::TakeoffReader;
using rules::TakeoffRow;

namespace {

/// A take-off table in a folder of its own.
class Table
{
public:
    explicit Table(const QString& text) { m_folder.WriteFile(u"t.csv"_s, text.toUtf8()); }

    CString Path() const { return m_folder.Path(u"t.csv"_s); }

    /// What reading all of it complains about; empty when it does not.
    CString Complaint() const
    {
        try {
            TakeoffReader reader(Path());
            TakeoffRow row;
            while (reader.Next(row)) {
            }
        } catch (const tables::TableError& error) {
            return error.Where().Text() + u'|' + error.Reason();
        }
        return {};
    }

private:
    test::TempFolder m_folder;
};

} // namespace

TEST(TakeoffReader, ReadsComponentsRowByRow)
{
    const Table table(
        u"材质,类别,构件编号,具体构件,楼层\n钢管 ,给排水\\管道\\给水管, G1 ,JL-1,3\n,x\\y\\z,,,\n"_s);
    TakeoffReader reader(table.Path());
    EXPECT_EQ(reader.Headers(),
              (CStringArray{u"材质"_s, u"类别"_s, u"构件编号"_s, u"具体构件"_s, u"楼层"_s}));
    EXPECT_EQ(reader.ColumnOf(u"楼层"_s), 4U);
    EXPECT_FALSE(reader.ColumnOf(u"系统"_s).has_value());
    TakeoffRow row;
    ASSERT_TRUE(reader.Next(row));
    EXPECT_EQ(row.line, 2);
    EXPECT_EQ(row.id, u"G1"_s);
    EXPECT_EQ(row.category, u"给排水\\管道\\给水管"_s);
    EXPECT_EQ(row.name, u"JL-1"_s);
    EXPECT_EQ(row.cells.at(0), u"钢管 "_s) << "cells are as they stand";
    ASSERT_TRUE(reader.Next(row));
    EXPECT_EQ(row.id, CString());
    EXPECT_EQ(row.cells.size(), 5U);
    EXPECT_FALSE(reader.Next(row));
}

TEST(TakeoffReader, CategoryMayStandInThreeColumns)
{
    const Table table(u"构件编号,小类,大类,专业\n1,给水管,管道, 给排水\n"_s);
    TakeoffReader reader(table.Path());
    TakeoffRow row;
    ASSERT_TRUE(reader.Next(row));
    EXPECT_EQ(row.category, u"给排水\\管道\\给水管"_s);
}

TEST(TakeoffReader, ShortRowHasEmptyCellsAtItsEnd)
{
    const Table table(u"构件编号,类别,材质\n1,a\\b\\c,钢管\n2,a\\b\\c\n"_s);
    TakeoffReader reader(table.Path());
    TakeoffRow row;
    ASSERT_TRUE(reader.Next(row));
    ASSERT_TRUE(reader.Next(row));
    EXPECT_EQ(row.cells.at(2), CString()) << "not that of the row before";
}

TEST(TakeoffReader, MissingAndDoubledColumnsAreNamedWithTheirPlace)
{
    EXPECT_EQ(Table(u"类别,材质\n"_s).Complaint(), u"第 1 行|缺少列“构件编号”，现有的列：类别、材质"_s);
    EXPECT_EQ(Table(u"构件编号,材质\n"_s).Complaint(),
              u"第 1 行|缺少列“类别”（或“专业”“大类”“小类”三列），现有的列：构件编号、材质"_s);
    EXPECT_EQ(Table(u"构件编号,专业,大类\n"_s).Complaint(),
              u"第 1 行|没有列“类别”，又缺少列“小类”，现有的列：构件编号、专业、大类"_s);
    EXPECT_EQ(Table(u"构件编号,类别,周长(mm),周长（mm）\n"_s).Complaint(),
              u"第 1 行第 4 列|列“周长(mm)”出现了两次，前一次在第 3 列"_s);
    EXPECT_TRUE(Table(QString()).Complaint().contains(u"表是空的"_s))
        << Table(QString()).Complaint().toStdString();
}

TEST(TakeoffReader, RowThatGoesOnBehindTheLastHeadingIsRefused)
{
    EXPECT_EQ(Table(u"构件编号,类别\n1,a\n2,b, ,7\n"_s).Complaint(),
              u"第 3 行第 4 列|这里有值“7”，但标题行没有这一列"_s);
    EXPECT_EQ(Table(u"构件编号,类别\n1,a,,\n"_s).Complaint(), CString()) << "blanks are nothing";
}

TEST(TakeoffReader, QuotesThatDoNotFitEndTheReading)
{
    const CString complaint = Table(u"构件编号,类别\n1,\"a\n2,b\n"_s).Complaint();
    EXPECT_TRUE(complaint.startsWith(u"第 2 行|"_s)) << complaint.toStdString();
    EXPECT_GT(complaint.size(), 8);
}

TEST(TakeoffReader, SheetThatIsMissingIsNamedWithThoseThatAreThere)
{
    const test::TempFolder folder;
    const CString path = folder.Path(u"t.xlsx"_s);
    const auto writer = tables::CreateTable(path);
    writer->BeginSheet(u"构件"_s, {{.heading = u"构件编号"_s}, {.heading = u"类别"_s}});
    writer->Finish();
    try {
        TakeoffReader(path, {.sheet = u"别的"_s});
        FAIL() << "opened a sheet that is not there";
    } catch (const tables::TableError& error) {
        EXPECT_TRUE(error.Message().contains(u"构件"_s)) << error.what();
    }
    EXPECT_NO_THROW(TakeoffReader(path, {.sheet = u"构件"_s}));
}
