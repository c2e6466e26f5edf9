#include "embedded/windows/ItemModel.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

CString TextOf(const PickerItem& item, int column)
{
    switch (column) {
    case ItemModel::Number:
        return item.number;
    case ItemModel::Name:
        return item.name;
    case ItemModel::Unit:
        return item.unit;
    case ItemModel::Rule:
        return item.calRule;
    case ItemModel::Annex:
        return item.withAnnex != 0 ? u"是"_s : u"否"_s;
    default:
        return {};
    }
}

} // namespace

void ItemModel::SetItems(std::vector<PickerItem> items)
{
    beginResetModel();
    m_items = std::move(items);
    m_index.Clear();
    for (const PickerItem& item : m_items)
        m_index.Add(item.number, item.name);
    m_shown = m_index.Find({});
    endResetModel();
}

void ItemModel::Show(const SearchIndex::Scope& scope, const CString& query)
{
    std::vector<int> found = m_index.Find(query, scope);
    if (found == m_shown) return;
    beginResetModel();
    m_shown = std::move(found);
    endResetModel();
}

int ItemModel::ItemAt(int row) const
{
    return row >= 0 && row < rowCount() ? m_shown[static_cast<std::size_t>(row)] : -1;
}

int ItemModel::RowOf(int item) const
{
    const auto found = std::find(m_shown.begin(), m_shown.end(), item);
    return found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

int ItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int ItemModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ItemModel::data(const QModelIndex& index, int role) const
{
    const int item = ItemAt(index.row());
    if (item < 0) return {};
    if (role == Qt::DisplayRole) return TextOf(m_items[static_cast<std::size_t>(item)], index.column());
    if (role == Qt::TextAlignmentRole && index.column() >= Unit && index.column() != Rule)
        return QVariant(Qt::AlignCenter);
    return {};
}

QVariant ItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const std::array<CString, ColumnCount> titles = {u"编号"_s, u"名称"_s, u"单位"_s, u"计算规则"_s,
                                                            u"带管道配件"_s};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    return titles[static_cast<std::size_t>(section)];
}

} // namespace embedded
