#include "support/Surroundings.h"

#include <QtGui/QClipboard>
#include <QtGui/QCursor>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolTip>

#include <gtest/gtest.h>

#include <optional>

namespace test {

namespace {

/// A tip that is told to go fades for a while.
void EndToolTips()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->inherits("QTipLabel")) delete window;
}

/// The toolkit takes Ctrl for held until the next key after a test that has pressed it with another one, as
/// its release still counts as made with it. Views then select in another way.
void ReleaseModifiers()
{
    QWindow nowhere;
    QTest::keyRelease(&nowhere, Qt::Key_Control);
}

/// What a test finds and has to leave.
struct DesktopState
{
    QString styleName = QApplication::style()->name();
    QPalette palette = QApplication::palette();
    QFont font = QApplication::font();
    bool quitsWithLastWindow = QApplication::quitOnLastWindowClosed();
    int doubleClickInterval = QApplication::doubleClickInterval();
};

class CleanDesktop : public ::testing::EmptyTestEventListener
{
public:
    void OnTestStart(const ::testing::TestInfo& /*test*/) override
    {
        QApplication::clipboard()->clear();
        QCursor::setPos(0, 0);
        ReleaseModifiers();
        QCoreApplication::processEvents();
        m_before.emplace();
    }

    void OnTestEnd(const ::testing::TestInfo& /*test*/) override
    {
        EndToolTips();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        for (const QWidget* window : QApplication::topLevelWidgets())
            EXPECT_FALSE(window->isVisible()) << "a window stays: " << window->metaObject()->className()
                                              << ' ' << window->windowTitle().toStdString();
        EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "a cursor stays";
        const DesktopState after;
        EXPECT_EQ(after.styleName.toStdString(), m_before->styleName.toStdString());
        EXPECT_TRUE(after.palette == m_before->palette) << "the program's palette";
        EXPECT_EQ(after.font.toString().toStdString(), m_before->font.toString().toStdString());
        EXPECT_EQ(after.quitsWithLastWindow, m_before->quitsWithLastWindow);
        EXPECT_EQ(after.doubleClickInterval, m_before->doubleClickInterval);
    }

private:
    std::optional<DesktopState> m_before;
};

} // namespace

void RequireCleanDesktop()
{
    ::testing::UnitTest::GetInstance()->listeners().Append(new CleanDesktop);
}

} // namespace test
