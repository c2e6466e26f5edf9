#include "embedded/data/catalogue/CatalogueSchema.h"

#include "embedded/data/catalogue/AttributeUnits.h"
#include "embedded/data/catalogue/LibraryDatabase.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Schema.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// The tables of catalogue.sql and those of libraries.sql; each is filled from the shipped table of its name.
const CStringArray CategoryTables{u"specialties"_s,       u"big_categories"_s,   u"small_categories"_s,
                                  u"attributes"_s,        u"cell_data"_s,        u"drop_lists"_s,
                                  u"calculation_rules"_s, u"calculation_items"_s};
const CStringArray ItemTables{u"bill_sections"_s, u"bill_items"_s, u"quota_sections"_s, u"quota_items"_s};
const CStringArray LibraryTables = CStringArray{u"libraries"_s} + ItemTables;

CString ShippedScript(const CString& name)
{
    return CString::fromUtf8(ShippedFile(name));
}

/// Version 1 had one library for each role; hands of others may have changed that, and then it cannot be told
/// whose the items are.
void RequireFormerLibraries(Database& database)
{
    QHash<CString, CString> roles;
    database.ForEach(u"SELECT role, code FROM former_libraries"_s, {}, [&](const QSqlQuery& row) {
        const CString role = row.value(0).toString();
        const CString code = row.value(1).toString();
        if (code.isEmpty()) database.Fail(u"数据库已损坏（用途为“%1”的库没有代码）"_s.arg(role));
        if (!roles.key(code).isEmpty()) database.Fail(u"数据库已损坏（两个库的代码都是“%1”）"_s.arg(code));
        roles.insert(role, code);
    });
    for (const LibraryRole role : AllLibraryRoles) {
        if (!roles.contains(RoleWord(role)))
            database.Fail(u"数据库已损坏（没有用途为“%1”的库）"_s.arg(RoleWord(role)));
    }
}

/// Inserts the rows of a shipped table whose `column` holds none of `known`.
void InsertShipped(Database& database, const CString& table, const CString& column,
                   const QSet<CString>& known)
{
    DataFile file = DataFile::Shipped(table);
    const qsizetype index = file.columns.indexOf(column);
    file.rows.removeIf([&](const CStringArray& row) { return known.contains(row.at(index)); });
    database.Insert(table, file.columns, file.rows);
}

/// Adds the shipped libraries whose codes the catalogue lacks, and their items. A set of items that a library
/// of the catalogue offers stays as it is, even an empty one.
void AddShippedLibraries(Database& database)
{
    QSet<CString> codes;
    QSet<CString> sets;
    for (const Library& library : ReadLibraries(database)) {
        codes.insert(library.name.code);
        sets.insert(library.items);
    }
    InsertShipped(database, u"libraries"_s, u"code"_s, codes);
    for (const CString& table : ItemTables)
        InsertShipped(database, table, u"items"_s, sets);
}

/// Gives a place in the other shipped bill libraries to the shipped categories that stand where they were
/// shipped. One that a person has made or moved stays where it is.
void AddPlaces(Database& database)
{
    const DataFile categories = DataFile::Shipped(u"small_categories"_s);
    const CStringArray ids = categories.Column(u"id"_s);
    const CStringArray places = categories.Column(u"index_path"_s);
    for (qsizetype row = 0; row < ids.size(); ++row) {
        database.Execute(u"UPDATE small_categories SET index_path = ? WHERE id = ? AND index_path = ?"_s,
                         {places[row], ids[row].toInt(), places[row].section(u'|', 0, 0)});
    }
}

/// Version 1 had one library for each role, one set of bill items and one of quota items. They keep their
/// items and stay the first of their role; the shipped libraries that the catalogue lacks come behind them.
void UpgradeLibraries(Database& database)
{
    for (const CString& table : LibraryTables)
        database.Execute(u"ALTER TABLE %1 RENAME TO former_%1"_s.arg(table));
    RequireFormerLibraries(database);
    database.CreateTables(ShippedScript(u"libraries.sql"_s));
    database.ExecuteScript(ShippedScript(u"libraries-from-1.sql"_s));
    for (const CString& table : LibraryTables)
        database.Execute(u"DROP TABLE former_%1"_s.arg(table));
    AddShippedLibraries(database);
    AddPlaces(database);
}

/// Versions 1 and 2 had no units: every attribute gets the one by which its name has counted.
void UpgradeUnits(Database& database)
{
    database.Execute(u"ALTER TABLE attributes ADD COLUMN unit TEXT NOT NULL DEFAULT ''"_s);
    for (const AttributeUnit& unit : ShippedAttributeUnits())
        if (!unit.unit.isEmpty())
            database.Execute(u"UPDATE attributes SET unit = ? WHERE display_name = ?"_s,
                             {unit.unit, unit.name});
}

void Upgrade(Database& database)
{
    if (database.SchemaVersion() < 2) UpgradeLibraries(database);
    UpgradeUnits(database);
}

} // namespace

CStringArray CatalogueTables()
{
    return CategoryTables + LibraryTables;
}

void RequireCatalogue(Database& database)
{
    const int found = database.SchemaVersion();
    if (found < 1 || found > CatalogueSchemaVersion) RequireSchema(database, CatalogueSchemaVersion);
}

void CreateCatalogueTables(Database& database)
{
    database.CreateTables(ShippedScript(u"catalogue.sql"_s));
    database.CreateTables(ShippedScript(u"libraries.sql"_s));
}

void FillCatalogue(Database& database, const Progress& progress)
{
    CreateCatalogueTables(database);
    const CStringArray tables = CatalogueTables();
    for (qsizetype table = 0; table < tables.size(); ++table) {
        Tell(progress, static_cast<int>(100 * table / tables.size()));
        ImportShipped(database, tables[table]);
    }
}

CString GivenIdsTable()
{
    return u"given_ids"_s;
}

void EnsureGivenIds(Database& database)
{
    if (!database.HasTable(GivenIdsTable())) database.CreateTables(ShippedScript(u"given-ids.sql"_s));
}

void EnsureCatalogue(Database& database, const Progress& progress)
{
    EnsureSchema(
        database, CatalogueSchemaVersion, [&] { FillCatalogue(database, progress); },
        [&] { Upgrade(database); });
}

} // namespace embedded
