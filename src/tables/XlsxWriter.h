#pragma once

#include "tables/TableWriter.h"
#include "tables/ZipWriter.h"

namespace tables {

/// XLSX with texts in their cells, so that rows go into the archive and the archive into its file as they
/// come: neither is held in memory.
class XlsxWriter final : public TableWriter
{
public:
    XlsxWriter(const CString& path, const WriteOptions& options);

private:
    void StartSheet(const CString& name, const CArray<Column>& columns) override;
    void PutText(QStringView text) override;
    void PutNumber(QStringView number) override;
    void PutLink(QStringView text, const CString& sheet, qint64 row) override;
    void PutEmpty() override;
    void StopRow() override;
    QByteArray Rest() override;

    void CheckName(const CString& name) const;
    void BeginCell(int style);
    void PutStyledText(QStringView text, int style);
    void StartColumns();
    void EndSheet();
    void Flush();

    ZipWriter m_zip;
    CStringArray m_sheets;
    CArray<Column> m_columns;
    QList<QByteArray> m_columnNames;
    QByteArray m_rows;   ///< what has not been put into the archive yet
    QByteArray m_packed; ///< what of the archive has not been put into the file yet
    QByteArray m_links;  ///< of the sheet that is written
    int m_linkCount = 0;
    qint64 m_size = 0; ///< of the sheet so far
    bool m_isRowOpen = false;
};

} // namespace tables
