#include "embedded/data/engine/Database.h"

#include "embedded/OfficeDatabase.h"
#include "embedded/data/engine/Service.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using embedded::Database;
using embedded::Transaction;

namespace {

/// A database that a test writes to, on either engine.
class Ground
{
public:
    virtual ~Ground() = default;
    virtual Database& Connection() = 0;
};

class FileGround final : public Ground
{
public:
    Database& Connection() override { return m_database; }

private:
    test::TempFolder m_folder;
    Database m_database{m_folder.Path(u"rows.db"_s)};
};

class ServerGround final : public Ground
{
public:
    ServerGround() : m_database(embedded::ServiceOf(test::OfficeDatabase::Administrator()))
    {
        m_database.Execute(u"CREATE SCHEMA ktqdde"_s);
    }
    Database& Connection() override { return m_database; }

private:
    test::OfficeDatabase m_place;
    Database m_database;
};

struct Engine
{
    const char* name;
    std::unique_ptr<Ground> (*make)();
};

void PrintTo(const Engine& engine, std::ostream* out)
{
    *out << engine.name;
}

class ReplaceRows : public ::testing::TestWithParam<Engine>
{
protected:
    ReplaceRows()
    {
        Transaction transaction(m_database);
        m_database.CreateTables(u"CREATE TABLE things (part TEXT NOT NULL, number TEXT NOT NULL, "
                                "id INTEGER NOT NULL UNIQUE, name TEXT NOT NULL, UNIQUE (part, number))"_s);
        transaction.Commit();
    }
    void Replace(const CString& part, const QList<CStringArray>& rows)
    {
        Transaction transaction(m_database);
        m_database.ReplaceRows({u"things"_s, {u"number"_s, u"id"_s, u"name"_s}, 1, u"part"_s, part}, rows);
        transaction.Commit();
    }
    /// The rows in their order, and with them whatever `also` names.
    CStringArray Rows(const CString& part, const CString& also = u"''"_s)
    {
        CStringArray rows;
        m_database.ForEach(u"SELECT number, id, name, %1 FROM things WHERE part = ? ORDER BY %2"_s.arg(
                               also, m_database.InsertionOrder()),
                           {part}, [&](const QSqlQuery& row) {
                               rows.append(row.value(0).toString() + row.value(1).toString() +
                                           row.value(2).toString() + row.value(3).toString());
                           });
        return rows;
    }

    std::unique_ptr<Ground> m_ground = GetParam().make();
    Database& m_database = m_ground->Connection();
};

class ReplaceRowsOnAServer : public ReplaceRows
{
};

const Engine File{"File", []() -> std::unique_ptr<Ground> { return std::make_unique<FileGround>(); }};
const Engine Server{"Server", []() -> std::unique_ptr<Ground> { return std::make_unique<ServerGround>(); }};
const auto NameOf = [](const auto& info) { return std::string(info.param.name); };

} // namespace

TEST_P(ReplaceRows, AddsChangesRemovesAndKeepsTheOrderThatIsGiven)
{
    Replace(u"p"_s, {{u"b"_s, u"1"_s, u"B"_s}, {u"a"_s, u"2"_s, u"A"_s}, {u"c"_s, u"3"_s, u"C"_s}});
    EXPECT_EQ(Rows(u"p"_s), (CStringArray{u"b1B"_s, u"a2A"_s, u"c3C"_s}));
    Replace(u"p"_s, {{u"c"_s, u"3"_s, u"C"_s}, {u"d"_s, u"4"_s, u"D"_s}, {u"b"_s, u"1"_s, u"BB"_s}});
    EXPECT_EQ(Rows(u"p"_s), (CStringArray{u"c3C"_s, u"d4D"_s, u"b1BB"_s}));
    Replace(u"p"_s, {});
    EXPECT_EQ(Rows(u"p"_s), CStringArray());
}

