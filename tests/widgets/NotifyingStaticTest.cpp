#include "widgets/NotifyingStatic.h"

#include "support/Patience.h"
#include "support/WindowWaits.h"

#include <QtGui/QAccessible>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class NotifyingStatic : public ::testing::Test
{
protected:
    NotifyingStatic()
    {
        m_link.setText(u"说明"_s);
        m_link.OnClicked([this] { ++m_clicks; });
    }
    QAccessibleInterface& Seen() { return *QAccessible::queryAccessibleInterface(&m_link); }

    widgets::NotifyingStatic m_link{nullptr};
    int m_clicks = 0;
};

} // namespace

TEST_F(NotifyingStatic, IsALinkWithItsTextToAssistiveTechnology)
{
    EXPECT_EQ(Seen().role(), QAccessible::Link);
    EXPECT_EQ(Seen().text(QAccessible::Name), u"说明"_s);
    m_link.setAccessibleName(u"步骤说明"_s);
    EXPECT_EQ(Seen().text(QAccessible::Name), u"步骤说明"_s);
}

// The call returns first: what a press opens may stay open for long.
TEST_F(NotifyingStatic, IsPressedByAssistiveTechnology)
{
    const QString press = QAccessibleActionInterface::pressAction();
    ASSERT_TRUE(Seen().actionInterface()->actionNames().contains(press));
    Seen().actionInterface()->doAction(press);
    EXPECT_EQ(m_clicks, 0);
    test::WaitInLoopFor(u"the press"_s, [this] { return m_clicks == 1; });
}

TEST_F(NotifyingStatic, OffersNoPressWhileItIsDisabled)
{
    m_link.setEnabled(false);
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_FALSE(Seen().actionInterface()->actionNames().contains(press));
    Seen().actionInterface()->doAction(press);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_clicks, 0);
}
