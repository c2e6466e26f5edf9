#include "embedded/TestProject.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using test::ErrorOf;

namespace {

class Settings : public ::testing::Test
{
protected:
    Settings() { m_project.Put(); }
    /// The specialty that a fresh opening finds.
    CString StoredSpec() const { return EmbeddedHost(m_project.Folder()).Roles().project->GetCurrentSpec(); }

    test::TestProject m_project;
};

} // namespace

TEST_F(Settings, UsedSpecialtyCountsForThisProcessOnly)
{
    EmbeddedHost host(m_project.Folder());
    host.UseSpec(u"消防"_s);
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"消防"_s);
    EXPECT_EQ(host.Roles().project->GetCurrentSpecId().strSpecId, u"4"_s);
    EXPECT_EQ(StoredSpec(), u"给排水"_s);
}

TEST_F(Settings, SetSpecialtyIsStored)
{
    EmbeddedHost host(m_project.Folder());
    host.UseSpec(u"消防"_s);
    host.SetCurrentSpec(u"弱电"_s);
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"弱电"_s);
    EXPECT_EQ(StoredSpec(), u"弱电"_s);
}

TEST_F(Settings, UnknownSpecialtyIsRefusedAndNothingChanges)
{
    EmbeddedHost host(m_project.Folder());
    EXPECT_TRUE(ErrorOf([&] { host.UseSpec(u"园林"_s); }).contains(u"园林"_s));
    EXPECT_TRUE(ErrorOf([&] { host.SetCurrentSpec(CString()); }).contains(u"没有名为"_s));
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"给排水"_s);
    EXPECT_EQ(StoredSpec(), u"给排水"_s);
}

TEST_F(Settings, ModeIsStoredAndCanBeSetBack)
{
    for (const SQdDeInfo::EQdDeMode mode : {SQdDeInfo::QuotaMode, SQdDeInfo::BillMode}) {
        EmbeddedHost host(m_project.Folder());
        host.SetMode(mode);
        EXPECT_EQ(host.Roles().project->GetQdDeMode(), mode);
        EXPECT_EQ(EmbeddedHost(m_project.Folder()).Roles().project->GetQdDeMode(), mode);
    }
}

TEST_F(Settings, SpecialtyAndModeAreStoredApart)
{
    EmbeddedHost(m_project.Folder()).SetMode(SQdDeInfo::QuotaMode);
    EmbeddedHost(m_project.Folder()).SetCurrentSpec(u"建筑"_s);
    EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(host.Roles().project->GetQdDeMode(), SQdDeInfo::QuotaMode);
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"建筑"_s);
}

TEST_F(Settings, TwoHostsOnOneProjectWorkSideBySide)
{
    EmbeddedHost first(m_project.Folder());
    EmbeddedHost second(m_project.Folder());
    first.SetCurrentSpec(u"电气"_s);
    second.SetCurrentSpec(u"暖通"_s);
    EXPECT_EQ(first.Roles().project->GetCurrentSpec(), u"电气"_s);
    EXPECT_EQ(StoredSpec(), u"暖通"_s);
}
