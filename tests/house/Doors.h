#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace house {

/// The rooms, the doors between them and what else the table of the house says. Paths are relative to the top
/// of the source tree, with slashes.
class Doors
{
public:
    /// Reads a table; how it is written stands at its top. A line that it cannot read becomes one of
    /// `Faults()`.
    explicit Doors(const QString& table);

    /// What is wrong with the table itself: unreadable lines, doors to rooms that it does not name, and rooms
    /// that reach themselves through doors.
    const QStringList& Faults() const noexcept { return m_faults; }

    /// The room in which a file stands; empty when it stands in none.
    QString RoomOf(const QString& file) const;
    /// Whether a file of `from` may include a header of `to`. A room has a door to itself.
    bool HasDoor(const QString& from, const QString& to) const;
    /// Whether a file of `room` may include a library header, as it stands in the angle brackets.
    bool MaySee(const QString& room, const QString& header) const;

    /// How many files a folder may hold, and whether this one may hold more for now.
    int Limit() const noexcept { return m_limit; }
    bool IsCrowdedForNow(const QString& folder) const { return m_crowded.contains(folder); }
    /// Whether these may include each other for now.
    bool IsRingForNow(const QStringList& ring) const;

private:
    void Read(const QString& line);
    void ReadForNow(QStringList words);
    void ResolveDoors();
    void FindRings();
    /// The rooms that a word of the table means: one, or for NAME/* it and those inside of it.
    QStringList Meant(const QString& word);

    QMap<QString, QStringList> m_written; ///< doors as they are written
    QMap<QString, QSet<QString>> m_doors;
    QMap<QString, QStringList> m_writtenViewers;
    QMap<QString, QSet<QString>> m_viewers;
    QList<QSet<QString>> m_ringsForNow;
    QSet<QString> m_crowded;
    int m_limit = 0;
    QStringList m_faults;
};

} // namespace house
