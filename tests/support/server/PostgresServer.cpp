#include "support/server/PostgresServer.h"

#include "support/Patience.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcessEnvironment>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

const QString Log = u"server.log"_s;

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

/// The server that a test program shares, taken down after its last test.
class SharedSurroundings : public ::testing::Environment
{
public:
    PostgresServer& Server()
    {
        if (!m_server) m_server = std::make_unique<PostgresServer>();
        return *m_server;
    }
    void TearDown() override { m_server.reset(); }

private:
    std::unique_ptr<PostgresServer> m_server;
};

/// Owned by the framework.
SharedSurroundings* const Shared = [] {
    auto* const shared = new SharedSurroundings;
    ::testing::AddGlobalTestEnvironment(shared);
    return shared;
}();

} // namespace

bool PostgresServer::IsInstalled()
{
    return !ProgramFolder().isEmpty();
}

PostgresServer::PostgresServer(Access access, Ordering ordering) : m_access(access)
{
    MakeCluster(ordering);
    if (m_access == Access::Encrypted) MakeCertificate();
    Start();
}

PostgresServer::~PostgresServer()
{
    if (HasEnded()) return;
    m_process.terminate(); // it waits for its clients, who have gone by now
    if (!m_process.waitForFinished(static_cast<int>(Patience().count()))) test::Kill(m_process);
}

void PostgresServer::MakeCluster(Ordering ordering)
{
    QStringList arguments{u"--pgdata"_s,   m_folder.Native(u"data"_s),
                          u"--username"_s, User(),
                          u"--auth"_s,     u"trust"_s,
                          u"--encoding"_s, u"UTF8"_s,
                          u"--locale"_s,   u"C"_s,
                          u"--no-sync"_s};
    if (ordering == Ordering::Chinese)
        arguments += {u"--locale-provider"_s, u"icu"_s, u"--icu-locale"_s, u"zh-CN-u-kn-true"_s};
    QProcess initdb;
    m_folder.SetUp(initdb, ProgramFolder() + u"initdb"_s, arguments);
    RequireSuccess(initdb);
}

/// In the places where the server looks for them.
void PostgresServer::MakeCertificate()
{
    QProcess openssl;
    m_folder.SetUp(openssl, u"openssl"_s,
                   {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-subj"_s, u"/CN=test"_s,
                    u"-keyout"_s, m_folder.Native(u"data\\server.key"_s), u"-out"_s,
                    m_folder.Native(u"data\\server.crt"_s)});
    RequireSuccess(openssl);
}

QString PostgresServer::Address()
{
    const qint64 id = QCoreApplication::applicationPid();
    return u"127.%1.%2.%3"_s.arg(id >> 16 & 0x7f).arg(id >> 8 & 0xff).arg(id & 0xff);
}

void PostgresServer::Start()
{
    // Another server may listen at all addresses of the machine.
    constexpr int Ports = 100;
    for (int i = 1; !StartAtPort() && i < Ports; ++i)
        ++m_port;
    if (HasEnded()) throw std::runtime_error("the PostgreSQL server has ended:\n" + ReadLog().toStdString());
}

/// False when it has ended since the port is not free.
bool PostgresServer::StartAtPort()
{
    QFile::remove(m_folder.Native(Log));
    const QString address = m_access == Access::Socket ? QString() : Address();
    m_folder.SetUp(m_process, ProgramFolder() + u"postgres"_s,
                   {u"-D"_s, m_folder.Native(u"data"_s), u"-k"_s, SocketFolder(), u"-c"_s,
                    u"listen_addresses="_s + address, u"-c"_s,
                    m_access == Access::Encrypted ? u"ssl=on"_s : u"ssl=off"_s, u"-c"_s, u"fsync=off"_s,
                    u"-c"_s, u"jit=off"_s, u"-c"_s, u"dynamic_shared_memory_type=mmap"_s, u"-c"_s,
                    u"log_min_error_statement=panic"_s, u"-p"_s, Port()});
    // Not into a pipe, which nobody empties while a test is busy.
    m_process.setStandardOutputFile(m_folder.Native(Log), QIODevice::Append);
    m_process.start();
    WaitFor(u"the PostgreSQL server"_s, [&] {
        m_process.waitForFinished(0);
        return HasEnded() || TakesConnections();
    });
    return !HasEnded() || !ReadLog().contains("Address already in use");
}

QByteArray PostgresServer::ReadLog() const
{
    QFile log(m_folder.Native(Log));
    return log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
}

bool PostgresServer::TakesConnections() const
{
    // Asking starts a program, so the socket comes first.
    if (!QFileInfo::exists(m_folder.Native(u".s.PGSQL."_s + Port()))) return false;
    QProcess ready;
    ready.start(ProgramFolder() + u"pg_isready"_s,
                {u"-q"_s, u"-h"_s, SocketFolder(), u"-p"_s, Port(), u"-d"_s, Database()});
    WaitForEnd(ready);
    return ready.exitStatus() == QProcess::NormalExit && ready.exitCode() == 0;
}

