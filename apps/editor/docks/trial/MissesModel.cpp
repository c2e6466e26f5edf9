#include "editor/docks/trial/MissesModel.h"

#include "shared/PricingText.h"
#include "widgets/CutTextTips.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

void MissesModel::List(rules::SmallCategoryPtr category, rules::Trace trace)
{
    beginResetModel();
    m_category = std::move(category);
    m_trace = std::move(trace);
    m_misses.clear();
    if (m_category) m_misses = shared::NearestFirst(m_trace, *m_category);
    endResetModel();
}

std::size_t MissesModel::RuleAt(int row) const
{
    return static_cast<std::size_t>(m_misses[static_cast<std::size_t>(row)]->rule);
}

int MissesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_misses.size());
}

int MissesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

CString MissesModel::TextOf(const rules::RuleTrace& miss, int column) const
{
    const rules::Rule& rule = m_category->rules[static_cast<std::size_t>(miss.rule)];
    if (column == RuleColumn) return u"第 %1 条"_s.arg(miss.rule + 1);
    if (column == HoldingColumn) return u"%1/%2"_s.arg(miss.holding).arg(rule.conditions.size());
    const auto failed = static_cast<std::size_t>(miss.failed);
    return rules::Describe(rule.conditions[failed], miss.verdicts[failed], miss.cells[failed]);
}

QVariant MissesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const rules::RuleTrace& miss = *m_misses[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(miss, index.column());
    case Qt::ToolTipRole:
        return widgets::TipMarkup(m_category->rules[static_cast<std::size_t>(miss.rule)].Text() + u'\n' +
                                  shared::MissText(miss, *m_category));
    case Qt::AccessibleTextRole:
        return u"%1，满足 %2，%3"_s.arg(TextOf(miss, RuleColumn), TextOf(miss, HoldingColumn),
                                        TextOf(miss, ReasonColumn));
    default:
        return {};
    }
}

QVariant MissesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::ToolTipRole && section == HoldingColumn) return u"满足的条件数/条件数"_s;
    if (role != Qt::DisplayRole) return {};
    switch (section) {
    case RuleColumn:
        return u"规则"_s;
    case HoldingColumn:
        return u"满足"_s;
    default:
        return u"先不满足的条件"_s;
    }
}

} // namespace editor
