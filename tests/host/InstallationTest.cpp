#include "host/Installation.h"

#include "support/MemoryHost.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace {

using test::MemoryHost;

TEST(Installation, PutsARoleInForceUntilItEnds)
{
    MemoryHost memory;
    {
        const host::Installation installed = host::Install(memory.Roles());
        EXPECT_EQ(&host::Categories(), &memory);
        EXPECT_EQ(&host::Attributes(), &memory);
        EXPECT_EQ(&host::Libraries(), &memory);
        EXPECT_EQ(&host::Project(), &memory);
        EXPECT_EQ(&host::Profile(), &memory);
        EXPECT_EQ(&host::Calculation(), &memory);
        EXPECT_EQ(&host::Xml(), &memory);
    }
    EXPECT_THROW(host::Categories(), host::NoHostError);
}

TEST(Installation, WithoutAnyEveryRoleRaises)
{
    EXPECT_THROW(host::Categories(), host::NoHostError);
    EXPECT_THROW(host::Attributes(), host::NoHostError);
    EXPECT_THROW(host::Libraries(), host::NoHostError);
    EXPECT_THROW(host::Project(), host::NoHostError);
    EXPECT_THROW(host::Profile(), host::NoHostError);
    EXPECT_THROW(host::Calculation(), host::NoHostError);
    EXPECT_THROW(host::Xml(), host::NoHostError);
    EXPECT_THROW(host::Windows(), host::NoHostError);
}

TEST(Installation, ErrorNamesTheMissingRole)
{
    try {
        host::Libraries();
        FAIL() << "nothing was raised";
    } catch (const host::NoHostError& error) {
        EXPECT_NE(std::string(error.what()).find("libraries"), std::string::npos) << error.what();
    }
}

TEST(Installation, HostWithoutAScreenLacksTheWindowsOnly)
{
    MemoryHost memory;
    const host::Installation installed = host::Install(memory.Roles());
    EXPECT_THROW(host::Windows(), host::NoHostError);
    EXPECT_NO_THROW(host::Project());
}

TEST(Installation, InnermostIsInForceAndGivesTheFormerBack)
{
    MemoryHost outer;
    MemoryHost inner;
    const host::Installation outerInstalled = host::Install(outer.Roles());
    {
        const host::Installation innerInstalled = host::Install(inner.Roles());
        EXPECT_EQ(&host::Project(), &inner);
    }
    EXPECT_EQ(&host::Project(), &outer);
}

TEST(Installation, InnerHostDoesNotLendTheOuterOnesRoles)
{
    MemoryHost outer;
    MemoryHost inner;
    host::Roles withoutLibraries = inner.Roles();
    withoutLibraries.libraries = nullptr;
    const host::Installation outerInstalled = host::Install(outer.Roles());
    const host::Installation innerInstalled = host::Install(withoutLibraries);
    EXPECT_THROW(host::Libraries(), host::NoHostError);
}

TEST(Installation, MovedFromInstallationEndsNothing)
{
    MemoryHost memory;
    std::optional<host::Installation> original = host::Install(memory.Roles());
    const host::Installation moved = std::move(*original);
    original.reset();
    EXPECT_EQ(&host::Project(), &memory);
}

} // namespace
