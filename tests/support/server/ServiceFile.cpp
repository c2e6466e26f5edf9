#include "support/server/ServiceFile.h"

#include "support/Patience.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace test {

namespace {

constexpr const char* Variable = "PGSERVICEFILE";
const CString Name = u"pg_service.conf"_s;

QString PatienceLine()
{
    return u"connect_timeout=%1\n"_s.arg(std::chrono::ceil<std::chrono::seconds>(Patience()).count());
}

} // namespace

ServiceFile::ServiceFile() : m_before(qgetenv(Variable)), m_wasSet(qEnvironmentVariableIsSet(Variable))
{
    AddText({});
    qputenv(Variable, Native().toUtf8());
}

ServiceFile::~ServiceFile()
{
    if (m_wasSet)
        qputenv(Variable, m_before);
    else
        qunsetenv(Variable);
}

void ServiceFile::Add(const CString& name, const PostgresServer& server, const QString& database,
                      const QString& user)
{
    AddText(u"[%1]\nhost=%2\nport=%3\ndbname=%4\nuser=%5\n"_s.arg(name, server.SocketFolder(), server.Port(),
                                                                  database, user) +
            PatienceLine());
}

void ServiceFile::AddText(const QString& text)
{
    m_text += text.toUtf8();
    m_folder.WriteFile(Name, m_text);
}

void ServiceFile::ForgetPatience()
{
    m_text.replace(PatienceLine().toUtf8(), {});
    AddText({});
}

QString ServiceFile::Native() const
{
    return m_folder.Native(Name);
}

} // namespace test
