#include "editor/project/Settings.h"

#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr QLatin1StringView TourKey("tour/offered");

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

bool WasTourOffered(const QString& settingsFile)
{
    return QSettings(settingsFile, QSettings::IniFormat).value(TourKey, false).toBool();
}

void RememberTourOffered(const QString& settingsFile)
{
    QSettings(settingsFile, QSettings::IniFormat).setValue(TourKey, true);
}

QString SampleFolder()
{
    return Below(QStandardPaths::GenericDataLocation, u"示例工程"_s);
}

} // namespace editor
