#include "editor/docks/takeoff/TakeoffHits.h"

#include "editor/docks/DocksFixture.h"
#include "rules/bill/Coverage.h"
#include "rules/draft/RuleEdits.h"
#include "shared/GatherPricingFacts.h"
#include "support/Patience.h"

using namespace Qt::StringLiterals;
using editor::TakeoffHits;

namespace {

class TakeoffHitsTest : public test::DocksFixture
{
protected:
    TakeoffHitsTest() : m_hits(m_session) {}

    void WaitUntilCurrent() const
    {
        test::WaitInLoopFor(u"the prices"_s, [&] { return m_hits.IsCurrent(); });
    }
    void WaitUntilFailed() const
    {
        test::WaitInLoopFor(u"the refusal"_s, [&] { return m_hits.Now() == TakeoffHits::State::Failed; });
    }
    /// Opens a table that can be read.
    void OpenFile(const CString& path)
    {
        m_hits.Open(path);
        test::WaitInLoopFor(u"the prices"_s,
                            [&] { return m_hits.IsCurrent() || m_hits.Now() == TakeoffHits::State::Failed; });
        ASSERT_EQ(m_hits.Error(), CString());
    }
    void OpenTable(const QString& table) { OpenFile(Sample(table)); }
    /// What the command line makes of the table by the rules of the draft.
    rules::TakeoffJob Job()
    {
        return {.table = m_hits.Path(),
                .sheet = {},
                .groupBy = {},
                .configuration = shared::WithinCatalogue(*m_session.Draft().Snapshot(),
                                                         m_project->Host().CatalogueContents()),
                .facts = m_session.Facts()->pricing};
    }
    void ExpectFiguresOfTheCommandLine();

    TakeoffHits m_hits;
};

void ExpectSame(const rules::BillRow& a, const rules::BillRow& b)
{
    EXPECT_EQ(a.number, b.number);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.unit, b.unit);
    EXPECT_EQ(a.quantity, b.quantity);
    EXPECT_EQ(a.FeatureText(), b.FeatureText());
    EXPECT_EQ(a.components, b.components);
    EXPECT_EQ(a.missing, b.missing);
    EXPECT_EQ(a.numberRepeated, b.numberRepeated);
    ASSERT_EQ(a.quotas.size(), b.quotas.size());
    for (std::size_t i = 0; i < a.quotas.size(); ++i)
        ExpectSame(a.quotas[i], b.quotas[i]);
}

void TakeoffHitsTest::ExpectFiguresOfTheCommandLine()
{
    const rules::TakeoffJob job = Job();
    rules::TakeoffPricing pricing(job);
    rules::CoverageBuilder coverage(job.configuration, job.facts, m_session.Facts()->measures);
    const rules::Bill& bill = pricing.Price(
        {.begin = [&] { coverage.Begin(); }, .take = [&](const auto& priced) { coverage.Take(priced); }});
    const rules::Bill& own = m_hits.Figures()->bill;
    EXPECT_EQ(own.totals, bill.totals);
    EXPECT_EQ(own.order, bill.order);
    ASSERT_EQ(own.rows.size(), bill.rows.size());
    for (std::size_t i = 0; i < bill.rows.size(); ++i)
        ExpectSame(own.rows[i], bill.rows[i]);
    const rules::Coverage covered = coverage.Finish();
    EXPECT_EQ(m_hits.Figures()->categories.size(), covered.categories.size());
    for (const rules::CategoryCoverage& category : covered.categories) {
        const CString& text = category.category->text;
        EXPECT_EQ(m_hits.ComponentsOf(text), category.Components()) << text.toStdString();
        EXPECT_EQ(m_hits.OnDefaultOf(text), category.onDefault) << text.toStdString();
        for (std::size_t rule = 0; rule < category.hits.size(); ++rule)
            EXPECT_EQ(m_hits.HitsOf(text, rule), category.hits[rule]) << text.toStdString() << rule;
    }
}

} // namespace

TEST_F(TakeoffHitsTest, HitsAndBillArePlumbingsAsTheCommandLineHasThem)
{
    OpenTable(u"PlumbingTakeoff.csv"_s);
    EXPECT_EQ(m_hits.Figures()->bill.totals.in, 303U);
    ExpectFiguresOfTheCommandLine();
}

