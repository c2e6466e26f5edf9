#include "store/CXmlAttrConfig.h"

#include "StoreTesting.h"

#include "support/FaultyFileSystem.h"
#include "xml/Error.h"

using namespace Qt::StringLiterals;

// The attribute configuration bound to a specialty: loading and looking up.

namespace {

class AttrConfigLoad : public test::FileFixture
{
protected:
    void PutConfig(const CString& inner)
    {
        Put(u"app\\AttrConfig.xml"_s, u"<属性类型配置信息>"_s + inner + u"</属性类型配置信息>"_s);
    }

    /// Two attributes of 给水管.
    void PutUsual()
    {
        PutConfig(u"<给排水 id='1' name='给排水'><管道 id='11' name='管道'><给水管 id='111' name='给水管'>"
                  "<CZ name='材质' namecode='CZ' vartype='1' compar='0' specrelation='1'/>"
                  "<GJ name='管径' namecode='GJ' vartype='2' compar='1' specrelation='0'/>"
                  "</给水管></管道></给排水>"_s);
    }

    /// The record under a key as one text; "none" when there is none.
    static CString Record(const CXmlAttrConfig& store, const CString& key)
    {
        AttrConfig config;
        if (!store.GetAttConfig(key, config)) return u"none"_s;
        return u"%1/%2/%3/%4/%5"_s.arg(config.name, config.namecode)
            .arg(config.vartype)
            .arg(config.compar)
            .arg(config.specrelation);
    }
};

} // namespace

TEST_F(AttrConfigLoad, RecordsAreFoundUnderCategoryAndAttributeName)
{
    PutUsual();
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"材质/CZ/1/0/1"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管管径"_s), u"管径/GJ/2/1/0"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管\\管径"_s), u"none"_s);
}

TEST_F(AttrConfigLoad, AbsentNameIsFalseAndLeavesTheRecordGiven)
{
    PutUsual();
    const CXmlAttrConfig store(u"给排水"_s);
    AttrConfig config{u"n"_s, u"c"_s, 7, 8, 9};
    EXPECT_FALSE(store.GetAttConfig(u"给排水\\管道\\给水管长度"_s, config));
    EXPECT_EQ(config.name, u"n"_s);
    EXPECT_EQ(config.namecode, u"c"_s);
    EXPECT_EQ(config.vartype, 7);
    EXPECT_EQ(config.compar, 8);
    EXPECT_EQ(config.specrelation, 9);
}

TEST_F(AttrConfigLoad, NewRecordIsComparableAndMaterialRelated)
{
    const AttrConfig config;
    EXPECT_EQ(config.vartype, 1);
    EXPECT_EQ(config.compar, 1);
    EXPECT_EQ(config.specrelation, 1);
}

TEST_F(AttrConfigLoad, SettingTakesTheNumbersAndKeepsTheNames)
{
    PutUsual();
    CXmlAttrConfig store(u"给排水"_s);
    EXPECT_TRUE(store.SetAttConfig(u"给排水\\管道\\给水管材质"_s, {u"别名"_s, u"XX"_s, 5, 6, 7}));
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"材质/CZ/5/6/7"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管别名"_s), u"none"_s);
}

TEST_F(AttrConfigLoad, SettingAnAbsentRecordIsFalseAndAddsNone)
{
    PutUsual();
    CXmlAttrConfig store(u"给排水"_s);
    EXPECT_FALSE(store.SetAttConfig(u"给排水\\管道\\给水管长度"_s, {}));
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管长度"_s), u"none"_s);
}

TEST_F(AttrConfigLoad, ElementsWithoutAttributesShareTheKeyOfTheCategoryAlone)
{
    PutConfig(u"<给排水 name='给排水'><管道><给水管><CZ/><GJ/></给水管></管道></给排水>"_s);
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管"_s), u"//0/0/0"_s);
}

TEST_F(AttrConfigLoad, MissingAndMisspeltNumbersReadAsZero)
{
    PutConfig(
        u"<给排水 name='给排水'><管道><给水管><CZ name='材质' compar='x' specrelation='3y'/></给水管></管道>"
        "</给排水>"_s);
    EXPECT_EQ(Record(CXmlAttrConfig(u"给排水"_s), u"给排水\\管道\\给水管材质"_s), u"材质//0/0/3"_s);
}

TEST_F(AttrConfigLoad, LaterRecordOfTheSameKeyReplacesTheEarlier)
{
    PutConfig(u"<给排水 name='给排水'><管道><给水管><A name='材质' compar='1'/><B name='材质' "
              u"compar='0'/></给水管></管道>"
              "</给排水>"_s);
    EXPECT_EQ(Record(CXmlAttrConfig(u"给排水"_s), u"给排水\\管道\\给水管材质"_s), u"材质//0/0/0"_s);
}

TEST_F(AttrConfigLoad, CategoriesGoByTheirTagsAndTheSpecialtyByItsName)
{
    PutConfig(u"<X name='给排水'><管道 name='甲'><给水管 name='乙'><CZ name='材质'/></给水管></管道></X>"
              "<给排水 name='别的'><管道><给水管><GJ name='管径'/></给水管></管道></给排水>"_s);
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"材质//0/0/0"_s);
    EXPECT_EQ(Record(store, u"给排水\\甲\\乙材质"_s), u"none"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管管径"_s), u"none"_s);
}

