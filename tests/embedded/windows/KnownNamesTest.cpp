#include "embedded/windows/KnownNames.h"

#include "embedded/data/catalogue/FormulaChecker.h"
#include "embedded/windows/PickerFixture.h"

using namespace Qt::StringLiterals;
using namespace test;

namespace {

const CString Pipe = u"给排水\\管道\\给水管"_s;

class KnownNames : public EmbeddedWindowsTest
{
protected:
    /// The full names of all small categories.
    CStringArray Categories()
    {
        CStringArray specs;
        m_host->Roles().categories->GetAllSpecNames(specs);
        CStringArray names;
        for (const CString& spec : specs)
            names.append(CategoriesOf(spec));
        return names;
    }
    CStringArray CategoriesOf(const CString& spec)
    {
        host::ICategories& categories = *m_host->Roles().categories;
        SNvKtSpecId id;
        CArray<SNvKtBigCategoryId> bigs;
        categories.SpecNameToId(spec, id);
        categories.GetAllBigCategoryIdsBySpec(id, bigs);
        CStringArray names;
        for (const SNvKtBigCategoryId& big : bigs) {
            CString bigName;
            CArray<SNvKtSmallCategoryId> smalls;
            categories.GetBigCategoryName(big, bigName);
            categories.GetAllSmallCategoryIdsByBigCategory(big, smalls);
            for (const SNvKtSmallCategoryId& small : smalls) {
                CString name;
                categories.GetSmallCategoryName(small, name);
                names.append(spec + u'\\' + bigName + u'\\' + name);
            }
        }
        return names;
    }
    embedded::KnownNames Of(const CString& category) { return {*m_host->Roles().calculation, category}; }
};

TEST_F(KnownNames, ItemsComeInTheOrderOfTheCategoryWithTheirDescriptions)
{
    const embedded::KnownNames names = Of(Pipe);
    ASSERT_GE(names.Items().size(), 4u);
    EXPECT_EQ(names.Items()[0].strName, u"管道长度"_s);
    EXPECT_EQ(names.Items()[0].strCode, u"PipeLength"_s);
    EXPECT_EQ(names.Items()[0].strRule, u"水平管长度+立管长度"_s);
    EXPECT_EQ(names.Items()[1].strName, u"管件数量"_s);
}

TEST_F(KnownNames, HoldItemsCodesQuantitiesAndItemsOfOtherCategories)
{
    const embedded::KnownNames names = Of(Pipe);
    for (const CString& name :
         {u"管道长度"_s, u"PipeLength"_s, u"水平管长度"_s, u"保温厚度"_s, u"桥架长度"_s})
        EXPECT_TRUE(names.Contains(name)) << name.toStdString();
    for (const CString& name : {u"管道"_s, u"TrayLength"_s, CString()})
        EXPECT_FALSE(names.Contains(name)) << name.toStdString();
}

TEST_F(KnownNames, UnknownCategoryHasNoItemsButKnowsThoseOfOthers)
{
    const embedded::KnownNames names = Of(u"没有\\这样\\的"_s);
    EXPECT_TRUE(names.Items().empty());
    EXPECT_TRUE(names.Contains(u"管道长度"_s));
}

TEST_F(KnownNames, EveryShippedRuleIsAGoodFormulaWhereItBelongs)
{
    int checked = 0;
    for (const CString& category : Categories()) {
        const embedded::KnownNames names = Of(category);
        for (const RuleCodeStruct& item : names.Items()) {
            const auto isKnown = [&](const CString& name) { return names.Contains(name); };
            EXPECT_FALSE(embedded::CheckFormula(item.strRule, isKnown)) << item.strRule.toStdString();
            ++checked;
        }
    }
    EXPECT_GT(checked, 100);
}

} // namespace
