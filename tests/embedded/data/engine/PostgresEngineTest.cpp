#include "embedded/data/engine/PostgresEngine.h"

#include <QtSql/QSqlDatabase>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// What a connection by an entry with that time for an attempt is opened with.
QStringList OptionsWith(int connectTimeout)
{
    embedded::Service service;
    service.name = u"office"_s;
    service.connectTimeout = connectTimeout;
    QSqlDatabase connection = QSqlDatabase::addDatabase(u"QPSQL"_s, u"PostgresEngineTest"_s);
    embedded::PostgresEngine(service, 5s).SetUp(connection);
    const QStringList options = connection.connectOptions().split(u';');
    connection = {};
    QSqlDatabase::removeDatabase(u"PostgresEngineTest"_s);
    return options;
}

} // namespace

TEST(PostgresEngine, AttemptToConnectTakesAsLongAsTheEntrySaysOrTheUsualTime)
{
    EXPECT_TRUE(OptionsWith(600).contains(u"connect_timeout=600"_s));
    EXPECT_TRUE(OptionsWith(0).contains(u"connect_timeout=5"_s));
}
