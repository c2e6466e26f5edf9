#include "embedded/data/history/KeepingFiles.h"

#include "embedded/data/project/Look.h"
#include "platform/Apart.h"

#include <QtCore/QScopedValueRollback>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

/// Tells when the writing of a file breaks off, and when it has ended.
class KeepingFiles::Output : public platform::OutputFile
{
public:
    Output(std::unique_ptr<platform::OutputFile> file, CString path, KeepingFiles& files)
        : m_file(std::move(file)), m_path(std::move(path)), m_files(files), m_part(files)
    {
    }
    ~Output() override
    {
        m_file.reset(); // closed before another program may have it
        try {
            m_files.AfterWriting(m_path);
        } catch (...) { // NOLINT(bugprone-empty-catch): without memory nobody can be told
        }
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    qint64 Size() const override { return m_file->Size(); }
    void Reserve(qint64 size) override
    {
        // A file that has just been made is taken away again.
        if (Size() > 0) return m_file->Reserve(size);
        Watch([&] { m_file->Reserve(size); });
    }
    void Write(const QByteArray& bytes) override
    {
        Watch([&] { m_file->Write(bytes); });
    }
    void SeekToEnd() override
    {
        Watch([&] { m_file->SeekToEnd(); });
    }
    void Resize(qint64 size) override
    {
        Watch([&] { m_file->Resize(size); });
    }
    void Sync() override
    {
        Watch([&] { m_file->Sync(); });
    }

private:
    template <typename Step>
    void Watch(Step step)
    {
        try {
            step();
        } catch (...) {
            m_files.m_torn = m_path;
            throw;
        }
    }

    std::unique_ptr<platform::OutputFile> m_file;
    CString m_path;
    KeepingFiles& m_files;
    Part m_part;
};

KeepingFiles::Step::~Step()
{
    --m_files.m_running;
    m_files.Release();
}

KeepingFiles::Part::~Part()
{
    if (--m_files.m_running == 0 && !m_files.m_work.empty()) m_files.ReleaseLater();
}

KeepingFiles::KeepingFiles(History history, IsRuleFile isRuleFile, MayGoOn mayGoOn, Others others)
    : FileSystemProxy(platform::Files()), m_history(std::move(history)), m_isRuleFile(std::move(isRuleFile)),
      m_mayGoOn(std::move(mayGoOn)), m_others(std::move(others)), m_installed(*this)
{
}

KeepingFiles::~KeepingFiles() = default;

// Reading needs no lock. One that cannot be had, as in a project that nobody may write, is asked for again
// when something is written.
std::optional<QByteArray> KeepingFiles::Read(const CString& path, CString* reason)
{
    if (!IsWatched(path)) return Target().Read(path, reason);
    try {
        Lock(path);
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): see above
    }
    Work& work = m_work[path];
    work.isRead = true;
    work.read = Target().Read(path, reason);
    ReleaseLater();
    // A save reads, too, so only the first reading shows what is worked on.
    if (!m_known.contains(path)) m_known[path].Know(work.read);
    return work.read;
}

std::unique_ptr<platform::OutputFile> KeepingFiles::OpenForWriting(const CString& path)
{
    if (!IsWatched(path)) return Target().OpenForWriting(path);
    Prepare(path);
    return std::make_unique<Output>(Target().OpenForWriting(path), path, *this);
}

bool KeepingFiles::Remove(const CString& path)
{
    if (!IsWatched(path)) return Target().Remove(path);
    try {
        Prepare(path);
    } catch (const platform::FileError&) {
        return false;
    }
    const bool removed = Target().Remove(path);
    AfterWriting(path);
    return removed;
}

// Whoever is refused here writes in place instead, and is told the reason there.
bool KeepingFiles::MoveOver(const CString& from, const CString& to)
{
    if (!IsWatched(to)) return Target().MoveOver(from, to);
    try {
        Prepare(to);
    } catch (const platform::FileError&) {
        return false;
    }
    const bool moved = Target().MoveOver(from, to);
    if (moved) AfterWriting(to);
    return moved;
}

bool KeepingFiles::IsWatched(const CString& path) const
{
    return !m_keeping && !Look::IsUnderWay() && QThread::currentThread() == m_loop.thread() &&
           m_isRuleFile(path);
}

