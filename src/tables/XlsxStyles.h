#pragma once

#include "platform/Text.h"
#include "tables/XmlStream.h"

#include <QtCore/QHash>

#include <vector>

namespace tables {

/// Whether a number format of a workbook ("yyyy\-mm\-dd", "[h]:mm", "0.00") shows dates or times.
bool IsDateFormat(const CString& format);

/// A date or time as its number in a workbook, days since 1900 or 1904, has it: yyyy-MM-dd, with HH:mm:ss
/// when there is a time, or that alone. Empty for what is no date (below 0, after the year 9999).
CString DateText(double days, bool countsFrom1904);

/// Which formats of an XLSX workbook show dates: a cell holds a number, only its format makes a date of it.
class XlsxStyles final : private XmlHandler
{
public:
    /// Raises `TableError`.
    void Read(ZipReader& zip, const CString& part);
    bool IsDate(std::size_t style) const { return style < m_isDate.size() && m_isDate[style]; }

private:
    void Start(std::string_view name, const XmlAttributes& attributes) override;
    void End(std::string_view name) override;
    void Text(std::string_view /*text*/) override {}

    CString m_path;
    QHash<int, bool> m_ownFormats;
    std::vector<bool> m_isDate;
    bool m_isInCellFormats = false;
};

} // namespace tables
