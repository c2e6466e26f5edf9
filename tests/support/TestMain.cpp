#include "support/Surroundings.h"

#include <QtCore/QCoreApplication>

#include <gmock/gmock.h>

/// The main() of every test program that brings none of its own.
int main(int argc, char** argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    test::RequireCleanEnds();
    return RUN_ALL_TESTS();
}
