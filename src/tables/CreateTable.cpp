#include "tables/CreateTable.h"

#include "tables/CsvWriter.h"
#include "tables/TableError.h"
#include "tables/XlsxWriter.h"

namespace tables {

using namespace Qt::StringLiterals;

std::unique_ptr<TableWriter> CreateTable(const CString& path, const WriteOptions& options)
{
    if (IsWorkbookPath(path)) return std::make_unique<XlsxWriter>(path, options);
    for (const CString& ending : {u".ods"_s, u".xls"_s, u".xlsm"_s, u".xlsb"_s}) {
        if (path.endsWith(ending, Qt::CaseInsensitive))
            throw TableError(path, u"不能写出 %1 文件，请用 .xlsx 或 .csv"_s.arg(ending));
    }
    return std::make_unique<CsvWriter>(path, options);
}

} // namespace tables
