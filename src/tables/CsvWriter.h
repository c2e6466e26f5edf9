#pragma once

#include "tables/TableWriter.h"

namespace tables {

/// CSV as `CsvReader` reads it, in UTF-8 with byte order mark, lines ending in CR LF.
class CsvWriter final : public TableWriter
{
public:
    CsvWriter(const CString& path, const WriteOptions& options);

private:
    void StartSheet(const CString& name, const CArray<Column>& columns) override;
    void PutText(QStringView text) override;
    void PutNumber(QStringView number) override;
    void PutLink(QStringView text, const CString& sheet, qint64 row) override;
    void PutEmpty() override;
    void StopRow() override;
    QByteArray Rest() override;

    void Separate();

    CString m_lines; ///< what has not been written yet
    bool m_hasSheet = false;
};

} // namespace tables