/// With the server's process as its $0.
void PostgresServer::RunScript(const QString& script) const
{
    QProcess shell;
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.setProgram(u"sh"_s);
    shell.setArguments({u"-c"_s, script, QString::number(ProcessId())});
    RequireSuccess(shell);
}

void PostgresServer::Signal(const QString& script)
{
    RunScript(script);
    WaitForEnd(m_process);
}

void PostgresServer::StandStill()
{
    // Itself first, so that it starts no more processes.
    RunScript(u"still() { until ps -o stat= -p $1 | grep -q '[TZ]' || ! ps -p $1 >/dev/null; do sleep 0.01; "
              u"done; }; "
              "kill -STOP $0; still $0; for child in $(ps -o pid= --ppid $0); do "
              "kill -STOP $child 2>/dev/null; still $child; done"_s);
}

void PostgresServer::GoOn()
{
    RunScript(u"kill -CONT $(ps -o pid= --ppid $0) $0"_s);
}

void PostgresServer::Stop()
{
    Signal(u"kill -INT $0"_s);
}

void PostgresServer::Kill()
{
    // Stopped first, it starts no more processes. What serves a client would go on for a moment without it,
    // and a new server refuses the data as long as one of these is there. A dead process may stay in the list
    // until somebody asks for it.
    Signal(u"kill -STOP $0; children=$(ps -o pid= --ppid $0); kill -KILL $0 $children 2>/dev/null; "
           "for child in $children; do while ps -o stat= -p $child | grep -qv Z; do sleep 0.01; done; done; "
           "true"_s);
}

void PostgresServer::StartAgain()
{
    Start();
}

PsqlAnswer PostgresServer::RunPsql(const QString& database, const QString& user,
                                   const QStringList& arguments) const
{
    QProcess psql;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PGCLIENTENCODING"_s, u"UTF8"_s);
    psql.setProcessEnvironment(environment);
    psql.start(ProgramFolder() + u"psql"_s,
               QStringList{u"-X"_s, u"-q"_s, u"-A"_s, u"-t"_s, u"-w"_s, u"-h"_s, SocketFolder(), u"-p"_s,
                           Port(), u"-U"_s, user, u"-d"_s, database} +
                   arguments);
    WaitForEnd(psql);
    return {psql.error() != QProcess::FailedToStart && psql.exitStatus() == QProcess::NormalExit &&
                psql.exitCode() == 0,
            QString::fromUtf8(psql.readAllStandardOutput()), QString::fromUtf8(psql.readAllStandardError())};
}

PsqlAnswer PostgresServer::Psql(const QString& database, const QString& user, const QString& sql) const
{
    return RunPsql(database, user, {u"-1"_s, u"-v"_s, u"ON_ERROR_STOP=1"_s, u"-c"_s, sql});
}

QStringList PostgresServer::PsqlEach(const QString& database, const QString& user,
                                     const QStringList& statements) const
{
    QStringList arguments{u"-o"_s, u"/dev/null"_s}; // the rows
    for (const QString& statement : statements)
        arguments += {u"-c"_s, statement, u"-c"_s, u"\\echo :SQLSTATE"_s};
    const PsqlAnswer answer = RunPsql(database, user, arguments);
    const QStringList states = answer.rows.split(u'\n', Qt::SkipEmptyParts);
    if (states.size() != statements.size()) throw std::runtime_error(answer.fault.toStdString());
    return states;
}

QString PostgresServer::Ask(const QString& database, const QString& sql) const
{
    PsqlAnswer answer = Psql(database, User(), sql);
    if (!answer.isDone) throw std::runtime_error((answer.fault + u"of: "_s + sql).toStdString());
    if (answer.rows.endsWith(u'\n')) answer.rows.chop(1);
    return answer.rows;
}

void PostgresServer::CreateDatabase(const QString& name) const
{
    // Not by a statement, which must not run within a transaction as those of `Ask` do.
    QProcess createdb;
    createdb.setProcessChannelMode(QProcess::MergedChannels);
    createdb.setProgram(ProgramFolder() + u"createdb"_s);
    createdb.setArguments({u"-h"_s, SocketFolder(), u"-p"_s, Port(), u"-U"_s, User(), u"-w"_s, name});
    RequireSuccess(createdb);
}

PostgresServer& SharedServer()
{
    if (!PostgresServer::IsInstalled()) throw std::runtime_error("package postgresql-15 has the server");
    return Shared->Server();
}

QString NewDatabaseName()
{
    static int count = 0;
    return u"buero_%1"_s.arg(++count);
}

} // namespace test
