#include "embedded/data/office/ProjectOffice.h"

#include "embedded/OfficeFixture.h"
#include "embedded/data/catalogue/CatalogueCopy.h"
#include "embedded/data/engine/Progress.h"
#include "embedded/data/host/LibraryChoice.h"
#include "platform/Files.h"
#include "support/Patience.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QUuid>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using test::ErrorOf;
using test::OfficeDatabase;
using test::On;
using test::ServerDown;
using test::TestProject;

namespace {

using ProjectOffice = test::OfficeFixture;
using CreationOnAnOffice = test::OfficeFixture;

CString CopyFile()
{
    return u"app\\catalogue.db"_s;
}

/// A number and a name of every bill item, in the order of a host.
CStringArray BillsOf(const EmbeddedHost& host)
{
    CStringArray bills;
    for (const auto& section : host.Contents().bills) {
        for (const SQdInfo& item : section.items)
            bills.append(section.indexPath + u' ' + item.strNumber + item.strName);
    }
    return bills;
}

} // namespace

TEST_F(ProjectOffice, NewProjectIsWhatTheOfficeIs)
{
    TestProject plain;
    plain.Create();
    const EmbeddedHost own(plain.Folder());
    EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(own.Contents().bills.size(), host.Contents().bills.size());
    EXPECT_EQ(BillsOf(host), BillsOf(own));
    ASSERT_NE(host.Office(), nullptr);
    EXPECT_NE(host.Office()->Reached(), nullptr);
    EXPECT_EQ(host.Office()->InWords(), u"办公室“buero”"_s);
    EXPECT_EQ(host.Office()->Fault(), CString());
    EXPECT_TRUE(host.Office()->ProjectName().startsWith(TestProject::Name() + u'@'));
    AddLibrary(u"NEU-1"_s);
    TestProject later;
    auto options = On(Administrator());
    options.billLibrary = u"NEU-1"_s;
    later.Create(options);
    EXPECT_EQ(EmbeddedHost(later.Folder()).LibraryInUse(embedded::LibraryRole::Bill), u"NEU-1"_s);
}

TEST_F(ProjectOffice, ProjectIsToldApartByAnIdThatGoesWithItsFolder)
{
    const CString id = EmbeddedHost(m_project.Folder()).Office()->ProjectId();
    EXPECT_EQ(QUuid(id).toString(QUuid::WithoutBraces), id);
    TestProject other;
    other.Create(On(Administrator()));
    EXPECT_EQ(EmbeddedHost(other.Folder()).Office()->ProjectName(),
              EmbeddedHost(m_project.Folder()).Office()->ProjectName());
    EXPECT_NE(EmbeddedHost(other.Folder()).Office()->ProjectId(), id);
    const QString moved = other.Folder() + u"搬走了"_s;
    ASSERT_TRUE(QDir().rename(m_project.Folder(), moved));
    {
        EmbeddedHost host(moved);
        EXPECT_EQ(host.Office()->ProjectId(), id);
    }
    ASSERT_TRUE(QDir().rename(moved, m_project.Folder()));
}

// Those of older programs have none.
TEST_F(ProjectOffice, ProjectWithoutAnIdGetsOneWhenItIsFirstAsked)
{
    m_project.Sql(u"project.ktqd"_s, u"DELETE FROM settings WHERE name = 'id'"_s);
    EmbeddedHost first(m_project.Folder());
    EmbeddedHost second(m_project.Folder());
    EXPECT_FALSE(first.Office()->ProjectId().isEmpty());
    EXPECT_EQ(second.Office()->ProjectId(), first.Office()->ProjectId());
    EXPECT_EQ(EmbeddedHost(m_project.Folder()).Office()->ProjectId(), first.Office()->ProjectId());
}

