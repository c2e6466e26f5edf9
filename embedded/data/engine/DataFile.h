#pragma once

#include "embedded/data/engine/Database.h"
#include "platform/Text.h"

#include <QtCore/QByteArray>

namespace embedded {

/// One of the tables that the program ships as text: UTF-8, lines that begin with "#" are comments, the first
/// other line names the columns, the rest are rows. Fields are separated by tabs, "-" stands for an empty
/// one. Lines may end in LF or CR LF.
struct DataFile
{
    CStringArray columns;
    QList<CStringArray> rows;

    /// Parses a text. Raises `Error` naming `name` and the line when a row has another number of fields than
    /// the header, or when there is no header.
    static DataFile Parse(const CString& name, const CString& text);
    /// The shipped table of that name, such as "specialties". Raises `Error` when there is none.
    static DataFile Shipped(const CString& table);

    /// The values of one column; empty when there is no such column.
    CStringArray Column(const CString& column) const;
};

/// The bytes of a file that is built into the program. Raises `Error` when there is none of that name.
QByteArray ShippedFile(const CString& fileName);

/// Inserts the shipped table of that name into the database table of the same name.
void ImportShipped(Database& database, const CString& table);

} // namespace embedded
