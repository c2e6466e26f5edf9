#include "house/HouseCheck.h"

#include "house/Rings.h"

#include <QtCore/QDir>
#include <QtCore/QSet>

using namespace Qt::StringLiterals;

namespace house {

namespace {

/// A header and its source belong together.
QString UnitOf(const QString& path)
{
    return path.left(path.lastIndexOf(u'.'));
}

QString FolderOf(const QString& path)
{
    return path.left(path.lastIndexOf(u'/'));
}

/// Goes over the sources and remembers what is wrong.
class Inspection
{
public:
    Inspection(const QList<Source>& sources, const Doors& doors) : m_doors(doors), m_faults(doors.Faults())
    {
        for (const Source& source : sources)
            m_paths += source.path;
        for (const Source& source : sources)
            Inspect(source);
        for (const QStringList& ring : RingsOf(m_units))
            if (!doors.IsRingForNow(ring)) m_faults += u"include each other: "_s + ring.join(u' ');
    }

    const QStringList& Faults() const { return m_faults; }

private:
    void Inspect(const Source& source)
    {
        const QString room = m_doors.RoomOf(source.path);
        if (room.isEmpty()) m_faults += source.path + u" stands in no room"_s;
        for (const QString& header : source.bracketed)
            if (!m_doors.MaySee(room, header))
                m_faults +=
                    source.path + u" includes <"_s + header + u">, which "_s + room + u" may not see"_s;
        for (const QString& header : source.quoted)
            InspectInclude(source, room, header);
    }

    void InspectInclude(const Source& source, const QString& room, const QString& header)
    {
        const QString path = Find(FolderOf(source.path), header);
        if (path.isEmpty()) {
            m_faults += source.path + u" includes \""_s + header + u"\", which is nowhere"_s;
            return;
        }
        const QString other = m_doors.RoomOf(path);
        if (!m_doors.HasDoor(room, other))
            m_faults +=
                source.path + u" includes "_s + path + u", but "_s + room + u" has no door to "_s + other;
        if (UnitOf(path) != UnitOf(source.path)) m_units[UnitOf(source.path)] += UnitOf(path);
    }

    QString Find(const QString& folder, const QString& header) const
    {
        for (const QString& place : {folder + u'/', u"src/"_s, QString(), u"apps/"_s}) {
            const QString path = QDir::cleanPath(place + header);
            if (m_paths.contains(path)) return path;
        }
        return {};
    }

    const Doors& m_doors;
    QSet<QString> m_paths;
    Arrows m_units;
    QStringList m_faults;
};

} // namespace

QStringList FaultsOf(const QList<Source>& sources, const Doors& doors)
{
    return Inspection(sources, doors).Faults();
}

QStringList CrowdedFolders(const QList<Source>& sources, const Doors& doors)
{
    QMap<QString, int> counts;
    for (const Source& source : sources)
        ++counts[FolderOf(source.path)];
    QStringList crowded;
    for (auto folder = counts.begin(); folder != counts.end(); ++folder)
        if (folder.value() > doors.Limit() && !doors.IsCrowdedForNow(folder.key()))
            crowded +=
                u"%1 holds %2 files, more than %3"_s.arg(folder.key()).arg(folder.value()).arg(doors.Limit());
    return crowded;
}

} // namespace house
