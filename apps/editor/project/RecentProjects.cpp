#include "editor/project/RecentProjects.h"

#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/project/ProjectFolder.h"

#include <QtCore/QDir>
#include <QtCore/QSettings>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr QLatin1StringView Key("projects/recent");

} // namespace

RecentProjects::RecentProjects(QString settingsFile) : m_settingsFile(std::move(settingsFile)) {}

QList<RecentProjects::Entry> RecentProjects::Entries() const
{
    QList<Entry> entries;
    for (const QString& folder : Folders())
        entries.append({folder, embedded::IsProject(folder)});
    return entries;
}

QString RecentProjects::Last() const
{
    for (const Entry& entry : Entries())
        if (entry.exists) return entry.folder;
    return {};
}

void RecentProjects::Add(const QString& folder) const
{
    const QString absolute = QDir::cleanPath(QDir(folder).absolutePath());
    QStringList folders = Folders();
    folders.removeAll(absolute);
    folders.prepend(absolute);
    Store(folders.first(qMin(folders.size(), Longest)));
}

void RecentProjects::RemoveVanished() const
{
    QStringList folders;
    for (const Entry& entry : Entries())
        if (entry.exists) folders.append(entry.folder);
    Store(folders);
}

QStringList RecentProjects::Folders() const
{
    return QSettings(m_settingsFile, QSettings::IniFormat).value(Key).toStringList();
}

void RecentProjects::Store(const QStringList& folders) const
{
    QSettings(m_settingsFile, QSettings::IniFormat).setValue(Key, folders);
}

} // namespace editor
