#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

namespace editor {

/// The projects that the user opened last, newest first, kept in a settings file that several editors may
/// share: every operation reads it anew.
class RecentProjects
{
public:
    static constexpr qsizetype Longest = 10;

    struct Entry
    {
        QString folder; ///< native, absolute
        bool exists;    ///< whether a project stands there now
    };

    explicit RecentProjects(QString settingsFile);

    /// The settings file, native.
    const QString& File() const noexcept { return m_settingsFile; }
    QList<Entry> Entries() const;
    /// The newest one that still stands; empty when there is none.
    QString Last() const;
    /// Puts a folder first. The oldest one beyond `Longest` is forgotten.
    void Add(const QString& folder) const;
    /// Forgets the folders in which no project stands any more.
    void RemoveVanished() const;

private:
    QStringList Folders() const;
    void Store(const QStringList& folders) const;

    QString m_settingsFile;
};

} // namespace editor