TEST_F(TakeoffHitsTest, HitsAndBillAreThoseOfTheOtherSamples)
{
    Open(u"电气示例"_s);
    OpenTable(u"ElectricalTakeoff.csv"_s);
    ExpectFiguresOfTheCommandLine();
    Open(u"暖通示例"_s);
    OpenTable(u"HvacTakeoff.csv"_s);
    ExpectFiguresOfTheCommandLine();
}

TEST_F(TakeoffHitsTest, RefusedAndRepeatedComponentsCountAsTheCommandLineCountsThem)
{
    const CString table = u"构件编号,类别,材质,公称直径,连接方式,水平管长度,立管长度\n"
                          "1,%1,镀锌钢管,65,螺纹连接,5,0\n"
                          "1,%1,镀锌钢管,65,螺纹连接,5,0\n"
                          "2,%1,没有的管,65,没有的连接,5,0\n"
                          "3,没有\\这个\\类别,镀锌钢管,65,螺纹连接,5,0\n"
                          "4,%1,镀锌钢管,65,螺纹连接,,\n"_s.arg(m_pipe);
    OpenFile(m_folder.WriteFile(u"t.csv"_s, table.toUtf8()));
    const editor::TakeoffFigures& figures = *m_hits.Figures();
    EXPECT_EQ(figures.components[1].refusal, rules::Refusal::IdTwice);
    EXPECT_EQ(figures.components[3].refusal, rules::Refusal::UnknownCategory);
    EXPECT_EQ(figures.refused.size(), figures.bill.totals.refused);
    EXPECT_EQ(m_hits.OnDefaultOf(m_pipe), 1U);
    ExpectFiguresOfTheCommandLine();
}

TEST_F(TakeoffHitsTest, HitsFollowEditsUndoAndRedo)
{
    OpenTable(u"PlumbingTakeoff.csv"_s);
    Insert(m_pipe, RuleLike(m_pipe, {Between(u"公称直径"_s, u"0"_s, u"9999"_s)}));
    WaitUntilCurrent();
    EXPECT_GT(m_hits.HitsOf(m_pipe, 0), 0U);
    ExpectFiguresOfTheCommandLine();
    m_session.Undo().undo();
    m_session.Undo().redo();
    m_session.Undo().undo();
    WaitUntilCurrent();
    ExpectFiguresOfTheCommandLine();
}

TEST_F(TakeoffHitsTest, FormerHitsStayWithTheirRulesUntilTheNewOnesAreThere)
{
    OpenTable(u"PlumbingTakeoff.csv"_s);
    const auto first = m_hits.HitsOf(m_pipe, 0);
    const auto rows = m_hits.RowsOf(m_pipe, 0);
    Insert(m_pipe, RuleLike(m_pipe, {Equal(u"材质"_s, u"没有的管"_s)}));
    EXPECT_FALSE(m_hits.IsCurrent());
    EXPECT_FALSE(m_hits.HitsOf(m_pipe, 0));
    EXPECT_EQ(m_hits.HitsOf(m_pipe, 1), first);
    EXPECT_EQ(m_hits.RowsOf(m_pipe, 1), rows);
    WaitUntilCurrent();
    EXPECT_EQ(m_hits.HitsOf(m_pipe, 0), 0U);
    EXPECT_EQ(m_hits.HitsOf(m_pipe, 1), first);
}

TEST_F(TakeoffHitsTest, TheRowsOfARuleAreThoseThatItTakes)
{
    OpenTable(u"PlumbingTakeoff.csv"_s);
    const auto& figures = *m_hits.Figures();
    std::size_t counted = 0;
    for (std::size_t rule = 0; rule < m_session.Draft().Find(m_pipe)->rules.size(); ++rule)
        for (const std::uint32_t row : m_hits.RowsOf(m_pipe, rule)) {
            EXPECT_EQ(figures.table->CategoryOf(row), m_pipe);
            EXPECT_EQ(figures.components[row].rule, static_cast<rules::RuleIndex>(rule));
            ++counted;
        }
    EXPECT_EQ(counted, m_hits.ComponentsOf(m_pipe));
}