TEST_F(ProjectOffice, ProjectWithoutAnOfficeHasNone)
{
    TestProject plain;
    plain.Create();
    EmbeddedHost host(plain.Folder());
    EXPECT_EQ(host.Office(), nullptr);
    EXPECT_FALSE(plain.Temp().Exists(TestProject::Below(u"app\\office.db"_s)));
    EXPECT_EQ(embedded::Database(plain.Path(u"project.ktqd"_s)).SchemaVersion(), 1);
}

// It would take the copy for the project's own catalogue and import into it.
TEST_F(ProjectOffice, ProgramThatKnowsNoOfficeRefusesTheProject)
{
    EXPECT_EQ(embedded::Database(m_project.Path(u"project.ktqd"_s)).SchemaVersion(), 2);
}

TEST_F(ProjectOffice, CopyFollowsTheOfficeAndIsNotWrittenOtherwise)
{
    const CString copy = TestProject::Below(CopyFile());
    const QByteArray before = m_project.Temp().ReadFile(copy);
    EXPECT_FALSE(Offers(EmbeddedHost(m_project.Folder()), u"NEU-1"_s));
    EXPECT_TRUE(m_project.Temp().ReadFile(copy) == before);
    AddLibrary(u"NEU-1"_s);
    EXPECT_TRUE(Offers(EmbeddedHost(m_project.Folder()), u"NEU-1"_s));
    Ask(u"DELETE FROM libraries WHERE code = 'NEU-1'"_s);
    EmbeddedHost host(m_project.Folder());
    EXPECT_FALSE(Offers(host, u"NEU-1"_s));
    embedded::Database open(m_project.Path(CopyFile()));
    EXPECT_FALSE(host.Office()->BringUpToDate(open));
    AddLibrary(u"NEU-2"_s);
    EXPECT_TRUE(host.Office()->BringUpToDate(open));
}

TEST_F(ProjectOffice, ListOfLibrariesIsThatOfTheOffice)
{
    AddLibrary(u"NEU-1"_s);
    const CArray<embedded::LibraryEntry> entries = embedded::ListLibraries(m_project.Folder());
    EXPECT_EQ(std::count_if(entries.begin(), entries.end(),
                            [](const auto& entry) { return entry.name.code == u"NEU-1"; }),
              1);
    AddLibrary(u"NEU-2"_s);
    EXPECT_EQ(embedded::UseLibrary(m_project.Folder(), u"NEU-2"_s).name.code, u"NEU-2"_s);
    EXPECT_EQ(EmbeddedHost(m_project.Folder()).LibraryInUse(embedded::LibraryRole::Bill), u"NEU-2"_s);
}

TEST_F(ProjectOffice, LibraryInUseThatTheOfficeHasRemovedIsToldWithAWayOut)
{
    AddLibrary(u"NEU-1"_s);
    embedded::UseLibrary(m_project.Folder(), u"NEU-1"_s);
    Ask(u"DELETE FROM libraries WHERE code = 'NEU-1'"_s);
    const CString error = ErrorOf([&] { EmbeddedHost host(m_project.Folder()); });
    EXPECT_TRUE(error.contains(u"NEU-1"_s) && error.contains(u"ktqdde library use"_s)) << error.toStdString();
    embedded::UseLibrary(m_project.Folder(), u"GB50856-2013"_s);
    EXPECT_NO_THROW(EmbeddedHost(m_project.Folder()));
}

