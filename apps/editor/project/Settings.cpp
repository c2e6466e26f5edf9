#include "editor/project/Settings.h"

#include <QtCore/QStandardPaths>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

QString Below(QStandardPaths::StandardLocation location, const QString& name)
{
    return QStandardPaths::writableLocation(location) + u"/KtQdDeConfig/"_s + name;
}

} // namespace

QString SettingsFile()
{
    const QString named = qEnvironmentVariable("KTQDDE_EDITOR_SETTINGS");
    return named.isEmpty() ? Below(QStandardPaths::GenericConfigLocation, u"editor.ini"_s) : named;
}

QString SampleFolder()
{
    return Below(QStandardPaths::GenericDataLocation, u"示例工程"_s);
}

} // namespace editor
