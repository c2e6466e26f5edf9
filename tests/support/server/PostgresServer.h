#pragma once

#include "support/UnprivilegedFolder.h"

#include <QtCore/QProcess>
#include <QtCore/QStringList>

namespace test {

/// What the server's command-line client has answered.
struct PsqlAnswer
{
    bool isDone = false; ///< whether every statement was done
    QString rows;        ///< without headings, columns separated by "|"
    QString fault;       ///< what it complained of
};

/// By which ways a server can be reached.
enum class Access {
    Socket,    ///< a socket in its folder alone
    Plain,     ///< an address of this machine as well
    Encrypted, ///< the same, where connections may be encrypted
};

/// In which order a server has its texts.
enum class Ordering {
    /// That of the Chinese language with digits as the numbers that they make, not of their bytes, so that a
    /// query which relies on the order of bytes without saying so is found out.
    Chinese,
    Bytes, ///< what a server starts with where nobody asks for a language
};

/// A PostgreSQL server of its own for as long as it lives: in a temporary folder, on a socket in there. An
/// administrator's tests run it as nobody, since it refuses to be run by an administrator. It ends with this
/// object, and when the process dies before that, too. It trusts whoever reaches the socket.
///
/// It does not wait for the disk. What a process has written stays in the hands of the operating system when
/// the process is killed, so that this is no gentler than a server that waits; only a machine that loses its
/// power would tell the difference.
class PostgresServer
{
public:
    /// Raises `std::runtime_error` with what its programs said when it does not come up.
    explicit PostgresServer(Access access = Access::Socket, Ordering ordering = Ordering::Chinese);
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// Whether the programs are there (package postgresql-15).
    static bool IsInstalled();

    /// What a client connects with.
    QString SocketFolder() const { return m_folder.Native({}); }
    QString Port() const { return QString::number(m_port); }
    static QString Database() { return QStringLiteral("postgres"); }
    /// An address of this machine that no other server uses.
    static QString Address();
    /// Who may do everything.
    static QString User() { return QStringLiteral("tester"); }

    /// Whether it takes connections no more.
    bool HasEnded() const { return m_process.state() == QProcess::NotRunning; }
    qint64 ProcessId() const { return m_process.processId(); }

    /// Ends it; clients that are connected lose their connections.
    void Stop();
    /// Ends it and every process that serves a client at once, in the middle of what they do.
    void Kill();
    /// Stops all of its processes where they are, until `GoOn`: its system still takes connections and
    /// answers for those that there are, and nobody behind them says a word.
    void StandStill();
    void GoOn();
    /// Starts it again on the same data after `Stop` or `Kill`, and waits until it takes connections.
    void StartAgain();

    /// Runs statements, one transaction, as a user of a database.
    PsqlAnswer Psql(const QString& database, const QString& user, const QString& sql) const;
    /// Runs statements one by one, each whatever became of those before it, as a user of a database. Gives
    /// what the server calls the end of each, five characters: "00000" when it was done. Raises
    /// `std::runtime_error` when the user does not get in.
    QStringList PsqlEach(const QString& database, const QString& user, const QStringList& statements) const;
    /// The same as `Psql` as the user who may do everything. Raises `std::runtime_error` unless it is done;
    /// gives the rows, without the last end of line.
    QString Ask(const QString& database, const QString& sql) const;
    /// Creates a database. Everything of it goes with the server.
    void CreateDatabase(const QString& name) const;

private:
    void MakeCluster(Ordering ordering);
    void Start();
    bool StartAtPort();
    QByteArray ReadLog() const;
    bool TakesConnections() const;
    PsqlAnswer RunPsql(const QString& database, const QString& user, const QStringList& arguments) const;
    void RunScript(const QString& script) const;
    void Signal(const QString& script);

    void MakeCertificate();

    UnprivilegedFolder m_folder;
    Access m_access;
    int m_port = 5432;
    QProcess m_process;
};

/// The server of this test program: started when it is first asked for, ended after the last test. What a
/// test makes in it stays for the others: databases and users need names of their own. Whoever stops it
/// starts it again.
PostgresServer& SharedServer();

/// A name for a database of `SharedServer` that no other test of the program uses.
QString NewDatabaseName();

} // namespace test
