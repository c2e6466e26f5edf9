#include "embedded/data/CatalogueDatabase.h"
#include "embedded/data/DataFile.h"
#include "embedded/data/Schema.h"

#include <QtCore/QSet>

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

constexpr int SchemaVersion = 2;

/// The tables of catalogue.sql and those of libraries.sql; each is filled from the shipped table of its name.
const CStringArray CategoryTables{u"specialties"_s,       u"big_categories"_s,   u"small_categories"_s,
                                  u"attributes"_s,        u"cell_data"_s,        u"drop_lists"_s,
                                  u"calculation_rules"_s, u"calculation_items"_s};
const CStringArray LibraryTables{u"libraries"_s, u"bill_sections"_s, u"bill_items"_s, u"quota_sections"_s,
                                 u"quota_items"_s};

void RunShippedScript(Database& database, const CString& name)
{
    database.ExecuteScript(CString::fromUtf8(ShippedFile(name)));
}

void Fill(Database& database)
{
    RunShippedScript(database, u"catalogue.sql"_s);
    RunShippedScript(database, u"libraries.sql"_s);
    for (const CString& table : CategoryTables + LibraryTables)
        ImportShipped(database, table);
}

QSet<CString> Values(Database& database, const CString& column, const CString& table)
{
    QSet<CString> values;
    database.ForEach(u"SELECT DISTINCT %1 FROM %2"_s.arg(column, table), {},
                     [&](const QSqlQuery& row) { values.insert(row.value(0).toString()); });
    return values;
}

/// Adds the rows of a shipped table whose `column` holds what the database has nowhere in that column.
void AddShipped(Database& database, const CString& table, const CString& column)
{
    const QSet<CString> known = Values(database, column, table);
    DataFile file = DataFile::Shipped(table);
    const qsizetype index = file.columns.indexOf(column);
    file.rows.removeIf([&](const CStringArray& row) { return known.contains(row.at(index)); });
    database.Insert(table, file.columns, file.rows);
}

/// Gives a place in the other shipped bill libraries to categories that stand where the shipped ones stand.
void AddPlaces(Database& database)
{
    CStringArray places = DataFile::Shipped(u"small_categories"_s).Column(u"index_path"_s);
    places.removeDuplicates();
    for (const CString& joined : std::as_const(places)) {
        database.Execute(u"UPDATE small_categories SET index_path = ? WHERE index_path = ?"_s,
                         {joined, joined.section(u'|', 0, 0)});
    }
}

/// Version 1 had one library for each role, one set of bill items and one of quota items. They keep their
/// items and stay the first of their role; the shipped libraries that the catalogue lacks come behind them.
void Upgrade(Database& database)
{
    for (const CString& table : LibraryTables)
        database.Execute(u"ALTER TABLE %1 RENAME TO former_%1"_s.arg(table));
    RunShippedScript(database, u"libraries.sql"_s);
    RunShippedScript(database, u"libraries-from-1.sql"_s);
    for (const CString& table : LibraryTables) {
        database.Execute(u"DROP TABLE former_%1"_s.arg(table));
        AddShipped(database, table, table == u"libraries" ? u"code"_s : u"items"_s);
    }
    AddPlaces(database);
}

} // namespace

void EnsureCatalogue(Database& database)
{
    EnsureSchema(
        database, SchemaVersion, [&] { Fill(database); }, [&] { Upgrade(database); });
}

} // namespace embedded
