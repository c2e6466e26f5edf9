#include "editor/docks/takeoff/BillModel.h"

#include "shared/BillListing.h"
#include "widgets/CutTextTips.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// The internal id of a bill row; that of a quota row is the number of the bill row above it, from 1.
constexpr quintptr IsTop = 0;

} // namespace

void BillModel::Show(TakeoffFiguresPtr figures)
{
    beginResetModel();
    m_figures = std::move(figures);
    m_lines.clear();
    m_tops.clear();
    if (m_figures) m_lines = shared::LinesOf(m_figures->bill, m_figures->facts->pricing.mode);
    for (std::size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i].serial > 0) m_tops.push_back(i);
    m_tops.push_back(m_lines.size());
    endResetModel();
}

const shared::BillLine& BillModel::LineAt(const QModelIndex& index) const
{
    const auto row = static_cast<std::size_t>(index.row());
    return index.internalId() == IsTop ? m_lines[m_tops[row]]
                                       : m_lines[m_tops[index.internalId() - 1] + 1 + row];
}

QModelIndex BillModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || row >= rowCount(parent) || column < 0 || column >= ColumnCount) return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : IsTop);
}

QModelIndex BillModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == IsTop) return {};
    return createIndex(static_cast<int>(index.internalId()) - 1, 0, IsTop);
}

int BillModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) return m_tops.empty() ? 0 : static_cast<int>(m_tops.size()) - 1;
    if (parent.internalId() != IsTop || parent.column() > 0) return 0;
    const auto top = static_cast<std::size_t>(parent.row());
    return static_cast<int>(m_tops[top + 1] - m_tops[top]) - 1;
}

int BillModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

CString BillModel::TextOf(const shared::BillLine& line, int column)
{
    switch (column) {
    case SerialColumn:
        return line.serial > 0 ? CString::number(line.serial) : CString();
    case NumberColumn:
        return line.row->number;
    case NameColumn:
        return line.row->name;
    case UnitColumn:
        return line.row->unit;
    case QuantityColumn:
        return line.row->quantity.isEmpty() ? u"缺"_s : line.row->quantity;
    case FeaturesColumn:
        return line.row->FeatureText().replace(u'\n', u"；"_s);
    default:
        return line.note;
    }
}

QVariant BillModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const shared::BillLine& line = LineAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(line, index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(
            Qt::AlignVCenter | (index.column() == QuantityColumn ? Qt::AlignRight : Qt::AlignLeft)));
    case Qt::ToolTipRole:
        if (index.column() == FeaturesColumn && !line.row->features.empty())
            return widgets::TipMarkup(line.row->FeatureText());
        return widgets::TipMarkup(TextOf(line, index.column()));
    default:
        return {};
    }
}

QVariant BillModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    namespace heading = shared::billheading;
    static const std::array Headings{heading::Serial,   heading::Number,   heading::Name, heading::Unit,
                                     heading::Quantity, heading::Features, heading::Note};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    return Headings.at(static_cast<std::size_t>(section)).toString();
}

} // namespace editor
