#include "editor/project/RecentProjects.h"

#include "embedded/NewProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "support/TempFolder.h"

#include <QtCore/QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using editor::RecentProjects;

namespace {

class RecentProjectsTest : public ::testing::Test
{
protected:
    QString Make(const CString& name) const
    {
        test::PutNewProject(m_folder.Native(name), {});
        return m_folder.Native(name);
    }
    QStringList Folders() const
    {
        QStringList folders;
        for (const RecentProjects::Entry& entry : m_recent.Entries())
            folders.append(entry.folder);
        return folders;
    }

    test::TempFolder m_folder;
    RecentProjects m_recent{m_folder.Native(u"settings.ini"_s)};
};

} // namespace

TEST_F(RecentProjectsTest, NewestComesFirstAndStandsOnce)
{
    for (const CString& name : {u"a"_s, u"b"_s, u"a"_s})
        m_recent.Add(m_folder.Native(name));
    EXPECT_EQ(Folders(), (QStringList{m_folder.Native(u"a"_s), m_folder.Native(u"b"_s)}));
}

TEST_F(RecentProjectsTest, AnotherEditorSeesThem)
{
    m_recent.Add(m_folder.Native(u"一个 工程, 和\\逗号"_s));
    const RecentProjects other(m_folder.Native(u"settings.ini"_s));
    ASSERT_EQ(other.Entries().size(), 1);
    EXPECT_EQ(other.Entries()[0].folder, Folders()[0]);
}

TEST_F(RecentProjectsTest, OldestBeyondTheLimitIsForgotten)
{
    for (int i = 0; i <= RecentProjects::Longest; ++i)
        m_recent.Add(m_folder.Native(CString::number(i)));
    EXPECT_EQ(Folders().size(), RecentProjects::Longest);
    EXPECT_EQ(Folders().last(), m_folder.Native(u"1"_s));
}

TEST_F(RecentProjectsTest, VanishedOneIsMarkedAndNeverTheLast)
{
    const QString kept = Make(u"kept"_s);
    const QString gone = Make(u"gone"_s);
    m_recent.Add(kept);
    m_recent.Add(gone);
    ASSERT_EQ(m_recent.Last(), gone);
    ASSERT_TRUE(QDir(gone).removeRecursively());
    EXPECT_FALSE(m_recent.Entries()[0].exists);
    EXPECT_TRUE(m_recent.Entries()[1].exists);
    EXPECT_EQ(m_recent.Last(), kept);
    m_recent.RemoveVanished();
    EXPECT_EQ(Folders(), QStringList{kept});
}

TEST_F(RecentProjectsTest, WithoutAnyThereIsNoLast)
{
    EXPECT_EQ(m_recent.Last(), QString());
}
