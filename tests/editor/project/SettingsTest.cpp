#include "editor/project/Settings.h"

#include "editor/project/RecentProjects.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Settings, TheTourIsOfferedOnceAndTheOtherSettingsStay)
{
    const test::TempFolder folder;
    const QString file = folder.Native(u"editor.ini"_s);
    editor::RecentProjects(file).Add(folder.Native(u"工程"_s));
    EXPECT_FALSE(editor::WasTourOffered(file));
    editor::RememberTourOffered(file);
    EXPECT_TRUE(editor::WasTourOffered(file));
    EXPECT_EQ(editor::RecentProjects(file).Entries().size(), 1);
}
