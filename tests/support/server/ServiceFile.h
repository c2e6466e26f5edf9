#pragma once

#include "support/TempFolder.h"
#include "support/server/PostgresServer.h"

#include <QtCore/QByteArray>

namespace test {

/// A connection service file ("pg_service.conf") that this process and those that it starts use for as long
/// as this lives, in place of any other.
class ServiceFile
{
public:
    ServiceFile();
    ~ServiceFile();
    ServiceFile(const ServiceFile&) = delete;
    ServiceFile& operator=(const ServiceFile&) = delete;

    /// Adds an entry for a user of a database. A server of a machine that has too much to do, which takes
    /// long to start a process, is waited for.
    void Add(const CString& name, const PostgresServer& server, const QString& database, const QString& user);
    /// Adds lines as they are.
    void AddText(const QString& text);
    /// Lets all entries have the usual times again, for tests of a server that does not answer.
    void ForgetPatience();
    QString Native() const;

private:
    TempFolder m_folder;
    QByteArray m_text;
    QByteArray m_before;
    bool m_wasSet;
};

} // namespace test
