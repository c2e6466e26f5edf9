#include "presenter/CAutoQdDeConfigFacade.h"

#include "store/StoreTesting.h"

#include "xml/Error.h"

using namespace Qt::StringLiterals;
using test::RulePath;

namespace {

using Facade = test::FileFixture;

} // namespace

TEST_F(Facade, PresenterOfAnEmptyPathIsOnTheCurrentConfiguration)
{
    const auto presenter = CAutoQdDeConfigFacade::GetQdDeConfigPresenter({});
    ASSERT_NE(presenter, nullptr);
    EXPECT_TRUE(Exists(u"app\\自动套配置\\DefaultConfig.xml"_s));
    EXPECT_NE(presenter->GetConfig(RulePath(1)), nullptr);
}

TEST_F(Facade, PresenterOfAPathIsOnThatFile)
{
    const auto presenter = CAutoQdDeConfigFacade::GetQdDeConfigPresenter(
        Put(u"r.xml"_s, test::RuleFile(test::PlumbingRules(u"<c id='4'/>"_s))));
    EXPECT_NE(presenter->GetConfig(RulePath(4)), nullptr);
    EXPECT_FALSE(Exists(u"app\\自动套配置"_s));
}

TEST_F(Facade, PresenterWhoseOpeningFailsIsUsableAndNothingIsReported)
{
    const auto presenter = CAutoQdDeConfigFacade::GetQdDeConfigPresenter(Put(u"r.xml"_s, u"<其它/>"_s));
    ASSERT_NE(presenter, nullptr);
    EXPECT_EQ(presenter->GetConfig(RulePath(1)), nullptr);
    EXPECT_TRUE(Messages().Messages().empty());
    EXPECT_TRUE(presenter->ReLoad(Put(u"good.xml"_s, test::RuleFile(test::Plumbing()))));
    EXPECT_NE(presenter->GetConfig(RulePath(1)), nullptr);
}

TEST_F(Facade, AttributeConfigurationIsRebuiltWithoutAWord)
{
    Put(u"app\\AttributeInformation.xml"_s, u"<属性参数信息><CZ type='1'/></属性参数信息>"_s);
    CAutoQdDeConfigFacade::AttrConfig();
    EXPECT_TRUE(
        Xml(u"app\\AttrConfig.xml"_s)
            .contains(u"<CZ name=\"材质\" namecode=\"CZ\" vartype=\"1\" compar=\"0\" specrelation=\"1\">"_s));
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(Facade, AttributeConfigurationWithoutAnEngineIsDroppedAfterTheWords)
{
    const test::NoEngine noEngine;
    EXPECT_NO_THROW(CAutoQdDeConfigFacade::AttrConfig());
    EXPECT_TRUE(Messages().Texts().contains(test::NoEngineText()));
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}

TEST_F(Facade, AttributeConfigurationWithoutItsClassesRaisesThePointerError)
{
    EXPECT_THROW(CAutoQdDeConfigFacade::AttrConfig(), xml::PointerError);
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}