void KeepingFiles::Lock(const CString& path)
{
    if (m_work[path].lock) return;
    RuleFileLock::GoOn goOn = [](const CString&, std::chrono::milliseconds) { return false; };
    if (!std::exchange(m_work[path].hasWaited, true)) goOn = m_others.wait ? m_others.wait() : nullptr;
    const Part waiting(*this); // whoever is asked may handle events, and what they do may end the work
    RuleFileLock lock(m_history.Project(), {path}, std::move(goOn));
    m_work[path].lock = std::move(lock);
}

/// Everything that comes before a file is changed. Raises `platform::FileError`.
void KeepingFiles::Prepare(const CString& path)
{
    const Part asking(*this); // a question handles events
    m_work[path].isWriting = true;
    const bool isLate = !m_work[path].lock;
    try {
        Lock(path);
    } catch (const Error& error) {
        throw platform::FileError(path, error.Message());
    }
    Work& work = m_work[path];
    work.isWriting = true;
    if (isLate && work.isRead && Target().Read(path, nullptr) != work.read)
        throw platform::FileError(path, u"另一个程序刚刚改了它，没有写；请再做一次"_s);
    const bool isTorn = m_torn == path && !path.isEmpty();
    if (!isTorn) LookForOthers(path, work);
    BeforeChange(path);
}

/// Keeps what another program has saved in the specialty since it was read here.
void KeepingFiles::LookForOthers(const CString& path, Work& work)
{
    const auto known = m_known.find(path);
    if (known == m_known.end() || !m_others.specialty || work.copy) return;
    const std::optional<QByteArray> now = Target().Read(path, nullptr);
    if (!known->second.IsOtherIn(now, m_others.specialty())) return;
    const QScopedValueRollback<bool> keeping(m_keeping, true);
    try {
        work.copy = m_history.KeepInAnyCase(path);
        work.former = now;
    } catch (const Error& error) {
        throw platform::FileError(path, error.Message());
    }
}

/// Ends the work on a file, unless its former bytes have to be put back first.
void KeepingFiles::AfterWriting(const CString& path)
{
    if (m_torn == path) return;
    const auto found = m_work.find(path);
    if (found == m_work.end()) return;
    const Work work = std::move(found->second);
    m_work.erase(found);
    const std::optional<QByteArray> written = Target().Read(path, nullptr);
    // What passes another program's rules on, as the writing of the version does, knows no more than before.
    if (work.copy && KnownSpecialty::IsSame(work.former.value_or(QByteArray()),
                                            written.value_or(QByteArray()), m_others.specialty()))
        return;
    m_known[path].Know(written);
    if (!work.copy || !m_others.writtenOver) return;
    Later([tell = m_others.writtenOver, path, copy = *work.copy] { tell(path, copy); });
}

/// From the event loop, but from none that only bridges a long piece of work: whoever reads and writes is in
/// the middle of it then.
void KeepingFiles::Later(const std::function<void()>& step)
{
    QTimer::singleShot(0, &m_loop, [this, step] { platform::IsInLongWork() ? Later(step) : step(); });
}

void KeepingFiles::ReleaseLater()
{
    if (std::exchange(m_releases, true)) return;
    Later([this] { Release(); });
}

/// What was read and not written by now was loaded to be worked on.
void KeepingFiles::Release()
{
    m_releases = false;
    if (m_running > 0) return; // the end of what runs asks again
    for (const auto& [path, work] : m_work)
        if (work.isRead && !work.isWriting) m_known[path].Know(work.read);
    m_work.clear();
    m_torn.clear();
}

void KeepingFiles::BeforeChange(const CString& path)
{
    const bool isTorn = std::exchange(m_torn, CString()) == path && !path.isEmpty();
    if (!isTorn) KeepNow(path);
}

void KeepingFiles::KeepNow(const CString& path)
{
    const QScopedValueRollback<bool> keeping(m_keeping, true);
    try {
        m_history.Keep(path);
    } catch (const Error& error) {
        m_goesOn = m_goesOn || m_mayGoOn(error);
        if (!m_goesOn) throw platform::FileError(path, error.Message());
    }
}

void KeepingFiles::Keep(const CString& path)
{
    m_known.erase(path);
    try {
        Lock(path);
    } catch (const Occupied&) {
        throw;
    } catch (const Error&) { // NOLINT(bugprone-empty-catch): where nothing can be written nobody writes
    }
    ReleaseLater();
    KeepNow(path);
}

} // namespace embedded