TEST_P(ReplaceRows, LeavesTheOtherPartsAlone)
{
    Replace(u"p"_s, {{u"a"_s, u"1"_s, u"A"_s}});
    Replace(u"q"_s, {{u"a"_s, u"2"_s, u"Q"_s}});
    Replace(u"p"_s, {{u"b"_s, u"3"_s, u"B"_s}});
    EXPECT_EQ(Rows(u"q"_s), CStringArray{u"a2Q"_s});
    EXPECT_EQ(Rows(u"p"_s), CStringArray{u"b3B"_s});
}

TEST_P(ReplaceRows, LetsRowsExchangeWhatOnlyOneMayHave)
{
    Replace(u"p"_s, {{u"a"_s, u"1"_s, u"A"_s}, {u"b"_s, u"2"_s, u"B"_s}, {u"c"_s, u"3"_s, u"C"_s}});
    Replace(u"p"_s, {{u"a"_s, u"2"_s, u"A"_s}, {u"b"_s, u"3"_s, u"B"_s}, {u"c"_s, u"1"_s, u"C"_s}});
    EXPECT_EQ(Rows(u"p"_s), (CStringArray{u"a2A"_s, u"b3B"_s, u"c1C"_s}));
}

TEST_P(ReplaceRows, TakesMoreRowsThanGoAtOnceAndCallsForEach)
{
    QList<CStringArray> rows;
    for (int row = 0; row < 1234; ++row)
        rows.append({u"n%1"_s.arg(row), CString::number(row), row % 2 == 0 ? CString() : u"'x;"_s});
    int steps = 0;
    Transaction transaction(m_database);
    m_database.ReplaceRows({u"things"_s, {u"number"_s, u"id"_s, u"name"_s}, 1, u"part"_s, u"p"_s}, rows,
                           [&] { ++steps; });
    transaction.Commit();
    EXPECT_EQ(steps, 1234);
    const CStringArray found = Rows(u"p"_s);
    ASSERT_EQ(found.size(), 1234);
    EXPECT_EQ(found[1233], u"n12331233'x;"_s);
    EXPECT_EQ(found[1000], u"n10001000"_s);
}

TEST_P(ReplaceRows, OfAWholeTableWithALongerKey)
{
    const embedded::TablePart whole{u"things"_s, {u"part"_s, u"number"_s, u"id"_s, u"name"_s}, 2};
    for (const CString& id : {u"7"_s, u"8"_s}) {
        Transaction transaction(m_database);
        m_database.ReplaceRows(whole, {{u"q"_s, u"a"_s, id, u"Q"_s}, {u"p"_s, u"a"_s, u"9"_s, u"P"_s}});
        transaction.Commit();
        EXPECT_EQ(Rows(u"q"_s) + Rows(u"p"_s), (CStringArray{u"a%1Q"_s.arg(id), u"a9P"_s}));
    }
}

TEST_P(ReplaceRowsOnAServer, DoesNotTouchRowsThatStayWhatTheyWere)
{
    const CStringArray a{u"a"_s, u"1"_s, u"A"_s};
    const CStringArray b{u"b"_s, u"2"_s, u"B"_s};
    const CStringArray c{u"c"_s, u"3"_s, u"C"_s};
    Replace(u"p"_s, {a, b, c});
    const CStringArray before = Rows(u"p"_s, u"xmin::text"_s);
    Replace(u"p"_s, {a, b, c});
    EXPECT_EQ(Rows(u"p"_s, u"xmin::text"_s), before);
    Replace(u"p"_s, {a, {u"b"_s, u"2"_s, u"BB"_s}, c});
    const CStringArray after = Rows(u"p"_s, u"xmin::text"_s);
    EXPECT_EQ(after[0], before[0]);
    EXPECT_NE(after[1], before[1]);
    EXPECT_EQ(after[2], before[2]);
}

INSTANTIATE_TEST_SUITE_P(On, ReplaceRows, ::testing::Values(File, Server), NameOf);
INSTANTIATE_TEST_SUITE_P(On, ReplaceRowsOnAServer, ::testing::Values(Server), NameOf);
