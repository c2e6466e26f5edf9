#pragma once

#include "embedded/data/engine/Database.h"

#include <optional>

namespace embedded {

/// Which state of which office's catalogue a copy holds.
struct CopiedState
{
    CString office;
    qint64 revision = 0;

    bool operator==(const CopiedState&) const = default;
};

/// One state of a catalogue in memory, on its way from one database to another.
struct CatalogueRows
{
    struct Table
    {
        CString name;
        CStringArray columns;
        QList<CStringArray> rows; ///< in their order
    };
    QList<Table> tables;
};

/// Reads all tables of a catalogue. To be called while a `Snapshot` lives, for the tables to be of one state.
/// Raises `Error`.
CatalogueRows ReadCatalogueRows(Database& catalogue);

/// The state that a database has been given by `WriteCatalogueCopy`; nothing for one that is no copy, such as
/// an empty one or a catalogue of a project's own. Raises `Error`.
std::optional<CopiedState> StateOfCopy(Database& copy);

/// Makes a database a copy of a catalogue, of this program's schema, whatever state it held before. To be
/// called in a write transaction. Raises `Error`, also for a database that a newer program has made and for
/// one that holds something else than a catalogue.
void WriteCatalogueCopy(Database& copy, const CatalogueRows& rows, const CopiedState& state);

/// Makes `to` a copy of the catalogue `from`, which is read in one snapshot and written in one transaction.
/// Raises `Error`; `to` has not changed then.
void CopyCatalogue(Database& from, Database& to, const CopiedState& state);

} // namespace embedded
