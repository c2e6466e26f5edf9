#include "shared/RuleFileNames.h"

#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(RuleFileNames, SeparatorsAndTheEndingMakeAPath)
{
    for (const QString& path : {u"a/b"_s, u"a\\b"_s, u"./a"_s, u"a.xml"_s, u"A.XML"_s})
        EXPECT_TRUE(shared::NamesPath(path)) << path.toStdString();
    for (const QString& name : {u"a"_s, u"a.b"_s, u"a.xml.bak"_s, u"xml"_s, QString()})
        EXPECT_FALSE(shared::NamesPath(name)) << name.toStdString();
}
