#include "embedded/OfficeDatabase.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/office/PublishedConfigurations.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::Database;
using embedded::Office;
using embedded::PublishedConfigurations;
using test::TestOffice;

namespace {

class Changes : public ::testing::Test
{
protected:
    /// What a keeper does by hand.
    void Do(const QString& sql)
    {
        const test::PsqlAnswer answer =
            office.Psql(TestOffice::Keeper(), u"SET search_path = ktqdde; "_s + sql);
        EXPECT_TRUE(answer.isDone) << answer.fault.toStdString();
    }
    QString Recorded(const QString& columns) const
    {
        return office.Ask(u"SELECT %1 FROM ktqdde.changes ORDER BY id"_s.arg(columns));
    }
    qint64 Revision() const { return office.Ask(u"SELECT revision FROM ktqdde.office_state"_s).toLongLong(); }

    TestOffice office;
};

} // namespace

TEST_F(Changes, CreationOfTheOfficeIsNone)
{
    EXPECT_EQ(Recorded(u"id"_s), QString());
}

TEST_F(Changes, EachRowTellsWhoDidWhat)
{
    Do(u"INSERT INTO cell_data VALUES ('码', 1, '甲|乙')"_s);
    Do(u"UPDATE cell_data SET value_list = '甲' WHERE code = '码'"_s);
    Do(u"DELETE FROM cell_data WHERE code = '码'"_s);
    EXPECT_EQ(Recorded(u"table_name, operation, old_row ->> 'value_list', new_row ->> 'value_list'"_s),
              u"cell_data|INSERT||甲|乙\ncell_data|UPDATE|甲|乙|甲\ncell_data|DELETE|甲|"_s);
    EXPECT_EQ(office.Ask(u"SELECT DISTINCT who FROM ktqdde.changes"_s), office.User(TestOffice::Keeper()));
    EXPECT_EQ(office.Ask(u"SELECT count(DISTINCT txid) FROM ktqdde.changes"_s), u"3"_s);
    EXPECT_EQ(
        office.Ask(u"SELECT bool_and(at BETWEEN now() - interval '1 hour' AND now()) FROM ktqdde.changes"_s),
        u"t"_s);
}

TEST_F(Changes, WhatWasDoneAtOnceHasOneNumber)
{
    Do(u"INSERT INTO cell_data VALUES ('一', 1, ''), ('二', 1, ''); DELETE FROM cell_data WHERE code = '一'"_s);
    EXPECT_EQ(office.Ask(u"SELECT count(*), count(DISTINCT txid) FROM ktqdde.changes"_s), u"3|1"_s);
}

TEST_F(Changes, WhatWasTakenBackLeavesNone)
{
    Do(u"BEGIN; DELETE FROM cell_data; ROLLBACK"_s);
    EXPECT_EQ(Recorded(u"id"_s), QString());
}

TEST_F(Changes, WhoTakesARoleIsStillTold)
{
    Do(u"SET ROLE \"%1_keeper\"; DELETE FROM cell_data WHERE kind = 1"_s.arg(office.Name()));
    EXPECT_EQ(office.Ask(u"SELECT DISTINCT who FROM ktqdde.changes"_s), office.User(TestOffice::Keeper()));
}

TEST_F(Changes, RowThatMovedAloneIsNoneButARevision)
{
    const qint64 before = Revision();
    Do(u"UPDATE specialties SET place = place + 100"_s);
    EXPECT_EQ(Recorded(u"id"_s), QString());
    EXPECT_GT(Revision(), before);
}

TEST_F(Changes, EveryTableOfTheCatalogueIsWatched)
{
    for (const CString& table : embedded::CatalogueTables() + CStringArray{u"given_ids"_s}) {
        const qint64 before = Revision();
        // As rows of it, whatever its columns are.
        const QString rows = office.Ask(u"SELECT count(*) FROM ktqdde."_s + table);
        Do(u"CREATE TEMPORARY TABLE kept AS SELECT * FROM %1; DELETE FROM %1; "
           "INSERT INTO %1 SELECT * FROM kept"_s.arg(table));
        EXPECT_EQ(
            office.Ask(
                u"SELECT count(*) FROM ktqdde.changes WHERE operation = 'DELETE' AND table_name = '%1'"_s.arg(
                    table)),
            rows)
            << table.toStdString();
        EXPECT_EQ(
            office.Ask(
                u"SELECT count(*) FROM ktqdde.changes WHERE operation = 'INSERT' AND table_name = '%1'"_s.arg(
                    table)),
            rows);
        EXPECT_EQ(Revision() > before, rows != u"0") << table.toStdString();
    }
}

TEST_F(Changes, StatementThatFindsNoRowIsNoRevision)
{
    const qint64 before = Revision();
    Do(u"DELETE FROM cell_data WHERE code = '没有'; UPDATE cell_data SET kind = 1 WHERE code = '没有'; "
       "INSERT INTO cell_data SELECT * FROM cell_data WHERE code = '没有'"_s);
    EXPECT_EQ(Revision(), before);
}

TEST_F(Changes, RowsThatAreReplacedByThemselvesAreNone)
{
    Database database(embedded::ServiceOf(TestOffice::Keeper()));
    QList<CStringArray> rows;
    database.ForEach(
        u"SELECT code, kind, value_list FROM cell_data ORDER BY place"_s, {}, [&](const QSqlQuery& row) {
            rows.append({row.value(0).toString(), row.value(1).toString(), row.value(2).toString()});
        });
    ASSERT_FALSE(rows.isEmpty());
    const auto replace = [&] {
        embedded::Transaction transaction(database);
        database.ReplaceRows({u"cell_data"_s, {u"code"_s, u"kind"_s, u"value_list"_s}}, rows);
        transaction.Commit();
    };
    replace(); // gives the rows their places
    const qint64 before = Revision();
    replace();
    EXPECT_EQ(Recorded(u"id"_s), QString());
    EXPECT_EQ(Revision(), before);
    rows[0][2] = u"别的"_s;
    replace();
    EXPECT_EQ(Recorded(u"operation, new_row ->> 'value_list'"_s), u"UPDATE|别的"_s);
    EXPECT_GT(Revision(), before);
}

TEST_F(Changes, EmptiedTableIsRecordedAndCounts)
{
    const qint64 before = Revision();
    EXPECT_TRUE(office.Psql(TestOffice::Administrator(), u"TRUNCATE ktqdde.cell_data"_s).isDone);
    EXPECT_EQ(Recorded(u"table_name, operation, who"_s),
              u"cell_data|TRUNCATE|"_s + office.User(TestOffice::Administrator()));
    EXPECT_GT(Revision(), before);
}

TEST_F(Changes, ConfigurationsTellWhoCreatedAndRemovedThemAndAreNoRevision)
{
    Office connection(TestOffice::Keeper());
    PublishedConfigurations published(connection);
    const qint64 before = connection.CatalogueRevision();
    published.Publish({u"甲"_s, {}, "<a/>"});
    published.Publish({u"甲"_s, {1, embedded::DigestOf("<a/>")}, "<b/>"});
    published.Remove(u"甲"_s);
    EXPECT_EQ(Recorded(u"table_name, operation, new_row ->> 'is_removed', who"_s),
              u"configurations|INSERT|false|%1\nconfigurations|UPDATE|true|%1"_s.arg(
                  office.User(TestOffice::Keeper())));
    EXPECT_EQ(connection.CatalogueRevision(), before);
}
