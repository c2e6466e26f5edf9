#pragma once

#include "platform/Text.h"

/// The fixed columns of a table of rules.
namespace rules::sheet {

inline const CString CategoryColumn = QStringLiteral("类别");
inline const CString DefaultColumn = QStringLiteral("默认规则");
inline const CString BillColumn = QStringLiteral("清单");
inline const CString QuotaColumn = QStringLiteral("定额");
/// Whether a heading is one of these and so none of an attribute.
inline bool IsFixed(const CString& heading)
{
    return heading == CategoryColumn || heading == DefaultColumn || heading == BillColumn ||
           heading == QuotaColumn;
}

inline const CString Yes = QStringLiteral("是");
/// In front of a quota item that stands below the bill item before it.
inline const CString Below = QStringLiteral("└");
/// Between an item's number and its quantity.
inline const CString BeforeFormula = QStringLiteral("：");
/// Behind an item that takes the pipe fittings in, or does not, where its library has it otherwise.
inline const CString WithFittings = QStringLiteral("（带管道配件）");
inline const CString WithoutFittings = QStringLiteral("（不带管道配件）");

} // namespace rules::sheet
