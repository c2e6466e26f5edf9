#include "store/CXmlQdDeConfig.h"

#include "StoreTesting.h"

#include "support/FaultyFileSystem.h"
#include "xml/Error.h"

#include <QtCore/QFile>

using namespace Qt::StringLiterals;
using test::RulePath;

// What `Save` does to the file.

namespace {

/// Two specialties as nobody but this file writes them.
CString Electric()
{
    return u"<电气  id='2'   name=\"电气\" extra='&lt;&#20013;'><!-- 保留 -->文 字<LMember\n name='x'/><?p "
           u"i?>"
           "<![CDATA[<c>]]></电气 >"_s;
}

CString Building()
{
    return u"<建筑 name='建筑'/>"_s;
}

using StoreSave = test::FileFixture;

} // namespace

TEST_F(StoreSave, NeighboursStayByteForByteAndTheSavedSpecialtyMovesToTheEnd)
{
    const CString path =
        Put(u"r.xml"_s, test::RuleFile(Electric() + test::PlumbingRules(u"<c id='4'/>"_s) + Building()));
    CXmlQdDeConfig store(path, u"给排水"_s);
    int newId = 0;
    EXPECT_TRUE(store.AddConfig(RulePath(0), newId));
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray({u"电气/电气"_s, u"建筑/建筑"_s, u"给排水/给排水"_s}));
    EXPECT_TRUE(Bytes(u"r.xml"_s).contains(Electric().toUtf8()));
    EXPECT_TRUE(Bytes(u"r.xml"_s).contains(Building().toUtf8()));
}

TEST_F(StoreSave, SpecialtySavedLastStandsLast)
{
    const CString path = Put(u"r.xml"_s, test::RuleFile(test::Plumbing() + Electric()));
    CXmlQdDeConfig(path, u"给排水"_s).Save();
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray({u"电气/电气"_s, u"给排水/给排水"_s}));
    CXmlQdDeConfig(path, u"电气"_s).Save();
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray({u"给排水/给排水"_s, u"电气/电气"_s}));
}

TEST_F(StoreSave, DeepNeighbourSurvivesByteForByte)
{
    constexpr int Depth = 100000;
    const CString deep =
        u"<电气 name='电气'>"_s + u"<a>"_s.repeated(Depth) + u"</a>"_s.repeated(Depth) + u"</电气>"_s;
    CXmlQdDeConfig store(Put(u"r.xml"_s, test::RuleFile(test::Plumbing() + deep)), u"给排水"_s);
    EXPECT_TRUE(store.AddCondition(RulePath(1), test::Condition(u"x"_s)));
    EXPECT_TRUE(store.Save());
    EXPECT_TRUE(Bytes(u"r.xml"_s).contains(deep.toUtf8()));
}

TEST_F(StoreSave, CommentsAndInstructionsBesideTheSpecialtiesSurvive)
{
    const CString path =
        Put(u"r.xml"_s, u"<?xml version='1.0'?><!--前--><自动套清单定额配置信息><!--一-->"_s +
                            test::Plumbing() + u"<?p 二?></自动套清单定额配置信息><!--后-->"_s);
    EXPECT_TRUE(CXmlQdDeConfig(path, u"给排水"_s).Save());
    const CString saved = Xml(u"r.xml"_s);
    EXPECT_TRUE(saved.startsWith(u"comment 前\n"_s));
    EXPECT_TRUE(saved.contains(u"\n comment 一\n instruction p 二\n <给排水 id=\"1\" name=\"给排水\">\n"_s));
    EXPECT_TRUE(saved.endsWith(u"\ncomment 后\n"_s));
}

TEST_F(StoreSave, HeadAttributesSurvive)
{
    const CString path =
        Put(u"r.xml"_s, u"<自动套清单定额配置信息 Version='1.2.3' CalMode='清单版' QuotaYear='x'/>"_s);
    EXPECT_TRUE(CXmlQdDeConfig(path, u"给排水"_s).Save());
    EXPECT_TRUE(
        Xml(u"r.xml"_s)
            .startsWith(
                u"<自动套清单定额配置信息 Version=\"1.2.3\" CalMode=\"清单版\" QuotaYear=\"x\">\n"_s));
}

