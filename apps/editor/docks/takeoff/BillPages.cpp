#include "editor/docks/takeoff/BillPages.h"
#include "shared/BillListing.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPagedPaintDevice>
#include <QtGui/QPainter>
#include <QtGui/QTextLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr double TextSize = 9;
constexpr double TitleSize = 15;
constexpr double GapOfLine = 0.25; ///< beside and above texts, in lines

struct Column
{
    QStringView heading;
    double share; ///< of the width
    Qt::Alignment alignment;
};
constexpr std::array Columns{Column{shared::billheading::Serial, 0.055, Qt::AlignHCenter},
                             Column{shared::billheading::Number, 0.145, Qt::AlignLeft},
                             Column{shared::billheading::Name, 0.24, Qt::AlignLeft},
                             Column{shared::billheading::Features, 0.255, Qt::AlignLeft},
                             Column{shared::billheading::Unit, 0.085, Qt::AlignHCenter},
                             Column{shared::billheading::Quantity, 0.11, Qt::AlignRight},
                             Column{shared::billheading::Note, 0.11, Qt::AlignLeft}};

/// Lines that are no wider than that.
CStringArray LinesOf(const CString& text, const QFont& font, const QPaintDevice& device, double width)
{
    CStringArray lines;
    for (const CString& paragraph : text.split(u'\n')) {
        QTextLayout layout(paragraph, font, const_cast<QPaintDevice*>(&device));
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            lines.append(paragraph.mid(line.textStart(), line.textLength()).trimmed());
        }
        layout.endLayout();
    }
    return lines;
}

} // namespace

BillPages::BillPages(const rules::Bill& bill, rules::PricingMode mode, Titles titles, const QSizeF& size,
                     const QPaintDevice& device)
    : m_device(device), m_titles(std::move(titles)), m_size(size)
{
    m_font.setPointSizeF(TextSize);
    m_boldFont = m_titleFont = m_font;
    m_boldFont.setBold(true);
    m_titleFont.setBold(true);
    m_titleFont.setPointSizeF(TitleSize);
    m_line = QFontMetricsF(m_font, &device).lineSpacing();
    m_gap = m_line * GapOfLine;
    PlaceColumns();
    MakeRows(bill, mode);
    PlaceRows();
}

void BillPages::PlaceColumns()
{
    double left = 0;
    for (const Column& column : Columns) {
        m_columns.push_back(left);
        left += column.share * m_size.width();
    }
    m_columns.push_back(m_size.width());
}

BillPages::Cell BillPages::Wrapped(const CString& text, std::size_t column) const
{
    return LinesOf(text, m_font, m_device, m_columns[column + 1] - m_columns[column] - 2 * m_gap);
}

void BillPages::MakeRows(const rules::Bill& bill, rules::PricingMode mode)
{
    for (const shared::BillLine& line : shared::LinesOf(bill, mode)) {
        const rules::BillRow& item = *line.row;
        const std::array<CString, Columns.size()> texts{line.serial > 0 ? CString::number(line.serial)
                                                                        : CString(),
                                                        item.number,
                                                        item.name,
                                                        item.FeatureText(),
                                                        item.unit,
                                                        item.quantity.isEmpty() ? u"缺"_s : item.quantity,
                                                        line.note};
        Row row{.cells = {}, .isBelow = line.serial == 0};
        for (std::size_t column = 0; column < texts.size(); ++column) {
            row.cells.push_back(Wrapped(texts[column], column));
            row.lines = std::max(row.lines, row.cells.back().size());
        }
        m_rows.push_back(std::move(row));
    }
}

double BillPages::HeightOf(qsizetype lines) const
{
    return static_cast<double>(lines) * m_line + 2 * m_gap;
}

double BillPages::HeadHeight() const
{
    const double title = QFontMetricsF(m_titleFont, &m_device).lineSpacing();
    return title + m_line + 2 * m_gap + HeightOf(1);
}

/// Of the page's number, and what keeps it apart from the rows.
double BillPages::FootHeight() const
{
    return 2 * m_line;
}

double BillPages::Body() const
{
    return m_size.height() - HeadHeight() - FootHeight();
}

