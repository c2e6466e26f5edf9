#include "AutoConfigScenes.h"
#include "ControlScenes.h"
#include "DialogScenes.h"
#include "HostWindowScenes.h"
#include "WizardScenes.h"
#include "host/Installation.h"
#include "platform/Console.h"

#include <QtCore/QDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleFactory>

using namespace Qt::StringLiterals;

namespace {

int TakeAll(const QString& folder)
{
    PictureHost host;
    PictureFiles files;
    const platform::ScopedFileSystem pictured(files);
    host::Roles roles;
    roles.libraries = &host;
    roles.project = &host;
    roles.profile = &host;
    const host::Installation installed = host::Install(roles);
    std::vector<Scene> scenes = DialogScenes(host);
    for (const Scene& scene : ControlScenes(host))
        scenes.push_back(scene);
    for (const Scene& scene : AutoConfigScenes())
        scenes.push_back(scene);
    for (const Scene& scene : WizardScenes())
        scenes.push_back(scene);
    for (const Scene& scene : HostWindowScenes())
        scenes.push_back(scene);
    for (const Scene& scene : scenes) {
        if (TakePictures(scene, folder)) continue;
        platform::WriteErr(u"cannot write the pictures of %1\n"_s.arg(scene.name));
        return 1;
    }
    return 0;
}

} // namespace

/// ktqdde-pictures OUT: puts pictures of the dialogs into the folder OUT, which is made if need be.
int main(int argc, char** argv)
{
    platform::UseUtf8Console();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        platform::WriteErr(u"usage: ktqdde-pictures OUT\n"_s);
        return 2;
    }
    if (!QDir().mkpath(arguments.at(1))) {
        platform::WriteErr(u"cannot make the folder %1\n"_s.arg(arguments.at(1)));
        return 1;
    }
    return TakeAll(arguments.at(1));
}
