#include "editor/docks/findings/FindingsModel.h"

#include "editor/docks/findings/FindingWords.h"
#include "editor/docks/findings/SeverityMark.h"
#include "widgets/CutTextTips.h"

using namespace Qt::StringLiterals;

namespace editor {

FindingsModel::FindingsModel(const FindingsWatch& watch, QObject* parent)
    : QAbstractTableModel(parent), m_watch(watch)
{
}

void FindingsModel::List(const CString& category, rules::Severity least)
{
    beginResetModel();
    m_lines.clear();
    m_counts = {};
    m_isOfFile = category.isEmpty();
    if (m_isOfFile)
        for (const CString& one : m_watch.Categories())
            Add(one, least);
    else
        Add(category, least);
    endResetModel();
}

void FindingsModel::Add(const CString& category, rules::Severity least)
{
    const std::vector<rules::Finding>& findings = m_watch.Of(category);
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const rules::Severity severity = rules::SeverityOf(findings[i].code);
        ++m_counts[static_cast<std::size_t>(severity)];
        if (severity >= least) m_lines.push_back({category, i});
    }
}

void FindingsModel::TakeColours(const QPalette& palette)
{
    for (const auto severity : {rules::Severity::Note, rules::Severity::Warning, rules::Severity::Error})
        m_icons[static_cast<std::size_t>(severity)] = SeverityIcon(severity, palette);
    if (!m_lines.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

const rules::Finding& FindingsModel::At(int row) const
{
    const Line& line = m_lines[static_cast<std::size_t>(row)];
    return m_watch.Of(line.category)[line.index];
}

int FindingsModel::RowOf(const rules::Finding& finding) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (m_lines[static_cast<std::size_t>(row)].category != finding.category) continue;
        const rules::Finding& one = At(row);
        if (one.ruleId == finding.ruleId && one.code == finding.code && one.text == finding.text) return row;
    }
    return -1;
}

int FindingsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int FindingsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

/// 第 3 条, 给水管 第 3 条, 给水管, 给排水, 文件.
CString FindingsModel::PlaceOf(const rules::Finding& finding) const
{
    const CString rule = finding.position > 0 ? u"第 %1 条"_s.arg(finding.position) : CString();
    if (finding.category.isEmpty()) return u"文件"_s;
    const CString name = finding.category.section(u'\\', -1);
    if (!m_isOfFile) return rule.isEmpty() ? u"小类"_s : rule;
    return rule.isEmpty() ? name : name + u' ' + rule;
}

CString FindingsModel::TextOf(const rules::Finding& finding, int column) const
{
    switch (column) {
    case SeverityColumn:
        return SeverityText(rules::SeverityOf(finding.code));
    case PlaceColumn:
        return PlaceOf(finding);
    default:
        return finding.text;
    }
}

QVariant FindingsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const rules::Finding& finding = At(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(finding, index.column());
    case Qt::DecorationRole:
        if (index.column() != SeverityColumn) return {};
        return m_icons[static_cast<std::size_t>(rules::SeverityOf(finding.code))];
    case Qt::ToolTipRole:
        return widgets::TipMarkup(finding.text + u'\n' + ExplanationOf(finding.code));
    case Qt::AccessibleTextRole:
        return u"%1，%2：%3"_s.arg(TextOf(finding, SeverityColumn), PlaceOf(finding), finding.text);
    default:
        return {};
    }
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    switch (section) {
    case SeverityColumn:
        return u"级别"_s;
    case PlaceColumn:
        return u"位置"_s;
    default:
        return u"问题"_s;
    }
}

} // namespace editor
