#pragma once

#include "tables/TableReader.h"
#include "tables/TextSource.h"

#include <vector>

namespace tables {

/// Takes a CSV text apart by RFC 4180: fields are separated by commas, a field in quotes may hold commas,
/// quotes (doubled) and line breaks. Lines may end in CR LF, LF or CR, the last one need not end, and empty
/// lines are passed over. A fault does not end the reading, but an unclosed quote reaches to the end. The
/// apostrophe before a text that a spreadsheet would take for a formula is taken off (see CsvText.h). Control
/// characters, NUL among them, are characters like others: whoever takes the fields tells which ones it
/// cannot use.
class CsvReader final : public TableReader
{
public:
    /// Raises `TableError` when the file cannot be read.
    CsvReader(std::unique_ptr<platform::InputFile> file, const CString& path);

    CStringArray Sheets() override { return {}; }
    CString Sheet() const override { return {}; }
    const Row* Next() override;
    double Progress() const override { return m_source.Progress(); }

private:
    enum class Scan { Done, NeedsMore };

    /// A field in the buffer, as it stands between its commas or quotes.
    struct Field
    {
        qsizetype begin;
        qsizetype end;
        bool hasDoubledQuotes;
    };

    bool Fill();
    void FillForLongRecord();
    bool SkipLineEnds();
    Scan ScanRecord();
    Scan ScanPlain();
    Scan ScanQuoted();
    void TakeFields();
    void Undouble(Field& field);

    CString m_path;
    TextSource m_source;
    CString m_text;     ///< what has been read and not been given yet
    qsizetype m_at = 0; ///< where the scanning stands in it
    bool m_isAtEnd = false;
    qint64 m_line = 1;
    std::vector<Field> m_fields;
    std::vector<Cell> m_cells;
    Row m_row;
};

} // namespace tables
