#include "cli/printing/TextTable.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TextTable, WideCharactersTakeTwoColumns)
{
    EXPECT_EQ(cli::DisplayWidth(u"DN25"_s), 4);
    EXPECT_EQ(cli::DisplayWidth(u"给水管"_s), 6);
    EXPECT_EQ(cli::DisplayWidth(u"＝＞＜"_s), 6);
    EXPECT_EQ(cli::DisplayWidth(u"≠≥≤"_s), 3);
    EXPECT_EQ(cli::DisplayWidth(u"𠮷"_s), 2);
    EXPECT_EQ(cli::DisplayWidth(u"e\u0301"_s), 1);
}

TEST(TextTable, ColumnsAlignByWidthAndRowsEndWithoutBlanks)
{
    cli::TextTable table;
    table.AddRow({u"给水管"_s, u"a"_s, {}});
    table.AddRow({u"DN"_s, u"b"_s});
    EXPECT_EQ(table.ToText(1), u" 给水管  a\n DN      b\n"_s);
}

TEST(TextTable, LineBreaksInACellDoNotBreakTheRow)
{
    cli::TextTable table;
    table.AddRow({u"a\nb"_s, u"c"_s});
    EXPECT_EQ(table.ToText(0), u"a b  c\n"_s);
}
