#include "tables/TableError.h"

#include "platform/Paths.h"
#include "tables/Cell.h"

namespace tables {

using namespace Qt::StringLiterals;

namespace {

CString MessageOf(const CString& path, const CString& reason, const Place& place)
{
    const CString where = place.Text();
    const CString file = platform::ToNative(path) + u'：';
    return where.isEmpty() ? file + reason : file + where + u'：' + reason;
}

} // namespace

CString Place::Text() const
{
    CString text;
    if (!sheet.isEmpty()) text += u"工作表“%1”"_s.arg(sheet);
    if (line > 0) text += u"第 %1 行"_s.arg(line);
    if (column < 0) return text;
    if (sheet.isEmpty()) return text + u"第 %1 列"_s.arg(column + 1);
    return text + u' ' + ColumnName(column) + u" 列"_s;
}

TableError::TableError(const CString& path, const CString& reason, const Place& place)
    : std::runtime_error(MessageOf(path, reason, place).toStdString()),
      m_message(MessageOf(path, reason, place)), m_reason(reason), m_place(place)
{
}

TableError::~TableError() = default;

} // namespace tables
