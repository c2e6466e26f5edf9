#include "store/CXmlAttrConfig.h"

#include "StoreTesting.h"

#include "xml/Error.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

// Rebuilding the attribute configuration from the host's lists.

namespace {

class AttrConfigSave : public test::FileFixture
{
protected:
    /// The file that classifies attributes, with a "type" for each code.
    void PutTypes(const std::vector<std::pair<CString, CString>>& types)
    {
        CString inner;
        for (const auto& [code, type] : types)
            inner += u"<%1 type='%2' more='x'/>"_s.arg(code, type);
        Put(u"app\\AttributeInformation.xml"_s, u"<属性参数信息>"_s + inner + u"</属性参数信息>"_s);
    }

    void PutConfig(const CString& inner)
    {
        Put(u"app\\AttrConfig.xml"_s, u"<属性类型配置信息>"_s + inner + u"</属性类型配置信息>"_s);
    }

    CString Config() const { return Xml(u"app\\AttrConfig.xml"_s); }

    static bool Rebuild()
    {
        CXmlAttrConfig store;
        return store.Save();
    }
};

} // namespace

TEST_F(AttrConfigSave, FileIsMadeFromTheHostsListsWithoutBuildingSpecialties)
{
    PutTypes({{u"CZ"_s, u"1"_s}, {u"GJ"_s, u"3"_s}});
    EXPECT_TRUE(Rebuild());
    EXPECT_EQ(Config(),
              u"<属性类型配置信息>\n <给排水 id=\"1\" name=\"给排水\">\n  <管道 id=\"11\" name=\"管道\">\n"
              "   <给水管 id=\"111\" name=\"给水管\">\n"
              "    <CZ name=\"材质\" namecode=\"CZ\" vartype=\"1\" compar=\"0\" specrelation=\"1\">\n"
              "    <GJ name=\"管径\" namecode=\"GJ\" vartype=\"1\" compar=\"1\" specrelation=\"1\">\n"
              "    <CD>\n   <排水管 id=\"112\" name=\"排水管\">\n  <阀门 id=\"12\" name=\"阀门\">\n"
              "   <截止阀 id=\"121\" name=\"截止阀\">\n"
              "    <GJ name=\"管径\" namecode=\"GJ\" vartype=\"1\" compar=\"1\" specrelation=\"1\">\n"
              " <电气 id=\"2\" name=\"电气\">\n  <电缆桥架 id=\"21\" name=\"电缆桥架\">\n"
              "   <桥架 id=\"211\" name=\"桥架\">\n   <托盘 id=\"212\" name=\"托盘\">\n"_s);
}

TEST_F(AttrConfigSave, SpecialtiesWithBuildingAnywhereInTheirNamesAreSkippedAndLeftAlone)
{
    Host().AddSpec(u"5"_s, u"大建筑物"_s);
    Host().AddSpec(u"6"_s, u"古建筑"_s);
    PutTypes({});
    PutConfig(u"<建筑 id='9' name='建筑'><门窗 old='1'/></建筑>"_s);
    EXPECT_TRUE(Rebuild());
    EXPECT_TRUE(Config().contains(u"\n <建筑 id=\"9\" name=\"建筑\">\n  <门窗 old=\"1\">\n <给排水 "_s));
    EXPECT_FALSE(Config().contains(u"大建筑物"_s) || Config().contains(u"古建筑"_s));
}

TEST_F(AttrConfigSave, EachTypeSaysWhetherAnAttributeIsComparableAndMaterialRelated)
{
    const std::vector<std::pair<CString, CString>> expected{
        {u"1"_s, u"01"_s},  {u"2"_s, u"01"_s},  {u"3"_s, u"11"_s},  {u"8"_s, u"11"_s},  {u"9"_s, u"10"_s},
        {u"10"_s, u"01"_s}, {u"11"_s, u"01"_s}, {u"5"_s, u"11"_s},  {u"0"_s, u"11"_s},  {u"12"_s, u"11"_s},
        {u"x"_s, u"11"_s},  {u""_s, u"11"_s},   {u"9z"_s, u"10"_s}, {u"-9"_s, u"11"_s},
    };
    for (const auto& [type, flags] : expected) {
        PutTypes({{u"CZ"_s, type}});
        EXPECT_TRUE(Rebuild());
        EXPECT_TRUE(Config().contains(
            u"<CZ name=\"材质\" namecode=\"CZ\" vartype=\"1\" compar=\"%1\" specrelation=\"%2\">"_s.arg(
                flags.first(1), flags.last(1))))
            << type.toStdString();
    }
}

