#pragma once

#include "support/TempFolder.h"

#include <QtCore/QProcess>

namespace test {

/// A PostgreSQL server of its own for as long as it lives: in a temporary folder, on a socket in there, with
/// no port. An administrator's tests run it as nobody, since it refuses to be run by an administrator. It
/// ends with this object, and when the process dies before that, too.
///
/// Its texts are in the order of the Chinese language with digits as the numbers that they make, not of their
/// bytes, so that a query which relies on the order of bytes without saying so is found out.
class PostgresServer
{
public:
    /// Raises `std::runtime_error` when it does not come up.
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

    TempFolder m_folder;
    QProcess m_process;
};

} // namespace test
