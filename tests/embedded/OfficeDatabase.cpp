#include "embedded/OfficeDatabase.h"

#include "embedded/data/office/Office.h"

using namespace Qt::StringLiterals;

namespace test {

OfficeDatabase::OfficeDatabase() : m_name(NewDatabaseName())
{
    const PostgresServer& server = SharedServer();
    server.CreateDatabase(m_name);
    AddUser(Administrator(), {});
    Ask(u"ALTER ROLE \"%1\" CREATEROLE; ALTER DATABASE \"%2\" OWNER TO \"%1\""_s.arg(User(Administrator()),
                                                                                     m_name));
}

QString OfficeDatabase::User(const CString& service) const
{
    return m_name + u"的 "_s + service;
}

void OfficeDatabase::AddUser(const CString& service, const QString& role)
{
    const QString user = User(service);
    QString sql = u"CREATE ROLE \"%1\" LOGIN;"_s.arg(user);
    if (!role.isEmpty()) sql += u"GRANT \"%1_%2\" TO \"%3\""_s.arg(m_name, role, user);
    Ask(sql);
    m_services.Add(service, SharedServer(), m_name, user);
}

PsqlAnswer OfficeDatabase::Psql(const CString& service, const QString& sql) const
{
    return SharedServer().Psql(m_name, User(service), sql);
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