TEST_F(AttrConfigSave, AttributeWithoutClassStandsWithTheAttributesThatItHad)
{
    PutTypes({});
    PutConfig(u"<给排水 name='给排水'><管道><给水管><CZ compar='7' own='x'/></给水管></管道></给排水>"_s);
    EXPECT_TRUE(Rebuild());
    EXPECT_TRUE(Config().contains(u"\n    <CZ compar=\"7\" own=\"x\">\n    <GJ>\n    <CD>\n"_s));
    EXPECT_TRUE(Messages().Messages().empty());
}

TEST_F(AttrConfigSave, ValuesChangedByHandAreOverwrittenInTheirPlace)
{
    PutTypes({{u"CZ"_s, u"1"_s}});
    PutConfig(
        u"<给排水 name='给排水'><管道><给水管><CZ compar='7' own='x' name='旧'/></给水管></管道></给排水>"_s);
    EXPECT_TRUE(Rebuild());
    EXPECT_TRUE(Config().contains(
        u"<CZ compar=\"0\" own=\"x\" name=\"材质\" namecode=\"CZ\" vartype=\"1\" specrelation=\"1\">"_s));
}

TEST_F(AttrConfigSave, ElementsThatTheHostNoLongerListsStay)
{
    PutTypes({});
    PutConfig(u"<消防 name='消防'/><给排水 name='给排水'><设备/><管道><旧管/><给水管><XX "
              u"name='旧'/></给水管></管道>"
              "</给排水>"_s);
    EXPECT_TRUE(Rebuild());
    for (const CString& kept : {u"<消防 name=\"消防\">"_s, u"<设备>"_s, u"<旧管>"_s, u"<XX name=\"旧\">"_s})
        EXPECT_TRUE(Config().contains(kept)) << kept.toStdString();
}

TEST_F(AttrConfigSave, SpecialtyIsFoundByNameAndCategoriesByTag)
{
    PutTypes({});
    PutConfig(u"<X name='给排水'><管道 name='甲'/><Y name='阀门'/></X>"_s);
    EXPECT_TRUE(Rebuild());
    EXPECT_TRUE(Config().contains(u"\n <X name=\"给排水\">\n  <管道 name=\"甲\">\n   <给水管 "_s));
    EXPECT_TRUE(Config().contains(u"\n  <Y name=\"阀门\">\n  <阀门 id=\"12\" name=\"阀门\">\n"_s));
    EXPECT_FALSE(Config().contains(u"<给排水"_s));
}

TEST_F(AttrConfigSave, SecondRebuildGivesTheSameFile)
{
    PutTypes({{u"CZ"_s, u"1"_s}, {u"GJ"_s, u"9"_s}});
    EXPECT_TRUE(Rebuild());
    const QByteArray first = Bytes(u"app\\AttrConfig.xml"_s);
    EXPECT_TRUE(Rebuild());
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), first);
}

TEST_F(AttrConfigSave, BrokenFileIsReplaced)
{
    PutTypes({});
    PutBroken(u"app\\AttrConfig.xml"_s, "<属性类型配置信息>");
    EXPECT_TRUE(Rebuild());
    EXPECT_TRUE(Config().startsWith(u"<属性类型配置信息>\n <给排水 id=\"1\" name=\"给排水\">\n"_s));
}

TEST_F(AttrConfigSave, ChangedRecordsDoNotReachTheFile)
{
    PutTypes({{u"CZ"_s, u"1"_s}});
    EXPECT_TRUE(Rebuild());
    const QByteArray before = Bytes(u"app\\AttrConfig.xml"_s);
    CXmlAttrConfig bound(u"给排水"_s);
    EXPECT_TRUE(bound.SetAttConfig(u"给排水\\管道\\给水管材质"_s, {{}, {}, 1, 1, 0}));
    EXPECT_THROW(bound.Save(), xml::PointerError);
    EXPECT_TRUE(Rebuild());
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), before);
}

TEST_F(AttrConfigSave, BoundFormRaisesThePointerErrorAtTheFirstAttributeAndTheFileStays)
{
    PutTypes({{u"CZ"_s, u"1"_s}});
    CXmlAttrConfig bound(u"给排水"_s);
    EXPECT_THROW(bound.Save(), xml::PointerError);
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}

TEST_F(AttrConfigSave, BoundFormSucceedsWhereNoAttributeIsReached)
{
    for (const CString& id : {u"111"_s, u"121"_s})
        Host().SetAttributeList(id, {});
    CXmlAttrConfig bound(u"给排水"_s);
    EXPECT_TRUE(bound.Save());
    EXPECT_TRUE(Config().contains(u"<托盘 id=\"212\" name=\"托盘\">"_s));
}

