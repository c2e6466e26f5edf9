// Opens the configuration dialog on a folder: example-host [--close] [FOLDER]. With --close the dialog is
// closed as soon as it stands there, as by its close box.
#include "ExampleHost.h"

#include <dialogs/process/MessageBoxes.h>
#include <platform/Paths.h>
#include <presenter/CAutoQdDeConfigFacade.h>

#include <QtCore/QDir>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cstdio>
#include <exception>

namespace {

void CloseTheDialogSoon()
{
    QTimer::singleShot(0, qApp, [] {
        if (QWidget* dialog = QApplication::activeModalWidget())
            dialog->close();
        else
            CloseTheDialogSoon();
    });
}

int Run(QStringList words)
{
    const bool closes = words.removeAll(QStringLiteral("--close")) > 0;
    const QString folder = words.value(0, QStringLiteral("example"));
    QDir().mkpath(folder);

    ExampleHost roles(platform::FromNative(folder));
    const host::Installation installed = host::Install(roles.Roles()); // ends with this function
    const dialogs::MessageBoxes boxes; // messages outside of the dialog are shown in boxes, too

    CAutoQdDeConfigFacade::AttrConfig(); // whenever the attributes of the host have changed
    if (closes) CloseTheDialogSoon();
    CAutoQdDeConfigFacade::StartQdDeConfig(nullptr, CRect());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    try {
        return Run(QApplication::arguments().mid(1));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "example-host: %s\n", error.what());
        return 1;
    }
}
