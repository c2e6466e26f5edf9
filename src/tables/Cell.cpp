#include "tables/Cell.h"

namespace tables {

using namespace Qt::StringLiterals;

CString ColumnName(qsizetype column)
{
    CString name;
    for (qsizetype rest = column; rest >= 0; rest = rest / 26 - 1)
        name.prepend(QChar(static_cast<char16_t>(u'A' + rest % 26)));
    return name;
}

CString FaultOf(const Cell& cell)
{
    if (cell.kind == CellKind::Date)
        return u"是日期（%1），请把单元格设成文本再填写"_s.arg(cell.text.toString());
    if (cell.kind != CellKind::Error) return {};
    if (cell.text.isEmpty()) return u"是没有保存结果的公式，请用表格软件打开，重新计算并保存"_s;
    return u"是出错的值（%1）"_s.arg(cell.text.toString());
}

} // namespace tables
