#include "support/StrictXml.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::CanonicalXml;
using test::IsStrictXml;

// The second opinion on XML has to be strict itself, or the tests that ask it prove nothing.

namespace {

TEST(StrictXml, AcceptsWellFormedDocuments)
{
    EXPECT_TRUE(IsStrictXml("<a/>"));
    EXPECT_TRUE(
        IsStrictXml("<?xml version=\"1.0\" encoding=\"GB2312\"?>\n<\xB8\xF9 a='1'><!-- c --></\xB8\xF9>\n"));
}

TEST(StrictXml, RefusesWhatIsNotWellFormed)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("text"), QByteArray("<a>"), QByteArray("<a/><b/>"),
          QByteArray("<a b='1' b='2'/>"), QByteArray("<a b='<'/>"), QByteArray("<a>&undefined;</a>"),
          QByteArray("<a>\x01</a>"), QByteArray("<a>\xFF</a>"), QByteArray("<a/>text"), QByteArray("<1/>")})
        EXPECT_FALSE(IsStrictXml(bytes)) << bytes.toStdString();
}

TEST(StrictXml, CanonicalFormShowsEveryNode)
{
    EXPECT_EQ(CanonicalXml("<?p i?><a y='1' x='&amp;'><!--c--><b>t</b><![CDATA[d]]></a>"),
              u"instruction p i\n<a y=\"1\" x=\"&\">\n comment c\n <b>\n  text t\n cdata d\n"_s);
}

TEST(StrictXml, CanonicalFormKeepsTheOrderOfAttributesAndNodes)
{
    EXPECT_NE(CanonicalXml("<a x='1' y='2'/>"), CanonicalXml("<a y='2' x='1'/>"));
    EXPECT_NE(CanonicalXml("<a><b/><c/></a>"), CanonicalXml("<a><c/><b/></a>"));
    EXPECT_NE(CanonicalXml("<a><b><c/></b></a>"), CanonicalXml("<a><b/><c/></a>"));
}

TEST(StrictXml, CanonicalFormLeavesLayoutOut)
{
    EXPECT_EQ(CanonicalXml("<a  x='1' >\n <b></b>\r\n</a >"), CanonicalXml("<a x=\"1\"><b/></a>"));
}

TEST(StrictXml, CanonicalFormOfNoDocumentSaysWhy)
{
    EXPECT_TRUE(CanonicalXml("<a>").startsWith(u"not XML: line 1"_s));
}

TEST(StrictXml, DepthIsNotBoundedByTheStack)
{
    constexpr int depth = 20'000;
    EXPECT_TRUE(IsStrictXml(QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth)));
}

} // namespace
