#include "editor/workbench/RuleTableModel.h"

#include "editor/docks/findings/SeverityMark.h"
#include "platform/Paths.h"

#include <QtCore/QMimeData>
#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <array>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

const QString MimeType = u"application/x-ktqdde-rule-places"_s;

const std::array<QString, RuleTableModel::ColumnCount> Headings{u"类别"_s, u"序号"_s, u"条件"_s, u"清单"_s,
                                                                u"定额"_s, u"命中"_s, u"说明"_s};

CString ItemText(const CString& number, const CString& name)
{
    return name.isEmpty() ? number : number + u' ' + name;
}

CStringArray BillTexts(const rules::Rule& rule)
{
    CStringArray texts;
    for (const rules::BillItem& item : rule.bills)
        texts.append(ItemText(item.record.strQdId, item.record.strName));
    return texts;
}

CStringArray QuotaTexts(const rules::Rule& rule, bool isBillMode)
{
    CStringArray texts;
    const auto take = [&](const std::vector<rules::QuotaItem>& items) {
        for (const rules::QuotaItem& item : items)
            texts.append(ItemText(item.record.strDeId, item.record.strName));
    };
    if (!isBillMode) take(rule.quotas);
    for (const rules::BillItem& bill : rule.bills)
        if (isBillMode) take(bill.quotas);
    return texts;
}

/// The levels below the specialty, and the file where it is another one.
CString PlaceText(const RuleRow& row)
{
    const CString place = row.category->text;
    return row.file.isEmpty() ? place
                              : platform::BeforeLastStop(platform::FileNameOf(row.file)) + u"："_s + place;
}

} // namespace

RuleTableModel::RuleTableModel(const WorkSession& session, QObject* parent)
    : QAbstractTableModel(parent), m_session(session)
{
}

void RuleTableModel::Show(std::vector<RuleRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void RuleTableModel::KnowledgeChanged()
{
    if (m_rows.empty()) return;
    emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

int RuleTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int RuleTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

std::optional<RuleHits> RuleTableModel::HitsOf(const RuleRow& row) const
{
    if (!m_knowledge.hits || !row.file.isEmpty()) return std::nullopt;
    return m_knowledge.hits(row.category->text, row.position);
}

std::optional<TrialMark> RuleTableModel::TrialOf(const RuleRow& row) const
{
    if (!m_knowledge.trial || !row.file.isEmpty() || row.category->text != m_session.CategoryText())
        return std::nullopt;
    return m_knowledge.trial(row.position);
}

CString RuleTableModel::Note(const RuleRow& row) const
{
    if (const auto trial = TrialOf(row)) return trial->applies ? u"试套：就是这一条"_s : trial->reason;
    if (!m_knowledge.findings || !row.file.isEmpty()) return {};
    return m_knowledge.findings(row.category->text, row.position);
}

CString RuleTableModel::Text(const RuleRow& row, int column) const
{
    const rules::Rule& rule = row.Get();
    switch (column) {
    case PlaceColumn:
        return PlaceText(row);
    case PositionColumn:
        return CString::number(row.position + 1);
    case ConditionColumn:
        return rule.Text();
    case BillColumn:
        return BillTexts(rule).join(u"；"_s);
    case QuotaColumn:
        return QuotaTexts(rule, m_session.Facts()->isBillMode).join(u"；"_s);
    case HitColumn: {
        const auto hits = HitsOf(row);
        return hits ? u"%1（%2%）"_s.arg(hits->count).arg(100 * hits->share, 0, 'f', 1) : CString();
    }
    default:
        return Note(row);
    }
}

CString RuleTableModel::ToolTip(const RuleRow& row, int column) const
{
    const rules::Rule& rule = row.Get();
    CStringArray lines;
    if (column == BillColumn)
        lines = BillTexts(rule);
    else if (column == QuotaColumn)
        lines = QuotaTexts(rule, m_session.Facts()->isBillMode);
    else if (column == ConditionColumn && !rule.isDefault)
        for (const rules::Condition& condition : rule.conditions)
            lines.append(condition.Text());
    else
        lines.append(Text(row, column));
    return lines.join(u'\n');
}

QVariant RuleTableModel::data(const QModelIndex& index, int role) const
{
    const RuleRow& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return Text(row, index.column());
    case Qt::ToolTipRole: {
        const CString text = ToolTip(row, index.column());
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
    case Qt::TextAlignmentRole:
        if (index.column() == PositionColumn || index.column() == HitColumn)
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    case Qt::FontRole: {
        QFont font;
        font.setItalic(row.Get().isDefault && index.column() == ConditionColumn);
        return font.italic() ? QVariant(font) : QVariant();
    }
    case Qt::AccessibleTextRole:
        return u"%1：%2"_s.arg(Headings[static_cast<std::size_t>(index.column())], Text(row, index.column()));
    case ShareRole: {
        const auto hits = index.column() == HitColumn ? HitsOf(row) : std::nullopt;
        return hits ? QVariant(hits->share) : QVariant();
    }
    case Qt::DecorationRole: {
        if (index.column() != PositionColumn || !m_knowledge.severity || !row.file.isEmpty()) return {};
        const auto severity = m_knowledge.severity(row.category->text, row.position);
        return severity ? QVariant(SeverityIcon(*severity, QGuiApplication::palette())) : QVariant();
    }
    case AppliesRole: {
        const auto trial = TrialOf(row);
        return trial && trial->applies;
    }
    default:
        return {};
    }
}

QVariant RuleTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return Headings[static_cast<std::size_t>(section)];
}

Qt::ItemFlags RuleTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::ItemIsDropEnabled; // between the rows
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

QStringList RuleTableModel::mimeTypes() const
{
    return {MimeType};
}

QMimeData* RuleTableModel::mimeData(const QModelIndexList&) const
{
    // What is dragged are the chosen rules of this very window.
    auto* data = new QMimeData;
    data->setData(MimeType, QByteArray::number(reinterpret_cast<quintptr>(this)));
    return data;
}

bool RuleTableModel::canDropMimeData(const QMimeData* data, Qt::DropAction, int, int,
                                     const QModelIndex&) const
{
    return data->data(MimeType) == QByteArray::number(reinterpret_cast<quintptr>(this)) && !m_rows.empty() &&
           m_rows.front().category == m_rows.back().category && m_rows.front().file.isEmpty();
}

bool RuleTableModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                                  const QModelIndex& parent)
{
    if (!canDropMimeData(data, action, row, column, parent)) return false;
    const int at = row >= 0 ? row : parent.isValid() ? parent.row() : rowCount();
    m_moved(at < rowCount() ? m_rows[static_cast<std::size_t>(at)].position
                            : m_rows.back().category->rules.size());
    return false; // the model is filled anew by the edit; the view must remove nothing
}

} // namespace editor
