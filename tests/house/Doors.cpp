#include "house/Doors.h"

#include "house/Rings.h"

using namespace Qt::StringLiterals;

namespace house {

Doors::Doors(const QString& table)
{
    for (const QString& line : table.split(u'\n')) {
        const QString text = line.simplified();
        if (!text.isEmpty() && !text.startsWith(u'#')) Read(text);
    }
    ResolveDoors();
    FindRings();
}

void Doors::Read(const QString& line)
{
    const QString head = line.section(u':', 0, 0).simplified();
    const QStringList words = head.split(u' ');
    const QStringList rooms = line.section(u':', 1).simplified().split(u' ', Qt::SkipEmptyParts);
    const bool hasColon = line.contains(u':');
    if (words.size() == 2 && words[0] == u"room" && hasColon)
        m_written[words[1]] += rooms;
    else if (words.size() == 2 && words[0] == u"library" && hasColon)
        m_writtenViewers[words[1]] += rooms;
    else if (words.size() == 2 && words[0] == u"limit" && words[1].toInt() > 0)
        m_limit = words[1].toInt();
    else if (words.size() >= 4 && words[0] == u"for" && words[1] == u"now" && !hasColon)
        ReadForNow(words.mid(2));
    else
        m_faults += u"the table has a line that nobody understands: "_s + line;
}

void Doors::ReadForNow(QStringList words)
{
    const QString kind = words.takeFirst();
    const QSet<QString> names(words.begin(), words.end());
    if (kind == u"ring")
        m_ringsForNow += names;
    else if (kind == u"crowded")
        m_crowded += names;
    else
        m_faults += u"the table has a line that nobody understands: for now "_s + kind;
}

QStringList Doors::Meant(const QString& word)
{
    QStringList rooms;
    const bool withInner = word.endsWith(u"/*");
    const QString name = withInner ? word.chopped(2) : word;
    for (auto room = m_written.keyBegin(); room != m_written.keyEnd(); ++room)
        if (*room == name || (withInner && room->startsWith(name + u'/'))) rooms += *room;
    if (rooms.isEmpty()) m_faults += u"the table names no room "_s + word;
    return rooms;
}

void Doors::ResolveDoors()
{
    for (auto room = m_written.begin(); room != m_written.end(); ++room)
        for (const QString& word : room.value())
            for (const QString& other : Meant(word))
                if (other != room.key()) m_doors[room.key()] += other;
    for (auto library = m_writtenViewers.begin(); library != m_writtenViewers.end(); ++library)
        for (const QString& word : library.value())
            for (const QString& room : Meant(word))
                m_viewers[library.key()] += room;
}

void Doors::FindRings()
{
    for (const QStringList& ring : RingsOf(m_doors))
        if (!IsRingForNow(ring)) m_faults += u"rooms with doors to each other: "_s + ring.join(u' ');
}

QString Doors::RoomOf(const QString& file) const
{
    QString longest;
    for (auto room = m_written.keyBegin(); room != m_written.keyEnd(); ++room)
        if (file.startsWith(*room + u'/') && room->size() > longest.size()) longest = *room;
    return longest;
}

bool Doors::HasDoor(const QString& from, const QString& to) const
{
    return from == to || m_doors.value(from).contains(to);
}

bool Doors::MaySee(const QString& room, const QString& header) const
{
    for (auto library = m_viewers.begin(); library != m_viewers.end(); ++library)
        if (header.startsWith(library.key())) return library.value().contains(room);
    return true;
}

bool Doors::IsRingForNow(const QStringList& ring) const
{
    const QSet<QString> members(ring.begin(), ring.end());
    for (const QSet<QString>& tolerated : m_ringsForNow)
        if (tolerated.contains(members)) return true;
    return false;
}

} // namespace house
