#include "embedded/ShippedTable.h"

#include "support/SourceTree.h"

#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Error.h"

#include <QtCore/QFile>

namespace test {

using namespace Qt::StringLiterals;

std::vector<TableRow> ShippedTable(const CString& name)
{
    QFile file(test::InSourceTree(u"data/"_s + name + u".tsv"_s));
    if (!file.open(QIODevice::ReadOnly))
        throw embedded::Error(file.fileName() + u": "_s + file.errorString());
    const auto table = embedded::DataFile::Parse(name, QString::fromUtf8(file.readAll()));
    std::vector<TableRow> rows;
    for (const CStringArray& fields : table.rows) {
        TableRow row;
        for (qsizetype column = 0; column < table.columns.size(); ++column)
            row.insert(table.columns.at(column), fields.at(column));
        rows.push_back(row);
    }
    return rows;
}

std::vector<TableRow> ShippedRows(const CString& name, const CString& items)
{
    std::vector<TableRow> rows = ShippedTable(name);
    std::erase_if(rows, [&](const TableRow& row) { return row[u"items"_s] != items; });
    return rows;
}

CString FullName(const TableRow& smallCategory)
{
    return smallCategory[u"specialty"_s] + u'\\' + smallCategory[u"big_category"_s] + u'\\' +
           smallCategory[u"name"_s];
}

} // namespace test
