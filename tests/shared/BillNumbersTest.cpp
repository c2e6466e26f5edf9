#include "shared/BillNumbers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A library with items of these numbers, each named by its place.
embedded::LibraryContents With(const CStringArray& numbers)
{
    embedded::LibraryContents contents;
    embedded::BillSection& section = contents.bills.emplace_back();
    for (const CString& number : numbers) {
        SQdInfo& item = section.items.emplace_back();
        item.strNumber = number;
        item.strName = CString::number(section.items.size());
    }
    return contents;
}

/// The name of the item that is found; empty for none.
CString Found(const embedded::LibraryContents& contents, int codeLength, int suffixLength,
              const CString& number)
{
    const SQdInfo* const item = shared::BillNumbers(contents, codeLength, suffixLength).Find(number);
    return item == nullptr ? CString() : item->strName;
}

} // namespace

TEST(BillNumbers, SuffixIsAddedToNumbersThatHaveNone)
{
    const embedded::LibraryContents contents = With({u"031001001"_s, u"03B001001"_s});
    EXPECT_EQ(Found(contents, 9, 3, u"031001001"_s), u"1"_s);
    EXPECT_EQ(Found(contents, 9, 3, u"031001001002"_s), u"1"_s);
    EXPECT_EQ(Found(contents, 9, 3, u"03B001001001"_s), u"2"_s);
    EXPECT_EQ(Found(contents, 9, 3, u"0310010010"_s), CString());
    EXPECT_EQ(Found(contents, 9, 3, u"031001002001"_s), CString());
    EXPECT_EQ(Found(With({u"0310010010"_s}), 10, 2, u"031001001001"_s), u"1"_s);
}

TEST(BillNumbers, SuffixThatANumberBringsIsReplaced)
{
    const embedded::LibraryContents contents =
        With({u"031001001001"_s, u"031001001005"_s, u"031001002001"_s});
    EXPECT_EQ(Found(contents, 12, 3, u"031001001005"_s), u"2"_s) << "a number of its own";
    EXPECT_EQ(Found(contents, 12, 3, u"031001001002"_s), u"1"_s) << "the first of the base";
    EXPECT_EQ(Found(contents, 12, 3, u"0310010021000"_s), u"3"_s) << "counted up past 999";
    EXPECT_EQ(Found(contents, 12, 3, u"031001001"_s), CString());
    EXPECT_EQ(Found(contents, 12, 1, u"031001001002"_s), u"1"_s);
    EXPECT_EQ(Found(contents, 12, 1, u"031001001012"_s), CString());
}

TEST(BillNumbers, FirstOfTwoEqualNumbersCountsAndAnUnknownRuleMakesNone)
{
    EXPECT_EQ(Found(With({u"01"_s, u"01"_s}), 9, 3, u"01"_s), u"1"_s);
    EXPECT_EQ(Found(With({u"031001001001"_s}), 12, 4, u"031001001001"_s), u"1"_s);
    EXPECT_EQ(Found(With({u"031001001001"_s}), 12, 4, u"031001001002"_s), CString());
}
