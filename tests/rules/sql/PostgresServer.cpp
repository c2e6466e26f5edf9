#include "rules/sql/PostgresServer.h"

#include "support/Patience.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// The folder of the newest server, with a slash at its end; empty when there is none.
QString ProgramFolder()
{
    const QDir versions(u"/usr/lib/postgresql"_s);
    QString found;
    for (const QString& version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (QFileInfo(versions.filePath(version + u"/bin/initdb"_s)).isExecutable())
            found = versions.filePath(version + u"/bin/"_s);
    return found;
}

bool IsAdministrator()
{
    QProcess id;
    id.start(u"id"_s, {u"-u"_s});
    WaitForEnd(id);
    return id.readAllStandardOutput().trimmed() == "0";
}

bool HasSucceeded(const QProcess& process)
{
    return process.error() != QProcess::FailedToStart && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

QString EndOf(const QProcess& process)
{
    if (process.error() == QProcess::FailedToStart) return process.errorString();
    if (process.exitStatus() == QProcess::CrashExit) return u"crashed"_s;
    return u"exit code %1"_s.arg(process.exitCode());
}

/// Why a program could not do its work, and what it said.
std::runtime_error Complaint(QProcess& process)
{
    const QString command = (QStringList(process.program()) + process.arguments()).join(u' ');
    return std::runtime_error((command + u": "_s + EndOf(process) + u'\n').toStdString() +
                              process.readAll().toStdString());
}

void RequireSuccess(QProcess& process)
{
    process.start();
    WaitForEnd(process);
    if (!HasSucceeded(process)) throw Complaint(process);
}

} // namespace

UnprivilegedFolder::UnprivilegedFolder() : m_isForNobody(IsAdministrator())
{
    if (!m_isForNobody) return;
    QProcess owner;
    owner.setProcessChannelMode(QProcess::MergedChannels);
    owner.setProgram(u"sh"_s);
    owner.setArguments({u"-c"_s, u"chmod 770 \"$0\" && chown nobody \"$0\""_s, Native({})});
    RequireSuccess(owner);
}

UnprivilegedFolder::~UnprivilegedFolder()
{
    if (!m_isForNobody) return;
    QProcess remover; // what is closed to the group, its owner alone removes
    SetUp(remover, u"find"_s, {Native({}), u"-mindepth"_s, u"1"_s, u"-delete"_s});
    remover.start();
    remover.waitForFinished(static_cast<int>(Patience().count()));
}

void UnprivilegedFolder::SetUp(QProcess& process, const QString& program, const QStringList& arguments) const
{
    QStringList words{u"--pdeathsig"_s, u"INT"_s};
    if (m_isForNobody) words += {u"--reuid"_s, u"nobody"_s, u"--regid"_s, u"nogroup"_s, u"--clear-groups"_s};
    process.setProgram(u"setpriv"_s);
    process.setArguments(words + QStringList{u"--"_s, program} + arguments);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(Native({}));
}

bool PostgresServer::IsInstalled()
{
    return !ProgramFolder().isEmpty();
}

PostgresServer::PostgresServer()
{
    MakeCluster();
    Start();
}

PostgresServer::~PostgresServer()
{
    if (HasEnded()) return;
    m_process.terminate(); // it waits for its clients, who have gone by now
    if (!m_process.waitForFinished(static_cast<int>(Patience().count()))) Kill(m_process);
}

void PostgresServer::MakeCluster()
{
    QProcess initdb;
    m_folder.SetUp(initdb, ProgramFolder() + u"initdb"_s,
                   {u"--pgdata"_s, m_folder.Native(u"data"_s), u"--username"_s, User(), u"--auth"_s,
                    u"trust"_s, u"--encoding"_s, u"UTF8"_s, u"--locale"_s, u"C"_s, u"--locale-provider"_s,
                    u"icu"_s, u"--icu-locale"_s, u"zh-CN-u-kn-true"_s, u"--no-sync"_s});
    RequireSuccess(initdb);
}

void PostgresServer::Start()
{
    const QString socket = m_folder.Native(u".s.PGSQL.5432"_s);
    m_folder.SetUp(m_process, ProgramFolder() + u"postgres"_s,
                   {u"-D"_s, m_folder.Native(u"data"_s), u"-k"_s, SocketFolder(), u"-c"_s,
                    u"listen_addresses="_s, u"-c"_s, u"fsync=off"_s, u"-c"_s, u"jit=off"_s, u"-p"_s,
                    u"5432"_s});
    m_process.start();
    WaitFor(u"the PostgreSQL server's socket"_s, [&] {
        if (m_process.waitForFinished(0) || HasEnded()) throw Complaint(m_process);
        return QFileInfo::exists(socket);
    });
}

} // namespace test
