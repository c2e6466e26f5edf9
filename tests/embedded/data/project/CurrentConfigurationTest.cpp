#include "embedded/data/project/CurrentConfiguration.h"

#include "embedded/data/engine/Error.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::CurrentConfiguration;

namespace {

class CurrentConfigurationTest : public ::testing::Test
{
protected:
    void WriteIni(const QByteArray& bytes) const { m_folder.WriteFile(u"SysRegedit.ini"_s, bytes); }

    test::TempFolder m_folder;
    CurrentConfiguration m_current{m_folder.Path(u"project.ktqd"_s)};
};

} // namespace

TEST_F(CurrentConfigurationTest, ProjectThatHasChosenNoneHasTheDefault)
{
    EXPECT_EQ(m_current.Name(), CurrentConfiguration::DefaultName());
    WriteIni("[QdDeConfigInfo]\nConfigName=\n");
    EXPECT_EQ(m_current.Name(), CurrentConfiguration::DefaultName());
}

TEST_F(CurrentConfigurationTest, ChosenNameIsTheOneThatIsReadNext)
{
    WriteIni("[Other]\nKey=1\n");
    ASSERT_TRUE(m_current.Use(u"夏季"_s));
    EXPECT_EQ(m_current.Name(), u"夏季"_s);
    EXPECT_EQ(m_folder.ReadFile(u"SysRegedit.ini"_s),
              QByteArray("[Other]\nKey=1\n[QdDeConfigInfo]\nConfigName=夏季\n"));
}

TEST_F(CurrentConfigurationTest, NamesAreCutAtTheLongestThatTheEntryGivesBack)
{
    const CString longest(CurrentConfiguration::LongestName, u'a');
    ASSERT_TRUE(m_current.Use(longest));
    EXPECT_EQ(m_current.Name(), longest);
    ASSERT_TRUE(m_current.Use(longest + u'b'));
    EXPECT_EQ(m_current.Name(), longest);
}

TEST_F(CurrentConfigurationTest, NameThatLeavesTheRuleFolderIsRefused)
{
    EXPECT_NO_THROW(m_current.RequirePossible());
    for (const QByteArray name : {"..\\..\\victim", "../victim", "c:victim", "a*"}) {
        WriteIni("[QdDeConfigInfo]\nConfigName=" + name + "\n");
        EXPECT_THROW(m_current.RequirePossible(), embedded::Error) << name.constData();
    }
    WriteIni("[QdDeConfigInfo]\nConfigName=夏季\n");
    EXPECT_NO_THROW(m_current.RequirePossible());
}

TEST_F(CurrentConfigurationTest, NamesThatEndInBlanksLockNothing)
{
    for (const CString& name : {u"a "_s, u" "_s, u" a"_s, u"a\u3000"_s, u"a."_s}) {
        ASSERT_TRUE(m_current.Use(name));
        EXPECT_EQ(m_current.Name(), name);
        EXPECT_NO_THROW(m_current.RequirePossible()) << name.toStdString();
        EXPECT_TRUE(m_current.CutNote().isEmpty());
    }
    EXPECT_FALSE(CurrentConfiguration::IsPossibleName(u"a "_s)) << "no new one is called so by hand";
    EXPECT_FALSE(CurrentConfiguration::CanNameFile({}));
}

TEST_F(CurrentConfigurationTest, NameThatIsNotGivenBackWholeIsTold)
{
    const CString longest(CurrentConfiguration::LongestName, u'a');
    ASSERT_TRUE(m_current.Use(longest));
    EXPECT_TRUE(m_current.CutNote().isEmpty());
    ASSERT_TRUE(m_current.Use(longest + u'b'));
    EXPECT_TRUE(m_current.CutNote().contains(u"“%1b”"_s.arg(longest))) << m_current.CutNote().toStdString();
}
