#include "TableFixture.h"
#include "tables/CsvText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tables::CsvLine;
using tables::Record;

namespace {

CArray<Record> Parsed(const CString& text)
{
    return test::RecordsOf(text.toUtf8(), u"a.csv"_s);
}

CArray<CStringArray> FieldsOf(const CString& text)
{
    return test::FieldsOf(text.toUtf8(), u"a.csv"_s);
}

} // namespace

TEST(CsvReader, FieldsAndRecordsEndAtCommasAndAnyLineEnd)
{
    EXPECT_EQ(FieldsOf(u"a,b\r\nc,\n,d\re"_s),
              (CArray<CStringArray>{{u"a"_s, u"b"_s}, {u"c"_s, {}}, {{}, u"d"_s}, {u"e"_s}}));
    EXPECT_TRUE(Parsed({}).isEmpty());
    EXPECT_TRUE(Parsed(u"\n\r\n\n"_s).isEmpty());
}

TEST(CsvReader, QuotedFieldsHoldCommasQuotesAndLineBreaks)
{
    EXPECT_EQ(FieldsOf(u"\"a,\"\"b\"\"\",\"c\r\nd\"\n\"\",x"_s),
              (CArray<CStringArray>{{u"a,\"b\""_s, u"c\r\nd"_s}, {{}, u"x"_s}}));
}

TEST(CsvReader, LinesAreCountedThroughQuotedBreaksAndEmptyLines)
{
    const auto records = Parsed(u"a\n\n\"b\r\nb\nb\rb\"\nc\n"_s);
    ASSERT_EQ(records.size(), 3);
    EXPECT_EQ(records[0].line, 1);
    EXPECT_EQ(records[1].line, 3);
    EXPECT_EQ(records[2].line, 7);
}

TEST(CsvReader, FaultsOfQuotesAreThoseOfTheirRecord)
{
    const auto records = Parsed(u"a\"b,c\n\"a\"b,c\nfine\n\"open,\nend"_s);
    ASSERT_EQ(records.size(), 4);
    EXPECT_EQ(records[0].fault, u"引号只能包住整个字段，字段中的引号要写两个"_s);
    EXPECT_EQ(records[1].fault, u"引号之后还有文字"_s);
    EXPECT_EQ(records[1].fields, (CStringArray{u"a"_s, u"c"_s}));
    EXPECT_TRUE(records[2].fault.isEmpty());
    EXPECT_EQ(records[3].fault, u"引号没有结束"_s);
    EXPECT_EQ(records[3].fields, CStringArray{u"open,\nend"_s});
    EXPECT_EQ(records[3].line, 4);
}

TEST(CsvReader, NulBytesAreCharactersAndEndNothing)
{
    EXPECT_EQ(test::FieldsOf(QByteArray("a,b\nc\0d,e\n\"\0\",f\n", 16), u"a.csv"_s),
              (CArray<CStringArray>{
                  {u"a"_s, u"b"_s}, {u"c"_s + QChar() + u"d"_s, u"e"_s}, {CString(QChar()), u"f"_s}}));
}

TEST(CsvReader, WhatIsWrittenIsReadBack)
{
    const CStringArray fields{u"平"_s, {}, u"a,b"_s, u"\"引\"号"_s, u"行\n行\r\n"_s, u" 空 格 "_s};
    const auto records = Parsed(CsvLine(fields) + CsvLine({u"下"_s}));
    ASSERT_EQ(records.size(), 2);
    EXPECT_EQ(records[0].fields, fields);
    EXPECT_EQ(records[1].fields, CStringArray{u"下"_s});
    EXPECT_EQ(CsvLine({u"a"_s, u"b"_s}), u"a,b\r\n"_s);
}

TEST(CsvReader, TextsThatLookLikeFormulasAreGuardedAndComeBack)
{
    const CStringArray fields{u"=1+1"_s, u"+86"_s, u"-x"_s,   u"@a"_s,  u"'=b"_s, u"''@c"_s, u"'d"_s,
                              u"''"_s,   u"-5"_s,  u"-0.5"_s, u"-05"_s, u"\tx"_s, u"\nx"_s,  u"=\"a\",b"_s};
    const CString line = CsvLine(fields);
    EXPECT_EQ(line,
              u"'=1+1,'+86,'-x,'@a,''=b,'''@c,'d,'',-5,-0.5,'-05,'\tx,\"'\nx\",\"'=\"\"a\"\",b\"\r\n"_s);
    EXPECT_EQ(FieldsOf(line), CArray<CStringArray>{fields});
}

