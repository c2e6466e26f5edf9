#pragma once

#include "rules/bill/BillBuilder.h"
#include "shared/BillListing.h"

#include <QtCore/QSizeF>
#include <QtGui/QFont>

#include <vector>

class QPagedPaintDevice;
class QPaintDevice;
class QPainter;

namespace editor {

/// A bill of quantities on paper: every page has the title, the headings and its number, quantities stand
/// right-aligned, and a row is parted only where no page could hold it.
class BillPages
{
public:
    /// What stands above and below the rows.
    struct Titles
    {
        CString title;    ///< in large letters
        CString subtitle; ///< what the bill was made of
        CString foot;     ///< behind the last row: what the components come to
    };

    /// Lays the bill out for pages of `size`, in pixels of `device`, without margins. The bill is needed
    /// during the call only.
    BillPages(const rules::Bill& bill, rules::PricingMode mode, Titles titles, const QSizeF& size,
              const QPaintDevice& device);

    int Count() const noexcept { return static_cast<int>(m_pages.size()); }
    /// Paints a page, by its index, with its upper left corner at the painter's origin.
    void Paint(QPainter& painter, int page) const;

    /// Puts a bill on all pages of a printer or a PDF file. Raises `std::runtime_error` when it cannot be
    /// begun.
    static void Print(const rules::Bill& bill, rules::PricingMode mode, const Titles& titles,
                      QPagedPaintDevice& device);

private:
    /// One cell as lines that fit its column.
    using Cell = CStringArray;
    struct Row
    {
        std::vector<Cell> cells; ///< by column
        qsizetype lines = 1;     ///< of the highest cell
        bool isBelow = false;    ///< a quota item below a bill item
    };
    /// Lines of a row, as far as they stand on one page.
    struct Piece
    {
        std::size_t row = 0;
        qsizetype first = 0;
        qsizetype count = 0;
    };
    struct Page
    {
        std::vector<Piece> pieces;
        bool hasFoot = false;
    };

    void PlaceColumns();
    void MakeRows(const rules::Bill& bill, rules::PricingMode mode);
    Cell Wrapped(const CString& text, std::size_t column) const;
    void PlaceRows();
    double HeightOf(qsizetype lines) const;
    double Body() const;
    double HeadHeight() const;
    double FootHeight() const;
    void PaintHead(QPainter& painter, double& y) const;
    void PaintPiece(QPainter& painter, const Piece& piece, double& y) const;

    const QPaintDevice& m_device;
    Titles m_titles;
    QSizeF m_size;
    QFont m_font;
    QFont m_titleFont;
    QFont m_boldFont;
    double m_line = 0;             ///< the height of a line
    double m_gap = 0;              ///< between a cell's border and its text
    std::vector<double> m_columns; ///< their left sides, and the right one of the last
    std::vector<Row> m_rows;
    std::vector<Page> m_pages; ///< at least one
};

} // namespace editor
