#include "embedded/data/office/OfficeNumbers.h"

#include "embedded/OfficeFixture.h"
#include "embedded/data/office/PublishedConfigurations.h"
#include "host/BillNumbering.h"
#include "support/Patience.h"

#include <QtCore/QProcess>

#include <set>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::NumberUse;
using embedded::PublishOutcome;
using test::On;
using test::ServerDown;
using test::TestProject;

namespace {

const CString Base = u"030901001"_s;
const CString Library = u"GB50856-2013"_s;

CString Configuration()
{
    return embedded::CurrentConfiguration::DefaultName();
}

/// A dialog for bill numbers, as far as the host sees it.
class Dialog
{
public:
    explicit Dialog(const TestProject& project) : m_host(project.Folder()) {}

    EmbeddedHost& Host() { return m_host; }
    /// What it shows when it begins to propose.
    CArray<SQdInfo> Told(const CString& base = Base)
    {
        CArray<SQdInfo> items;
        EXPECT_TRUE(m_host.Roles().libraries->GetQdInfoByQdNum(base, items));
        return items;
    }
    CStringArray Known(const CString& base = Base)
    {
        CStringArray numbers;
        for (const SQdInfo& item : Told(base))
            numbers.append(item.strNumber);
        return numbers;
    }
    /// Begins to propose, and gives what is proposed.
    CString Propose(const CString& base = Base) { return base + host::SuffixAfter(Known(base), 3); }
    /// The person accepts.
    void Accept(const CString& picked = Base)
    {
        SQdInfo info;
        EXPECT_TRUE(m_host.Roles().libraries->GetQdInfo(picked, info));
    }
    CString Take()
    {
        const CString number = Propose();
        Accept();
        return number;
    }

private:
    EmbeddedHost m_host;
};

/// Two projects that share a configuration.
class OfficeNumbers : public test::OfficeFixture
{
protected:
    OfficeNumbers()
    {
        m_other.Create(On(Administrator()));
        for (const TestProject* project : {&m_project, &m_other})
            EmbeddedHost(project->Folder()).Office()->Memory().RememberBase(Configuration(), {1, {}});
    }
    QString Count(const QString& which) const
    {
        return Ask(u"SELECT count(*) FROM numbers WHERE "_s + which);
    }
    PublishOutcome Publish(const CString& project, int base, const CArray<NumberUse>& numbers,
                           const CString& projectId = u"an id"_s)
    {
        embedded::Office office(Administrator());
        embedded::PublishedConfigurations published(office);
        embedded::VersionMark mark;
        for (const embedded::PublishedVersion& version : published.Log(Configuration()))
            if (version.number == base) mark = version.Mark();
        return published.Publish(
            {Configuration(), mark, QByteArray::number(++m_contents), {}, project, projectId, numbers});
    }

    TestProject m_other;
    int m_contents = 0;
};

} // namespace

TEST_F(OfficeNumbers, TwoThatProposeAtTheSameTimeGetDifferentOnes)
{
    Dialog first(m_project);
    Dialog second(m_other);
    EXPECT_EQ(first.Propose(), Base + u"001"_s);
    EXPECT_EQ(second.Propose(), Base + u"002"_s);
    first.Accept();
    second.Accept();
    EXPECT_EQ(second.Propose(), Base + u"003"_s);
    EXPECT_EQ(first.Propose(), Base + u"004"_s);
}

TEST_F(OfficeNumbers, KeptNumberIsOfTheProjectAndNotOfItsName)
{
    Dialog first(m_project);
    first.Take();
    EXPECT_EQ(Ask(u"SELECT project_id FROM numbers WHERE claimed_until IS NULL"_s),
              first.Host().Office()->ProjectId());
}

TEST_F(OfficeNumbers, TwoProgramsOnOneProjectGetDifferentOnesToo)
{
    Dialog first(m_project);
    Dialog second(m_project);
    EXPECT_EQ(first.Propose(), Base + u"001"_s);
    EXPECT_EQ(second.Propose(), Base + u"002"_s);
}

TEST_F(OfficeNumbers, ListNamesTheProjectThatHasTheNumber)
{
    Dialog first(m_project);
    Dialog second(m_other);
    first.Take();
    first.Propose();
    const CArray<SQdInfo> told = second.Told();
    ASSERT_EQ(told.size(), 2);
    SQdInfo item;
    ASSERT_TRUE(second.Host().Roles().libraries->GetQdInfo(Base, item));
    const CString project = first.Host().Office()->ProjectName();
    EXPECT_EQ(told[0].strName, item.strName + u"（工程“%1”）"_s.arg(project));
    EXPECT_EQ(told[1].strName, item.strName + u"（工程“%1”正在编号）"_s.arg(project));
    EXPECT_EQ(told[0].strUnit, item.strUnit);
    EXPECT_EQ(told[0].nUnitCode, item.nUnitCode);
    EXPECT_EQ(told[0].nWithAnnex, item.nWithAnnex);
    EXPECT_EQ(told[0].strCalRule, item.strCalRule);
}