TEST_F(TakeoffHitsTest, ATableThatCannotBeReadSaysWhy)
{
    m_hits.Open(m_folder.Path(u"missing.csv"_s));
    WaitUntilFailed();
    EXPECT_TRUE(m_hits.Error().contains(u"missing.csv"_s)) << m_hits.Error().toStdString();
    m_hits.Open(m_folder.WriteFile(u"bare.csv"_s, "a,b\n1,2\n"));
    WaitUntilFailed();
    EXPECT_TRUE(m_hits.Error().contains(u"构件编号"_s)) << m_hits.Error().toStdString();
    EXPECT_EQ(m_hits.Figures(), nullptr);
    OpenTable(u"PlumbingTakeoff.csv"_s);
    EXPECT_TRUE(m_hits.Error().isEmpty());
}

TEST_F(TakeoffHitsTest, ReloadingReadsWhatTheFileHoldsNow)
{
    const CString table = m_folder.WriteFile(
        u"t.csv"_s, QStringLiteral("构件编号,类别,公称直径\n1,%1,65\n").arg(m_pipe).toUtf8());
    OpenFile(table);
    EXPECT_EQ(m_hits.ComponentsOf(m_pipe), 1U);
    m_folder.WriteFile(u"t.csv"_s,
                       QStringLiteral("构件编号,类别,公称直径\n1,%1,65\n2,%1,80\n").arg(m_pipe).toUtf8());
    m_hits.Reload();
    WaitUntilCurrent();
    EXPECT_EQ(m_hits.ComponentsOf(m_pipe), 2U);
}

TEST_F(TakeoffHitsTest, ClosingTheTableOrTheProjectLeavesNothing)
{
    OpenTable(u"PlumbingTakeoff.csv"_s);
    m_hits.Close();
    EXPECT_EQ(m_hits.Now(), TakeoffHits::State::Closed);
    EXPECT_FALSE(m_hits.HitsOf(m_pipe, 0));
    OpenTable(u"PlumbingTakeoff.csv"_s);
    m_session.SetProject(nullptr);
    EXPECT_EQ(m_hits.Now(), TakeoffHits::State::Closed);
    EXPECT_EQ(m_hits.Figures(), nullptr);
}

TEST_F(TakeoffHitsTest, AnotherRuleFileIsPricedByWhileTheTableStays)
{
    OpenTable(u"PlumbingTakeoff.csv"_s);
    const auto priced = m_hits.Figures()->bill.totals.priced;
    Open(u"暖通示例"_s);
    WaitUntilCurrent();
    EXPECT_NE(m_hits.Figures()->bill.totals.priced, priced);
    EXPECT_EQ(m_hits.Figures()->bill.totals.in, 303U);
    ExpectFiguresOfTheCommandLine();
}

TEST(TakeoffTable, ATableThatIsTooLargeIsRefusedWithItsLimit)
{
    const test::TempFolder folder;
    const CString table = folder.WriteFile(u"t.csv"_s, "构件编号,类别\n1,a\\b\\c\n2,a\\b\\c\n");
    editor::StepControl control;
    EXPECT_EQ(editor::TakeoffTable::Read(table, control, 10)->Size(), 2U);
    EXPECT_THROW(editor::TakeoffTable::Read(table, control, 9), editor::TakeoffTooLarge);
}

TEST(TakeoffTable, KeepsEveryCellOfTheTable)
{
    const test::TempFolder folder;
    const CString table = folder.WriteFile(
        u"t.csv"_s, "构件编号,具体构件,类别,x,y\n1,甲,a\\b\\c,,5\n2,乙,a\\b\\c,\"k,\"\"l\",5\n");
    editor::StepControl control;
    const editor::TakeoffTablePtr read = editor::TakeoffTable::Read(table, control);
    ASSERT_EQ(read->Size(), 2U);
    const editor::Component second = read->ComponentAt(1);
    EXPECT_EQ(second.id, u"2"_s);
    EXPECT_EQ(second.name, u"乙"_s);
    EXPECT_EQ(second.category, u"a\\b\\c"_s);
    EXPECT_EQ(second.headers, (CStringArray{u"构件编号"_s, u"具体构件"_s, u"类别"_s, u"x"_s, u"y"_s}));
    EXPECT_EQ(second.cells, (std::vector<CString>{u"2"_s, u"乙"_s, u"a\\b\\c"_s, u"k,\"l"_s, u"5"_s}));
    EXPECT_EQ(read->CellOf(0, 3), QString());
    EXPECT_EQ(read->LineOf(1), 3);
}
