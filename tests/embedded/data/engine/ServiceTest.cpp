#include "embedded/data/engine/Service.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::ReadServices;
using embedded::Service;
using embedded::ServiceOf;

namespace {

/// An environment variable for as long as it lives.
class Variable
{
public:
    Variable(const char* name, const QByteArray& value)
        : m_name(name), m_was(qgetenv(name)), m_wasSet(qEnvironmentVariableIsSet(name))
    {
        qputenv(name, value);
    }
    ~Variable() { m_wasSet ? qputenv(m_name, m_was) : qunsetenv(m_name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    QByteArray m_was;
    bool m_wasSet;
};

class ServiceTest : public ::testing::Test
{
protected:
    void Write(const QByteArray& text) { m_folder.WriteFile(u"service.conf"_s, text); }

    test::TempFolder m_folder;
    Variable m_file{"PGSERVICEFILE", m_folder.Native(u"service.conf"_s).toUtf8()};
    Variable m_host{"PGHOST", ""};
    Variable m_address{"PGHOSTADDR", ""};
};

Service WithHost(const CString& host)
{
    Service service;
    service.isRead = true;
    service.host = host;
    return service;
}

} // namespace

TEST_F(ServiceTest, EntriesComeInTheOrderOfTheFileWithWhatTellsThemApart)
{
    Write(
        "# "
        "ours\r\n[office]\r\nhost=db.example\r\nport=5433\r\ndbname=cost\r\nuser=li\r\npassword=secret\r\n\n"
        "[ second ]\n host = /run/here \nsslmode=verify-full\n");
    const CArray<Service> services = ReadServices();
    ASSERT_EQ(services.size(), 2);
    EXPECT_EQ(services[0].name, u"office");
    EXPECT_EQ(services[0].host, u"db.example");
    EXPECT_EQ(services[0].port, u"5433");
    EXPECT_EQ(services[0].database, u"cost");
    EXPECT_EQ(services[0].user, u"li");
    EXPECT_EQ(services[1].name, u" second ") << "the client library takes all between the brackets";
    EXPECT_EQ(services[1].host, u"/run/here");
    EXPECT_EQ(services[1].sslMode, u"verify-full");
}

TEST_F(ServiceTest, TimeForAnAttemptToConnectIsTheFirstThatIsOne)
{
    Write("[one]\nconnect_timeout=30\nconnect_timeout=7\n[two]\nconnect_timeout = soon\n"
          "[three]\nconnect_timeout=0\n[four]\nconnect_timeout=-1\n[five]\n");
    EXPECT_EQ(ServiceOf(u"one"_s).connectTimeout, 30);
    for (const CString& name : {u"two"_s, u"three"_s, u"four"_s, u"five"_s})
        EXPECT_EQ(ServiceOf(name).connectTimeout, 0) << name.toStdString();
}

TEST_F(ServiceTest, LinesBeforeTheFirstEntryAndAMissingFileGiveNone)
{
    Write("host=nowhere\n");
    EXPECT_TRUE(ReadServices().isEmpty());
    const Variable missing("PGSERVICEFILE", m_folder.Native(u"none.conf"_s).toUtf8());
    EXPECT_TRUE(ReadServices().isEmpty());
}

TEST_F(ServiceTest, EntryIsFoundByItsNameAndAnUnknownOneIsANameAlone)
{
    Write("[one]\nhost=a\n[two]\nhost=/b\n");
    EXPECT_EQ(ServiceOf(u"two"_s).host, u"/b");
    EXPECT_TRUE(ServiceOf(u"two"_s).IsLocal());
    EXPECT_EQ(ServiceOf(u"three"_s).name, u"three");
    EXPECT_FALSE(ServiceOf(u"three"_s).isRead);
    EXPECT_FALSE(ServiceOf(u"three"_s).IsLocal())
        << "it may be anywhere, so its connection must be encrypted";
}

TEST_F(ServiceTest, OnlySocketsAndLoopbackAddressesAreLocal)
{
    for (const CString& host : {u""_s, u"/run/postgresql"_s, u"@abstract"_s, u"localhost"_s, u"LOCALHOST"_s,
                                u"127.0.0.1"_s, u"::1"_s, u"/a,localhost"_s}) {
        EXPECT_TRUE(WithHost(host).IsLocal()) << host.toStdString();
    }
    for (const CString& host : {u"db.example"_s, u"10.0.0.1"_s, u"localhost.example"_s, u"/a,db"_s, u"::2"_s,
                                u"127.evil.example"_s}) {
        EXPECT_FALSE(WithHost(host).IsLocal()) << host.toStdString();
    }
}

TEST_F(ServiceTest, AddressOfTheEntryDecidesWhereTheServerIs)
{
    Write("[away]\nhost=localhost\nhostaddr=203.0.113.5\n[here]\nhostaddr=127.0.0.1\nhostaddr=203.0.113.5\n");
    EXPECT_FALSE(ServiceOf(u"away"_s).IsLocal());
    EXPECT_TRUE(ServiceOf(u"here"_s).IsLocal()) << "the client library takes the first of two";
}

TEST_F(ServiceTest, EnvironmentMayNameAServerElsewhere)
{
    {
        const Variable host("PGHOST", "db.example");
        EXPECT_FALSE(WithHost({}).IsLocal());
        EXPECT_TRUE(WithHost(u"/run/here"_s).IsLocal());
    }
    const Variable address("PGHOSTADDR", "10.0.0.1");
    EXPECT_FALSE(WithHost(u"localhost"_s).IsLocal());
}

TEST(ServiceName, OnlyLettersDigitsAndAFewSignsNameAService)
{
    EXPECT_TRUE(Service::NameFault(u"office-1.a_B"_s).isEmpty());
    for (const CString& name : {u""_s, u"a b"_s, u"a;host=x"_s, u"a'"_s, u"办公室"_s, u"a\\b"_s})
        EXPECT_FALSE(Service::NameFault(name).isEmpty()) << name.toStdString();
}
