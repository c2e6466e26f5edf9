#include "embedded/data/catalogue/CatalogueCopy.h"

#include "embedded/data/catalogue/CatalogueSchema.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString StateTable = u"office_copy"_s;

CatalogueRows::Table ReadTable(Database& catalogue, const CString& name)
{
    CatalogueRows::Table table{name, catalogue.ColumnsOf(name), {}};
    const auto count = static_cast<int>(table.columns.size());
    const CString sql =
        u"SELECT %1 FROM %2 ORDER BY %3"_s.arg(table.columns.join(u','), name, catalogue.InsertionOrder());
    catalogue.ForEach(sql, {}, [&](const QSqlQuery& query) {
        CStringArray row;
        row.reserve(count);
        for (int column = 0; column < count; ++column)
            row.append(query.value(column).toString());
        table.rows.append(row);
    });
    return table;
}

/// Leaves the tables of a catalogue empty. Those of another schema go, for their columns may differ.
void MakeRoom(Database& copy)
{
    const int found = copy.SchemaVersion();
    if (found != 0 || !copy.IsEmpty()) RequireCatalogue(copy);
    CStringArray tables = CatalogueTables();
    if (copy.HasTable(GivenIdsTable())) tables.append(GivenIdsTable());
    if (found == CatalogueSchemaVersion) {
        for (const CString& table : tables)
            copy.Execute(u"DELETE FROM %1"_s.arg(table));
        return;
    }
    for (const CString& table : tables)
        copy.Execute(u"DROP TABLE IF EXISTS %1"_s.arg(table));
    CreateCatalogueTables(copy);
    copy.SetSchemaVersion(CatalogueSchemaVersion);
}

void WriteState(Database& copy, const CopiedState& state)
{
    copy.Execute(u"DROP TABLE IF EXISTS %1"_s.arg(StateTable));
    copy.Execute(u"CREATE TABLE %1 (office TEXT NOT NULL, revision INTEGER NOT NULL)"_s.arg(StateTable));
    copy.Execute(u"INSERT INTO %1 VALUES (?, ?)"_s.arg(StateTable), {state.office, state.revision});
}

} // namespace

CatalogueRows ReadCatalogueRows(Database& catalogue)
{
    CStringArray names = CatalogueTables();
    if (catalogue.HasTable(GivenIdsTable())) names.append(GivenIdsTable());
    CatalogueRows rows;
    for (const CString& name : names)
        rows.tables.append(ReadTable(catalogue, name));
    return rows;
}

std::optional<CopiedState> StateOfCopy(Database& copy)
{
    std::optional<CopiedState> state;
    if (!copy.HasTable(StateTable)) return state;
    copy.ForEach(u"SELECT office, revision FROM %1"_s.arg(StateTable), {}, [&](const QSqlQuery& row) {
        state = {row.value(0).toString(), row.value(1).toLongLong()};
    });
    return state;
}

void WriteCatalogueCopy(Database& copy, const CatalogueRows& rows, const CopiedState& state)
{
    MakeRoom(copy);
    EnsureGivenIds(copy);
    for (const CatalogueRows::Table& table : rows.tables)
        copy.Insert(table.name, table.columns, table.rows);
    WriteState(copy, state);
}

void CopyCatalogue(Database& from, Database& to, const CopiedState& state)
{
    CatalogueRows rows;
    {
        const Snapshot snapshot(from);
        rows = ReadCatalogueRows(from);
    }
    Transaction transaction(to);
    WriteCatalogueCopy(to, rows, state);
    transaction.Commit();
}

} // namespace embedded
