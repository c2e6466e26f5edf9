#pragma once

#include "editor/docks/takeoff/Component.h"
#include "editor/steps/StepControl.h"
#include "rules/takeoff/TakeoffReader.h"

#include <map>
#include <memory>
#include <stdexcept>
#include <vector>

namespace editor {

class TakeoffTable;
using TakeoffTablePtr = std::shared_ptr<const TakeoffTable>;

/// A table is larger than the editor takes into memory. The text tells it to a person.
class TakeoffTooLarge : public std::runtime_error
{
public:
    explicit TakeoffTooLarge(const CString& reason);
    ~TakeoffTooLarge() override;
};

/// All components of a take-off table, read once, so that they can be priced after every edit without the
/// file. Each text is kept once, and a cell is its number. Nothing changes it, and any thread may read it.
class TakeoffTable
{
public:
    /// The most cells that are kept: half a million components with a hundred columns, in some 200 MB.
    static constexpr std::size_t MostCells = 50'000'000;

    /// Reads the first sheet of a table that is not hidden. Raises `tables::TableError` when it cannot be
    /// read, `TakeoffTooLarge`, and `embedded::Cancelled`.
    static TakeoffTablePtr Read(const CString& path, StepControl& control, std::size_t mostCells = MostCells);

    const CString& Path() const noexcept { return m_path; }
    const CStringArray& Headers() const noexcept { return m_headers; }
    std::size_t Size() const noexcept { return m_lines.size(); }

    // Of a row below `Size`
    qint64 LineOf(std::size_t row) const { return m_lines[row]; }
    QStringView IdOf(std::size_t row) const { return TextAt(row, 0); }
    QStringView NameOf(std::size_t row) const { return TextAt(row, 1); }
    QStringView CategoryOf(std::size_t row) const { return TextAt(row, 2); }
    QStringView CellOf(std::size_t row, std::size_t column) const { return TextAt(row, OwnTexts + column); }
    /// All cells of a row into `cells`, which may be used again and again.
    void CellsOf(std::size_t row, std::vector<QStringView>& cells) const;
    /// Its cells that hold no value, such as a date, and count as empty.
    const std::vector<rules::CellFault>& FaultsOf(std::size_t row) const;
    /// All that is known of it.
    editor::Component ComponentAt(std::size_t row) const;

private:
    class Maker;
    static constexpr std::size_t OwnTexts = 3; ///< of a row in front of its cells: id, name, category

    TakeoffTable() = default;
    QStringView TextAt(std::size_t row, std::size_t place) const;

    CString m_path;
    CStringArray m_headers;
    CString m_text;                     ///< all different texts, one behind the other
    std::vector<qsizetype> m_begins;    ///< of each, and the end
    std::vector<std::uint32_t> m_cells; ///< numbers of texts, row by row
    std::vector<qint64> m_lines;        ///< by row
    std::map<std::size_t, std::vector<rules::CellFault>> m_faults; ///< by row
};

} // namespace editor
