#pragma once

#include "tables/TableError.h"
#include "tables/TableReader.h"
#include "tables/WorksheetLimits.h"
#include "tables/XmlStream.h"
#include "tables/ZipReader.h"

#include <QtCore/QByteArray>

#include <memory>
#include <vector>

namespace tables {

/// Gathers the cells of a row of a worksheet, and keeps them until the next one.
class RowBuilder
{
public:
    void Clear();
    /// Sets a cell to a text in UTF-8, which is copied; an empty text without a kind of its own is an empty
    /// cell.
    void SetUtf8(qsizetype column, CellKind kind, bool isFormula, QByteArrayView utf8);
    void Set(qsizetype column, CellKind kind, bool isFormula, const CString& text);
    /// Sets a cell to a text that outlives the row.
    void SetLasting(qsizetype column, CellKind kind, bool isFormula, QStringView text);
    bool IsEmpty() const noexcept { return m_slots.empty(); }
    /// Characters of all texts that were copied.
    qsizetype Length() const noexcept { return m_texts.size(); }
    /// The row, with at least `width` cells.
    const Row* Finish(qint64 line, qsizetype width);

private:
    struct Slot
    {
        CellKind kind = CellKind::Empty;
        bool isFormula = false;
        QStringView lasting{};
        qsizetype begin = 0; ///< in the texts, when there is no lasting one
        qsizetype length = 0;
    };

    void Put(qsizetype column, const Slot& slot);

    CString m_texts;
    std::vector<Slot> m_slots;
    std::vector<Cell> m_cells;
    Row m_row;
};

/// The part that XLSX and ODS share: a stream of XML from which rows come.
class WorkbookReader : public TableReader, protected XmlHandler
{
public:
    CString Sheet() const override { return m_sheet; }
    const Row* Next() override;
    double Progress() const override { return m_zip.Progress(); }

protected:
    explicit WorkbookReader(std::unique_ptr<ZipReader> zip);

    ZipReader& Zip() noexcept { return m_zip; }
    RowBuilder& Cells() noexcept { return m_cells; }
    void UseSheet(const CString& sheet) { m_sheet = sheet; }
    bool HasSheet() const noexcept { return !m_sheet.isNull(); }
    /// Starts the reading of the part with the rows.
    void ReadRowsOf(const CString& part);
    /// Ends the row of which the cells have been set; it stands `count` times from `line` on.
    void EndRow(qint64 line, qint64 count = 1);
    /// Takes note of cells that were merged into one. Raises `TableError` when they belong to the table.
    void TakeMerged(qint64 top, qint64 bottom, qsizetype left, qsizetype right) const;
    /// Called at the end of the part; raises what then is found to be wrong.
    virtual void AtEnd();

    /// Adds text to what a cell holds. Raises `TableError` when it gets too long for one, or with the cells
    /// before it for a row.
    void AddText(std::string_view text, QByteArray& to, qsizetype column) const;
    [[noreturn]] void FailMerged(qint64 top, qint64 bottom, qsizetype left, qsizetype right) const;
    /// `line` and `column` as of `Place`.
    [[noreturn]] void Fail(const CString& reason, qint64 line = 0, qsizetype column = -1) const;
    [[noreturn]] void FailSheet(const CString& wanted, const CStringArray& known) const;

    /// The row that is read at the moment, for messages.
    qint64 m_line = 0;

private:
    const std::unique_ptr<ZipReader> m_owned;
    ZipReader& m_zip;
    CString m_sheet;
    std::unique_ptr<XmlStream> m_stream;
    RowBuilder m_cells;
    qint64 m_given = 0;   ///< line of the row given last
    qint64 m_repeats = 0; ///< how often it stands below itself
    qint64 m_first = 0;   ///< line of the headings
    qsizetype m_width = 0;
};

std::unique_ptr<TableReader> OpenXlsx(std::unique_ptr<ZipReader> zip, const ReadOptions& options);
std::unique_ptr<TableReader> OpenOds(std::unique_ptr<ZipReader> zip, const ReadOptions& options);

} // namespace tables
