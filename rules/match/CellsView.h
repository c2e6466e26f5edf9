#pragma once

#include "platform/Text.h"

#include <span>
#include <vector>

namespace rules {

/// The cells of a component, beside the headers of its table, wherever they stand: texts of their own or
/// views into a buffer. Owns nothing.
class CellsView
{
public:
    CellsView() = default;
    CellsView(std::span<const CString> cells) : m_texts(cells.data()), m_size(cells.size()) {}
    CellsView(std::span<const QStringView> cells) : m_views(cells.data()), m_size(cells.size()) {}
    CellsView(const std::vector<CString>& cells) : CellsView(std::span(cells)) {}
    CellsView(const std::vector<QStringView>& cells) : CellsView(std::span(cells)) {}

    std::size_t size() const noexcept { return m_size; }
    /// The cell at an index below `size()`.
    QStringView operator[](std::size_t index) const
    {
        return m_views != nullptr ? m_views[index] : QStringView(m_texts[index]);
    }

private:
    const CString* m_texts = nullptr;
    const QStringView* m_views = nullptr;
    std::size_t m_size = 0;
};

} // namespace rules
