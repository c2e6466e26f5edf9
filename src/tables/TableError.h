#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <stdexcept>

namespace tables {

/// Where in a file: a line of a CSV file or a row of a worksheet, and a column.
struct Place
{
    CString sheet{};       ///< empty for a CSV file
    qint64 line = 0;       ///< one-based; 0 for none
    qsizetype column = -1; ///< zero-based; -1 for none

    /// 工作表“构件”第 3 行 B 列, 第 3 行第 2 列, or as much of it as is known.
    KTQDDE_EXPORT CString Text() const;
};

/// A table cannot be read or written. The text names file, place and reason, ready to be shown to a person.
class KTQDDE_EXPORT TableError : public std::runtime_error
{
public:
    /// `path` is a path text.
    TableError(const CString& path, const CString& reason, const Place& place = {});
    ~TableError() override;

    /// Native path, place and reason in one line, as `what()` gives it in UTF-8.
    const CString& Message() const noexcept { return m_message; }
    const CString& Reason() const noexcept { return m_reason; }
    const Place& Where() const noexcept { return m_place; }

private:
    CString m_message;
    CString m_reason;
    Place m_place;
};

} // namespace tables