TEST_F(ProjectOffice, WithoutTheServerTheProjectGoesOnWithTheLastState)
{
    AddLibrary(u"NEU-1"_s);
    const auto yearOf = [](const QDateTime& time) { return CString::number(time.date().year()); };
    const CString before = yearOf(QDateTime::currentDateTime());
    EmbeddedHost early(m_project.Folder());
    AddLibrary(u"NEU-2"_s);
    std::optional<ServerDown> down(std::in_place);
    EmbeddedHost host(m_project.Folder());
    EXPECT_TRUE(Offers(host, u"NEU-1"_s));
    EXPECT_FALSE(Offers(host, u"NEU-2"_s));
    EXPECT_EQ(host.Office()->Reached(), nullptr);
    EXPECT_FALSE(host.Office()->Reach());
    const CString words = host.Office()->InWords();
    const CString after = yearOf(QDateTime::currentDateTime()); // another one on New Year's Eve
    EXPECT_TRUE(words.contains(u"办公室“buero”：连不上"_s) &&
                (words.contains(u"用的是 "_s + before) || words.contains(u"用的是 "_s + after)))
        << words.toStdString();
    EXPECT_FALSE(words.contains(u'\n'));
    EXPECT_FALSE(early.Office()->Reach()) << "its connection has broken";
    EXPECT_NE(early.Office()->Fault(), CString());

    down.reset();
    EXPECT_TRUE(early.Office()->Reach());
    EXPECT_EQ(early.Office()->Fault(), CString());
    EXPECT_TRUE(host.Office()->Reach());
    embedded::Database copy(m_project.Path(CopyFile()));
    EXPECT_TRUE(host.Office()->BringUpToDate(copy));
    EXPECT_TRUE(Offers(EmbeddedHost(m_project.Folder()), u"NEU-2"_s));
}

TEST_F(ProjectOffice, NeitherServerNorCopyIsAnErrorThatSaysSo)
{
    ASSERT_TRUE(platform::RealFileSystem().Remove(m_project.Path(CopyFile())));
    {
        const ServerDown down;
        for (int attempt = 0; attempt < 2; ++attempt) {
            const CString error = ErrorOf([&] { EmbeddedHost host(m_project.Folder()); });
            EXPECT_TRUE(error.contains(u"连不上"_s) && error.contains(u"还没有这个办公室的数据"_s))
                << error.toStdString();
        }
    }
    EXPECT_NO_THROW(EmbeddedHost(m_project.Folder()));
}

TEST_F(ProjectOffice, CatalogueThatIsNoCopyOfItIsNotTakenForOne)
{
    TestProject plain;
    plain.Create();
    const CString copy = TestProject::Below(CopyFile());
    m_project.Temp().WriteFile(copy, plain.Temp().ReadFile(copy));
    {
        const ServerDown down;
        EXPECT_TRUE(
            ErrorOf([&] { EmbeddedHost host(m_project.Folder()); }).contains(u"还没有这个办公室的数据"_s));
    }
    EXPECT_NO_THROW(EmbeddedHost(m_project.Folder()));
}

TEST_F(ProjectOffice, StateThatIsEarlierThanTheCopyIsTakenOver)
{
    m_project.Sql(CopyFile(), u"UPDATE office_copy SET revision = revision + 1000"_s);
    m_project.Sql(CopyFile(), u"DELETE FROM bill_items"_s);
    EXPECT_GT(BillsOf(EmbeddedHost(m_project.Folder())).size(), 10) << "an office that came out of a backup";
}

TEST_F(ProjectOffice, ServerThatStopsWhileTheCopyIsMadeLeavesTheOldState)
{
    AddLibrary(u"NEU-1"_s);
    QProcess program;
    {
        // Holds the program up behind some of the tables.
        embedded::Office other(Administrator());
        const embedded::Transaction transaction(other.Connection());
        other.Connection().Execute(u"LOCK TABLE quota_items IN ACCESS EXCLUSIVE MODE"_s);
        program.setProcessEnvironment(test::PatientEnvironment());
        program.start(QString::fromUtf8(KTQDDE_OPENER), {u"open"_s, m_project.Folder()});
        test::WaitFor(u"the program at the locked table"_s, [&] {
            return m_database.Ask(u"SELECT count(*) FROM pg_stat_activity WHERE wait_event_type = 'Lock' "
                                  "AND datname = current_database()"_s) == u"1";
        });
        test::SharedServer().Kill();
    }
    test::WaitForEnd(program);
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_FALSE(Offers(EmbeddedHost(m_project.Folder()), u"NEU-1"_s));
    test::SharedServer().StartAgain();
    EXPECT_TRUE(Offers(EmbeddedHost(m_project.Folder()), u"NEU-1"_s));
}

