#include "embedded/data/engine/Database.h"
#include "embedded/TestProject.h"
#include "embedded/data/engine/Schema.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::Database;
using embedded::Transaction;
using test::ErrorOf;

namespace {

class DatabaseTest : public ::testing::Test
{
protected:
    CString File() const { return m_folder.Path(u"数据 库.db"_s); }
    static QStringList Names(Database& database)
    {
        QStringList names;
        database.ForEach(u"SELECT name FROM t ORDER BY rowid"_s, {},
                         [&](const QSqlQuery& row) { names.append(row.value(0).toString()); });
        return names;
    }

    test::TempFolder m_folder;
};

void MustNotRun()
{
    ADD_FAILURE() << "this step belongs to a database of another age";
}

} // namespace

TEST_F(DatabaseTest, RowsComeBackInOrderFromAPathWithChineseAndBlanks)
{
    {
        Database database(File());
        database.Execute(u"CREATE TABLE t (name TEXT)"_s);
        database.Insert(u"t"_s, {u"name"_s}, {{u"乙"_s}, {u"甲"_s}});
    }
    Database again(File());
    EXPECT_EQ(Names(again), (QStringList{u"乙"_s, u"甲"_s}));
    EXPECT_TRUE(m_folder.Exists(u"数据 库.db"_s));
}

TEST_F(DatabaseTest, ScriptRunsEveryStatement)
{
    Database database(File());
    database.ExecuteScript(u"CREATE TABLE t (name TEXT);\nINSERT INTO t VALUES ('甲');\n"_s);
    EXPECT_EQ(Names(database), QStringList{u"甲"_s});
}

TEST_F(DatabaseTest, TransactionWithoutCommitLeavesNothing)
{
    Database database(File());
    database.Execute(u"CREATE TABLE t (name TEXT)"_s);
    {
        Transaction transaction(database);
        database.Insert(u"t"_s, {u"name"_s}, {{u"甲"_s}});
    }
    EXPECT_TRUE(Names(database).isEmpty());
}

TEST_F(DatabaseTest, CommittedTransactionStays)
{
    Database database(File());
    database.Execute(u"CREATE TABLE t (name TEXT)"_s);
    {
        Transaction transaction(database);
        database.Insert(u"t"_s, {u"name"_s}, {{u"甲"_s}});
        transaction.Commit();
    }
    EXPECT_EQ(Names(database), QStringList{u"甲"_s});
}

TEST_F(DatabaseTest, WriteLockOfAnotherConnectionIsReportedAsSuch)
{
    Database first(File());
    const Transaction transaction(first);
    Database second(File(), std::chrono::milliseconds(10));
    EXPECT_TRUE(ErrorOf([&] { const Transaction refused(second); }).contains(u"被其他程序占用"_s));
}

TEST_F(DatabaseTest, HowLongAnotherOneIsWaitedForCanBeSet)
{
    EXPECT_EQ(Database::UsualBusyTimeout(), std::chrono::seconds(5));
    const auto with = [](const char* value) {
        qputenv("KTQDDE_DATABASE_WAIT", value);
        const auto set = Database::UsualBusyTimeout();
        qunsetenv("KTQDDE_DATABASE_WAIT");
        return set;
    };
    EXPECT_EQ(with("70"), std::chrono::seconds(70));
    EXPECT_EQ(with("0"), std::chrono::seconds(0));
    EXPECT_EQ(with("-1"), std::chrono::seconds(5));
    EXPECT_EQ(with("lange"), std::chrono::seconds(5));
}

TEST_F(DatabaseTest, FileThatIsNoDatabaseIsReportedAsDamagedWithItsPath)
{
    m_folder.WriteFile(u"数据 库.db"_s, QByteArray(4096, 'x'));
    Database database(File());
    const CString error = ErrorOf([&] { database.SchemaVersion(); });
    EXPECT_TRUE(error.contains(u"已损坏"_s)) << error.toStdString();
    EXPECT_TRUE(error.contains(u"数据 库.db"_s)) << error.toStdString();
}

TEST_F(DatabaseTest, PlaceThatCannotBeOpenedIsRefused)
{
    EXPECT_NE(ErrorOf([&] { const Database database(m_folder.Path(u"none\\deep.db"_s)); }), u"no error"_s);
}

TEST_F(DatabaseTest, BadStatementRaises)
{
    Database database(File());
    EXPECT_NE(ErrorOf([&] { database.Execute(u"NONSENSE"_s); }), u"no error"_s);
    EXPECT_NE(ErrorOf([&] { Names(database); }), u"no error"_s);
}

TEST_F(DatabaseTest, NewFileIsFilledOnceAndCarriesTheVersion)
{
    int filled = 0;
    for (int opening = 0; opening < 2; ++opening) {
        Database database(File());
        embedded::EnsureSchema(
            database, 7,
            [&] {
                ++filled;
                database.Execute(u"CREATE TABLE t (name TEXT)"_s);
            },
            MustNotRun);
        EXPECT_EQ(database.SchemaVersion(), 7);
    }
    EXPECT_EQ(filled, 1);
}

TEST_F(DatabaseTest, OlderFileIsRewrittenOnceAndCarriesTheVersion)
{
    int rewritten = 0;
    Database(File()).SetSchemaVersion(6);
    for (int opening = 0; opening < 2; ++opening) {
        Database database(File());
        embedded::EnsureSchema(database, 7, MustNotRun, [&] { ++rewritten; });
        EXPECT_EQ(database.SchemaVersion(), 7);
    }
    EXPECT_EQ(rewritten, 1);
}

TEST_F(DatabaseTest, FailedFillingLeavesTheFileEmpty)
{
    Database database(File());
    EXPECT_NE(ErrorOf([&] {
                  embedded::EnsureSchema(
                      database, 1,
                      [&] {
                          database.Execute(u"CREATE TABLE t (name TEXT)"_s);
                          database.Execute(u"NONSENSE"_s);
                      },
                      MustNotRun);
              }),
              u"no error"_s);
    EXPECT_TRUE(database.IsEmpty());
    EXPECT_EQ(database.SchemaVersion(), 0);
}

TEST_F(DatabaseTest, NewerVersionIsRefusedWithBothNumbers)
{
    Database database(File());
    database.SetSchemaVersion(9);
    const CString error = ErrorOf([&] { embedded::RequireSchema(database, 2); });
    EXPECT_TRUE(error.contains(u"结构版本 9"_s) && error.contains(u"识别到 2"_s)) << error.toStdString();
}

TEST_F(DatabaseTest, DatabaseOfAnotherProgramIsLeftAlone)
{
    Database database(File());
    database.Execute(u"CREATE TABLE t (name TEXT)"_s);
    const CString error = ErrorOf([&] { embedded::EnsureSchema(database, 1, MustNotRun, MustNotRun); });
    EXPECT_TRUE(error.contains(u"不是本程序的数据库"_s)) << error.toStdString();
}