TEST(CsvReader, RaggedRowsKeepTheirFields)
{
    EXPECT_EQ(FieldsOf(u"a,b\nc\nd,e,f\n,,,\n"_s),
              (CArray<CStringArray>{{u"a"_s, u"b"_s}, {u"c"_s}, {u"d"_s, u"e"_s, u"f"_s}, {{}, {}, {}, {}}}));
}

/// Any place of a record may be the one at which a piece of the file ends.
TEST(CsvReader, RecordsThatPiecesOfTheFilePartAreWhole)
{
    constexpr int Piece = 1 << 19;
    const CString record = u"\r\n编号,\"引\"\"号\"\"\r\n,\",\"\",末\r\n"_s;
    const CArray<CStringArray> expected{{u"编号"_s, u"引\"号\"\r\n,"_s, {}, u"末"_s}};
    const int length = static_cast<int>(record.toUtf8().size());
    for (int before = 0; before <= length; ++before) {
        const CString filler(Piece - before, u'x');
        const auto records = Parsed(filler + record + u"z"_s);
        ASSERT_EQ(records.size(), 3) << before;
        EXPECT_EQ(records[0].fields.first().size(), filler.size());
        EXPECT_EQ(records[1].fields, expected.first()) << before;
        EXPECT_EQ(records[1].line, 2) << before;
        EXPECT_EQ(records[2].fields, CStringArray{u"z"_s}) << before;
        EXPECT_EQ(records[2].line, 4) << before;
    }
}

TEST(CsvReader, RecordOfManyPiecesOfTheFileIsWholeAndCountsItsLines)
{
    constexpr int Breaks = 500000;
    const CString longOne = u"长\r\n"_s.repeated(Breaks);
    const auto records = Parsed(u"a,b\n\""_s + longOne + u"\",末\nz,\n"_s);
    ASSERT_EQ(records.size(), 3);
    // Compared as a condition: a failure would print megabytes.
    EXPECT_TRUE(records[1].fields == (CStringArray{longOne, u"末"_s}));
    EXPECT_EQ(records[1].line, 2);
    EXPECT_EQ(records[2].fields, (CStringArray{u"z"_s, {}}));
    EXPECT_EQ(records[2].line, 3 + Breaks);
}

TEST(CsvReader, ManyRowsAreGivenInTheirOrder)
{
    CString text;
    for (int i = 0; i < 200000; ++i)
        text += u"C%1,镀锌钢管,\"DN%2\"\n"_s.arg(i).arg(i % 200);
    const test::TempFolder folder;
    const auto reader = tables::OpenTable(folder.WriteFile(u"a.csv"_s, text.toUtf8()));
    EXPECT_TRUE(reader->Sheets().isEmpty());
    int count = 0;
    while (const tables::Row* const row = reader->Next()) {
        ASSERT_EQ(row->line, count + 1);
        ASSERT_EQ(row->cells.size(), 3U);
        ASSERT_EQ(row->cells[0].text, u"C%1"_s.arg(count));
        ASSERT_EQ(row->cells[2].text, u"DN%1"_s.arg(count % 200));
        ++count;
    }
    EXPECT_EQ(count, 200000);
    EXPECT_EQ(reader->Progress(), 1.0);
}

TEST(CsvReader, QuoteThatNobodyClosesEndsAtALimit)
{
    const QByteArray bytes = "a,b\n\"" + QByteArray((1 << 24) + (1 << 20), 'x');
    EXPECT_TRUE(test::RefusalOf(bytes, u"a.csv"_s).startsWith(u"第 2 行：一行超过"_s));
}

TEST(CsvReader, SheetOfACsvFileIsRefused)
{
    EXPECT_EQ(test::RefusalOf("a,b\n", u"a.csv"_s, u"构件"_s), u"是 CSV 文件，没有工作表"_s);
}
