#include "embedded/windows/CloudFolder.h"

#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::CloudFolder;

namespace {

class CloudFolderTest : public ::testing::Test
{
protected:
    CloudFolder Folder(const QString& preset = {}) const
    {
        return {m_folder.Path(u"project.ktqd"_s), u"模板"_s, preset};
    }

    test::TempFolder m_folder;
};

TEST_F(CloudFolderTest, DefaultStandsInTheProjectAndIsMade)
{
    const CloudFolder folder = Folder();
    EXPECT_EQ(folder.Path(), m_folder.Path(u"云盘\\模板"_s));
    EXPECT_TRUE(m_folder.Exists(u"云盘\\模板"_s));
    EXPECT_EQ(folder.Fault(), CString());
}

TEST_F(CloudFolderTest, DefaultThatCannotBeMadeIsAFault)
{
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseCreateFolder);
    EXPECT_EQ(Folder().Fault(), u"云盘文件夹不存在，请选择文件夹。"_s);
}

TEST_F(CloudFolderTest, ChosenFolderIsKeptInTheProjectBesideWhatStandsThere)
{
    m_folder.MakeFolder(u"共享 一"_s);
    m_folder.WriteFile(u"SysRegedit.ini"_s, "[QdDeConfigInfo]\nConfigName=甲\n");
    CloudFolder folder = Folder();
    EXPECT_FALSE(folder.WasChosen());
    EXPECT_EQ(folder.Choose(m_folder.Native(u"共享 一"_s)), CString());
    EXPECT_TRUE(folder.WasChosen());
    EXPECT_EQ(folder.Path(), m_folder.Path(u"共享 一"_s));
    EXPECT_EQ(Folder().Path(), m_folder.Path(u"共享 一"_s));
    const QByteArray ini = m_folder.ReadFile(u"SysRegedit.ini"_s);
    EXPECT_TRUE(ini.startsWith("[QdDeConfigInfo]\nConfigName=甲\n"));
    EXPECT_TRUE(ini.contains("[CloudDisk]"));
}

TEST_F(CloudFolderTest, PresetGoesBeforeTheKeptFolder)
{
    m_folder.MakeFolder(u"共享"_s);
    Folder().Choose(m_folder.Native(u"共享"_s));
    EXPECT_EQ(Folder(m_folder.Native(u"别处"_s)).Path(), m_folder.Path(u"别处"_s));
    EXPECT_FALSE(m_folder.Exists(u"别处"_s));
}

TEST_F(CloudFolderTest, ChosenFolderCountsEvenIfItCannotBeKept)
{
    m_folder.MakeFolder(u"共享"_s);
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseOpen);
    CloudFolder folder = Folder();
    EXPECT_TRUE(folder.Choose(m_folder.Native(u"共享"_s)).contains(u"不能写入"_s));
    EXPECT_EQ(folder.Path(), m_folder.Path(u"共享"_s));
}

TEST_F(CloudFolderTest, MissingFolderAndFileAreFaults)
{
    EXPECT_EQ(Folder(m_folder.Native(u"没有"_s)).Fault(), u"云盘文件夹不存在，请选择文件夹。"_s);
    m_folder.WriteFile(u"文件"_s, {});
    EXPECT_EQ(Folder(m_folder.Native(u"文件"_s)).Fault(), u"云盘的位置不是文件夹，请选择文件夹。"_s);
}

TEST_F(CloudFolderTest, FolderThatMayNotBeReadIsAFault)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "an administrator may read everything";
    m_folder.MakeFolder(u"锁"_s);
    QFile::setPermissions(m_folder.Native(u"锁"_s), {});
    EXPECT_EQ(Folder(m_folder.Native(u"锁"_s)).Fault(), u"没有读取云盘文件夹的权限，请选择其他文件夹。"_s);
    m_folder.SetReadOnly(u"锁"_s, false);
}

TEST_F(CloudFolderTest, FolderWhosePathHoldsABackslashIsRefused)
{
    if (QDir::separator() == u'\\') GTEST_SKIP() << "no name holds a backslash here";
    CloudFolder folder = Folder();
    EXPECT_TRUE(folder.Choose(m_folder.Native({}) + u"/a\\b"_s).contains(u"反斜杠"_s));
    EXPECT_FALSE(folder.WasChosen());
    EXPECT_EQ(folder.Path(), m_folder.Path(u"云盘\\模板"_s));
}

} // namespace
