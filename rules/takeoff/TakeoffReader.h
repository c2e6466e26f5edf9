#pragma once

#include "rules/Export.h"
#include "tables/TableReader.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

/// Take-off tables: one component a row. docs/takeoff.md tells the columns.
namespace rules {

/// A cell that holds no value, such as a date; it counts as empty.
struct CellFault
{
    CString column;
    CString reason;
};

/// A component as the table has it, by views into one text that the row owns. A row that is read into again
/// and again spares allocations.
struct TakeoffRow
{
    TakeoffRow() = default;
    TakeoffRow(const TakeoffRow&) = delete;
    TakeoffRow& operator=(const TakeoffRow&) = delete;

    qint64 line = 0;        ///< one-based, as of `tables::Row`
    QStringView id{};       ///< without blanks around it
    QStringView category{}; ///< specialty, big and small category joined by backslashes, without blanks
    QStringView name{};
    std::vector<QStringView> cells; ///< beside the headers
    std::vector<CellFault> faults;
    CString text; ///< what the views look at
};

/// Reads components row by row, in memory that does not grow with their number. Every operation raises
/// `tables::TableError` when the table cannot be read.
class KTQDDE_RULES_EXPORT TakeoffReader
{
public:
    /// Opens a table and reads its headings. Raises `tables::TableError`, which names the place, when it
    /// cannot be read, has no sheet of that name, lacks 构件编号 or the category, or has two columns of one
    /// name.
    explicit TakeoffReader(const CString& path, const tables::ReadOptions& options = {});
    ~TakeoffReader();
    TakeoffReader(const TakeoffReader&) = delete;
    TakeoffReader& operator=(const TakeoffReader&) = delete;

    /// The headings, without blanks around them, as many as the table has columns; empty ones included.
    const CStringArray& Headers() const noexcept { return m_headers; }
    /// The index of the column of that name, compared as attributes' columns are; nothing when there is none.
    std::optional<std::size_t> ColumnOf(const CString& name) const;
    /// Reads the next component into `row`; false at the end. Raises `tables::TableError` for quotes that do
    /// not fit and for a row that goes on behind the last heading: the cells may have been shifted.
    bool Next(TakeoffRow& row);
    double Progress() const { return m_table->Progress(); }

private:
    void TakeHeaders();
    void RequireCategory();
    void CheckWidth(const tables::Row& row) const;
    qsizetype CopyRecord(const tables::Row& read, std::size_t count, TakeoffRow& row) const;
    qsizetype CopyCells(const tables::Row& read, std::size_t count, TakeoffRow& row) const;
    qsizetype LevelRoom(qsizetype size) const;
    void JoinLevels(qsizetype used, TakeoffRow& row) const;

    CString m_path;
    std::unique_ptr<tables::TableReader> m_table;
    CStringArray m_headers;
    std::vector<CString> m_known; ///< the headings as they are compared
    qint64 m_headerLine = 1;
    std::size_t m_id = 0;
    std::optional<std::size_t> m_name;
    std::optional<std::size_t> m_category;
    std::array<std::size_t, 3> m_levels{}; ///< where there is no column of the whole category
};

} // namespace rules