TEST_F(ProjectOffice, ReadersOpenProjectsAndStrangersDoNot)
{
    m_database.AddUser(u"reader"_s, u"reader"_s);
    m_database.AddUser(u"stranger"_s, {});
    TestProject project;
    project.Create(On(u"reader"_s));
    EXPECT_NO_THROW(EmbeddedHost(project.Folder()));
    TestProject other;
    EXPECT_THROW(other.Create(On(u"stranger"_s)), embedded::RightsError);
    EXPECT_FALSE(other.Temp().Exists(TestProject::Name()));
}

TEST_F(CreationOnAnOffice, ThatCannotBeReachedMakesNothing)
{
    const TestProject project;
    {
        const ServerDown down;
        EXPECT_THROW(project.Create(On(Administrator())), embedded::UnreachableError);
    }
    EXPECT_TRUE(ErrorOf([&] { project.Create(On(u"nobody-knows-it"_s)); }).contains(u"没有这个名称"_s));
    const OfficeDatabase without;
    EXPECT_TRUE(ErrorOf([&] { project.Create(On(Administrator())); }).contains(u"还没有办公室"_s));
    EXPECT_FALSE(project.Temp().Exists(TestProject::Name()));
}

TEST_F(CreationOnAnOffice, ChoosesFromWhatTheOfficeOffers)
{
    const TestProject project;
    auto options = On(Administrator());
    options.spec = u"园林"_s;
    EXPECT_TRUE(ErrorOf([&] { project.Create(options); }).contains(u"给排水"_s));
    options.spec.clear();
    options.billLibrary = u"NEU-1"_s;
    EXPECT_TRUE(ErrorOf([&] { project.Create(options); }).contains(u"NEU-1"_s));
    EXPECT_FALSE(project.Temp().Exists(TestProject::Name()));
    Ask(u"UPDATE specialties SET name = '园林' WHERE name = '给排水'; "
        "UPDATE big_categories SET specialty = '园林' WHERE specialty = '给排水'; "
        "UPDATE small_categories SET specialty = '园林' WHERE specialty = '给排水'; "
        "DELETE FROM attributes; DELETE FROM calculation_items"_s);
    AddLibrary(u"NEU-1"_s);
    options.spec = u"园林"_s;
    project.Create(options);
    EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"园林"_s);
    EXPECT_EQ(host.LibraryInUse(embedded::LibraryRole::Bill), u"NEU-1"_s);
}

TEST_F(CreationOnAnOffice, ReplacesNoDataOfSomebodysOwn)
{
    TestProject plain;
    plain.Create();
    const TestProject project;
    project.Temp().MakeFolder(TestProject::Below(u"app"_s));
    const CString file = TestProject::Below(CopyFile());
    const QByteArray own = plain.Temp().ReadFile(file);
    project.Temp().WriteFile(file, own);
    EXPECT_TRUE(ErrorOf([&] { project.Create(On(Administrator())); }).contains(u"已有自己的数据"_s));
    EXPECT_TRUE(project.Temp().ReadFile(file) == own);
    EXPECT_FALSE(embedded::IsProject(project.Folder()));
    // What an interrupted creation leaves.
    project.Temp().WriteFile(file, m_project.Temp().ReadFile(file));
    EXPECT_NO_THROW(project.Create(On(Administrator())));
}

TEST_F(CreationOnAnOffice, CancelledAnywhereLeavesNothing)
{
    const TestProject project;
    for (int limit = 0;; ++limit) {
        int calls = 0;
        try {
            embedded::CreateProject(project.Folder(), On(Administrator()),
                                    [&](int) { return ++calls <= limit; });
            EXPECT_GE(calls, 4);
            break;
        } catch (const embedded::Cancelled&) {
            EXPECT_FALSE(project.Temp().Exists(TestProject::Name())) << limit;
        }
    }
    EXPECT_NO_THROW(EmbeddedHost(project.Folder()));
}
