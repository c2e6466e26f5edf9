#include "embedded/data/history/History.h"

#include "embedded/data/engine/Error.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"
#include "platform/ReplacedFile.h"

#include <QtCore/QCryptographicHash>

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString CopyEnding = u".xml"_s;
const CString PartEnding = u".part"_s;
const CString PathFile = u"\\path.txt"_s;
const CString FormerFile = u"\\former.txt"_s;
const CString DateForm = u"yyyyMMdd"_s;
const CString ClockForm = u"HHmmss-zzz"_s;
const CString InProject = u".\\"_s;

constexpr qsizetype IdLength = 7;
/// So many that the copies of a folder sort by name as by number for as long as the clock stands.
constexpr int NumberDigits = 6;
/// No project gets there by counting: a name with more was not given by us.
constexpr qint64 LargestNumber = 1'000'000'000'000;
/// Characters of a rule file's name that its folder shows; short enough for every file system.
constexpr qsizetype ShownLength = 40;
/// A part of a copy that is older than this belongs to a program that has ended.
constexpr qint64 PartLifetime = 3'600'000;

CString Hash(const CString& text, qsizetype length)
{
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex();
    return CString::fromLatin1(hash.left(length));
}

/// What the name of a copy says, without its ending: date, time and number, joined by hyphens. Programs of
/// before wrote no number.
struct Stamp
{
    QDateTime time; ///< invalid when the name is no copy's
    qint64 number = 0;
};

Stamp StampOf(const CString& name)
{
    const CStringArray words = name.split(u'-');
    if (words.size() != 3 && words.size() != 4) return {};
    Stamp stamp;
    if (words.size() == 4) {
        stamp.number = words[3].toLongLong();
        if (stamp.number <= 0 || stamp.number > LargestNumber) return {};
    }
    // In two steps, for a time read as local time could fall into the hour that summer time leaves out.
    const QDate date = QDate::fromString(words[0], DateForm);
    const QTime clock = QTime::fromString(words[1] + u'-' + words[2], ClockForm);
    stamp.time = QDateTime(date, clock, Qt::UTC);
    return stamp;
}

CString NameOf(const Stamp& stamp)
{
    return stamp.time.date().toString(DateForm) + u'-' + stamp.time.time().toString(ClockForm) +
           u"-%1"_s.arg(stamp.number, NumberDigits, 10, QLatin1Char('0'));
}

HistoryEntry EntryOf(const CString& copy, const CString& path, const Stamp& stamp)
{
    const CString key = platform::FileNameOf(platform::FolderOf(copy)) + u'\\' + platform::FileNameOf(copy);
    return {Hash(key, IdLength), path, copy, stamp.time, stamp.number};
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
    const CString part = platform::PartBeside(platform::FolderOf(path) + u'\\' +
                                              platform::BeforeLastStop(platform::FileNameOf(path)));
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

void RemoveLeftParts(const CString& folder, const QDateTime& now)
{
    for (const CString& name : platform::Files().FindFiles(folder, PartEnding)) {
        const QDateTime time = StampOf(name.section(u'.', 0, 0)).time;
        if (time.isValid() && time.msecsTo(now) > PartLifetime)
            platform::Files().Remove(folder + u'\\' + name);
    }
}

bool IsNewer(const HistoryEntry& left, const HistoryEntry& right)
{
    // Two programs may take one number for copies of two files at the same moment; the rest gives these an
    // order, the same for whoever looks.
    return std::tie(left.number, left.time, left.copy) > std::tie(right.number, right.time, right.copy);
}

} // namespace

History::History(const ProjectFolder& project, Clock clock)
    : m_project(project), m_root(project.HistoryFolder()), m_clock(std::move(clock))
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
        const Stamp stamp = StampOf(name.chopped(CopyEnding.size()));
        if (stamp.time.isValid()) entries.append(EntryOf(folder + u'\\' + name, path, stamp));
    }
    std::sort(entries.begin(), entries.end(), IsNewer);
    return entries;
}

