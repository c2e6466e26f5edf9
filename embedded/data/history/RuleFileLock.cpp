#include "embedded/data/history/RuleFileLock.h"

#include "platform/Paths.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QThread>

#include <chrono>
#include <map>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace embedded {

namespace {

constexpr std::chrono::seconds UsualWait = 10s;
constexpr std::chrono::milliseconds Silence = 1s;
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
    if (project.exists()) project.mkpath(u"history/locks"_s);
    return project.filePath(u"history/locks/%1.lock"_s.arg(QLatin1StringView(hash.left(HashLength))));
}

/// Where the mark of a rule file stands.
QString MarkOf(const QDir& project, const QString& file)
{
    // Named from the project on, which other machines may see under another path.
    const QString inside = project.relativeFilePath(file);
    if (!inside.startsWith(u"../"_s) && QDir::isRelativePath(inside)) return MarkInProject(project, inside);
    const QFileInfo info(file);
    if (QFileInfo(info.absolutePath()).isWritable())
        return info.absolutePath() + u"/."_s + info.fileName().toCaseFolded() + u".lock"_s;
    return MarkInProject(project, file);
}

CString Holder(const QLockFile& mark)
{
    qint64 process = 0;
    QString host;
    QString program;
    if (!mark.getLockInfo(&process, &host, &program)) return u"另一个程序"_s;
    return u"%1（进程 %2，机器 %3）"_s.arg(program).arg(process).arg(host);
}

[[noreturn]] void Refuse(const QLockFile& mark, const CString& shown, std::chrono::seconds waited)
{
    if (mark.error() == QLockFile::LockFailedError)
        throw Occupied(
            u"%1 正由%2使用，等了 %3 秒还没有放开；什么也没有写，请稍后再试"_s.arg(shown, Holder(mark))
                .arg(waited.count()));
    throw Error(u"%1：不能写：标记写不了：%2"_s.arg(shown, QDir::toNativeSeparators(mark.fileName())));
}

/// The marks that this process holds. The module may name one file in two ways within one save.
std::map<QString, std::weak_ptr<QLockFile>>& HeldMarks()
{
    static std::map<QString, std::weak_ptr<QLockFile>> held;
    return held;
}

/// `left` is what remains of the waiting.
void Take(QLockFile& mark, const CString& shown, const QDeadlineTimer& left, std::chrono::seconds patience,
          const RuleFileLock::Word& word)
{
    const QDeadlineTimer silence(Silence);
    bool told = !word;
    while (!mark.tryLock(0)) {
        if (mark.error() != QLockFile::LockFailedError || left.hasExpired()) Refuse(mark, shown, patience);
        if (!told && silence.hasExpired()) {
            told = true;
            word(u"%1 正由%2使用，等它放开……"_s.arg(shown, Holder(mark)));
        }
        QThread::msleep(QRandomGenerator::global()->bounded(ShortestPause, LongestPause));
    }
}

} // namespace

Occupied::~Occupied() = default;

RuleFileLock::RuleFileLock(const ProjectFolder& project, const CStringArray& paths, const Word& word)
{
    const QDir folder(Resolved(platform::ToNative(project.Path())));
    // In one order in every program, so that no two of them wait for each other.
    std::map<QString, CString> marks;
    for (const CString& path : paths) {
        const QString native = platform::ToNative(path);
        marks.emplace(MarkOf(folder, Resolved(native)), native);
    }
    const std::chrono::seconds patience = Patience();
    const QDeadlineTimer left(patience);
    for (const auto& [file, shown] : marks) {
        auto mark = HeldMarks()[file].lock();
        if (!mark) {
            mark = std::make_shared<QLockFile>(file);
            mark->setStaleLockTime(static_cast<int>(OldMark.count()));
            Take(*mark, shown, left, patience, word);
            HeldMarks()[file] = mark;
        }
        m_marks.push_back(std::move(mark));
    }
}

RuleFileLock::~RuleFileLock() = default;
RuleFileLock::RuleFileLock(RuleFileLock&&) noexcept = default;
RuleFileLock& RuleFileLock::operator=(RuleFileLock&&) noexcept = default;

} // namespace embedded
