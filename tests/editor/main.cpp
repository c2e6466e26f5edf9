#include "support/Surroundings.h"

#include <QtWidgets/QApplication>

#include <gmock/gmock.h>

/// Dialogs are tested without a screen, unless whoever runs the tests names a platform.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleMock(&argc, argv);
    const QApplication application(argc, argv);
    test::RequireCleanEnds();
    test::RequireCleanDesktop();
    return RUN_ALL_TESTS();
}
