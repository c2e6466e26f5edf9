#include "embedded/OfficeFixture.h"
#include "embedded/data/exchange/TableImport.h"
#include "embedded/data/office/ProjectOffice.h"
#include "support/Patience.h"

#include <optional>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using test::ErrorOf;
using test::TestProject;

namespace {

/// A project whose copy of the office's catalogue is older than the office.
class CopyBehind : public test::OfficeFixture
{
protected:
    CopyBehind() { AddLibrary(u"NEU-1"_s); }

    static CString CopyFile() { return u"app\\catalogue.db"_s; }
    /// The project goes on with the former state, and says so with a reason.
    void ExpectFormerState(const CString& reason) const
    {
        EmbeddedHost host(m_project.Folder());
        EXPECT_FALSE(Offers(host, u"NEU-1"_s));
        EXPECT_TRUE(host.Office()->IsReached());
        EXPECT_TRUE(host.Office()->IsBehind());
        const CString words = host.Office()->InWords();
        EXPECT_TRUE(words.contains(u"副本跟不上"_s) && words.contains(reason) && words.contains(u"用的是 "_s))
            << words.toStdString();
    }
    void ExpectPresentState() const
    {
        EmbeddedHost host(m_project.Folder());
        EXPECT_TRUE(Offers(host, u"NEU-1"_s));
        EXPECT_FALSE(host.Office()->IsBehind());
        EXPECT_EQ(host.Office()->InWords(), u"办公室“buero”"_s);
    }
};

/// Makes files and folders of a project read-only while it lives.
class ReadOnly
{
public:
    ReadOnly(const TestProject& project, CStringArray names) : m_project(project), m_names(std::move(names))
    {
        Set(true);
    }
    ~ReadOnly() { Set(false); }
    ReadOnly(const ReadOnly&) = delete;
    ReadOnly& operator=(const ReadOnly&) = delete;

private:
    void Set(bool isReadOnly) const
    {
        for (const CString& name : m_names)
            m_project.Temp().SetReadOnly(TestProject::Below(name), isReadOnly);
    }

    const TestProject& m_project;
    CStringArray m_names;
};

} // namespace

TEST_F(CopyBehind, FileThatIsReadOnlyIsUsedAsItIs)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    {
        const ReadOnly readOnly(m_project, {CopyFile()});
        ExpectFormerState(u"只读"_s);
        EXPECT_FALSE(
            embedded::ExportText(m_project.Folder(), embedded::TableKind::Libraries).contains(u"NEU-1"_s));
    }
    ExpectPresentState();
}

TEST_F(CopyBehind, FolderThatIsReadOnlyIsReadAllTheSame)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    {
        const ReadOnly readOnly(m_project, {CopyFile(), u"app\\office.db"_s, u"project.ktqd"_s, u"app"_s});
        ExpectFormerState(u"只读"_s);
        EmbeddedHost host(m_project.Folder());
        EXPECT_NO_THROW(host.Office()->NoteBase(u"甲"_s, {1, "digest"_ba}));
        EXPECT_EQ(host.Office()->Memory().Base(u"甲"_s).number, 0);
    }
    ExpectPresentState();
}

TEST_F(CopyBehind, FolderThatIsReadOnlyIsReadAlsoAsAnOlderProgramHasLeftIt)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    const CString memory = u"app\\office.db"_s;
    m_project.Sql(memory, u"ALTER TABLE bases DROP COLUMN digest"_s);
    m_project.Sql(memory, u"ALTER TABLE waiting DROP COLUMN base_digest"_s);
    m_project.Sql(memory, u"ALTER TABLE waiting DROP COLUMN project_id"_s);
    m_project.Sql(memory, u"DROP TABLE sent"_s);
    m_project.Sql(memory, u"INSERT INTO bases VALUES ('甲', 3)"_s);
    m_project.Sql(memory, u"PRAGMA user_version = 1"_s);
    const ReadOnly readOnly(m_project, {CopyFile(), memory, u"project.ktqd"_s, u"app"_s});
    ExpectFormerState(u"只读"_s);
    EmbeddedHost host(m_project.Folder());
    EXPECT_NO_THROW(host.Office()->NoteBase(u"甲"_s, {4, "digest"_ba}));
    EXPECT_EQ(host.Office()->Memory().Base(u"甲"_s), embedded::VersionMark(3, {}));
}