TEST_F(StoreSave, RulesMadeAtReadTimeAreWrittenUnderTheNameOfTheirContainerWithContainers)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    ASSERT_TRUE(Bytes(u"new.xml"_s).contains("<config "));
    EXPECT_TRUE(store.Save());
    EXPECT_FALSE(Bytes(u"new.xml"_s).contains("<config"));
    EXPECT_TRUE(
        Xml(u"new.xml"_s)
            .contains(
                u"\n   <SMember id=\"111\" name=\"给水管\" LastConfigId=\"1\">\n    <Config>\n"
                "     <Config id=\"1\" LastQdId=\"0\" LastConditionId=\"0\" bDefault=\"1\" LastDeId=\"0\">\n"
                "      <Condition>\n      <Qd>\n      <De>\n"_s));
}

TEST_F(StoreSave, BillItemWithoutQuotaItemsIsWrittenWithAnEmptyContainer)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    std::vector<ConfigNode*> rules;
    EXPECT_TRUE(store.AddQd(QdStruct{}, RulePath(1), rules));
    EXPECT_TRUE(store.Save());
    EXPECT_TRUE(
        Xml(u"new.xml"_s)
            .contains(
                u"\n      <Qd>\n       <qd id=\"1\" strQdId=\"\" strQdIdUser=\"\" strName=\"\" strUnit=\"\" "
                u"strUnitCode=\"\" "
                "strtypeid=\"\" strQdCode=\"\" strFormula=\"\" strAnnex=\"\">\n        <De>\n      <De>\n"_s));
}

TEST_F(StoreSave, SecondSaveChangesNoByte)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    store.AddCondition(RulePath(1), test::Condition(u"<\"&'>\n"_s));
    EXPECT_TRUE(store.Save());
    const QByteArray first = Bytes(u"new.xml"_s);
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(Bytes(u"new.xml"_s), first);
    EXPECT_TRUE(CXmlQdDeConfig(File(u"new.xml"_s), u"给排水"_s).Save());
    EXPECT_EQ(Bytes(u"new.xml"_s), first);
}

TEST_F(StoreSave, BrokenFileIsReplacedByOneWithTheCurrentSpecialtyOnly)
{
    const CString path = PutBroken(u"r.xml"_s, "<自动套清单定额配置信息><电气 name='电气'/>");
    CXmlQdDeConfig store(path, u"给排水"_s);
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray{u"给排水/给排水"_s});
    EXPECT_TRUE(Xml(u"r.xml"_s).startsWith(u"<自动套清单定额配置信息 Version=\"1.2.3\">\n"_s));
}

TEST_F(StoreSave, VanishedFileIsMadeAnewWithTheCurrentSpecialtyOnly)
{
    const CString path = Put(u"r.xml"_s, test::RuleFile(Electric() + test::PlumbingRules(u"<c id='4'/>"_s)));
    CXmlQdDeConfig store(path, u"给排水"_s);
    ASSERT_TRUE(QFile::remove(m_host.Folder().Native(u"r.xml"_s)));
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray{u"给排水/给排水"_s});
    EXPECT_TRUE(Xml(u"r.xml"_s).contains(u"<Config id=\"4\" "_s));
}

TEST_F(StoreSave, WhatOthersChangedInTheFileSinceItWasOpenedIsKept)
{
    const CString path = Put(u"r.xml"_s, test::RuleFile(test::Plumbing()));
    CXmlQdDeConfig store(path, u"给排水"_s);
    Put(u"r.xml"_s, test::RuleFile(test::PlumbingRules(u"<c id='9'/>"_s) + Electric()));
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray({u"电气/电气"_s, u"给排水/给排水"_s}));
    EXPECT_FALSE(Xml(u"r.xml"_s).contains(u"id=\"9\""_s));
}