TEST_F(AttrConfigLoad, OtherSpecialtiesAreNotLoaded)
{
    PutUsual();
    EXPECT_EQ(Record(CXmlAttrConfig(u"电气"_s), u"给排水\\管道\\给水管材质"_s), u"none"_s);
}

TEST_F(AttrConfigLoad, MissingFileGivesNoRecordsWithoutAWordAndIsNotMade)
{
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"none"_s);
    EXPECT_TRUE(Messages().Messages().empty());
    EXPECT_FALSE(Exists(u"app\\AttrConfig.xml"_s));
}

TEST_F(AttrConfigLoad, BrokenFileGivesNoRecordsWithoutAWordAndStays)
{
    PutBroken(u"app\\AttrConfig.xml"_s, "<属性类型配置信息>");
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"none"_s);
    EXPECT_TRUE(Messages().Messages().empty());
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), QByteArray("<属性类型配置信息>"));
}

TEST_F(AttrConfigLoad, LoadingWritesNothingAlthoughTheSpecialtyIsMissing)
{
    PutConfig({});
    const QByteArray before = Bytes(u"app\\AttrConfig.xml"_s);
    const test::FaultyFileSystem files;
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(files.WritePoints(), 0);
    EXPECT_EQ(Bytes(u"app\\AttrConfig.xml"_s), before);
}

TEST_F(AttrConfigLoad, FileWithAnotherDocumentElementRaises)
{
    Put(u"app\\AttrConfig.xml"_s, u"<其它/>"_s);
    EXPECT_THROW(CXmlAttrConfig(u"给排水"_s), xml::Error);
}

TEST_F(AttrConfigLoad, WithoutAnEngineTheWordsAreShownAndThereAreNoRecords)
{
    PutUsual();
    const test::NoEngine noEngine;
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Messages().Texts(), CStringArray{test::NoEngineText()});
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"none"_s);
}

TEST_F(AttrConfigLoad, RecordsAreNotReloaded)
{
    PutUsual();
    const CXmlAttrConfig store(u"给排水"_s);
    PutConfig({});
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"材质/CZ/1/0/1"_s);
}

TEST_F(AttrConfigLoad, AttributeNamesAreReadByTheirExactSpelling)
{
    // Another spelling is passed over where it stands in front of the right one, and where it stands alone.
    PutConfig(
        u"<给排水 Name='电气' name='给排水'><管道><给水管>"
        "<CZ Name='甲' name='材质' NameCode='X' namecode='CZ' VarType='9' vartype='2' Compar='9' compar='3' "
        "SpecRelation='9' specrelation='4'/>"
        "<GJ name='管径' NameCode='GJ' VarType='2' Compar='1' SpecRelation='1'/>"
        "<LJ Name='连接' namecode='LJ' vartype='5' compar='6' specrelation='7'/>"
        "</给水管></管道></给排水>"
        "<电气 Name='电气'><管道><给水管><CZ name='材质' namecode='CZ'/></给水管></管道></电气>"_s);
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"材质/CZ/2/3/4"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管管径"_s), u"管径//0/0/0"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管"_s), u"/LJ/5/6/7"_s);
    for (const CString& name : {u"甲"_s, u"连接"_s})
        EXPECT_EQ(Record(store, u"给排水\\管道\\给水管"_s + name), u"none"_s) << name.toStdString();
    EXPECT_EQ(Record(CXmlAttrConfig(u"电气"_s), u"电气\\管道\\给水管材质"_s), u"none"_s);
}

TEST_F(AttrConfigLoad, SpecialtyIsFoundByItsExactNameAlone)
{
    PutConfig(u"<S name='hvac'><B><C><A name='材质' vartype='1'/></C></B></S>"
              "<S name='HVAC '><B><C><A name='材质' vartype='2'/></C></B></S>"
              "<S name='HVAC'><B><C><A name='材质' vartype='3'/></C></B></S>"_s);
    EXPECT_EQ(Record(CXmlAttrConfig(u"HVAC"_s), u"HVAC\\B\\C材质"_s), u"材质//3/0/0"_s);
}

TEST_F(AttrConfigLoad, CommentsAmongCategoriesArePassedOverAndOneAmongAttributesIsAnEmptyRecord)
{
    PutConfig(u"<!--a--><给排水 name='给排水'><!--b--><?p i?>文<管道><!--c-->文<给水管>"
              "<CZ name='材质' namecode='CZ' vartype='1' compar='0' specrelation='1'/><!--d-->"
              "<GJ name='管径' namecode='GJ' vartype='2' compar='1' specrelation='0'/>"
              "</给水管></管道></给排水>"_s);
    const CXmlAttrConfig store(u"给排水"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管材质"_s), u"材质/CZ/1/0/1"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管管径"_s), u"管径/GJ/2/1/0"_s);
    EXPECT_EQ(Record(store, u"给排水\\管道\\给水管"_s), u"//0/0/0"_s);
}
