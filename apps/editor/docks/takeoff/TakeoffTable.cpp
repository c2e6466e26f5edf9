#include "editor/docks/takeoff/TakeoffTable.h"

#include "platform/Paths.h"
#include "rules/match/TextKey.h"
#include "rules/takeoff/TakeoffAhead.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// How many rows are read between two looks at the progress.
constexpr std::size_t RowsBetweenTellings = 256;
constexpr qint64 WholeProgress = 1000;

} // namespace

TakeoffTooLarge::TakeoffTooLarge(const CString& reason) : std::runtime_error(reason.toStdString()) {}
TakeoffTooLarge::~TakeoffTooLarge() = default;

/// Puts a table together.
class TakeoffTable::Maker
{
public:
    Maker(const CString& path, const CStringArray& headers, std::size_t mostCells)
        : m_table(new TakeoffTable), m_mostCells(mostCells)
    {
        m_table->m_path = path;
        m_table->m_headers = headers;
        m_table->m_begins.push_back(0);
    }

    void Add(const rules::TakeoffRow& row)
    {
        if (m_table->m_cells.size() + OwnTexts + row.cells.size() > m_mostCells)
            throw TakeoffTooLarge(u"%1：构件表太大，超过 %2 个单元格，请用 ktqdde apply 套价"_s
                                      .arg(platform::ToNative(m_table->m_path))
                                      .arg(m_mostCells));
        Put(row.id);
        Put(row.name);
        Put(row.category);
        for (const QStringView cell : row.cells)
            Put(cell);
        if (!row.faults.empty()) m_table->m_faults[m_table->m_lines.size()] = row.faults;
        m_table->m_lines.push_back(row.line);
    }

    TakeoffTablePtr Finish() { return std::move(m_table); }

private:
    void Put(QStringView text)
    {
        auto known = m_numbers.find(text);
        if (known == m_numbers.end()) {
            known = m_numbers.emplace(text.toString(), static_cast<std::uint32_t>(m_numbers.size())).first;
            m_table->m_text += text;
            m_table->m_begins.push_back(m_table->m_text.size());
        }
        m_table->m_cells.push_back(known->second);
    }

    std::shared_ptr<TakeoffTable> m_table;
    std::size_t m_mostCells;
    rules::TextMap<std::uint32_t> m_numbers;
};

TakeoffTablePtr TakeoffTable::Read(const CString& path, StepControl& control, std::size_t mostCells)
{
    rules::TakeoffReader reader(path, {.sheet = {}, .pulse = [&] { control.Check(); }});
    Maker maker(path, reader.Headers(), mostCells);
    rules::TakeoffAhead ahead(reader);
    std::size_t read = 0;
    while (const rules::TakeoffRow* const row = ahead.Next()) {
        maker.Add(*row);
        if (++read % RowsBetweenTellings != 0) continue;
        control.Check();
        control.Report(static_cast<qint64>(ahead.Progress() * static_cast<double>(WholeProgress)),
                       WholeProgress);
    }
    return maker.Finish();
}

QStringView TakeoffTable::TextAt(std::size_t row, std::size_t place) const
{
    const std::size_t width = OwnTexts + static_cast<std::size_t>(m_headers.size());
    const std::uint32_t text = m_cells[row * width + place];
    return QStringView(m_text).sliced(m_begins[text], m_begins[text + 1] - m_begins[text]);
}

void TakeoffTable::CellsOf(std::size_t row, std::vector<QStringView>& cells) const
{
    cells.resize(static_cast<std::size_t>(m_headers.size()));
    for (std::size_t column = 0; column < cells.size(); ++column)
        cells[column] = CellOf(row, column);
}

const std::vector<rules::CellFault>& TakeoffTable::FaultsOf(std::size_t row) const
{
    static const std::vector<rules::CellFault> None;
    const auto found = m_faults.find(row);
    return found == m_faults.end() ? None : found->second;
}

Component TakeoffTable::ComponentAt(std::size_t row) const
{
    Component component{.id = IdOf(row).toString(),
                        .name = NameOf(row).toString(),
                        .category = CategoryOf(row).toString(),
                        .headers = m_headers};
    for (std::size_t column = 0; column < static_cast<std::size_t>(m_headers.size()); ++column)
        component.cells.push_back(CellOf(row, column).toString());
    return component;
}

} // namespace editor
