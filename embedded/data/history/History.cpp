#include "embedded/data/history/History.h"

#include "embedded/data/sqlite/Error.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString CopyEnding = u".xml"_s;
const CString PartEnding = u".part"_s;
const CString PathFile = u"\\path.txt"_s;
const CString DateForm = u"yyyyMMdd"_s;
const CString ClockForm = u"HHmmss-zzz"_s;
const CString InProject = u".\\"_s;

constexpr qsizetype IdLength = 7;
/// Characters of a rule file's name that its folder shows; short enough for every file system.
constexpr qsizetype ShownLength = 40;
/// A part of a copy that is older than this belongs to a program that has ended.
constexpr qint64 PartLifetime = 3'600'000;

CString Hash(const CString& text, qsizetype length)
{
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex();
    return CString::fromLatin1(hash.left(length));
}

/// The time in a name; invalid when the name is no copy's.
QDateTime TimeOf(const CString& name)
{
    // In two steps, for a time read as local time could fall into the hour that summer time leaves out.
    const QDate date = QDate::fromString(name.section(u'-', 0, 0), DateForm);
    const QTime clock = QTime::fromString(name.section(u'-', 1), ClockForm);
    return QDateTime(date, clock, Qt::UTC);
}

CString NameOf(const QDateTime& time)
{
    return time.date().toString(DateForm) + u'-' + time.time().toString(ClockForm);
}

HistoryEntry MakeEntry(const CString& folder, const CString& path, const QDateTime& time)
{
    const CString copy = folder + u'\\' + NameOf(time) + CopyEnding;
    const CString key = platform::FileNameOf(folder) + u'\\' + platform::FileNameOf(copy);
    return {Hash(key, IdLength), path, copy, time};
}

QByteArray ReadOrRaise(const CString& path)
{
    CString reason;
    const auto bytes = platform::Files().Read(path, &reason);
    if (!bytes) throw Error(platform::ToNative(path) + u"："_s + reason);
    return *bytes;
}

/// Writes a file that nobody sees before all of it is on the disk. False when something stands at `path`.
bool WriteNew(const CString& path, const QByteArray& bytes)
{
    platform::FileSystem& files = platform::Files();
    const CString part = platform::FolderOf(path) + u'\\' +
                         platform::BeforeLastStop(platform::FileNameOf(path)) + u'.' +
                         CString::number(QCoreApplication::applicationPid()) + PartEnding;
    try {
        files.WriteInPlace(part, bytes);
    } catch (const platform::FileError& error) {
        files.Remove(part);
        throw Error(u"历史副本写不成："_s + error.Message());
    }
    if (files.Rename(part, path)) return true;
    files.Remove(part);
    if (files.Exists(path)) return false;
    throw Error(platform::ToNative(path) + u"：历史副本写不成"_s);
}

void RemoveLeftParts(const CString& folder)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const CString& name : platform::Files().FindFiles(folder, PartEnding)) {
        const QDateTime time = TimeOf(name.section(u'.', 0, 0));
        if (time.isValid() && time.msecsTo(now) > PartLifetime)
            platform::Files().Remove(folder + u'\\' + name);
    }
}

bool IsOlder(const HistoryEntry& left, const HistoryEntry& right)
{
    return left.time < right.time;
}

bool IsNewer(const HistoryEntry& left, const HistoryEntry& right)
{
    return IsOlder(right, left);
}

} // namespace

History::History(const ProjectFolder& project) : m_project(project), m_root(project.Path() + u"\\history"_s)
{
}

CString History::Stored(const CString& path) const
{
    const CString inside = m_project.Path() + u'\\';
    return path.startsWith(inside) ? InProject + path.mid(inside.size()) : path;
}

CString History::Actual(const CString& stored) const
{
    if (!stored.startsWith(InProject)) return stored;
    return m_project.Path() + u'\\' + stored.mid(InProject.size());
}

CString History::FolderOf(const CString& path) const
{
    CString shown = platform::BeforeLastStop(platform::FileNameOf(path)).left(ShownLength);
    if (!shown.isEmpty() && shown.back().isHighSurrogate()) shown.chop(1);
    return m_root + u'\\' + shown + u'-' + Hash(Stored(path), IdLength + 1);
}

CArray<HistoryEntry> History::ListFolder(const CString& folder) const
{
    CArray<HistoryEntry> entries;
    const QByteArray bytes = platform::Files().Read(folder + PathFile).value_or(QByteArray());
    const CString path = Actual(CString::fromUtf8(bytes).section(u'\n', 0, 0));
    // A folder whose path was changed by hand would lead a restoring to the wrong file.
    if (path.isEmpty() || FolderOf(path) != folder) return entries;
    for (const CString& name : platform::Files().FindFiles(folder, CopyEnding)) {
        const QDateTime time = TimeOf(name.chopped(CopyEnding.size()));
        if (time.isValid()) entries.append(MakeEntry(folder, path, time));
    }
    std::sort(entries.begin(), entries.end(), IsNewer);
    return entries;
}

