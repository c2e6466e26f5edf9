#include "editor/docks/takeoff/ComponentsModel.h"

#include "rules/match/CellText.h"
#include "shared/Outcomes.h"
#include "shared/PricingText.h"
#include "widgets/CutTextTips.h"

#include <algorithm>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Columns that are shown otherwise, or are the same for all that is listed.
bool IsOwn(const CString& header)
{
    static const std::set<CString> Own{u"构件编号"_s, rules::OwnName, u"类别"_s,
                                       u"专业"_s,     u"大类"_s,      u"小类"_s};
    return header.isEmpty() || Own.contains(header);
}

/// The names that conditions test, by first mention.
CStringArray TestedBy(const rules::SmallCategory& category)
{
    CStringArray names;
    for (const rules::Rule& rule : category.rules)
        if (!rule.isDefault)
            for (const rules::Condition& condition : rule.conditions)
                if (!names.contains(condition.attribute)) names.append(condition.attribute);
    return names;
}

} // namespace

void ComponentsModel::List(TakeoffFiguresPtr figures, std::vector<std::uint32_t> rows,
                           const rules::SmallCategoryPtr& category)
{
    beginResetModel();
    m_figures = std::move(figures);
    m_rows = std::move(rows);
    m_columns.clear();
    if (m_figures) OrderColumns(category);
    endResetModel();
}

void ComponentsModel::OrderColumns(const rules::SmallCategoryPtr& category)
{
    const std::vector<CString> headers = NormalisedHeaders(m_figures->table->Headers());
    const auto put = [this](std::size_t column) {
        if (std::find(m_columns.begin(), m_columns.end(), column) == m_columns.end())
            m_columns.push_back(column);
    };
    if (category) {
        const rules::CatalogueFacts& all = m_figures->facts->pricing.attributes;
        const auto known = all.find(category->text);
        for (const CString& name : TestedBy(*category))
            if (const auto column =
                    ColumnFor(name, known == all.end() ? rules::CategoryFacts() : known->second, headers);
                column && !IsOwn(headers[*column]))
                put(*column);
    }
    for (std::size_t column = 0; column < headers.size(); ++column)
        if (!IsOwn(headers[column])) put(column);
}

int ComponentsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ComponentsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : OwnColumns + static_cast<int>(m_columns.size());
}

CString ComponentsModel::TextAt(int line, int column) const
{
    const std::uint32_t row = RowAt(line);
    const TakeoffFigures::Priced& priced = m_figures->components[row];
    switch (column) {
    case IdColumn:
        return m_figures->table->IdOf(row).toString();
    case NameColumn:
        return m_figures->table->NameOf(row).toString();
    case RuleColumn:
        if (priced.outcome == rules::Outcome::Refused) return shared::RefusalText(priced.refusal);
        if (priced.outcome == rules::Outcome::OnDefault) return shared::OutcomeText(priced.outcome);
        return u"第 %1 条"_s.arg(priced.rule + 1);
    default:
        return m_figures->table->CellOf(row, m_columns[static_cast<std::size_t>(column - OwnColumns)])
            .toString();
    }
}

QVariant ComponentsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    switch (role) {
    case Qt::DisplayRole:
        return TextAt(index.row(), index.column());
    case Qt::TextAlignmentRole: {
        const bool isNumber = index.column() >= OwnColumns &&
                              rules::PlainNumber(TextAt(index.row(), index.column())).has_value();
        return QVariant::fromValue(
            Qt::Alignment(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft)));
    }
    case Qt::AccessibleTextRole:
        return headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString() + u' ' +
               TextAt(index.row(), index.column());
    default:
        return {};
    }
}

QVariant ComponentsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    switch (section) {
    case IdColumn:
        return u"构件编号"_s;
    case NameColumn:
        return rules::OwnName;
    case RuleColumn:
        return u"规则"_s;
    default:
        return m_figures->table
            ->Headers()[static_cast<qsizetype>(m_columns[static_cast<std::size_t>(section - OwnColumns)])];
    }
}

} // namespace editor
