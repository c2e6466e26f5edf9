#pragma once

#include "support/TempFolder.h"
#include "tables/Record.h"
#include "tables/TableError.h"

#include <map>
#include <string>

namespace test {

/// Every row of a table that is given as the bytes of a file of that name, texts only.
CArray<tables::Record> RecordsOf(const QByteArray& bytes, const CString& name, const CString& sheet = {});
/// The same, fields alone; a fault is a failure of the test.
CArray<CStringArray> FieldsOf(const QByteArray& bytes, const CString& name, const CString& sheet = {});
/// The kinds of the cells of a row, zero-based.
std::vector<tables::CellKind> KindsOf(const QByteArray& bytes, const CString& name, int row);
/// Place and reason with which the reading of a table is refused, without the name of the file; "no error"
/// when it is not.
CString RefusalOf(const QByteArray& bytes, const CString& name, const CString& sheet = {});

using Parts = std::map<std::string, QByteArray>;
/// An archive of parts.
QByteArray MakeZip(const Parts& parts);
/// The parts of an XLSX workbook with a sheet 构件 of these rows (the inside of sheetData), one 说明 and a
/// hidden one.
Parts XlsxParts(const QByteArray& rows, const QByteArray& behindRows = {});
QByteArray MakeXlsx(const QByteArray& rows, const QByteArray& behindRows = {});
/// An ODS workbook with a sheet 构件 of these rows and one 说明.
Parts OdsParts(const QByteArray& rows);
QByteArray MakeOds(const QByteArray& rows);

} // namespace test
