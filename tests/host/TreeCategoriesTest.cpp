#include "host/TreeCategories.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(CategoryTree, ShowsAllButThreeKinds)
{
    for (const CString& shown : {u"给水管"_s, u"配线"_s, u"导线"_s, u"导管"_s, u"管线"_s, CString()})
        EXPECT_TRUE(host::IsInCategoryTree(shown)) << shown.toStdString();
    for (const CString& part : {u"导线·导管"_s, u"配管配线"_s, u"组合管线"_s}) {
        EXPECT_FALSE(host::IsInCategoryTree(part)) << part.toStdString();
        EXPECT_FALSE(host::IsInCategoryTree(u"强电"_s + part + u"甲"_s)) << part.toStdString();
    }
}
