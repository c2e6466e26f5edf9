#include "embedded/windows/PickerFixture.h"
#include "host/HostWindows.h"

using namespace test;

namespace {

class MainFrame : public EmbeddedWindowsTest
{
};

TEST_F(MainFrame, IsMissingUntilItIsSet)
{
    EXPECT_EQ(acedGetAcadFrame(), nullptr);
    m_windows->SetMainFrame(&m_parent);
    EXPECT_EQ(acedGetAcadFrame(), &m_parent);
    m_windows->SetMainFrame(nullptr);
    EXPECT_EQ(acedGetAcadFrame(), nullptr);
}

TEST_F(MainFrame, IsForgottenWhenItIsDestroyed)
{
    auto frame = std::make_unique<QWidget>();
    m_windows->SetMainFrame(frame.get());
    frame.reset();
    EXPECT_EQ(acedGetAcadFrame(), nullptr);
}

} // namespace
