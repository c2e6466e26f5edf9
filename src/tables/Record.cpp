#include "tables/Record.h"

#include <algorithm>
#include <limits>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

CString FaultOf(const Row& row)
{
    if (!row.fault.isEmpty()) return row.fault;
    for (qsizetype column = 0; const Cell& cell : row.cells) {
        const CString fault = tables::FaultOf(cell);
        if (!fault.isEmpty()) return u"%1 列%2"_s.arg(ColumnName(column), fault);
        ++column;
    }
    return {};
}

} // namespace

CArray<Record> ReadRecords(TableReader& reader)
{
    CArray<Record> records;
    while (const Row* const row = reader.Next()) {
        Record record;
        record.line = static_cast<int>(std::min<qint64>(row->line, std::numeric_limits<int>::max()));
        record.fields.reserve(static_cast<qsizetype>(row->cells.size()));
        for (const Cell& cell : row->cells)
            record.fields.append(cell.text.toString());
        record.fault = FaultOf(*row);
        records.append(std::move(record));
    }
    return records;
}

} // namespace tables