TEST_F(StoreSave, FileThatMeanwhileHasAnotherDocumentElementIsRefusedAndUntouched)
{
    const CString path = Put(u"r.xml"_s, test::RuleFile(test::Plumbing()));
    CXmlQdDeConfig store(path, u"给排水"_s);
    Put(u"r.xml"_s, u"<其它/>"_s);
    EXPECT_FALSE(store.Save());
    EXPECT_EQ(Bytes(u"r.xml"_s), u"<其它/>"_s.toUtf8());
}

TEST_F(StoreSave, VersionIsRecordedAfterTheDocumentHasBeenSaved)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    store.AddCondition(RulePath(1), test::Condition(u"x"_s));
    test::VersionRecorder recorder(Host());
    Host().SetVersion(u"9.8.7"_s);
    EXPECT_TRUE(store.Save());
    ASSERT_EQ(recorder.Calls.size(), 1U);
    EXPECT_EQ(recorder.Calls.front().version, u"9.8.7"_s);
    EXPECT_EQ(recorder.Calls.front().file, File(u"new.xml"_s));
    EXPECT_EQ(recorder.Calls.front().content, Bytes(u"new.xml"_s));
    EXPECT_TRUE(recorder.Calls.front().content.contains("strValue=\"x\""));
}

TEST_F(StoreSave, EmptyVersionIsPassedOnAsItStands)
{
    Host().SetVersion({});
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    test::VersionRecorder recorder(Host());
    EXPECT_TRUE(store.Save());
    ASSERT_EQ(recorder.Calls.size(), 1U);
    EXPECT_TRUE(recorder.Calls.front().version.isEmpty());
}

TEST_F(StoreSave, VersionThatCannotBeRecordedIsNotNoticed)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    test::VersionRecorder recorder(Host());
    recorder.Result = false;
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(recorder.Calls.size(), 1U);
}

TEST_F(StoreSave, VersionOfAnOldFileIsBroughtUpToDateInItsPlace)
{
    const CString path = Put(u"r.xml"_s, u"<自动套清单定额配置信息 a='1' Version='0.1' b='2'/>"_s);
    EXPECT_TRUE(CXmlQdDeConfig(path, u"给排水"_s).Save());
    EXPECT_TRUE(
        Xml(u"r.xml"_s).startsWith(u"<自动套清单定额配置信息 a=\"1\" Version=\"1.2.3\" b=\"2\">\n"_s));
}

TEST_F(StoreSave, WithoutAnEngineTheWordsAreShownAndTreeAndFileStay)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    store.AddCondition(RulePath(1), test::Condition(u"x"_s));
    const QByteArray before = Bytes(u"new.xml"_s);
    {
        const test::NoEngine noEngine;
        EXPECT_FALSE(store.Save());
    }
    EXPECT_EQ(Messages().Texts(), CStringArray{test::NoEngineText()});
    EXPECT_EQ(Bytes(u"new.xml"_s), before);
    EXPECT_EQ(store.GetConfig(RulePath(1))->GetCondition().size(), 1U);
    EXPECT_TRUE(store.Save());
    EXPECT_TRUE(Bytes(u"new.xml"_s).contains("strValue=\"x\""));
}

TEST_F(StoreSave, CharacterThatNoFileCanHoldRaisesAndLeavesFileAndTree)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    store.AddCondition(RulePath(1), test::Condition(CString(QChar(0x0B))));
    const QByteArray before = Bytes(u"new.xml"_s);
    EXPECT_THROW(store.Save(), xml::Error);
    EXPECT_EQ(Bytes(u"new.xml"_s), before);
    EXPECT_EQ(store.GetConfig(RulePath(1))->GetCondition().size(), 1U);
}

TEST_F(StoreSave, IdOfTheSpecialtyIsThatOfTheTreeAndNotOfTheHost)
{
    const CString path = Put(u"r.xml"_s, test::RuleFile(u"<给排水 id='007' name='给排水'/>"_s));
    EXPECT_TRUE(CXmlQdDeConfig(path, u"给排水"_s).Save());
    EXPECT_TRUE(Xml(u"r.xml"_s).contains(u"\n <给排水 id=\"7\" name=\"给排水\">\n"_s));
}