// Somebody else's inquiry may come to its end long after it has found out what it tells.
TEST_F(CopyBehind, AnswerThatALaterOneHasOvertakenIsPassedOver)
{
    EmbeddedHost host(m_project.Folder());
    embedded::ProjectOffice& office = *host.Office();
    const int before = office.Hearings();
    EXPECT_TRUE(office.Reach());
    office.Believe(before, u"连不上"_s);
    EXPECT_TRUE(office.IsReached());
    office.Believe(office.Hearings(), u"连不上"_s);
    EXPECT_FALSE(office.IsReached());
    const int missed = office.Hearings();
    EXPECT_TRUE(office.Reach());
    AddLibrary(u"NEU-9"_s);
    office.Believe(missed, embedded::Office(Administrator()).First().revision);
    EXPECT_FALSE(office.HasNews());
}

TEST_F(CopyBehind, OpenProjectIsToldOfNewsAndHasThemWhenItIsOpenedAgain)
{
    const auto revision = [this] { return embedded::Office(Administrator()).First().revision; };
    EmbeddedHost host(m_project.Folder());
    embedded::ProjectOffice& office = *host.Office();
    int changes = 0;
    office.OnChange([&] { ++changes; });
    office.Believe(office.Hearings(), revision());
    EXPECT_FALSE(office.HasNews());
    EXPECT_EQ(changes, 0);
    AddLibrary(u"NEU-2"_s);
    office.Believe(office.Hearings(), revision());
    EXPECT_TRUE(office.HasNews());
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(office.IsBehind());
    EXPECT_FALSE(Offers(host, u"NEU-2"_s));
    const CString words = office.InWords();
    EXPECT_TRUE(words.contains(u"重新打开工程"_s) && words.contains(u"用的是 "_s)) << words.toStdString();
    {
        EmbeddedHost again(m_project.Folder());
        EXPECT_TRUE(Offers(again, u"NEU-2"_s));
        EXPECT_FALSE(again.Office()->HasNews());
    }
    EXPECT_TRUE(office.HasNews()) << "this one goes on with what it has read";
    EXPECT_TRUE(office.InWords().contains(u"用的是以前的数据"_s)) << office.InWords().toStdString();
    AddLibrary(u"NEU-3"_s);
    EmbeddedHost early(m_project.Folder());
    EXPECT_TRUE(early.Office()->Reach());
    AddLibrary(u"NEU-4"_s);
    EXPECT_FALSE(early.Office()->HasNews()) << "nobody has asked";
    early.Office()->Lose(embedded::UnreachableError(u"weg"_s));
    EXPECT_TRUE(early.Office()->Reach());
    EXPECT_TRUE(early.Office()->HasNews()) << "whoever asks finds it out";
}

TEST_F(CopyBehind, FileThatAnotherProgramWritesIsUsedAsItIs)
{
    {
        embedded::Database other(m_project.Path(CopyFile()));
        const embedded::Transaction transaction(other);
        ExpectFormerState(u"被其他程序占用"_s);
    }
    ExpectPresentState();
}

TEST_F(CopyBehind, CatalogueThatIsNoCopyAndCannotBeWrittenIsAnError)
{
    m_project.Sql(CopyFile(), u"DROP TABLE office_copy"_s);
    embedded::Database other(m_project.Path(CopyFile()));
    const embedded::Transaction transaction(other);
    EXPECT_TRUE(ErrorOf([&] { EmbeddedHost host(m_project.Folder()); }).contains(u"被其他程序占用"_s));
}

TEST_F(CopyBehind, NoteOfWhatWasFoundOutIsNotWaitedForWhenAnotherProgramWrites)
{
    EmbeddedHost host(m_project.Folder());
    {
        embedded::Database other(m_project.Path(u"app\\office.db"_s));
        const embedded::Transaction transaction(other);
        EXPECT_NO_THROW(host.Office()->NoteBase(u"甲"_s, {3, "digest"_ba}));
    }
    EXPECT_EQ(host.Office()->Memory().Base(u"甲"_s).number, 0);
    host.Office()->NoteBase(u"甲"_s, {3, "digest"_ba});
    EXPECT_EQ(host.Office()->Memory().Base(u"甲"_s).number, 3);
}

TEST_F(CopyBehind, OpenProjectHoldsNoConnectionUntilItNeedsOne)
{
    ExpectPresentState();
    EmbeddedHost host(m_project.Folder());
    const auto connections = [&] {
        return Ask(u"SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
                   "application_name = 'ktqdde'"_s);
    };
    // One that has ended is still told for a moment.
    test::WaitFor(u"the end of the question"_s, [&] { return connections() == u"0"; });
    EXPECT_TRUE(host.Office()->IsReached());
    EXPECT_NE(host.Office()->Reached(), nullptr);
    EXPECT_EQ(connections(), u"1");
}
