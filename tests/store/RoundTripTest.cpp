#include "store/CXmlQdDeConfig.h"

#include "StoreTesting.h"

#include "platform/Encoding.h"

using namespace Qt::StringLiterals;
using test::RulePath;

// Files that are loaded, edited, saved and loaded again.

namespace {

class RoundTrip : public test::FileFixture
{
protected:
    /// The current specialty's element of the file after loading, `edit` and saving.
    template <typename Edit>
    CString SavedRules(const CString& rules, Edit edit)
    {
        const CString path = Put(u"r.xml"_s, test::RuleFile(test::PlumbingRules(rules)));
        CXmlQdDeConfig store(path, u"给排水"_s);
        edit(store);
        EXPECT_TRUE(store.Save());
        return Xml(u"r.xml"_s);
    }

    CString SavedRules(const CString& rules)
    {
        return SavedRules(rules, [](CXmlQdDeConfig&) {});
    }

    /// How often `part` stands in `text`.
    static qsizetype Count(const CString& text, const CString& part) { return text.count(part); }
};

} // namespace

TEST_F(RoundTrip, CommentsAndTextInContainersBecomeChildrenWithIdZeroAndThenElements)
{
    const CString saved =
        SavedRules(u"<!--规--><c id='2'><Condition><!--条--></Condition><Qd>文<q id='1'><De><!--定-->"
                   "</De></q></Qd><De><?p i?></De></c>"_s);
    EXPECT_FALSE(saved.contains(u"comment"_s));
    EXPECT_FALSE(saved.contains(u"text 文"_s));
    EXPECT_TRUE(saved.contains(
        u"\n     <Config id=\"0\" LastQdId=\"0\" LastConditionId=\"0\" bDefault=\"0\" "
        "LastDeId=\"0\">\n      <Condition>\n      <Qd>\n      <De>\n     <Config id=\"2\" "_s));
    EXPECT_EQ(Count(saved, u"<condition id=\"0\" strCFType=\"\" bEqual=\"false\""_s), 1);
    EXPECT_EQ(Count(saved, u"<qd id=\"0\" strQdId=\"\""_s), 1);
    EXPECT_EQ(Count(saved, u"<De id=\"0\" strName=\"\""_s), 2);
}

TEST_F(RoundTrip, SecondRoundTripChangesNothingMore)
{
    const CString once =
        SavedRules(u"<!--规--><c id='2'><Condition>文<!--条--></Condition></c><c bDefault='1'/>"_s);
    CXmlQdDeConfig(File(u"r.xml"_s), u"给排水"_s).Save();
    EXPECT_EQ(Xml(u"r.xml"_s), once);
}

TEST_F(RoundTrip, CommentsOutsideTheContainersOfTheOwnSpecialtyAreGone)
{
    const CString saved = SavedRules(u"<c id='2'><!--a--><Condition/><!--b--></c>"_s);
    EXPECT_FALSE(saved.contains(u"comment"_s));
}

TEST_F(RoundTrip, NegativeIdsSurvive)
{
    const CString saved =
        SavedRules(u"<c id='-2'><Condition><c id='-3'/></Condition><Qd><q id='-4'/></Qd></c>"_s,
                   [](CXmlQdDeConfig& store) {
                       EXPECT_NE(store.GetConfig(RulePath(-2)), nullptr);
                       EXPECT_NE(store.GetConfig(RulePath(-2))->GetQd(-4), nullptr);
                   });
    EXPECT_TRUE(saved.contains(u"<Config id=\"-2\" LastQdId=\"0\" LastConditionId=\"0\""_s));
    EXPECT_TRUE(saved.contains(u"<condition id=\"-3\""_s));
    EXPECT_TRUE(saved.contains(u"<qd id=\"-4\""_s));
}

TEST_F(RoundTrip, HugeIdsAreKeptAtTheLargestNumber)
{
    const CString saved = SavedRules(u"<c id='99999999999999999999' LastQdId='4294967296'/>"_s);
    EXPECT_TRUE(saved.contains(u"<Config id=\"2147483647\" LastQdId=\"2147483647\""_s));
    EXPECT_TRUE(saved.contains(u" LastConfigId=\"-2147483648\""_s)); // raised for the missing default rule
}

TEST_F(RoundTrip, IdsThatAreNoNumbersCountByTheirLeadingDigits)
{
    const CString saved = SavedRules(u"<c id='abc'/><c id='12ab'/><c id=''/><c id=' 5 '/>"_s);
    for (const CString& id : {u"0"_s, u"12"_s, u"5"_s})
        EXPECT_TRUE(saved.contains(u"<Config id=\"%1\" "_s.arg(id)));
    EXPECT_EQ(Count(saved, u"<Config id=\"0\" "_s), 2);
}

TEST_F(RoundTrip, RepeatedIdsAreKept)
{
    const CString saved =
        SavedRules(u"<c id='2'><Qd><q id='1' strQdId='a'/><q id='1' strQdId='b'/></Qd></c><c id='2'/>"_s,
                   [](CXmlQdDeConfig& store) {
                       EXPECT_TRUE(store.ResetQd({1, 11, 111, 2, 0, 1, 0, 0}, QdStruct{}));
                   });
    EXPECT_EQ(Count(saved, u"<Config id=\"2\" "_s), 2);
    EXPECT_TRUE(saved.contains(u"<qd id=\"1\" strQdId=\"\""_s));
    EXPECT_TRUE(saved.contains(u"<qd id=\"1\" strQdId=\"b\""_s));
}

