#include "tables/XlsxStyles.h"

#include "support/PrintText.h"
#include "tables/XlsxStrings.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tables::DateText;
using tables::IsDateFormat;
using tables::WithEscapes;
using tables::WithoutEscapes;

TEST(XlsxStyles, DateFormatsAreToldFromOthers)
{
    for (const CString& format : {u"yyyy-mm-dd"_s, u"m/d/yy"_s, u"[h]:mm"_s, u"[$-804]yyyy\"年\"m\"月\""_s,
                                  u"HH:MM"_s, u"0;[Red]d"_s, u"[ss]"_s})
        EXPECT_TRUE(IsDateFormat(format)) << format.toStdString();
    for (const CString& format :
         {u"General"_s, u"0.00"_s, u"#,##0"_s, u"0\"mm\""_s, u"0\\m"_s, u"[Red]0"_s, u"0_d"_s, u"@"_s,
          u"0.00E+00"_s, u"\"open"_s, u"[open"_s, u"[]0"_s, u"0\\"_s})
        EXPECT_FALSE(IsDateFormat(format)) << format.toStdString();
}

TEST(XlsxStyles, DatesAreWrittenByYearMonthAndDay)
{
    EXPECT_EQ(DateText(45293, false), u"2024-01-02"_s);
    EXPECT_EQ(DateText(45293.5, false), u"2024-01-02 12:00:00"_s);
    EXPECT_EQ(DateText(1, false), u"1900-01-01"_s);
    EXPECT_EQ(DateText(59, false), u"1900-02-28"_s);
    EXPECT_EQ(DateText(61, false), u"1900-03-01"_s);
    EXPECT_EQ(DateText(0.25, false), u"06:00:00"_s);
    EXPECT_EQ(DateText(43831, true), u"2024-01-02"_s);
    EXPECT_EQ(DateText(-1, false), CString());
    EXPECT_EQ(DateText(1e300, false), CString());
}

TEST(XlsxStrings, CharactersThatXmlCannotHoldAreEscaped)
{
    const CString texts[] = {u"平"_s,           u"a\rb"_s, u"_x0041_"_s,  u"__x0041__"_s,
                             u"\u0001\uFFFF"_s, u"_x00"_s, u"_x_x0041_"_s};
    for (const CString& text : texts)
        EXPECT_EQ(WithoutEscapes(WithEscapes(text)), text) << text.toStdString();
    EXPECT_EQ(WithEscapes(u"a\rb\t\n"_s), u"a_x000D_b\t\n"_s);
    EXPECT_EQ(WithEscapes(u"_x0041_"_s), u"_x005F_x0041_"_s);
    EXPECT_EQ(WithoutEscapes(u"_x+041_"_s), u"_x+041_"_s);
    EXPECT_EQ(WithoutEscapes(u"_x0041"_s), u"_x0041"_s);
}
