#include "editor/docks/findings/FindingsWatch.h"

#include "editor/docks/DocksFixture.h"
#include "editor/docks/findings/FindingWords.h"
#include "rules/check/Check.h"
#include "rules/draft/RuleEdits.h"
#include "support/Patience.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <set>
#include <tuple>

using namespace Qt::StringLiterals;
using editor::FindingsWatch;

namespace {

using Told = std::multiset<std::tuple<CString, int, CString, CString>>;

void Add(Told& told, const std::vector<rules::Finding>& findings)
{
    for (const rules::Finding& one : findings)
        told.emplace(one.category, one.position, rules::CodeText(one.code), one.text);
}

class FindingsWatchTest : public test::DocksFixture
{
protected:
    static void WaitUntilCurrent(const FindingsWatch& watch)
    {
        test::WaitInLoopFor(u"the findings"_s, [&] { return watch.IsCurrent(); });
    }
    static Told AllOf(const FindingsWatch& watch)
    {
        Told told;
        for (const CString& category : watch.Categories())
            Add(told, watch.Of(category));
        return told;
    }
    /// What the checks say of all of the draft.
    Told Expected() const
    {
        Told told;
        Add(told,
            rules::Check(*m_session.Draft().Snapshot(), m_session.Structure(), m_session.Facts()->checks));
        return told;
    }
    /// How many findings of that code a rule has.
    std::ptrdiff_t CountOf(const FindingsWatch& watch, std::size_t position, rules::FindingCode code) const
    {
        const auto all = watch.Of(m_pipe, position);
        return std::count_if(all.begin(), all.end(), [&](const auto& one) { return one.code == code; });
    }
};

} // namespace

TEST_F(FindingsWatchTest, TellsWhatTheChecksTellOfTheFile)
{
    const FindingsWatch watch(m_session);
    EXPECT_FALSE(watch.IsCurrent());
    WaitUntilCurrent(watch);
    const Told expected = Expected();
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(AllOf(watch), expected);
}

TEST_F(FindingsWatchTest, TellsWhatTheChecksTellAfterEveryEditUndoAndRedo)
{
    const FindingsWatch watch(m_session);
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"没有的管"_s)}));
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)}), 3);
    WaitUntilCurrent(watch);
    EXPECT_EQ(AllOf(watch), Expected());
    m_session.Undo().undo();
    WaitUntilCurrent(watch);
    EXPECT_EQ(AllOf(watch), Expected());
    m_session.Undo().redo();
    WaitUntilCurrent(watch);
    EXPECT_EQ(AllOf(watch), Expected());
}

TEST_F(FindingsWatchTest, FindingsGoWithTheirRulesBeforeTheyAreCheckedAgain)
{
    const FindingsWatch watch(m_session);
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)}));
    WaitUntilCurrent(watch);
    ASSERT_EQ(CountOf(watch, 0, rules::FindingCode::BoundsReversed), 1);
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"PE管"_s)}));
    EXPECT_FALSE(watch.IsCurrent(m_pipe));
    EXPECT_EQ(CountOf(watch, 0, rules::FindingCode::BoundsReversed), 0);
    EXPECT_EQ(CountOf(watch, 1, rules::FindingCode::BoundsReversed), 1);
    EXPECT_EQ(watch.WorstOf(m_pipe, 1), rules::Severity::Error);
    EXPECT_EQ(watch.WorstOf(m_pipe), rules::Severity::Error);
    EXPECT_TRUE(watch.TextOf(m_pipe, 1).startsWith(u"错误：")) << watch.TextOf(m_pipe, 1).toStdString();
}

TEST_F(FindingsWatchTest, FindingsOfADeletedRuleAreGoneAtOnce)
{
    const FindingsWatch watch(m_session);
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)}));
    WaitUntilCurrent(watch);
    m_session.Undo().undo();
    EXPECT_EQ(watch.WorstOf(m_pipe, 0).value_or(rules::Severity::Note), rules::Severity::Note);
}