TEST_F(RoundTrip, IdOfADeletedLastRuleIsGivenOutAgainAfterAReload)
{
    CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
    int newId = 0;
    EXPECT_TRUE(store.AddConfig(RulePath(0), newId));
    ASSERT_EQ(newId, 2);
    EXPECT_TRUE(store.DelConfig(RulePath(2)));
    EXPECT_TRUE(store.Save());
    EXPECT_TRUE(Xml(u"new.xml"_s).contains(u" LastConfigId=\"2\""_s));
    EXPECT_TRUE(store.ReLoad(File(u"new.xml"_s)));
    EXPECT_TRUE(store.AddConfig(RulePath(0), newId));
    EXPECT_EQ(newId, 2);
}

TEST_F(RoundTrip, ConditionsOfACopiedRuleAreWrittenWithIdZero)
{
    const CString saved = SavedRules(u"<c id='2'><Condition><c id='1' strCFType='T'/></Condition></c>"_s,
                                     [](CXmlQdDeConfig& store) {
                                         int newId = 0;
                                         EXPECT_TRUE(store.AddConfigByCopy(RulePath(2), newId));
                                     });
    EXPECT_EQ(Count(saved, u"<condition id=\"0\" strCFType=\"T\""_s), 1);
    EXPECT_EQ(Count(saved, u"<condition id=\"1\" strCFType=\"T\""_s), 1);
}

TEST_F(RoundTrip, EveryCharacterOfATextSurvives)
{
    const CString text = u" 前 <\"'&>\t\r\n\u00e9\u2028\U0002070E\ufffd ]]> --&#1; 后 "_s;
    {
        CXmlQdDeConfig store(File(u"new.xml"_s), u"给排水"_s);
        EXPECT_TRUE(store.AddCondition(RulePath(1), test::Condition(text)));
        EXPECT_TRUE(store.Save());
    }
    CXmlQdDeConfig again(File(u"new.xml"_s), u"给排水"_s);
    EXPECT_EQ(again.GetConfig(RulePath(1))->GetCondition().front()->GetValue(), text);
}

TEST_F(RoundTrip, OrderOfMovedRulesSurvives)
{
    const CString path = Put(
        u"r.xml"_s,
        test::RuleFile(test::PlumbingRules(u"<c id='5'/><c id='2'/><c id='9'/><c id='1' bDefault='1'/>"_s)));
    {
        CXmlQdDeConfig store(path, u"给排水"_s);
        EXPECT_TRUE(store.MoveUpConfig(RulePath(9)));
        EXPECT_TRUE(store.Save());
    }
    CXmlQdDeConfig again(path, u"给排水"_s);
    std::vector<ConfigNode*> rules;
    EXPECT_TRUE(again.GetConfig(RulePath(0), rules));
    EXPECT_EQ(test::Ids(rules), (std::vector<int>{5, 9, 2, 1}));
}

TEST_F(RoundTrip, UnknownAttributesAndElementsOfTheOwnSpecialtyAreGone)
{
    const CString saved = SavedRules(u"<c id='2' more='x'><Other/><Condition more='y'/></c>"_s);
    EXPECT_FALSE(saved.contains(u"more="_s) || saved.contains(u"Other"_s));
}

TEST_F(RoundTrip, FilesInOtherEncodingsKeepTheirContent)
{
    const CString text =
        test::RuleFile(test::PlumbingRules(u"<c id='2'><Qd><q strName='镀锌钢管'/></Qd></c>"_s));
    const CString declared = CString(text).replace(u"UTF-8"_s, u"UTF-16"_s);
    const QByteArray utf16 = platform::Encode(declared, platform::Encoding::Utf16Be).value();
    for (const QByteArray& bytes : {"\xef\xbb\xbf" + text.toUtf8(), utf16}) {
        const CString path = m_host.Folder().WriteFile(u"e.xml"_s, bytes);
        CXmlQdDeConfig store(path, u"给排水"_s);
        EXPECT_EQ(store.GetConfig(RulePath(2))->GetQd(0)->GetRecord().strName, u"镀锌钢管"_s);
        EXPECT_TRUE(store.Save());
        EXPECT_TRUE(Xml(u"e.xml"_s).contains(u" strName=\"镀锌钢管\""_s));
    }
}

TEST_F(RoundTrip, DeepContentOfTheOwnSpecialtyIsPassedOver)
{
    constexpr int Depth = 100000;
    const CString saved = SavedRules(u"<c id='2'><Condition><c id='1'>"_s + u"<a>"_s.repeated(Depth) +
                                     u"</a>"_s.repeated(Depth) + u"</c></Condition></c>"_s);
    EXPECT_TRUE(saved.contains(u"<condition id=\"1\""_s));
    EXPECT_FALSE(saved.contains(u"<a>"_s));
}