TEST_F(OfficeNumbers, ProposalThatIsCancelledIsFreeAgainAndATakenOneStays)
{
    {
        Dialog first(m_project);
        EXPECT_EQ(first.Propose(), Base + u"001"_s);
        EXPECT_EQ(first.Propose(), Base + u"001"_s) << "its own claim is no number to go past";
        first.Host().ForgetProposedNumbers();
        EXPECT_EQ(Count(u"true"_s), u"0"_s);
        EXPECT_EQ(first.Take(), Base + u"001"_s);
        EXPECT_EQ(Count(u"claimed_until IS NULL"_s), u"1"_s);
        first.Propose();
        EXPECT_EQ(Count(u"claimed_until IS NOT NULL"_s), u"1"_s);
    }
    EXPECT_EQ(Count(u"claimed_until IS NOT NULL"_s), u"0"_s) << "an end gives up what is not kept";
    EXPECT_EQ(Dialog(m_other).Propose(), Base + u"002"_s);
    EXPECT_EQ(Ask(u"SELECT count(*) FROM changes WHERE table_name = 'numbers'"_s), u"1"_s)
        << "claims are not recorded";
}

TEST_F(OfficeNumbers, ClaimOfADeadProgramRunsOut)
{
    Dialog first(m_project);
    first.Propose();
    EXPECT_EQ(Ask(u"SELECT claimed_until - at BETWEEN '59 minutes' AND '61 minutes' FROM numbers"_s), u"t"_s);
    Ask(u"UPDATE numbers SET claimed_until = clock_timestamp() - interval '1 second'"_s);
    Dialog second(m_other);
    EXPECT_EQ(second.Take(), Base + u"001"_s);
    first.Accept();
    EXPECT_EQ(Count(u"number = '030901001001' AND claimed_until IS NULL"_s), u"1"_s)
        << "the first one's is lost";
    EXPECT_EQ(Ask(u"SELECT project FROM numbers"_s), second.Host().Office()->ProjectName());
}

TEST_F(OfficeNumbers, EveryOtherBaseAndLibraryCountsForItself)
{
    Dialog first(m_project);
    Dialog second(m_other);
    first.Propose();
    EXPECT_EQ(second.Propose(u"030901002"_s), u"030901002001"_s);
    second.Host().SetLibrary(embedded::LibraryRole::Bill, u"GB50500-2008"_s);
    EXPECT_EQ(second.Known(), CStringArray());
}

TEST_F(OfficeNumbers, ConfigurationThatWasNeverPublishedIsTheProjectsOwnMatter)
{
    const TestProject third;
    third.Create(On(Administrator()));
    Dialog first(m_project);
    Dialog own(third);
    first.Take();
    EXPECT_EQ(own.Take(), Base + u"001"_s);
    EXPECT_EQ(Count(u"true"_s), u"1"_s);
    ASSERT_TRUE(embedded::CurrentConfiguration(m_project.Path(u"project.ktqd"_s)).Use(u"另一个"_s));
    EXPECT_EQ(first.Known(u"030901002"_s), CStringArray());
    first.Accept(u"030901002"_s);
    EXPECT_EQ(Count(u"true"_s), u"1"_s);
}

TEST_F(OfficeNumbers, ReaderSeesThemAndClaimsNone)
{
    Dialog(m_project).Take();
    m_database.AddUser(u"reader"_s, u"reader"_s);
    const TestProject project;
    project.Create(On(u"reader"_s));
    Dialog reader(project);
    reader.Host().Office()->Memory().RememberBase(Configuration(), {1, {}});
    EXPECT_EQ(reader.Take(), Base + u"002"_s);
    EXPECT_EQ(Count(u"true"_s), u"1"_s);
}

TEST_F(OfficeNumbers, WithoutTheServerProposalsGoOnAndWithItAgainTheyAreShared)
{
    Dialog first(m_project);
    {
        const ServerDown down;
        EXPECT_EQ(first.Take(), Base + u"001"_s);
        EXPECT_EQ(first.Host().Office()->Reached(), nullptr);
    }
    EXPECT_TRUE(first.Host().Office()->Reach());
    EXPECT_EQ(first.Take(), Base + u"002"_s);
    EXPECT_EQ(Count(u"claimed_until IS NULL"_s), u"1"_s);
    Dialog second(m_other);
    {
        const ServerDown down; // and up again before the next question
    }
    EXPECT_EQ(second.Take(), Base + u"003"_s) << "a connection that broke is made anew";
    EXPECT_EQ(Count(u"claimed_until IS NULL"_s), u"2"_s);
}