TEST_F(StoreSave, UntouchedTreeDiffersFromTheFileReadOnlyWhereItMust)
{
    const CString path = Put(
        u"r.xml"_s,
        test::RuleFile(test::Plumbing(
            u"<LMember name='设备'/><LMember id='12' name='阀门'><SMember id='121' name='截止阀' "
            u"LastConfigId='40'>"
            "<Config><Config id='8' LastQdId='2' LastConditionId='6' bDefault='0' LastDeId='0'><Condition>"
            "<condition id='3' strCFType='A' bEqual='true' strEqualoperator='＝' strRangeoperator1='' "
            "strRangeoperator2='' strValue='v' strRange1='' strRange2=''/></Condition><Qd/><De/></Config>"
            "<config id='1' bDefault='1'/></Config></SMember></LMember>"_s)));
    m_host.Host().RemoveSmall(u"112"_s);
    EXPECT_TRUE(CXmlQdDeConfig(path, u"给排水"_s).Save());
    const CString rule =
        u"     <Config id=\"1\" LastQdId=\"0\" LastConditionId=\"0\" bDefault=\"1\" LastDeId=\"0\">\n"
        "      <Condition>\n      <Qd>\n      <De>\n"_s;
    // The host's order, the unknown category gone, the missing one added, the counter rebuilt.
    EXPECT_EQ(
        Xml(u"r.xml"_s),
        u"<自动套清单定额配置信息 Version=\"1.2.3\">\n <给排水 id=\"1\" name=\"给排水\">\n"
        "  <LMember id=\"11\" name=\"管道\">\n   <SMember id=\"111\" name=\"给水管\" LastConfigId=\"1\">\n"
        "    <Config>\n"_s +
            rule +
            u"  <LMember id=\"12\" name=\"阀门\">\n   <SMember id=\"121\" name=\"截止阀\" "
            u"LastConfigId=\"8\">\n"
            "    <Config>\n     <Config id=\"8\" LastQdId=\"2\" LastConditionId=\"6\" bDefault=\"0\" "
            "LastDeId=\"0\">\n      <Condition>\n       <condition id=\"3\" strCFType=\"A\" bEqual=\"true\" "
            "strEqualoperator=\"＝\" strRangeoperator1=\"\" strRangeoperator2=\"\" strValue=\"v\" "
            "strRange1=\"\" strRange2=\"\">\n      <Qd>\n      <De>\n"_s +
            rule);
}

TEST_F(StoreSave, SpecialtyOfAnotherSpellingIsANeighbour)
{
    Host().AddSpec(u"7"_s, u"Plant"_s);
    Host().AddBig(u"7"_s, u"71"_s, u"Pipe"_s);
    Host().AddSmall(u"71"_s, u"711"_s, u"Cold"_s);
    const CString neighbours = u"<Plant name='plant'/><Plant Name='Plant'/><Plant name='Plant '/>"_s;
    const CString path = Put(u"r.xml"_s, test::RuleFile(neighbours));
    EXPECT_TRUE(CXmlQdDeConfig(path, u"Plant"_s).Save());
    EXPECT_TRUE(Bytes(u"r.xml"_s).contains(neighbours.toUtf8()));
    EXPECT_EQ(Specialties(u"r.xml"_s).size(), 4);
}

TEST_F(StoreSave, OfTwoEqualSpecialtiesTheFirstGoesAndTheOtherStaysByteForByte)
{
    const CString second = u"<乙  name='给排水'><LMember name='管道'/></乙>"_s;
    const CString path = Put(u"r.xml"_s, test::RuleFile(u"<甲 name='给排水'/>"_s + second + Electric()));
    EXPECT_TRUE(CXmlQdDeConfig(path, u"给排水"_s).Save());
    EXPECT_TRUE(Bytes(u"r.xml"_s).contains(second.toUtf8()));
    EXPECT_EQ(Specialties(u"r.xml"_s), CStringArray({u"乙/给排水"_s, u"电气/电气"_s, u"给排水/给排水"_s}));
}
