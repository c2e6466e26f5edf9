#pragma once

#include "support/server/PostgresServer.h"
#include "support/server/ServiceFile.h"

namespace test {

/// A database of `SharedServer` for an office, and services by which people reach it. The names of the
/// services are those of the office, as each person's machine has a file of its own.
class OfficeDatabase
{
public:
    /// One without an office, and its administrator, who owns it and may create roles.
    OfficeDatabase();
    ~OfficeDatabase();
    OfficeDatabase(const OfficeDatabase&) = delete;
    OfficeDatabase& operator=(const OfficeDatabase&) = delete;

    /// The service of the administrator.
    static CString Administrator() { return QStringLiteral("buero"); }
    const QString& Name() const noexcept { return m_name; }
    /// The user of a service.
    QString User(const CString& service) const;
    /// Adds a user and a service of that name. `role` is "reader", "editor", "keeper" or empty.
    void AddUser(const CString& service, const QString& role);
    /// Runs statements by the server's command-line client as the user of a service.
    PsqlAnswer Psql(const CString& service, const QString& sql) const;
    /// The same as who may do everything; raises unless it is done.
    QString Ask(const QString& sql) const { return SharedServer().Ask(m_name, sql); }
    /// The numbers of the server's processes that serve this database, for `WaitForDead`; "0" for none.
    QString Clients() const;
    /// Waits until whatever dead clients have asked for is done or undone, also what the server has not read
    /// yet: until it serves nobody any more but `clients`.
    void WaitForDead(const QString& clients = QStringLiteral("0")) const;
    /// Everything that the creation of an office makes in the database and beside it; empty where nothing is
    /// left of one.
    QString Traces() const;
    ServiceFile& Services() noexcept { return m_services; }

private:
    QString m_name;
    QStringList m_users;
    ServiceFile m_services;
};

/// The server ends the connection of whoever publishes in an office, in the middle of it, while one lives.
class AnswerLost
{
public:
    explicit AnswerLost(const OfficeDatabase& database);
    ~AnswerLost();
    AnswerLost(const AnswerLost&) = delete;
    AnswerLost& operator=(const AnswerLost&) = delete;

private:
    const OfficeDatabase& m_database;
};

/// An office with a person of every right.
class TestOffice : public OfficeDatabase
{
public:
    TestOffice();

    static CString Reader() { return QStringLiteral("reader"); }
    static CString Editor() { return QStringLiteral("editor"); }
    static CString Keeper() { return QStringLiteral("keeper"); }
    /// Has no role.
    static CString Stranger() { return QStringLiteral("stranger"); }
};

} // namespace test