// The dialog may propose the suffix of any item that has the base, or the one behind the highest.
TEST_F(OfficeNumbers, UnderARuleThatKeepsPickedSuffixesAllOfThemAreClaimed)
{
    Ask(u"UPDATE bill_items SET number = number || '005' WHERE number LIKE '030901%' AND items = '%1'; "
        "INSERT INTO bill_items SELECT items, '030901001007', name, unit, unit_code, with_annex, cal_rule, "
        "index_path FROM bill_items WHERE number = '030901001005'; "
        "UPDATE libraries SET code_length = 12, suffix_length = 3"_s.arg(Library));
    Dialog first(m_project);
    Dialog second(m_other);
    EXPECT_EQ(first.Known(), CStringArray());
    EXPECT_EQ(Ask(u"SELECT string_agg(number, ' ' ORDER BY number) FROM numbers"_s),
              u"030901001001 030901001005 030901001007"_s);
    EXPECT_EQ(second.Known(), (CStringArray{Base + u"001"_s, Base + u"005"_s, Base + u"007"_s}));
    first.Accept(Base + u"005"_s);
    EXPECT_EQ(
        Ask(u"SELECT string_agg(number, ' ' ORDER BY number) FROM numbers WHERE claimed_until IS NULL"_s),
        u"030901001005"_s);
    EXPECT_EQ(first.Known(), (CStringArray{Base + u"005"_s, Base + u"006"_s, Base + u"008"_s}));
}

TEST_F(OfficeNumbers, OfTwoProgramsThatTakeManyAtOnceAreAllDifferent)
{
    constexpr int Each = 25;
    QProcess programs[2];
    const TestProject* projects[] = {&m_project, &m_other};
    for (int program = 0; program < 2; ++program) {
        programs[program].start(QString::fromUtf8(KTQDDE_OPENER),
                                {u"take"_s, projects[program]->Folder(), Base, QString::number(Each)});
    }
    std::set<QByteArray> numbers;
    for (QProcess& program : programs) {
        test::WaitForEnd(program);
        EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
        for (const QByteArray& line : program.readAllStandardOutput().trimmed().split('\n'))
            EXPECT_TRUE(numbers.insert(line).second) << line.toStdString();
    }
    EXPECT_EQ(numbers.size(), std::size_t{2 * Each});
    EXPECT_EQ(Count(u"claimed_until IS NULL"_s), QString::number(2 * Each));
    EXPECT_EQ(Count(u"claimed_until IS NOT NULL"_s), u"0"_s);
}

TEST_F(OfficeNumbers, PublishedNumberCollidesWithTheSameOneForSomethingElse)
{
    Dialog first(m_project);
    const CString mine = first.Host().Office()->ProjectName();
    const CString number = first.Take();
    const NumberUse other{Library, number, u"别的"_s, u"m"_s};
    const PublishOutcome collides = Publish(u"别的工程"_s, 0, {other});
    ASSERT_EQ(collides.end, PublishOutcome::Collides);
    ASSERT_EQ(collides.collisions.size(), 1);
    EXPECT_EQ(collides.collisions[0].mine.name, u"别的"_s);
    EXPECT_EQ(collides.collisions[0].theirs.number, number);
    EXPECT_EQ(collides.collisions[0].project, mine);
    EXPECT_EQ(Publish(mine, 0, {other}).end, PublishOutcome::Collides) << "another one of the same name";
    const CString id = first.Host().Office()->ProjectId();
    EXPECT_EQ(Publish(u"搬走了"_s, 0, {other}, id).end, PublishOutcome::Published)
        << "a project may rename its own";
    EXPECT_EQ(Publish(u"别的工程"_s, 1, {other}).end, PublishOutcome::Published) << "the same item";
    EXPECT_EQ(Ask(u"SELECT project || name || version FROM numbers"_s), mine + u"别的2"_s);
}

TEST_F(OfficeNumbers, PublishedNumberIsProposedToNobodyAlsoIfItWasClaimedThen)
{
    Dialog first(m_project);
    const CString number = first.Propose();
    EXPECT_EQ(Publish(u"别的工程"_s, 0, {{Library, number, u"别的"_s, u"m"_s}}).end,
              PublishOutcome::Published);
    first.Host().ForgetProposedNumbers();
    EXPECT_EQ(Ask(u"SELECT project || name FROM numbers"_s), u"别的工程别的"_s);
    EXPECT_EQ(first.Propose(), Base + u"002"_s);
}

TEST_F(OfficeNumbers, NobodyWritesTheTableDirectly)
{
    m_database.AddUser(u"keeper"_s, u"keeper"_s);
    for (const QString& sql :
         {u"INSERT INTO ktqdde.numbers (configuration, library, number, name, unit, project) "
          "VALUES ('a', 'b', 'c', 'd', 'e', 'f')"_s,
          u"DELETE FROM ktqdde.numbers"_s, u"UPDATE ktqdde.numbers SET name = ''"_s,
          u"SELECT ktqdde.record_numbers('a', 'b', 'c', 1, '[]')"_s})
        EXPECT_FALSE(m_database.Psql(u"keeper"_s, sql).isDone) << sql.toStdString();
}