void BillPages::PlaceRows()
{
    m_pages.emplace_back();
    double left = Body();
    const auto turn = [&] {
        m_pages.emplace_back();
        left = Body();
    };
    const auto most = std::max<qsizetype>(1, static_cast<qsizetype>((Body() - 2 * m_gap) / m_line));
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        for (qsizetype first = 0; first < m_rows[row].lines; first += most) {
            const qsizetype count = std::min(most, m_rows[row].lines - first);
            if (HeightOf(count) > left && !m_pages.back().pieces.empty()) turn();
            m_pages.back().pieces.push_back({row, first, count});
            left -= HeightOf(count);
        }
    if (HeightOf(1) > left && !m_pages.back().pieces.empty()) turn();
    m_pages.back().hasFoot = true;
}

void BillPages::PaintHead(QPainter& painter, double& y) const
{
    painter.setFont(m_titleFont);
    const double title = QFontMetricsF(m_titleFont, &m_device).lineSpacing();
    painter.drawText(QRectF(0, y, m_size.width(), title), Qt::AlignCenter, m_titles.title);
    y += title;
    painter.setFont(m_font);
    painter.drawText(
        QRectF(0, y, m_size.width(), m_line + 2 * m_gap), Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetricsF(m_font, &m_device).elidedText(m_titles.subtitle, Qt::ElideMiddle, m_size.width()));
    y += m_line + 2 * m_gap;
    painter.setFont(m_boldFont);
    for (std::size_t column = 0; column < Columns.size(); ++column) {
        const QRectF cell(m_columns[column], y, m_columns[column + 1] - m_columns[column], HeightOf(1));
        painter.drawRect(cell);
        painter.drawText(cell, Qt::AlignCenter, Columns[column].heading.toString());
    }
    painter.setFont(m_font);
    y += HeightOf(1);
}

void BillPages::PaintPiece(QPainter& painter, const Piece& piece, double& y) const
{
    const Row& row = m_rows[piece.row];
    const double height = HeightOf(piece.count);
    for (std::size_t column = 0; column < Columns.size(); ++column) {
        const double left = m_columns[column];
        const double width = m_columns[column + 1] - left;
        painter.drawRect(QRectF(left, y, width, height));
        const Cell lines = row.cells[column].mid(piece.first, piece.count);
        for (qsizetype i = 0; i < lines.size(); ++i)
            painter.drawText(
                QRectF(left + m_gap, y + m_gap + static_cast<double>(i) * m_line, width - 2 * m_gap, m_line),
                static_cast<int>((Columns[column].alignment | Qt::AlignVCenter).toInt()), lines[i]);
    }
    y += height;
}

void BillPages::Paint(QPainter& painter, int page) const
{
    constexpr double ThinLine = 0.4; ///< in points
    constexpr double PointsInInch = 72;
    painter.setPen(QPen(Qt::black, ThinLine * m_device.logicalDpiX() / PointsInInch));
    const Page& shown = m_pages[static_cast<std::size_t>(page)];
    double y = 0;
    PaintHead(painter, y);
    for (const Piece& piece : shown.pieces)
        PaintPiece(painter, piece, y);
    if (shown.hasFoot)
        painter.drawText(QRectF(0, y, m_size.width(), HeightOf(1)), Qt::AlignLeft | Qt::AlignVCenter,
                         m_titles.foot);
    painter.drawText(QRectF(0, m_size.height() - m_line, m_size.width(), m_line), Qt::AlignCenter,
                     u"第 %1 页 共 %2 页"_s.arg(page + 1).arg(Count()));
}

void BillPages::Print(const rules::Bill& bill, rules::PricingMode mode, const Titles& titles,
                      QPagedPaintDevice& device)
{
    QPainter painter;
    if (!painter.begin(&device)) throw std::runtime_error("the pages cannot be begun");
    const QSizeF size = painter.viewport().size();
    const BillPages pages(bill, mode, titles, size, device);
    for (int page = 0; page < pages.Count(); ++page) {
        if (page > 0 && !device.newPage()) throw std::runtime_error("a page cannot be begun");
        pages.Paint(painter, page);
    }
    if (!painter.end()) throw std::runtime_error("the pages cannot be ended");
}

} // namespace editor
