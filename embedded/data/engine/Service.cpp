#include "embedded/data/engine/Service.h"

#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// Native paths of the files, in the order in which the client library looks into them.
QStringList ServiceFiles()
{
    QStringList files;
    const QString named = qEnvironmentVariable("PGSERVICEFILE");
    if (!named.isEmpty()) {
        files.append(named);
    } else {
#ifdef Q_OS_WIN
        files.append(qEnvironmentVariable("APPDATA") + u"/postgresql/.pg_service.conf"_s);
#else
        files.append(QDir::homePath() + u"/.pg_service.conf"_s);
#endif
    }
    const QString folder = qEnvironmentVariable("PGSYSCONFDIR");
    if (!folder.isEmpty()) files.append(folder + u"/pg_service.conf"_s);
    return files;
}

/// Reads one "key=value" line into an entry. Other keys are the client library's matter.
void Take(const CString& line, Service& service)
{
    const CString key = line.section(u'=', 0, 0).trimmed();
    const CString value = line.section(u'=', 1).trimmed();
    // The client library takes the first of several.
    const auto take = [&](QStringView name, CString& to) {
        if (key == name && to.isEmpty()) to = value;
    };
    take(u"host", service.host);
    take(u"hostaddr", service.address);
    take(u"port", service.port);
    take(u"dbname", service.database);
    take(u"user", service.user);
    take(u"sslmode", service.sslMode);
    if (key == u"connect_timeout" && service.connectTimeout == 0)
        service.connectTimeout = std::max(value.toInt(), 0);
}

CArray<Service> Parse(const CString& text)
{
    CArray<Service> services;
    for (const CString& whole : text.split(u'\n')) {
        const CString line = whole.trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            Service service;
            service.name = line.sliced(1, line.size() - 2);
            service.isRead = true;
            services.append(service);
        } else if (!services.isEmpty()) {
            Take(line, services.last());
        }
    }
    return services;
}

/// Whether a text is an address of the net 127.0.0.0/8, which never leaves the machine.
bool IsLoopback(const CString& host)
{
    static const QRegularExpression form(u"^127(\\.\\d{1,3}){3}$"_s);
    return form.match(host).hasMatch();
}

bool IsLocalHost(const CString& host)
{
    return host.isEmpty() || host.startsWith(u'/') || host.startsWith(u'@') ||
           host.compare(u"localhost", Qt::CaseInsensitive) == 0 || host == u"::1" || IsLoopback(host);
}

} // namespace

bool Service::IsLocal() const
{
    const CString named = host.isEmpty() ? qEnvironmentVariable("PGHOST") : host;
    // An address goes before the name of the host; lists are tried one by one.
    const CString reached = address.isEmpty() ? qEnvironmentVariable("PGHOSTADDR") : address;
    const CStringArray hosts = named.split(u',') + reached.split(u',');
    return isRead && std::all_of(hosts.begin(), hosts.end(), IsLocalHost);
}

CString Service::NameFault(const CString& name)
{
    const auto isFit = [](QChar c) {
        return (c.unicode() < 0x80 && c.isLetterOrNumber()) || u"._-"_s.contains(c);
    };
    if (name.isEmpty()) return u"没有给出办公室的名称"_s;
    if (!std::all_of(name.begin(), name.end(), isFit))
        return u"办公室的名称只能由拉丁字母、数字和 . _ - 组成"_s;
    return {};
}

CArray<Service> ReadServices()
{
    CArray<Service> services;
    for (const QString& file : ServiceFiles()) {
        if (!platform::HasPathText(file)) continue;
        const auto bytes = platform::Files().Read(platform::FromNative(file));
        if (bytes) services += Parse(CString::fromUtf8(*bytes));
    }
    return services;
}

Service ServiceOf(const CString& name)
{
    for (const Service& service : ReadServices()) {
        if (service.name == name) return service;
    }
    Service unknown;
    unknown.name = name;
    return unknown;
}

} // namespace embedded
