#include "editor/files/DiskWatch.h"

#include "editor/messages/ErrorBox.h"
#include "embedded/data/project/Look.h"
#include "platform/Apart.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace editor {

namespace {

/// So long nothing more must change before the files are looked at: another program may be writing.
constexpr auto QuietTime = 300ms;

std::optional<QByteArray> LookAt(const CString& path)
{
    const embedded::Look look;
    return platform::Files().Read(path);
}

QByteArray HashOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

} // namespace

/// Notes which rule files this program writes.
class DiskWatch::OwnWrites : public platform::FileSystemProxy
{
public:
    explicit OwnWrites(DiskWatch& watch)
        : FileSystemProxy(platform::Files()), m_watch(watch), m_installed(*this)
    {
    }

    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override
    {
        auto file = Target().OpenForWriting(path);
        if (!m_watch.IsWatched(path)) return file;
        return std::make_unique<Output>(std::move(file), path, m_watch);
    }
    bool Remove(const CString& path) override
    {
        const bool removed = Target().Remove(path);
        m_watch.NoteOwnWrite(path);
        return removed;
    }
    bool Rename(const CString& from, const CString& to) override
    {
        const bool renamed = Target().Rename(from, to);
        m_watch.NoteOwnWrite(from);
        m_watch.NoteOwnWrite(to);
        return renamed;
    }
    bool MoveOver(const CString& from, const CString& to) override
    {
        const bool moved = Target().MoveOver(from, to);
        m_watch.NoteOwnWrite(to);
        return moved;
    }

private:
    /// Notes what a file holds when it has been written.
    class Output : public platform::OutputFile
    {
    public:
        Output(std::unique_ptr<platform::OutputFile> file, CString path, DiskWatch& watch)
            : m_file(std::move(file)), m_path(std::move(path)), m_watch(watch)
        {
        }
        ~Output() override
        {
            m_file.reset();
            try {
                m_watch.NoteOwnWrite(m_path);
            } catch (...) { // NOLINT(bugprone-empty-catch): without memory it is told as another's
            }
        }
        Output(const Output&) = delete;
        Output& operator=(const Output&) = delete;

        qint64 Size() const override { return m_file->Size(); }
        void Reserve(qint64 size) override { m_file->Reserve(size); }
        void Write(const QByteArray& bytes) override { m_file->Write(bytes); }
        void SeekToEnd() override { m_file->SeekToEnd(); }
        void Resize(qint64 size) override { m_file->Resize(size); }
        void Sync() override { m_file->Sync(); }

    private:
        std::unique_ptr<platform::OutputFile> m_file;
        CString m_path;
        DiskWatch& m_watch;
    };

    DiskWatch& m_watch;
    platform::ScopedFileSystem m_installed;
};

DiskWatch::DiskWatch(CString folder, Told told) : m_folder(std::move(folder)), m_told(std::move(told))
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(QuietTime);
    connect(&m_quiet, &QTimer::timeout, this, [this] { LookWhenQuiet(); });
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { m_quiet.start(); });
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this](const QString& file) {
        m_touched.insert(platform::FromNative(file));
        m_quiet.start();
    });
    for (const CString& path : Find())
        Learn(path);
    m_ownWrites = std::make_unique<OwnWrites>(*this);
}

DiskWatch::~DiskWatch() = default;

bool DiskWatch::IsWatched(const CString& path) const
{
    return QThread::currentThread() == thread() && platform::FolderOf(path) == m_folder &&
           path.endsWith(u".xml", Qt::CaseInsensitive);
}

void DiskWatch::NoteOwnWrite(const CString& path)
{
    if (IsWatched(path)) Learn(path);
}

void DiskWatch::Learn(const CString& path)
{
    const QDateTime time = QFileInfo(platform::ToNative(path)).lastModified(); // see `Compare`
    const auto bytes = LookAt(path);
    if (bytes)
        m_known[path] = {HashOf(*bytes), bytes->size(), time};
    else
        m_known.erase(path);
}

void DiskWatch::LookWhenQuiet()
{
    if (platform::IsInLongWork())
        m_quiet.start();
    else
        Look();
}

void DiskWatch::Look()
{
    QSet<CString> paths = Find();
    for (const auto& [path, known] : m_known)
        paths.insert(path);
    QList<DiskChange> changes;
    for (const CString& path : std::as_const(paths))
        if (const auto change = Compare(path)) changes.append(*change);
    m_touched.clear();
    if (changes.isEmpty()) return;
    std::sort(changes.begin(), changes.end(),
              [](const DiskChange& left, const DiskChange& right) { return left.path < right.path; });
    RunGuarded([&] { m_told(changes); });
}

std::optional<DiskChange> DiskWatch::Compare(const CString& path)
{
    const auto known = m_known.find(path);
    const QFileInfo file(platform::ToNative(path));
    if (!file.exists()) {
        if (known == m_known.end()) return std::nullopt;
        m_known.erase(known);
        return DiskChange{path, DiskChange::Kind::Gone};
    }
    const QDateTime time = file.lastModified(); // before reading: what is written meanwhile has another
    const bool looksSame = known != m_known.end() && !m_touched.contains(path) &&
                           known->second.size == file.size() && known->second.time == time;
    if (looksSame) return std::nullopt;
    const auto bytes = LookAt(path);
    if (!bytes) return std::nullopt; // looked at again when it changes next
    Known now{HashOf(*bytes), bytes->size(), time};
    if (known == m_known.end()) {
        m_known.emplace(path, std::move(now));
        return DiskChange{path, DiskChange::Kind::Appeared};
    }
    const bool isOther = known->second.hash != now.hash;
    known->second = std::move(now);
    return isOther ? std::optional(DiskChange{path, DiskChange::Kind::Changed}) : std::nullopt;
}

/// A folder that is missing is waited for in the one above it.
QSet<CString> DiskWatch::Find()
{
    const QString folder = platform::ToNative(m_folder);
    if (!QFileInfo::exists(folder)) Watch({platform::ToNative(platform::FolderOf(m_folder))});
    Watch({folder}); // it may just have come
    QSet<CString> paths;
    QStringList files;
    for (const CString& name : platform::Files().FindFiles(m_folder, u".xml"_s)) {
        const CString path = m_folder + u'\\' + name;
        paths.insert(path);
        files.append(platform::ToNative(path));
    }
    Watch(files);
    return paths;
}

/// A file that was replaced is another one to the system and is watched no more.
void DiskWatch::Watch(const QStringList& paths)
{
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    QStringList missing;
    for (const QString& path : paths)
        if (!watched.contains(path) && QFileInfo::exists(path)) missing.append(path);
    if (!missing.isEmpty()) m_watcher.addPaths(missing);
}

} // namespace editor
