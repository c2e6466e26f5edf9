#include "embedded/data/exchange/Csv.h"

#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::CsvLine;
using embedded::ParseCsv;

namespace {

CArray<CStringArray> FieldsOf(const CString& text)
{
    CArray<CStringArray> fields;
    for (const embedded::CsvRecord& record : ParseCsv(text)) {
        EXPECT_TRUE(record.fault.isEmpty()) << record.fault.toStdString();
        fields.append(record.fields);
    }
    return fields;
}

} // namespace

TEST(Csv, FieldsAndRecordsEndAtCommasAndAnyLineEnd)
{
    EXPECT_EQ(FieldsOf(u"a,b\r\nc,\n,d\re"_s),
              (CArray<CStringArray>{{u"a"_s, u"b"_s}, {u"c"_s, {}}, {{}, u"d"_s}, {u"e"_s}}));
    EXPECT_TRUE(ParseCsv({}).isEmpty());
    EXPECT_TRUE(ParseCsv(u"\n\r\n\n"_s).isEmpty());
}

TEST(Csv, QuotedFieldsHoldCommasQuotesAndLineBreaks)
{
    EXPECT_EQ(FieldsOf(u"\"a,\"\"b\"\"\",\"c\r\nd\"\n\"\",x"_s),
              (CArray<CStringArray>{{u"a,\"b\""_s, u"c\r\nd"_s}, {{}, u"x"_s}}));
}

TEST(Csv, LinesAreCountedThroughQuotedBreaksAndEmptyLines)
{
    const auto records = ParseCsv(u"a\n\n\"b\r\nb\nb\"\nc\n"_s);
    ASSERT_EQ(records.size(), 3);
    EXPECT_EQ(records[0].line, 1);
    EXPECT_EQ(records[1].line, 3);
    EXPECT_EQ(records[2].line, 6);
}

TEST(Csv, FaultsOfQuotesAreThoseOfTheirRecord)
{
    const auto records = ParseCsv(u"a\"b,c\n\"a\"b,c\nfine\n\"open,\nend"_s);
    ASSERT_EQ(records.size(), 4);
    EXPECT_FALSE(records[0].fault.isEmpty());
    EXPECT_FALSE(records[1].fault.isEmpty());
    EXPECT_EQ(records[1].fields.size(), 2);
    EXPECT_TRUE(records[2].fault.isEmpty());
    EXPECT_FALSE(records[3].fault.isEmpty());
    EXPECT_EQ(records[3].line, 4);
}

TEST(Csv, WhatIsWrittenIsReadBack)
{
    const CStringArray fields{u"平"_s, {}, u"a,b"_s, u"\"引\"号"_s, u"行\n行\r\n"_s, u" 空 格 "_s};
    const auto records = ParseCsv(CsvLine(fields) + CsvLine({u"下"_s}));
    ASSERT_EQ(records.size(), 2);
    EXPECT_EQ(records[0].fields, fields);
    EXPECT_EQ(records[1].fields, CStringArray{u"下"_s});
    EXPECT_EQ(CsvLine({u"a"_s, u"b"_s}), u"a,b\r\n"_s);
}
