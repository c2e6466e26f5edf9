#include "rules/draft/EditLine.h"

#include "rules/draft/DraftTesting.h"

#include <QtCore/QCryptographicHash>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using rules::Edit;
using rules::Rule;

namespace {

bool IsSame(const rules::Splice& a, const rules::Splice& b)
{
    return a.category == b.category && a.position == b.position && a.removed == b.removed &&
           a.inserted == b.inserted;
}

void ExpectRoundTrip(const Edit& edit)
{
    const QByteArray line = rules::LineOf(edit);
    EXPECT_FALSE(line.contains('\n'));
    EXPECT_TRUE(line.isValidUtf8());
    const auto read = rules::EditOf(line);
    ASSERT_TRUE(read) << line.toStdString();
    EXPECT_EQ(read->text, edit.text) << line.toStdString();
    EXPECT_TRUE(std::equal(read->splices.begin(), read->splices.end(), edit.splices.begin(),
                           edit.splices.end(), IsSame))
        << line.toStdString();
}

/// A rule with a text of its own in every field.
Rule FullRule(const CString& mark)
{
    int next = 0;
    const auto text = [&] { return mark + CString::number(++next); };
    Rule rule;
    rule.id = std::numeric_limits<int>::max();
    rule.isDefault = true;
    rule.counters = {-1, std::numeric_limits<int>::min(), 3};
    rule.conditions = {{4, text(), false, text(), text(), text(), text(), text(), text()}};
    return rule;
}

Edit Full(const CString& mark)
{
    Rule rule = FullRule(mark);
    rules::BillItem bill{5, {}, {{6, {}}, {7, {}}}};
    int next = 100;
    for (const auto& [name, field] : QdFields)
        bill.record.*field = mark + CString::number(++next);
    for (const auto& [name, field] : DeFields)
        bill.quotas[0].record.*field = mark + CString::number(++next);
    rule.bills = {bill, {}};
    rule.quotas = {bill.quotas[0], {}};
    return {mark, {{mark, 1234567, {rule, Rule()}, {}}, {mark, 0, {}, {rule}}}};
}

} // namespace

TEST(EditLine, EveryFieldComesBack)
{
    ExpectRoundTrip({});
    ExpectRoundTrip(Full(u"字"_s));
    ExpectRoundTrip(Full({}));
}

TEST(EditLine, AnyTextComesBack)
{
    const CString loneHigh(QChar(0xD800));
    const CString loneLow(QChar(0xDC00));
    for (const CString& odd :
         {u"\n"_s, u"\r\n\t\"\\/"_s, CString(QChar(0)), u"\u0001\u001f\u007f\u0085\u2028"_s, loneHigh,
          loneLow, loneLow + loneHigh, u"a"_s + loneHigh + u"é"_s, CString(QChar(0xFEFF)),
          CString(2, QChar(0xFEFF)), u"\\"_s + QChar(0xFEFF), CString(QChar(0xFFFE)), CString(QChar(0xFFFF)),
          u"𝟓𝐚"_s, u"e\u0301"_s}) {
        ExpectRoundTrip(Full(odd));
        ExpectRoundTrip(Full(u"a"_s + odd));
    }
}

TEST(EditLine, LineThatIsNotWholeIsRefused)
{
    const QByteArray line = rules::LineOf(Full(u"字"_s));
    for (qsizetype length = 0; length < line.size(); ++length)
        ASSERT_FALSE(rules::EditOf(line.first(length))) << length;
    for (qsizetype at = 0; at < line.size(); ++at) {
        QByteArray other = line;
        other[at] = static_cast<char>(other[at] ^ 1);
        ASSERT_FALSE(rules::EditOf(other)) << at;
    }
    EXPECT_FALSE(rules::EditOf(line + line));
    EXPECT_FALSE(rules::EditOf("\n"));
}

TEST(EditLine, LineOfAnotherFormatIsRefused)
{
    const auto lineOf = [](const QByteArray& json) {
        return QCryptographicHash::hash(json, QCryptographicHash::Sha1).toHex() + ' ' + json;
    };
    EXPECT_TRUE(rules::EditOf(lineOf(R"({"format":1,"splices":[],"text":""})")));
    EXPECT_FALSE(rules::EditOf(lineOf(R"({"format":2,"splices":[],"text":""})")));
    EXPECT_FALSE(rules::EditOf(lineOf(R"({"splices":[],"text":""})")));
    EXPECT_FALSE(rules::EditOf(lineOf("[]")));
}
