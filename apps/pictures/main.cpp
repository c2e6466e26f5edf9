#include "AutoConfigScenes.h"
#include "ControlScenes.h"
#include "DialogScenes.h"
#include "EditorScenes.h"
#include "HostWindowScenes.h"
#include "SampleScenes.h"
#include "WizardScenes.h"
#include "WorkbenchScenes.h"
#include "editor/window/FocusStyle.h"
#include "editor/window/KeyNames.h"
#include "host/Installation.h"
#include "platform/Console.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryFile>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleFactory>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// How pictures are taken, and of what.
struct Taking
{
    bool (*take)(const Scene&, const QString&);
    QString folder;
    QString only{}; ///< the scenes whose names begin so
};

bool TakeEach(const std::vector<Scene>& scenes, const Taking& taking)
{
    for (const Scene& scene : scenes) {
        if (!scene.name.startsWith(taking.only) || taking.take(scene, taking.folder)) continue;
        platform::WriteErr(u"cannot write the pictures of %1\n"_s.arg(scene.name));
        return false;
    }
    return true;
}

/// Scenes that stand on hosts of their own, or those of them over which a tip lies.
bool TakeOthers(const Taking& taking, bool tipsOnly = false)
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
    for (const auto& more : {ControlScenes(host), AutoConfigScenes(), WizardScenes(), HostWindowScenes()})
        scenes.insert(scenes.end(), more.begin(), more.end());
    if (tipsOnly) std::erase_if(scenes, [](const Scene& scene) { return !scene.showsTip; });
    return TakeEach(scenes, taking);
}

bool TakeSample(const Taking& taking)
{
    SampleOnShow sample;
    return TakeEach(WorkbenchScenes(sample), taking) && TakeEach(SampleScenes(sample), taking);
}

/// What the documents do not show of the editor.
bool TakeEditor(const Taking& taking)
{
    SampleOnShow sample;
    return TakeEach(EditorScenes(sample), taking);
}

/// The documents show the sample project, and the host's windows on a project of theirs.
bool TakeForDocuments(const QString& folder)
{
    constexpr std::array<QStringView, 4> Shown{u"bill-picker", u"quota-picker", u"calculator-fault",
                                               u"cloud-disk"};
    std::vector<Scene> windows = HostWindowScenes();
    std::erase_if(windows, [&](const Scene& scene) {
        return std::find(Shown.begin(), Shown.end(), scene.name) == Shown.end();
    });
    const Taking taking{TakeDocumentPicture, folder};
    return TakeEach(windows, taking) && TakeSample(taking);
}

/// Takes a screen that has room for the largest window in the largest font; the platform's own has not. The
/// file that describes it must stay until the application has started. Its path is relative since in the
/// name of a platform a colon divides.
void TakeLargeScreen(QTemporaryFile& description)
{
    if (!description.open()) return;
    description.write(R"({"screens": [{"name": "large", "x": 0, "y": 0, "width": 2560, "height": 1440,
                          "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    description.close();
    qputenv("QT_QPA_PLATFORM",
            "offscreen:configfile=" + QDir().relativeFilePath(description.fileName()).toLocal8Bit());
}

} // namespace

/// ktqdde-pictures OUT: puts pictures of every window into the folder OUT, which is made if need be: light
/// and dark, small and large, to be looked at. ktqdde-pictures --documents OUT: the pictures that the
/// documents show. ktqdde-pictures --tips OUT: only what lies under a tip. ktqdde-pictures --only NAME OUT:
/// only the windows whose pictures' names begin with NAME.
int main(int argc, char** argv)
{
    platform::UseUtf8Console();
    QTemporaryFile screen;
    TakeLargeScreen(screen);
    const QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    editor::ShowFocusInLists();
    editor::KeyNames keyNames;
    QCoreApplication::installTranslator(&keyNames);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool documents = arguments.removeAll(u"--documents"_s) > 0;
    const bool tips = arguments.removeAll(u"--tips"_s) > 0;
    QString only;
    if (arguments.size() == 3 && arguments.first() == u"--only"_s) {
        only = arguments[1];
        arguments = arguments.mid(2);
    }
    if (arguments.size() != 1 || arguments.first().startsWith(u'-')) {
        platform::WriteErr(u"usage: ktqdde-pictures [--documents|--tips|--only NAME] OUT\n"_s);
        return 2;
    }
    const QString& folder = arguments.first();
    if (!QDir().mkpath(folder)) {
        platform::WriteErr(u"cannot make the folder %1\n"_s.arg(folder));
        return 1;
    }
    if (documents) return TakeForDocuments(folder) ? 0 : 1;
    const Taking taking{TakePictures, folder, only};
    if (tips) return TakeOthers(taking, true) ? 0 : 1;
    return TakeOthers(taking) && TakeSample(taking) && TakeEditor(taking) ? 0 : 1;
}
