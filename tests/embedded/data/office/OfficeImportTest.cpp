#include "embedded/data/exchange/TableImport.h"

#include "embedded/OfficeFixture.h"

#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::ImportOptions;
using embedded::ImportReport;
using embedded::TableKind;
using test::ErrorOf;
using test::On;
using test::ServerDown;
using test::TestProject;

namespace {

class OfficeImport : public test::OfficeFixture
{
protected:
    static ImportReport Import(const TestProject& project, TableKind kind, const CString& text,
                               const ImportOptions& options = {})
    {
        project.Temp().WriteFile(u"in.csv"_s, text.toUtf8());
        return embedded::Import(project.Folder(), kind, project.Temp().Native(u"in.csv"_s), options);
    }
    /// The table of libraries without one.
    CString WithoutLibrary(const CString& code) const
    {
        return embedded::ExportText(m_project.Folder(), TableKind::Libraries)
            .remove(QRegularExpression(u"[^\\n]*%1[^\\n]*\\n"_s.arg(code)));
    }
    static bool HasBill(const TestProject& project, const CString& number)
    {
        return EmbeddedHost(project.Folder()).Roles().libraries->IsInQdk(number);
    }
};

const CString Bill = u"number,name,unit,section,section_title\n099901001,自有,m,0999,自有章\n"_s;

} // namespace

TEST_F(OfficeImport, IsForAllProjectsOfTheOffice)
{
    const TestProject other;
    other.Create(On(Administrator()));
    EXPECT_TRUE(Import(m_project, TableKind::Bill, Bill).stored);
    {
        const ServerDown down;
        EXPECT_TRUE(HasBill(m_project, u"099901001"_s)) << "its copy has followed at once";
        EXPECT_FALSE(HasBill(other, u"099901001"_s));
    }
    EXPECT_TRUE(HasBill(other, u"099901001"_s));
}

TEST_F(OfficeImport, TrialChangesNeitherOfficeNorCopy)
{
    const ImportReport report = Import(m_project, TableKind::Bill, Bill, {.isTrial = true});
    EXPECT_EQ(report.added, 1);
    EXPECT_FALSE(report.stored);
    EXPECT_FALSE(HasBill(m_project, u"099901001"_s));
    EXPECT_EQ(Ask(u"SELECT count(*) FROM bill_items WHERE number = '099901001'"_s), u"0"_s);
}

TEST_F(OfficeImport, NeedsAKeeperAndSaysSo)
{
    for (const CString& right : {u"reader"_s, u"editor"_s}) {
        m_database.AddUser(right, right);
        const TestProject project;
        project.Create(On(right));
        for (const bool isTrial : {false, true}) {
            try {
                Import(project, TableKind::Bill, Bill, {.isTrial = isTrial});
                ADD_FAILURE() << right.toStdString();
            } catch (const embedded::RightsError& error) {
                EXPECT_TRUE(error.Message().contains(u"管理员"_s)) << error.what();
            }
        }
        EXPECT_TRUE(embedded::ExportText(project.Folder(), TableKind::Bill).contains(u"031001001"_s));
    }
    m_database.AddUser(u"keeper"_s, u"keeper"_s);
    const TestProject project;
    project.Create(On(u"keeper"_s));
    using enum TableKind;
    for (const TableKind kind : {Catalogue, Attributes, Quota, Guide, Calc, Libraries}) {
        const CString table = embedded::ExportText(project.Folder(), kind);
        const ImportReport report =
            Import(project, kind, table.left(table.lastIndexOf(u"\r\n"_s, -3) + 2), {.replace = true});
        EXPECT_TRUE(report.stored) << static_cast<int>(kind);
        EXPECT_EQ(report.removed, 1) << static_cast<int>(kind);
    }
    EXPECT_TRUE(Import(project, Bill, ::Bill).stored);
    EXPECT_EQ(Ask(u"SELECT DISTINCT who FROM changes WHERE table_name = 'bill_items'"_s),
              m_database.User(u"keeper"_s));
}

TEST_F(OfficeImport, WithoutTheServerIsRefusedWithTheReasonWhileExportsGoOn)
{
    const ServerDown down;
    const CString error = ErrorOf([&] { Import(m_project, TableKind::Bill, Bill); });
    EXPECT_TRUE(error.contains(u"连不上"_s) && error.contains(u"不能导入"_s)) << error.toStdString();
    EXPECT_TRUE(embedded::ExportText(m_project.Folder(), TableKind::Bill).contains(u"031001001"_s));
}

TEST_F(OfficeImport, ExportIsOfTheOfficesPresentState)
{
    Ask(u"UPDATE bill_items SET name = '改名' WHERE number = '031001001'"_s);
    EXPECT_TRUE(embedded::ExportText(m_project.Folder(), TableKind::Bill).contains(u"031001001,改名"_s));
}

