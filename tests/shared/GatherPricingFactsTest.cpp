#include "shared/GatherPricingFacts.h"

#include "embedded/TestProject.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const rules::AttributeFacts* Find(const rules::CategoryFacts& facts, const CString& name)
{
    const auto found = std::find_if(facts.begin(), facts.end(),
                                    [&](const rules::AttributeFacts& fact) { return fact.name == name; });
    return found == facts.end() ? nullptr : &*found;
}

/// A project on the embedded host.
class PricingFacts : public testing::Test
{
protected:
    PricingFacts()
    {
        m_project.Put();
        m_host = std::make_unique<embedded::EmbeddedHost>(m_project.Folder());
    }

    test::TestProject m_project;
    std::unique_ptr<embedded::EmbeddedHost> m_host;
};

} // namespace

TEST_F(PricingFacts, NamesInMillimetresAreKnownInEveryCategory)
{
    const rules::CatalogueFacts facts = shared::CatalogueFactsOf(m_host->CatalogueContents());
    ASSERT_GT(facts.size(), 100U);
    for (const auto& [category, attributes] : facts) {
        for (const CString& name : {u"管外径"_s, u"长边"_s, u"短边"_s, u"公称直径"_s}) {
            const rules::AttributeFacts* const fact = Find(attributes, name);
            ASSERT_NE(fact, nullptr) << category.toStdString() << name.toStdString();
            EXPECT_EQ(fact->unit, u"mm"_s);
        }
        EXPECT_EQ(Find(attributes, u"导线根数"_s)->unit, CString());
    }
}

TEST_F(PricingFacts, UnitOfAnAttributeIsThatOfTheProjectsCatalogue)
{
    m_host.reset();
    m_project.Sql(
        u"app\\catalogue.db"_s,
        u"UPDATE attributes SET unit = '' WHERE code = 'AM_NominalDiameter' AND category LIKE '%给水管'"_s);
    m_host = std::make_unique<embedded::EmbeddedHost>(m_project.Folder());
    const rules::CatalogueFacts facts = shared::CatalogueFactsOf(m_host->CatalogueContents());
    EXPECT_EQ(Find(facts.at(u"给排水\\管道\\给水管"_s), u"公称直径"_s)->unit, CString());
    EXPECT_EQ(Find(facts.at(u"给排水\\管道\\热水管"_s), u"公称直径"_s)->unit, u"mm"_s);
}

TEST_F(PricingFacts, PipesAreMeasuredByTheirLengthAndPumpsByTheirNumber)
{
    const rules::Measures measures = shared::MeasuresOf(m_host->CatalogueContents());
    EXPECT_EQ(measures.at(u"给排水\\管道\\给水管"_s).item, u"管道长度"_s);
    EXPECT_EQ(measures.at(u"给排水\\管道\\给水管"_s).unit, u"m"_s);
}

TEST_F(PricingFacts, ValueListsAreThoseThatTheEditorOffers)
{
    const rules::CatalogueFacts facts = shared::CatalogueFactsOf(m_host->CatalogueContents());
    const rules::CategoryFacts& pipe = facts.at(u"给排水\\管道\\给水管"_s);
    EXPECT_TRUE(Find(pipe, u"公称直径"_s)->valueList.contains(u"65"_s));
    EXPECT_TRUE(Find(pipe, u"材质"_s)->valueList.contains(u"镀锌钢管"_s));
    EXPECT_EQ(Find(pipe, u"公称直径"_s)->code, u"AM_NominalDiameter"_s);
    EXPECT_TRUE(Find(pipe, u"短边"_s)->valueList.isEmpty());
}

TEST_F(PricingFacts, LibrariesAndExpressionsAreThoseInUse)
{
    const rules::PricingFacts bill = shared::PricingFactsOf(*m_host, rules::PricingMode::Bill);
    EXPECT_EQ(bill.billLibrary, u"GB50856-2013"_s);
    EXPECT_EQ(bill.quotaLibrary, u"DEMO-QDDE-2024"_s);
    EXPECT_EQ(bill.calculationItems.at(u"管道长度"_s), u"水平管长度+立管长度"_s);
    const rules::PricingFacts quota = shared::PricingFactsOf(*m_host, rules::PricingMode::Quota);
    EXPECT_EQ(quota.quotaLibrary, m_host->LibraryInUse(embedded::LibraryRole::Quota));
    EXPECT_NE(quota.quotaLibrary, bill.quotaLibrary);
}

TEST_F(PricingFacts, CategoriesAreThoseOfTheCatalogue)
{
    auto known = std::make_shared<rules::SmallCategory>();
    known->text = u"给排水\\管道\\给水管"_s;
    auto unknown = std::make_shared<rules::SmallCategory>();
    unknown->text = u"给排水\\管道\\没有"_s;
    rules::Specialty specialty;
    specialty.bigCategories.push_back({1, u"管道"_s, {known, unknown}});
    const rules::Configuration read({specialty});
    const auto configuration = shared::WithinCatalogue(read, m_host->CatalogueContents());
    EXPECT_EQ(configuration->Find(known->text), known);
    EXPECT_EQ(configuration->Find(unknown->text), nullptr);
    const rules::SmallCategoryPtr other = configuration->Find(u"给排水\\管道\\热水管"_s);
    ASSERT_NE(other, nullptr);
    ASSERT_EQ(other->rules.size(), 1U);
    EXPECT_TRUE(other->rules[0].isDefault) << "as the editor makes one";
}
