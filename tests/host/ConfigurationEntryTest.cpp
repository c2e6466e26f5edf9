#include "host/ConfigurationEntry.h"

#include "support/PrintText.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using host::ConfigurationEntry;

namespace {

/// The entry of a project file in a folder of its own.
class ConfigurationEntryTest : public testing::Test
{
protected:
    ConfigurationEntryTest() : m_entry(m_folder.Path(u"工程.prj"_s)) {}

    test::TempFolder m_folder;
    ConfigurationEntry m_entry;
};

} // namespace

TEST_F(ConfigurationEntryTest, NamesTheDefaultWhereNothingIsStored)
{
    EXPECT_EQ(m_entry.Name(), u"DefaultConfig"_s);
    EXPECT_EQ(m_entry.WholeName(), CString());
    m_folder.WriteFile(u"SysRegedit.ini"_s, "[QdDeConfigInfo]\r\nConfigName=\r\n");
    EXPECT_EQ(m_entry.Name(), u"DefaultConfig"_s);
}

TEST_F(ConfigurationEntryTest, StandsInTheIniBesideTheProjectFile)
{
    EXPECT_TRUE(m_entry.Write(u"甲"_s));
    EXPECT_EQ(m_folder.ReadFile(u"SysRegedit.ini"_s).replace('\r', ""),
              "[QdDeConfigInfo]\nConfigName=\xE7\x94\xB2\n");
    EXPECT_EQ(m_entry.Name(), u"甲"_s);
    EXPECT_EQ(m_entry.NativeIni(), m_folder.Native(u"SysRegedit.ini"_s));
}

TEST_F(ConfigurationEntryTest, LongNameIsReadCutAndWhole)
{
    const CString name(ConfigurationEntry::LongestName + 1, u'长');
    EXPECT_TRUE(m_entry.Write(name));
    EXPECT_EQ(m_entry.Name(), name.chopped(1));
    EXPECT_EQ(m_entry.WholeName(), name);
}