CArray<HistoryEntry> History::List(const CString& path) const
{
    return ListFolder(FolderOf(path));
}

CArray<HistoryEntry> History::ListAll() const
{
    CArray<HistoryEntry> entries;
    for (const CString& name : platform::Files().FindFolders(m_root))
        entries += ListFolder(m_root + u'\\' + name);
    std::stable_sort(entries.begin(), entries.end(), IsNewer);
    return entries;
}

HistoryEntry History::Find(const CString& id) const
{
    for (const HistoryEntry& entry : ListAll()) {
        if (entry.id.compare(id, Qt::CaseInsensitive) == 0) return entry;
    }
    throw Error(u"历史中没有编号为“%1”的副本"_s.arg(id));
}

QByteArray History::Read(const HistoryEntry& entry) const
{
    return ReadOrRaise(entry.copy);
}

std::optional<HistoryEntry> History::Keep(const CString& path)
{
    const int limit = Limit();
    if (limit == 0) return std::nullopt;
    std::optional<HistoryEntry> kept = Store(path);
    if (kept) Prune(path, limit);
    return kept;
}

std::optional<HistoryEntry> History::Store(const CString& path)
{
    if (!platform::Files().Exists(path)) return std::nullopt;
    const QByteArray bytes = ReadOrRaise(path);
    const CArray<HistoryEntry> former = List(path);
    if (!former.isEmpty() && platform::Files().Read(former.first().copy) == bytes) return std::nullopt;

    const CString folder = FolderOf(path);
    EnsureFolder(m_root);
    EnsureFolder(folder);
    RemoveLeftParts(folder);
    if (!platform::Files().Exists(folder + PathFile))
        WriteNew(folder + PathFile, Stored(path).toUtf8() + '\n');
    QDateTime time = QDateTime::currentDateTimeUtc();
    if (!former.isEmpty()) time = std::max(time, former.first().time.addMSecs(1));
    return StoreAs(MakeEntry(folder, path, time), bytes);
}

/// Stores under the first free time from that of `first` on, for which no other copy of the project has the
/// same id.
HistoryEntry History::StoreAs(const HistoryEntry& first, const QByteArray& bytes)
{
    const CArray<HistoryEntry> all = ListAll();
    for (HistoryEntry entry = first;;
         entry = MakeEntry(platform::FolderOf(first.copy), first.path, entry.time.addMSecs(1))) {
        const bool taken = std::any_of(all.begin(), all.end(),
                                       [&](const HistoryEntry& other) { return other.id == entry.id; });
        if (!taken && WriteNew(entry.copy, bytes)) return entry;
    }
}

void History::Prune(const CString& path, int limit)
{
    const CArray<HistoryEntry> entries = List(path);
    for (qsizetype i = limit; i < entries.size(); ++i)
        Forget(entries[i]);
}

std::optional<HistoryEntry> History::Restore(const HistoryEntry& entry)
{
    platform::FileSystem& files = platform::Files();
    const QByteArray bytes = Read(entry);
    const std::optional<HistoryEntry> replaced = Store(entry.path);
    const std::optional<QByteArray> former = files.Read(entry.path);
    if (former == bytes) return replaced;
    EnsureFolder(platform::FolderOf(entry.path));
    try {
        files.WriteInPlace(entry.path, bytes);
    } catch (const platform::FileError& error) {
        former ? files.PutBack(entry.path, *former) : static_cast<void>(files.Remove(entry.path));
        throw Error(u"恢复不了："_s + error.Message());
    }
    if (const int limit = Limit(); limit > 0) Prune(entry.path, limit);
    return replaced;
}

bool History::Forget(const HistoryEntry& entry)
{
    return platform::Files().Remove(entry.copy);
}

int History::Limit() const
{
    constexpr int bufferSize = 32;
    bool isNumber = false;
    const int limit = platform::ProfileFile(m_project.ProfileFile())
                          .Read(u"History"_s, u"Copies"_s, {}, bufferSize)
                          .toInt(&isNumber);
    return isNumber && limit >= 0 && limit <= LargestLimit ? limit : DefaultLimit;
}

void History::SetLimit(int limit)
{
    if (limit < 0 || limit > LargestLimit) throw Error(u"副本数只能是 0 到 %1"_s.arg(LargestLimit));
    if (!platform::ProfileFile(m_project.ProfileFile())
             .Write(u"History"_s, u"Copies"_s, CString::number(limit)))
        throw Error(platform::ToNative(m_project.ProfileFile()) + u"：写不进去"_s);
}

} // namespace embedded
