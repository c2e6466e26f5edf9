#include "cli/Program.h"
#include "platform/Console.h"

#include <QtCore/QCoreApplication>

int main(int argc, char** argv)
{
    platform::UseUtf8Console();
    const QCoreApplication application(argc, argv);
    return cli::RunProgram(QCoreApplication::arguments().mid(1));
}
