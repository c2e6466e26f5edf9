#include "embedded/data/history/RuleFileLock.h"

#include "platform/Paths.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QThread>

#include <chrono>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace embedded {

namespace {

constexpr std::chrono::seconds UsualWait = 10s;
/// Between two tries. By chance, so that two programs that wait do not keep in step.
constexpr int ShortestPause = 2;
constexpr int LongestPause = 20;
/// A mark is empty when its program died while making it, and names nobody. The toolkit never takes one from
/// a living program of this machine, however old it is.
constexpr std::chrono::milliseconds OldMark = 60s;
constexpr qsizetype HashLength = 16;

std::chrono::seconds Patience()
{
    bool isNumber = false;
    const int seconds = qEnvironmentVariableIntValue("KTQDDE_LOCK_WAIT", &isNumber);
    return isNumber && seconds >= 0 ? std::chrono::seconds(seconds) : UsualWait;
}

/// The file that a native path leads to, be it by links. It may be missing.
QString Resolved(const QString& native)
{
    const QFileInfo file(native);
    if (file.exists()) return file.canonicalFilePath();
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return (folder.isEmpty() ? file.absolutePath() : folder) + u'/' + file.fileName();
}

QString MarkInProject(const QDir& project, const QString& name)
{
    // Letter case makes two names of one file on some systems; one mark for two files on the others is no
    // harm.
    const QByteArray hash =
        QCryptographicHash::hash(name.toCaseFolded().toUtf8(), QCryptographicHash::Sha1).toHex();
    const QString locks = platform::ToNative(ProjectFolder::LocksBelow());
    if (project.exists()) project.mkpath(locks);
    return project.filePath(u"%1/%2.lock"_s.arg(locks, QLatin1StringView(hash.left(HashLength))));
}

/// Where the mark of a rule file stands that belongs to no project; empty where none can.
QString MarkBeside(const QString& file)
{
    const QFileInfo info(file);
    if (!QFileInfo(info.absolutePath()).isWritable()) return {};
    return info.absolutePath() + u"/."_s + info.fileName().toCaseFolded() + u".lock"_s;
}

/// Where the mark of a rule file stands.
QString MarkOf(const QDir& project, const QString& file)
{
    // Named from the project on, which other machines may see under another path.
    const QString inside = project.relativeFilePath(file);
    if (!inside.startsWith(u"../"_s) && QDir::isRelativePath(inside)) return MarkInProject(project, inside);
    const QString beside = MarkBeside(file);
    return beside.isEmpty() ? MarkInProject(project, file) : beside;
}

CString Holder(const QLockFile& mark)
{
    qint64 process = 0;
    QString host;
    QString program;
    if (!mark.getLockInfo(&process, &host, &program)) return u"另一个程序"_s;
    return u"%1（进程 %2，机器 %3）"_s.arg(program).arg(process).arg(host);
}

/// The marks that this process holds. The module may name one file in two ways within one save.
std::map<QString, std::weak_ptr<QLockFile>>& HeldMarks()
{
    static std::map<QString, std::weak_ptr<QLockFile>> held;
    return held;
}

/// The wait for all the files of a lock.
class Wait
{
public:
    explicit Wait(RuleFileLock::GoOn goOn) : m_goOn(std::move(goOn)) { m_since.start(); }

    /// Takes the mark in `file`, which stands for the rule file that is `shown`.
    std::shared_ptr<QLockFile> Take(const QString& file, const CString& shown)
    {
        auto mark = std::make_shared<QLockFile>(file);
        mark->setStaleLockTime(static_cast<int>(OldMark.count()));
        for (;;) {
            // Looked for each time: an event that was handled meanwhile may have taken it.
            if (auto held = HeldMarks()[file].lock()) return held;
            if (mark->tryLock(0)) break;
            if (mark->error() != QLockFile::LockFailedError)
                throw Error(u"%1：不能写：标记写不了：%2"_s.arg(shown, QDir::toNativeSeparators(file)));
            Ask(shown, Holder(*mark));
            QThread::msleep(QRandomGenerator::global()->bounded(ShortestPause, LongestPause));
        }
        HeldMarks()[file] = mark;
        return mark;
    }

private:
    /// Raises what ends the wait.
    void Ask(const CString& shown, const CString& holder) const
    {
        const std::chrono::milliseconds waited(m_since.elapsed());
        if (waited >= m_patience)
            throw Occupied(
                u"%1 正由%2使用，等了 %3 秒还没有放开；什么也没有写，请稍后再试"_s.arg(shown, holder)
                    .arg(m_patience.count()));
        if (m_goOn && !m_goOn(u"%1 正由%2使用，等它放开……"_s.arg(shown, holder), waited))
            throw WaitEnded(u"%1 正由%2使用，没有再等；什么也没有写，请稍后再试"_s.arg(shown, holder));
    }

    RuleFileLock::GoOn m_goOn;
    std::chrono::seconds m_patience = Patience();
    QElapsedTimer m_since;
};

} // namespace

Occupied::~Occupied() = default;
WaitEnded::~WaitEnded() = default;

RuleFileLock::RuleFileLock(const ProjectFolder& project, const CStringArray& paths, GoOn goOn)
{
    const QDir folder(Resolved(platform::ToNative(project.Path())));
    Marks marks;
    for (const CString& path : paths) {
        const QString native = platform::ToNative(path);
        marks.emplace(MarkOf(folder, Resolved(native)), native);
    }
    Take(marks, std::move(goOn));
}

RuleFileLock::RuleFileLock(const CStringArray& paths, GoOn goOn)
{
    Marks marks;
    for (const CString& path : paths) {
        const QString native = platform::ToNative(path);
        if (const QString mark = MarkBeside(Resolved(native)); !mark.isEmpty()) marks.emplace(mark, native);
    }
    Take(marks, std::move(goOn));
}

/// In one order in every program, so that no two of them wait for each other.
void RuleFileLock::Take(const Marks& marks, GoOn goOn)
{
    Wait wait(std::move(goOn));
    for (const auto& [file, shown] : marks)
        m_marks.push_back(wait.Take(file, shown));
}

RuleFileLock::~RuleFileLock() = default;
RuleFileLock::RuleFileLock(RuleFileLock&&) noexcept = default;
RuleFileLock& RuleFileLock::operator=(RuleFileLock&&) noexcept = default;

} // namespace embedded
