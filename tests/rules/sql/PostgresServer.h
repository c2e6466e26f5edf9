#pragma once

#include "support/TempFolder.h"

#include <QtCore/QProcess>

namespace test {

/// A temporary folder for a program that must not be run by an administrator: an administrator's folder is
/// given to the user nobody, and the administrator, who may have given up the right to pass over permissions,
/// stays in by the group. Nobody else gets in. What the program has left goes with the folder.
class UnprivilegedFolder
{
public:
    UnprivilegedFolder();
    ~UnprivilegedFolder();
    UnprivilegedFolder(const UnprivilegedFolder&) = delete;
    UnprivilegedFolder& operator=(const UnprivilegedFolder&) = delete;

    QString Native(const QString& name) const { return m_folder.Native(name); }
    /// Sets a program up to run in here as the user whom the folder belongs to, and to be interrupted when
    /// this process dies.
    void SetUp(QProcess& process, const QString& program, const QStringList& arguments) const;

private:
    TempFolder m_folder;
    bool m_isForNobody;
};

/// A PostgreSQL server of its own for as long as it lives: in a temporary folder, on a socket in there, with
/// no port. An administrator's tests run it as nobody, since it refuses to be run by an administrator. It
/// ends with this object, and when the process dies before that, too.
///
/// Its texts are in the order of the Chinese language with digits as the numbers that they make, not of their
/// bytes, so that a query which relies on the order of bytes without saying so is found out.
class PostgresServer
{
public:
    /// Raises `std::runtime_error` with what its programs said when it does not come up.
    PostgresServer();
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// Whether the programs are there (package postgresql-15).
    static bool IsInstalled();

    /// What a client connects with.
    QString SocketFolder() const { return m_folder.Native({}); }
    static QString Database() { return QStringLiteral("postgres"); }
    static QString User() { return QStringLiteral("tester"); }

    /// Whether it takes connections no more.
    bool HasEnded() const { return m_process.state() == QProcess::NotRunning; }
    qint64 ProcessId() const { return m_process.processId(); }

private:
    void MakeCluster();
    void Start();

    UnprivilegedFolder m_folder;
    QProcess m_process;
};

} // namespace test
