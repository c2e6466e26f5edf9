#include "embedded/OfficeDatabase.h"

#include "embedded/data/office/Office.h"
#include "support/Patience.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// Databases that tests have left empty. A new one is hundreds of files, which also have to be removed again.
QStringList& EmptyDatabases()
{
    static QStringList names;
    return names;
}

QString EmptyDatabase()
{
    if (!EmptyDatabases().isEmpty()) return EmptyDatabases().takeLast();
    const QString name = NewDatabaseName();
    SharedServer().CreateDatabase(name);
    return name;
}

} // namespace

OfficeDatabase::OfficeDatabase() : m_name(EmptyDatabase())
{
    AddUser(Administrator(), {});
    Ask(u"ALTER ROLE \"%1\" CREATEROLE; ALTER DATABASE \"%2\" OWNER TO \"%1\""_s.arg(User(Administrator()),
                                                                                     m_name));
}

OfficeDatabase::~OfficeDatabase()
{
    QStringList roles;
    for (const QString& user : m_users)
        roles.append(u"\"%1\""_s.arg(user));
    QStringList all = roles;
    for (const QString& right : {u"reader"_s, u"editor"_s, u"keeper"_s})
        all.append(u"\"%1_%2\""_s.arg(m_name, right));
    try {
        if (SharedServer().HasEnded()) return;
        Ask(u"ALTER DATABASE \"%1\" OWNER TO %2; DROP SCHEMA IF EXISTS ktqdde CASCADE; DROP OWNED BY %3; "
            "DROP ROLE IF EXISTS %4"_s.arg(m_name, PostgresServer::User(), roles.join(u','), all.join(u',')));
        EmptyDatabases().append(m_name);
    } catch (const std::exception&) {
        // The database is not what it was. It stays, and goes with the server.
    }
}

QString OfficeDatabase::Traces() const
{
    return Ask(u"SELECT nspname FROM pg_namespace WHERE nspname = 'ktqdde' UNION ALL "
               "SELECT rolname FROM pg_roles WHERE rolname LIKE '%1\\_%'"_s.arg(m_name));
}

QString OfficeDatabase::Clients() const
{
    return Ask(u"SELECT COALESCE(string_agg(pid::text, ','), '0') FROM pg_stat_activity "
               "WHERE datname = current_database() AND pid <> pg_backend_pid()"_s);
}

void OfficeDatabase::WaitForDead(const QString& clients) const
{
    WaitFor(u"the server's end of a dead client"_s, [&] {
        return Ask(u"SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
                   "pid <> pg_backend_pid() AND backend_type = 'client backend' AND pid NOT IN (%1)"_s.arg(
                       clients)) == u"0";
    });
}

QString OfficeDatabase::User(const CString& service) const
{
    return m_name + u"的 "_s + service;
}

void OfficeDatabase::AddUser(const CString& service, const QString& role)
{
    const QString user = User(service);
    m_users.append(user);
    QString sql = u"CREATE ROLE \"%1\" LOGIN;"_s.arg(user);
    if (!role.isEmpty()) sql += u"GRANT \"%1_%2\" TO \"%3\""_s.arg(m_name, role, user);
    Ask(sql);
    m_services.Add(service, SharedServer(), m_name, user);
}

PsqlAnswer OfficeDatabase::Psql(const CString& service, const QString& sql) const
{
    return SharedServer().Psql(m_name, User(service), sql);
}

AnswerLost::AnswerLost(const OfficeDatabase& database) : m_database(database)
{
    m_database.Ask(u"CREATE FUNCTION public.hang_up() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER "
                   "AS 'BEGIN PERFORM pg_terminate_backend(pg_backend_pid()); RETURN NULL; END'; "
                   "CREATE TRIGGER hang_up BEFORE INSERT ON ktqdde.versions FOR EACH ROW "
                   "EXECUTE FUNCTION public.hang_up()"_s);
}

AnswerLost::~AnswerLost()
{
    m_database.Ask(u"DROP FUNCTION public.hang_up() CASCADE"_s);
}

TestOffice::TestOffice()
{
    embedded::Office::Create(Administrator());
    AddUser(Reader(), u"reader"_s);
    AddUser(Editor(), u"editor"_s);
    AddUser(Keeper(), u"keeper"_s);
    AddUser(Stranger(), {});
}

} // namespace test