TEST_F(AttrConfigSave, WithoutClassesThePointerErrorIsRaisedAtTheFirstAttributeAndTheFileStays)
{
    PutConfig({});
    const QByteArray before = Bytes(u"app\\AttrConfig.xml"_s);
    EXPECT_THROW(Rebuild(), xml::PointerError);
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), before);
}

TEST_F(AttrConfigSave, IncompleteGroupOfTheHostRaisesAndTheFileStays)
{
    PutTypes({});
    PutConfig({});
    const QByteArray before = Bytes(u"app\\AttrConfig.xml"_s);
    for (const qsizetype length : {1, 2, 3, 5, 7}) {
        Host().SetAttributeList(u"111"_s, CStringArray(length, u"A"_s));
        EXPECT_THROW(Rebuild(), std::invalid_argument);
    }
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), before);
}

TEST_F(AttrConfigSave, NameThatCannotBeATagRaisesAndTheFileStays)
{
    PutTypes({});
    Host().RenameSmall(u"112"_s, u"排水 管"_s);
    EXPECT_THROW(Rebuild(), xml::Error);
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}

TEST_F(AttrConfigSave, FileWithAnotherDocumentElementRaisesAndStays)
{
    PutTypes({});
    Put(u"app\\AttrConfig.xml"_s, u"<其它/>"_s);
    EXPECT_THROW(Rebuild(), xml::Error);
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), u"<其它/>"_s.toUtf8());
}

TEST_F(AttrConfigSave, WithoutAnEngineTheWordsAreShownAndTheResultIsFalse)
{
    PutTypes({});
    CXmlAttrConfig store;
    const test::NoEngine noEngine;
    EXPECT_FALSE(store.Save());
    EXPECT_EQ(Messages().Texts(), CStringArray{test::NoEngineText()});
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}

TEST_F(AttrConfigSave, FailingListsOfTheHostLeaveOutWhatTheyWouldHaveNamed)
{
    PutTypes({});
    Host().Fail(test::Operation::GetAllSmallCategoryIdsByBigCategory);
    EXPECT_TRUE(Rebuild());
    EXPECT_EQ(Config(),
              u"<属性类型配置信息>\n <给排水 id=\"1\" name=\"给排水\">\n  <管道 id=\"11\" name=\"管道\">\n"
              "  <阀门 id=\"12\" name=\"阀门\">\n <电气 id=\"2\" name=\"电气\">\n"
              "  <电缆桥架 id=\"21\" name=\"电缆桥架\">\n"_s);
}

TEST_F(AttrConfigSave, HostThatCannotListSpecialtiesAddsNoneAndWhatStandsThereStays)
{
    PutTypes({{u"CZ"_s, u"1"_s}});
    PutConfig(u"<给排水 name='给排水'><管道/></给排水>"_s);
    Host().Fail(test::Operation::GetAllSpecNames);
    EXPECT_TRUE(Rebuild());
    EXPECT_EQ(Config(), u"<属性类型配置信息>\n <给排水 name=\"给排水\">\n  <管道>\n"_s);
}

TEST_F(AttrConfigSave, HostThatCannotListAttributesLeavesTheCategoriesWithThoseThatTheyHad)
{
    PutTypes({{u"CZ"_s, u"1"_s}});
    PutConfig(u"<给排水 name='给排水'><管道><给水管><CZ compar='7'/></给水管></管道></给排水>"_s);
    Host().Fail(test::Operation::GetAttributeList);
    EXPECT_TRUE(Rebuild());
    EXPECT_TRUE(Config().contains(u"\n   <给水管>\n    <CZ compar=\"7\">\n   <排水管 "_s));
    EXPECT_TRUE(Config().contains(u"\n   <截止阀 id=\"121\" name=\"截止阀\">\n <电气 "_s));
    EXPECT_GT(Host().Calls(test::Operation::GetAttributeList), 1);
}

TEST_F(AttrConfigSave, CommentsAmongAttributesStay)
{
    PutTypes({{u"CZ"_s, u"1"_s}});
    PutConfig(u"<给排水 name='给排水'><管道><给水管><!--c--><CZ/></给水管></管道></给排水>"_s);
    EXPECT_TRUE(Rebuild());
    EXPECT_TRUE(Config().contains(u"\n   <给水管>\n    comment c\n    <CZ name=\"材质\" "_s));
}