CArray<HistoryEntry> History::List(const CString& path) const
{
    CArray<HistoryEntry> entries;
    for (const auto& [name, lastNumber] : AllNames(path)) {
        for (HistoryEntry& entry : ListFolder(FolderOf(name))) {
            if (entry.number > lastNumber) continue;
            entry.path = path;
            entries.append(entry);
        }
    }
    std::sort(entries.begin(), entries.end(), IsNewer);
    return entries;
}

// What cannot be read as a line is passed over: the copies are there all the same, under the former name.
CArray<History::FormerName> History::FormerNames(const CString& path) const
{
    CArray<FormerName> names;
    const QByteArray bytes = platform::Files().Read(FolderOf(path) + FormerFile).value_or(QByteArray());
    for (const CString& line : CString::fromUtf8(bytes).split(u'\n')) {
        bool isNumber = false;
        const qint64 number = line.section(u' ', 0, 0).toLongLong(&isNumber);
        const CString stored = line.section(u' ', 1);
        if (isNumber && !stored.isEmpty()) names.append({Actual(stored), number});
    }
    return names;
}

// A file may get an earlier name back, so names are gone through until none counts for more than is known.
std::map<CString, qint64> History::AllNames(const CString& path) const
{
    std::map<CString, qint64> names;
    CArray<FormerName> found{{path, std::numeric_limits<qint64>::max()}};
    while (!found.isEmpty()) {
        const FormerName name = found.takeLast();
        const auto known = names.find(name.path);
        if (known != names.end() && known->second >= name.lastNumber) continue;
        names[name.path] = name.lastNumber;
        for (const FormerName& former : FormerNames(name.path))
            found.append({former.path, std::min(former.lastNumber, name.lastNumber)});
    }
    return names;
}

void History::Follow(const CString& from, const CString& to)
{
    const CArray<HistoryEntry> copies = List(from);
    if (copies.isEmpty() || from == to) return;
    MakeFolder(to);
    const CString file = FolderOf(to) + FormerFile;
    QByteArray bytes = platform::Files().Read(file).value_or(QByteArray());
    bytes += QByteArray::number(copies.first().number) + ' ' + Stored(from).toUtf8() + '\n';
    try {
        platform::Files().Replace(file, bytes);
    } catch (const platform::FileError& error) {
        throw Error(u"历史副本写不成："_s + error.Message());
    }
}

CArray<HistoryEntry> History::ListAll() const
{
    CArray<HistoryEntry> entries;
    for (const CString& name : platform::Files().FindFolders(m_root))
        entries += ListFolder(m_root + u'\\' + name);
    std::sort(entries.begin(), entries.end(), IsNewer);
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

std::optional<HistoryEntry> History::KeepInAnyCase(const CString& path)
{
    if (const auto kept = Store(path)) return kept;
    const CArray<HistoryEntry> entries = List(path);
    if (entries.isEmpty() || !platform::Files().Exists(path)) return std::nullopt;
    return entries.first();
}

std::optional<HistoryEntry> History::Store(const CString& path)
{
    if (!platform::Files().Exists(path)) return std::nullopt;
    const QByteArray bytes = ReadOrRaise(path);
    const CArray<HistoryEntry> former = List(path);
    if (!former.isEmpty() && platform::Files().Read(former.first().copy) == bytes) return std::nullopt;

    MakeFolder(path);
    RemoveLeftParts(FolderOf(path), m_clock());
    return StoreNext(path, bytes);
}

void History::MakeFolder(const CString& path) const
{
    const CString folder = FolderOf(path);
    EnsureFolder(m_root);
    EnsureFolder(folder);
    if (!platform::Files().Exists(folder + PathFile))
        WriteNew(folder + PathFile, Stored(path).toUtf8() + '\n');
}

/// Stores under the next number of the project. Another program may have taken it for the same file since,
/// and an id of another copy may come out the same: then the one after it.
HistoryEntry History::StoreNext(const CString& path, const QByteArray& bytes)
{
    const CArray<HistoryEntry> all = ListAll();
    Stamp stamp{m_clock(), all.isEmpty() ? 0 : all.first().number};
    for (;;) {
        ++stamp.number;
        const CString copy = FolderOf(path) + u'\\' + NameOf(stamp) + CopyEnding;
        const HistoryEntry entry = EntryOf(copy, path, stamp);
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
        throw Error(u"还原不了："_s + error.Message());
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