// As a local import keeps what its own project uses.
TEST_F(OfficeImport, LibraryThatAnotherProjectUsesStaysUntilAKeeperForgetsThatProject)
{
    AddLibrary(u"NEU-1"_s);
    const TestProject other;
    auto options = On(Administrator());
    options.billLibrary = u"NEU-1"_s;
    other.Create(options);
    EmbeddedHost(other.Folder()).Roles();
    EmbeddedHost(m_project.Folder()).Roles();
    const CString without = WithoutLibrary(u"NEU-1"_s);
    EXPECT_FALSE(Import(other, TableKind::Libraries, without, {.replace = true}).stored);
    for (const bool isTrial : {true, false}) {
        const ImportReport refused =
            Import(m_project, TableKind::Libraries, without, {.replace = true, .isTrial = isTrial});
        EXPECT_FALSE(refused.stored);
        ASSERT_EQ(refused.refused.size(), 1);
        const CString reason = refused.refused[0].reason;
        EXPECT_TRUE(reason.contains(other.Folder()) && reason.contains(u"NEU-1"_s)) << reason.toStdString();
    }
    m_database.AddUser(u"keeper"_s, u"keeper"_s);
    EXPECT_EQ(m_database
                  .Psql(u"keeper"_s, u"SELECT count(*) FROM ktqdde.projects WHERE "
                                     "libraries ->> 'qd' = 'NEU-1' AND ktqdde.forget_project(project)"_s)
                  .rows,
              u"1\n"_s);
    EXPECT_TRUE(Import(m_project, TableKind::Libraries, without, {.replace = true}).stored);
    EXPECT_TRUE(ErrorOf([&] { EmbeddedHost host(other.Folder()); }).contains(u"NEU-1"_s));
}

TEST_F(OfficeImport, LibraryThatAnotherProjectUsesNoMoreMayGo)
{
    AddLibrary(u"NEU-1"_s);
    const TestProject other;
    auto options = On(Administrator());
    options.billLibrary = u"NEU-1"_s;
    other.Create(options);
    {
        EmbeddedHost host(other.Folder());
        host.SetLibrary(embedded::LibraryRole::Bill, u"GB50856-2013"_s);
    }
    EXPECT_EQ(Ask(u"SELECT count(*) FROM projects WHERE libraries ->> 'qd' = 'NEU-1'"_s), u"0"_s);
    const CString without = WithoutLibrary(u"NEU-1"_s);
    EXPECT_TRUE(Import(m_project, TableKind::Libraries, without, {.replace = true}).stored);
}

TEST_F(OfficeImport, SpecialtyInWhichAnotherProjectWorksStays)
{
    const TestProject other;
    auto options = On(Administrator());
    options.spec = u"电气"_s;
    other.Create(options);
    EmbeddedHost(other.Folder()).Roles();
    const CString all = embedded::ExportText(m_project.Folder(), TableKind::Catalogue);
    const CString without = CString(all).remove(QRegularExpression(u"[^\\n]*电气[^\\n]*\\n"_s));
    ASSERT_NE(without, all);
    const ImportReport refused = Import(m_project, TableKind::Catalogue, without, {.replace = true});
    EXPECT_FALSE(refused.stored);
    ASSERT_FALSE(refused.refused.isEmpty());
    EXPECT_TRUE(refused.refused.last().reason.contains(other.Folder()))
        << refused.refused.last().reason.toStdString();
}

// A keeper at the server's own client knows nothing of the programs' agreement.
TEST_F(OfficeImport, NobodyWritesBetweenItsReadingAndItsEnd)
{
    m_project.Temp().WriteFile(u"in.csv"_s, ::Bill.toUtf8());
    m_database.AddUser(u"keeper"_s, u"keeper"_s);
    const QString change = u"SET LOCAL lock_timeout = '100ms'; "
                           "UPDATE ktqdde.bill_items SET name = '改名' WHERE number = '031001001'"_s;
    int refusals = 0;
    const ImportReport report = embedded::Import(
        m_project.Folder(), TableKind::Bill, m_project.Temp().Native(u"in.csv"_s), {}, [&](int) {
            refusals += m_database.Psql(u"keeper"_s, change).isDone ? 0 : 1;
            return true;
        });
    EXPECT_TRUE(report.stored);
    EXPECT_GT(refusals, 0);
    EXPECT_EQ(Ask(u"SELECT count(*) FROM bill_items WHERE name = '改名'"_s), u"0"_s);
    EXPECT_TRUE(m_database.Psql(u"keeper"_s, change).isDone);
}

TEST_F(OfficeImport, RecordsOnlyTheRowsThatHaveChanged)
{
    const QString before = Ask(u"SELECT count(*) FROM changes"_s);
    EXPECT_TRUE(Import(m_project, TableKind::Bill,
                       u"number,name,unit,section\n"
                       "031001001,改名,m,0310\\031001\n"_s)
                    .stored);
    EXPECT_EQ(Ask(u"SELECT count(*) - %1 FROM changes"_s.arg(before)), u"1"_s);
    EXPECT_EQ(Ask(u"SELECT operation || (new_row ->> 'name') FROM changes ORDER BY id DESC LIMIT 1"_s),
              u"UPDATE改名"_s);
}

TEST_F(OfficeImport, ThatWaitsForAnotherOneTooLongIsRefused)
{
    embedded::Office other(Administrator());
    {
        const embedded::Transaction transaction(other.Connection());
        EXPECT_TRUE(ErrorOf([&] { Import(m_project, TableKind::Bill, Bill); }).contains(u"被其他程序占用"_s));
    }
    EXPECT_TRUE(Import(m_project, TableKind::Bill, Bill).stored);
}
