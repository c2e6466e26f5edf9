#include "embedded/data/engine/DataFile.h"
#include "embedded/TestProject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::DataFile;

TEST(DataFile, CommentsAndBlankLinesAreSkippedAndTheHeaderNamesTheColumns)
{
    const DataFile file = DataFile::Parse(u"t"_s, u"# note\nid\tname\n\n1\t管道\n# more\n2\t阀门\n"_s);
    EXPECT_EQ(file.columns, (CStringArray{u"id"_s, u"name"_s}));
    EXPECT_EQ(file.Column(u"name"_s), (CStringArray{u"管道"_s, u"阀门"_s}));
}

TEST(DataFile, HyphenStandsForAnEmptyFieldOnlyWhenAlone)
{
    const DataFile file = DataFile::Parse(u"t"_s, u"a\tb\n-\tx-y\n"_s);
    EXPECT_EQ(file.rows.at(0), (CStringArray{CString(), u"x-y"_s}));
}

TEST(DataFile, WindowsLineEndsAreTakenOff)
{
    const DataFile file = DataFile::Parse(u"t"_s, u"a\tb\r\n1\t2\r\n"_s);
    EXPECT_EQ(file.columns.at(1), u"b"_s);
    EXPECT_EQ(file.rows.at(0).at(1), u"2"_s);
}

TEST(DataFile, RowWithAnotherNumberOfFieldsIsRefusedWithItsLine)
{
    const CString error = test::ErrorOf([] { DataFile::Parse(u"things"_s, u"# c\na\tb\n1\n"_s); });
    EXPECT_TRUE(error.contains(u"things 第 3 行"_s)) << error.toStdString();
}

TEST(DataFile, TextWithoutHeaderIsRefused)
{
    EXPECT_TRUE(test::ErrorOf([] { DataFile::Parse(u"things"_s, u"# c\n"_s); }).contains(u"没有表头行"_s));
}

TEST(DataFile, ColumnThatDoesNotExistIsEmpty)
{
    EXPECT_TRUE(DataFile::Parse(u"t"_s, u"a\n1\n"_s).Column(u"b"_s).isEmpty());
}

TEST(DataFile, TableThatIsNotShippedIsRefused)
{
    EXPECT_TRUE(test::ErrorOf([] { DataFile::Shipped(u"nothing"_s); }).contains(u"nothing.tsv"_s));
}
