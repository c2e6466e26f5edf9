#include "editor/files/OpenMark.h"

#include "platform/Paths.h"
#include "platform/TimeText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSysInfo>
#include <QtCore/QUuid>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Whether a program of another machine still runs cannot be seen from here.
constexpr int LongestOpenDays = 7;

/// Who has made a mark; nothing when it is gone, was made by this process, or its program is no more. The
/// mark of a program that has died goes.
std::optional<CString> HolderOf(const QString& file)
{
    QLockFile mark(file);
    mark.setStaleLockTime(0); // never by its age
    qint64 process = 0;
    QString host;
    QString program;
    if (!mark.getLockInfo(&process, &host, &program)) return std::nullopt;
    const bool isHere = host == QSysInfo::machineHostName();
    if (isHere && process == QCoreApplication::applicationPid()) return std::nullopt;
    const QDateTime since = QFileInfo(file).lastModified();
    if (!isHere && since.daysTo(QDateTime::currentDateTime()) > LongestOpenDays) return std::nullopt;
    if (mark.tryLock(0)) return std::nullopt;
    return u"%1（进程 %2，机器 %3，%4 打开）"_s.arg(program).arg(process).arg(host,
                                                                              platform::TimeText(since));
}

/// The marks in a project, those that were made first before the others.
QStringList MarksOf(const embedded::ProjectFolder& project)
{
    const QDir folder(MarkFolderOf(project));
    QStringList files;
    for (const QString& name : folder.entryList({u"open-*.lock"_s}, QDir::Files, QDir::Time | QDir::Reversed))
        files.append(folder.filePath(name));
    return files;
}

} // namespace

QString MarkFolderOf(const embedded::ProjectFolder& project)
{
    return QDir(platform::ToNative(project.Path()))
        .filePath(platform::ToNative(embedded::ProjectFolder::LocksBelow()));
}

OpenMark::OpenMark(const embedded::ProjectFolder& project)
{
    const QDir folder(MarkFolderOf(project));
    if (!QDir(platform::ToNative(project.Path())).exists() || !folder.mkpath(u"."_s)) return;
    const QString name = QUuid::createUuid().toString(QUuid::Id128);
    m_mark = std::make_unique<QLockFile>(folder.filePath(u"open-%1.lock"_s.arg(name)));
    m_mark->setStaleLockTime(0);
    if (!m_mark->tryLock(0)) m_mark.reset();
}

OpenMark::~OpenMark() = default;

std::optional<CString> OtherProgramWithProject(const embedded::ProjectFolder& project)
{
    CStringArray holders;
    for (const QString& file : MarksOf(project))
        if (const auto holder = HolderOf(file)) holders.append(*holder);
    if (holders.isEmpty()) return std::nullopt;
    return holders.join(u"、"_s);
}

bool HasUnsignedMark(const embedded::ProjectFolder& project)
{
    const QStringList files = MarksOf(project);
    return std::any_of(files.begin(), files.end(), [](const QString& file) {
        qint64 process = 0;
        QString host;
        QString program;
        return !QLockFile(file).getLockInfo(&process, &host, &program) && QFileInfo::exists(file);
    });
}

} // namespace editor
