#pragma once

#include "platform/ReplacedFile.h"
#include "platform/Text.h"

#include <functional>
#include <memory>

namespace tables {

enum class ColumnKind {
    Text, ///< stays text when somebody types into it: leading zeros survive
    Number,
};

/// A column of a sheet to be written.
struct Column
{
    CString heading{};
    ColumnKind kind = ColumnKind::Text;
    int decimals = -1; ///< digits behind the point that are shown, 0 to 9; -1 shows those that a number has
    int width = 0;     ///< in digits of the usual font; 0 takes that of the heading
};

struct WriteOptions
{
    /// Called now and then with the number of rows written. What it raises travels on and ends the writing.
    std::function<void(qint64 rows)> progress{};
};

/// Writes a table, cell by cell from the left and row by row. The file stands when `Finish` has returned;
/// until then, and for ever if the writer is destroyed before, what stood there stays whole and nothing is
/// left beside it. Every operation raises `TableError` when the file cannot be written or cannot hold what it
/// is given.
class TableWriter
{
public:
    virtual ~TableWriter();
    TableWriter(const TableWriter&) = delete;
    TableWriter& operator=(const TableWriter&) = delete;

    /// Starts a sheet with a row of headings, which stays in view. `name` is ignored in a CSV file, which has
    /// one sheet; in a workbook it must be one that spreadsheets take, and only once.
    void BeginSheet(const CString& name, const CArray<Column>& columns);
    /// A text, never taken for anything else: =1+1 is no formula, 030801001 no number.
    void Text(QStringView text);
    /// A number in its shortest form (see NumberText.h); raises `std::invalid_argument` for what is none. One
    /// of more than 15 digits, which spreadsheets would round, is written as text.
    void Number(QStringView number);
    void Empty();
    /// A text that leads to the first cell of a row of a sheet, which may come later. Text alone in a CSV
    /// file, and beyond the 65,530 links that a sheet can have.
    void Link(QStringView text, const CString& sheet, qint64 row);
    /// Ends the row; cells that are missing at its end are empty. More cells than columns raise
    /// `std::out_of_range`.
    void EndRow();
    /// Ends the file and puts it in its place. Once only, after at least one sheet.
    void Finish();

protected:
    TableWriter(const CString& path, WriteOptions options);

    virtual void StartSheet(const CString& name, const CArray<Column>& columns) = 0;
    virtual void PutText(QStringView text) = 0;
    virtual void PutNumber(QStringView number) = 0;
    virtual void PutLink(QStringView text, const CString& sheet, qint64 row) = 0;
    virtual void PutEmpty() = 0;
    virtual void StopRow() = 0;
    /// Gives what is left of the file.
    virtual QByteArray Rest() = 0;

    void Write(const QByteArray& bytes);
    /// Zero-based, of the cell that is put.
    qsizetype AtColumn() const noexcept { return m_column; }
    /// One-based, of the row that is written.
    qint64 AtRow() const noexcept { return m_row; }
    [[noreturn]] void Fail(const CString& reason) const;
    /// The same with the place of the cell that is put.
    [[noreturn]] void FailCell(const CString& reason) const;

private:
    void NextCell();
    void CheckText(QStringView text) const;

    CString m_path;
    CString m_sheet;
    WriteOptions m_options;
    std::unique_ptr<platform::ReplacedFile> m_file;
    qsizetype m_columns = 0;
    qsizetype m_column = -1;
    qint64 m_row = 0;
    qint64 m_rows = 0; ///< of all sheets, without headings
};

/// Whether `path` ends in what is written as a workbook.
bool IsWorkbookPath(const CString& path);

} // namespace tables