TEST_F(FindingsWatchTest, TheEditedCategoryIsToldOfBeforeTheFileIs)
{
    const FindingsWatch watch(m_session);
    WaitUntilCurrent(watch);
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"80"_s, u"50"_s)}));
    bool wasCurrent = true;
    QObject::connect(&watch, &FindingsWatch::FindingsChanged, &watch, [&](const QStringList& categories) {
        if (categories.contains(m_pipe) && watch.IsCurrent(m_pipe) &&
            CountOf(watch, 0, rules::FindingCode::BoundsReversed) == 1)
            wasCurrent = wasCurrent && watch.IsCurrent();
    });
    WaitUntilCurrent(watch);
    EXPECT_FALSE(wasCurrent);
}

TEST_F(FindingsWatchTest, ANumberWithTwoNamesIsFoundAcrossCategories)
{
    const FindingsWatch watch(m_session);
    rules::Rule rule = RuleLike(m_pipe, {Equal(u"材质"_s, u"铸铁管"_s)});
    ASSERT_FALSE(rule.bills.empty());
    rule.bills.front().record.strName += u"又名"_s;
    const CString other = u"给排水\\管道\\排水管"_s;
    ASSERT_NE(m_session.Draft().Find(other), nullptr);
    Insert(other, rule);
    WaitUntilCurrent(watch);
    const auto found = watch.Of(other, 0);
    EXPECT_TRUE(std::any_of(found.begin(), found.end(), [](const rules::Finding& finding) {
        return finding.code == rules::FindingCode::NumberTwoNames;
    }));
    EXPECT_EQ(AllOf(watch), Expected());
}

TEST_F(FindingsWatchTest, OfManyEditsInARowTheLastStateIsToldOf)
{
    const FindingsWatch watch(m_session);
    std::vector<rules::Rule> many;
    for (int i = 0; i < 800; ++i)
        many.push_back(RuleLike(m_pipe, {Equal(u"材质"_s, u"管%1"_s.arg(i)),
                                         Between(u"公称直径"_s, u"15"_s, CString::number(20 + i))}));
    m_session.Do(rules::InsertRules(m_session.Draft(), m_pipe, 0, many, u"增加规则"_s));
    for (int i = 0; i < 10; ++i)
        Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"管%1"_s.arg(i))}));
    WaitUntilCurrent(watch);
    EXPECT_EQ(AllOf(watch), Expected());
}

TEST_F(FindingsWatchTest, ClosedFilesHaveNoFindingsAndNothingIsChecked)
{
    const FindingsWatch watch(m_session);
    WaitUntilCurrent(watch);
    m_session.Close();
    EXPECT_TRUE(watch.IsCurrent());
    EXPECT_TRUE(watch.Categories().isEmpty());
    EXPECT_FALSE(watch.WorstOf(m_pipe));
}

TEST_F(FindingsWatchTest, ItEndsWhileItChecks)
{
    for (int i = 0; i < 5; ++i) {
        const FindingsWatch watch(m_session);
        Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"管%1"_s.arg(i))}));
    }
    QCoreApplication::processEvents(); // nothing comes for what is gone
    const FindingsWatch watch(m_session);
    WaitUntilCurrent(watch);
    EXPECT_EQ(AllOf(watch), Expected());
}

TEST(FindingWords, EveryCodeIsExplainedInWordsOfItsOwn)
{
    std::set<CString> explanations;
    for (const rules::FindingCode code : rules::AllFindingCodes()) {
        EXPECT_TRUE(editor::ExplanationOf(code).endsWith(u'。')) << rules::CodeText(code).toStdString();
        explanations.insert(editor::ExplanationOf(code));
    }
    EXPECT_EQ(explanations.size(), rules::AllFindingCodes().size());
}

TEST_F(FindingsWatchTest, OfALargeFileComeForAllOfItWhenItsRulesHaveCome)
{
    const CString valves = u"给排水\\阀门附件\\阀门"_s;
    std::vector<rules::Rule> many;
    for (int i = 0; i < 2000; ++i)
        many.push_back(RuleLike(m_pipe, {Equal(u"材质"_s, u"管材%1"_s.arg(i))}));
    m_session.Do(rules::InsertRules(m_session.Draft(), m_pipe, 0, many, {}));
    Insert(valves, {});
    m_session.Save([](const auto&) { return std::nullopt; });
    FindingsWatch watch(m_session);
    m_session.Open(m_session.File().Path());
    ASSERT_FALSE(m_session.IsWhole());
    WaitUntilCurrent(watch);
    EXPECT_FALSE(watch.Of(valves).empty());
    EXPECT_EQ(AllOf(watch), Expected());
}
