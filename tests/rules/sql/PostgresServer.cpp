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

/// Sets a program up to run as somebody who is no administrator, and to be interrupted when this process
/// dies.
void SetUp(QProcess& process, const QString& program, const QStringList& arguments)
{
    QStringList words{u"--pdeathsig"_s, u"INT"_s};
    if (IsAdministrator())
        words += {u"--reuid"_s, u"nobody"_s, u"--regid"_s, u"nogroup"_s, u"--clear-groups"_s};
    process.setProgram(u"setpriv"_s);
    process.setArguments(words + QStringList{u"--"_s, ProgramFolder() + program} + arguments);
    process.setProcessChannelMode(QProcess::MergedChannels);
}

void RequireSuccess(QProcess& process, const char* what)
{
    process.start();
    WaitForEnd(process);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error(what + process.readAll().toStdString());
}

} // namespace

bool PostgresServer::IsInstalled()
{
    return !ProgramFolder().isEmpty();
}

PostgresServer::PostgresServer()
{
    if (IsAdministrator()) {
        QProcess owner;
        owner.setProgram(u"chown"_s);
        owner.setArguments({u"nobody:nogroup"_s, SocketFolder()});
        RequireSuccess(owner, "chown: ");
    }
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
    SetUp(initdb, u"initdb"_s,
          {u"--pgdata"_s, m_folder.Native(u"data"_s), u"--username"_s, User(), u"--auth"_s, u"trust"_s,
           u"--encoding"_s, u"UTF8"_s, u"--locale"_s, u"C"_s, u"--locale-provider"_s, u"icu"_s,
           u"--icu-locale"_s, u"zh-CN-u-kn-true"_s, u"--no-sync"_s});
    initdb.setWorkingDirectory(SocketFolder());
    RequireSuccess(initdb, "initdb: ");
}

void PostgresServer::Start()
{
    const QString socket = m_folder.Native(u".s.PGSQL.5432"_s);
    SetUp(m_process, u"postgres"_s,
          {u"-D"_s, m_folder.Native(u"data"_s), u"-k"_s, SocketFolder(), u"-c"_s, u"listen_addresses="_s,
           u"-c"_s, u"fsync=off"_s, u"-c"_s, u"jit=off"_s, u"-p"_s, u"5432"_s});
    m_process.setWorkingDirectory(SocketFolder());
    m_process.start();
    WaitFor(u"the PostgreSQL server's socket"_s, [&] {
        if (m_process.waitForFinished(0)) throw std::runtime_error(m_process.readAll().toStdString());
        return QFileInfo::exists(socket);
    });
}

} // namespace test
