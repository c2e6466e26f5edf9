#include "embedded/data/engine/DataFile.h"

#include "embedded/data/engine/Error.h"

#include <QtCore/QResource>

// Outside any namespace: the macro declares a function there. A static library's resources need this call.
static void InitResources()
{
    Q_INIT_RESOURCE(ktqdde_embedded);
}

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CStringArray Fields(const CString& line)
{
    CStringArray fields = line.split(u'\t');
    for (CString& field : fields) {
        if (field == u"-") field.clear();
    }
    return fields;
}

} // namespace

DataFile DataFile::Parse(const CString& name, const CString& text)
{
    DataFile file;
    int number = 0;
    for (CString line : text.split(u'\n')) {
        ++number;
        if (line.endsWith(u'\r')) line.chop(1);
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        const CStringArray fields = Fields(line);
        if (file.columns.isEmpty()) {
            file.columns = fields;
        } else if (fields.size() == file.columns.size()) {
            file.rows.append(fields);
        } else {
            throw Error(u"%1 第 %2 行：有 %3 个字段，表头有 %4 个"_s.arg(name)
                            .arg(number)
                            .arg(fields.size())
                            .arg(file.columns.size()));
        }
    }
    if (file.columns.isEmpty()) throw Error(name + u"：没有表头行"_s);
    return file;
}

DataFile DataFile::Shipped(const CString& table)
{
    const CString name = table + u".tsv"_s;
    return Parse(name, CString::fromUtf8(ShippedFile(name)));
}

CStringArray DataFile::Column(const CString& column) const
{
    const qsizetype index = columns.indexOf(column);
    CStringArray values;
    if (index < 0) return values;
    for (const CStringArray& row : rows)
        values.append(row.at(index));
    return values;
}

QByteArray ShippedFile(const CString& fileName)
{
    InitResources();
    // Built-in files are part of the program and not of the file system, so they do not go through its door.
    const QResource resource(u":/ktqdde/data/"_s + fileName);
    if (!resource.isValid()) throw Error(fileName + u"：程序中没有这个文件"_s);
    return resource.uncompressedData();
}

void ImportShipped(Database& database, const CString& table)
{
    const DataFile file = DataFile::Shipped(table);
    database.Insert(table, file.columns, file.rows);
}

} // namespace embedded
