#include "embedded/data/history/KeepingFiles.h"

#include "embedded/TestProject.h"
#include "embedded/data/project/ProjectFolder.h"
#include "embedded/data/sqlite/Error.h"
#include "support/FaultyFileSystem.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::History;
using embedded::HistoryEntry;
using embedded::KeepingFiles;
using test::TestProject;

namespace {

const CString RuleFile = u"app\\规则.xml"_s;

class KeepingFilesTest : public ::testing::Test
{
protected:
    KeepingFilesTest() { m_project.Create(); }

    History Open() const { return History(embedded::ProjectFolder(m_project.Folder())); }
    CString Path() const { return m_project.Path(RuleFile); }
    KeepingFiles Keeping(bool goesOn = false)
    {
        return KeepingFiles(
            Open(), [](const CString& path) { return path.endsWith(u".xml"_s); },
            [this, goesOn](const embedded::Error&) {
                ++m_asked;
                return goesOn;
            });
    }
    QList<QByteArray> Kept() const
    {
        QList<QByteArray> contents;
        for (const HistoryEntry& entry : Open().List(Path()))
            contents.append(Open().Read(entry));
        return contents;
    }
    QByteArray Content() const { return m_project.Temp().ReadFile(TestProject::Below(RuleFile)); }

    TestProject m_project;
    int m_asked = 0;
};

} // namespace

TEST_F(KeepingFilesTest, FormerContentIsKeptBeforeEachWrite)
{
    const KeepingFiles files = Keeping();
    for (const QByteArray bytes : {"one", "two", "three"})
        platform::Files().WriteInPlace(Path(), bytes);
    EXPECT_EQ(Content(), "three");
    EXPECT_EQ(Kept(), (QList<QByteArray>{"two", "one"}));
    EXPECT_EQ(m_asked, 0);
}

TEST_F(KeepingFilesTest, FileThatAnotherProgramWroteIsKeptBeforeItIsWrittenOver)
{
    const KeepingFiles files = Keeping();
    platform::Files().WriteInPlace(Path(), "mine");
    m_project.Temp().WriteFile(TestProject::Below(RuleFile), "somebody else's");
    platform::Files().WriteInPlace(Path(), "mine again");
    EXPECT_EQ(Kept(), QList<QByteArray>{"somebody else's"});
}

TEST_F(KeepingFilesTest, RemovedFileIsKept)
{
    const KeepingFiles files = Keeping();
    platform::Files().WriteInPlace(Path(), "rules");
    EXPECT_TRUE(platform::Files().Remove(Path()));
    EXPECT_EQ(Kept(), QList<QByteArray>{"rules"});
}

TEST_F(KeepingFilesTest, OtherFilesPassWithoutACopy)
{
    const KeepingFiles files = Keeping();
    const CString other = m_project.Path(u"app\\notes.txt"_s);
    platform::Files().WriteInPlace(other, "one");
    platform::Files().WriteInPlace(other, "two");
    EXPECT_TRUE(Open().ListAll().isEmpty());
}

TEST_F(KeepingFilesTest, WithItsEndCopiesEnd)
{
    {
        const KeepingFiles files = Keeping();
        platform::Files().WriteInPlace(Path(), "one");
    }
    platform::Files().WriteInPlace(Path(), "two");
    EXPECT_TRUE(Kept().isEmpty());
}

TEST_F(KeepingFilesTest, BytesPutBackAfterABrokenWriteLeaveNoCopyOfTheTornFile)
{
    m_project.Temp().WriteFile(TestProject::Below(RuleFile), "former");
    test::FaultyFileSystem disk;
    const KeepingFiles files = Keeping();
    platform::Files().WriteInPlace(Path(), "second");
    ASSERT_EQ(Kept(), QList<QByteArray>{"former"});
    ASSERT_TRUE(Open().Keep(Path()).has_value());
    disk.FailAfter(3);
    EXPECT_THROW(platform::Files().WriteInPlace(Path(), "third!"), platform::FileError);
    disk.Heal();
    platform::Files().PutBack(Path(), "second");
    EXPECT_EQ(Content(), "second");
    EXPECT_EQ(Kept(), (QList<QByteArray>{"second", "former"}));
}

TEST_F(KeepingFilesTest, WithoutACopyNothingIsWrittenUnlessThePersonGoesOn)
{
    m_project.Temp().WriteFile(TestProject::Below(RuleFile), "former");
    test::FaultyFileSystem disk;
    disk.Inject(test::Fault::RefuseOpen);
    disk.OnlyAt(0);
    const KeepingFiles files = Keeping(false);
    EXPECT_THROW(platform::Files().WriteInPlace(Path(), "new"), platform::FileError);
    EXPECT_EQ(m_asked, 1);
    EXPECT_EQ(Content(), "former");
}

TEST_F(KeepingFilesTest, WhoGoesOnWithoutCopiesIsAskedOnce)
{
    m_project.Temp().WriteFile(TestProject::Below(RuleFile), "former");
    test::FaultyFileSystem disk;
    disk.Inject(test::Fault::RefuseCreateFolder);
    const KeepingFiles files = Keeping(true);
    platform::Files().WriteInPlace(Path(), "new");
    platform::Files().WriteInPlace(Path(), "newer");
    EXPECT_EQ(Content(), "newer");
    EXPECT_EQ(m_asked, 1);
}
