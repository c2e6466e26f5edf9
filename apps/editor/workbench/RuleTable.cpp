#include "editor/workbench/RuleTable.h"

#include "widgets/TextMetrics.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHeaderView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Parts of the free width that the wide columns get, in hundredths.
constexpr std::array<std::pair<int, int>, 4> Shares{{{RuleTableModel::ConditionColumn, 52},
                                                     {RuleTableModel::BillColumn, 20},
                                                     {RuleTableModel::QuotaColumn, 14},
                                                     {RuleTableModel::NoteColumn, 14}}};
constexpr int RowSpace = 6; ///< pixels beside the text of a line, above and below together
constexpr int BarOpacity = 90;
constexpr int AppliesOpacity = 150; ///< stronger than a selection without the focus

/// Draws the share of a rule as a bar behind its number, and the trial's rule on a ground of its own.
class RuleDelegate : public widgets::TipDelegate
{
public:
    using TipDelegate::TipDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        if (!isSelected && index.data(RuleTableModel::AppliesRole).toBool()) {
            QColor ground = option.palette.color(QPalette::Highlight);
            ground.setAlpha(AppliesOpacity);
            painter->fillRect(option.rect, ground);
        }
        if (const QVariant share = index.data(RuleTableModel::ShareRole); share.isValid())
            PaintBar(*painter, option, share.toDouble());
        TipDelegate::paint(painter, option, index);
    }

private:
    static void PaintBar(QPainter& painter, const QStyleOptionViewItem& option, double share)
    {
        QRect bar = option.rect.adjusted(1, 2, -1, -2);
        bar.setWidth(static_cast<int>(bar.width() * std::clamp(share, 0.0, 1.0)));
        QColor colour = option.palette.color(QPalette::Highlight);
        colour.setAlpha(BarOpacity);
        painter.fillRect(bar, colour);
    }
};

} // namespace

RuleTable::RuleTable(RuleTableModel& model, QWidget* parent) : QTableView(parent), m_model(model)
{
    setModel(&model);
    setItemDelegate(new RuleDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropOverwriteMode(false);
    setDragDropMode(InternalMove);
    setAccessibleName(u"规则"_s);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (!m_isSizing) m_isSized = true;
    });
    SizeRows();
    ShowPlaces(false);
    ShowHits(false);
}

void RuleTable::SizeRows()
{
    const QScopedValueRollback<bool> sizing(m_isSizing, true);
    const QFontMetrics metrics(font());
    verticalHeader()->setDefaultSectionSize(
        std::max(metrics.height(), metrics.boundingRect(widgets::ChineseLine()).height()) + RowSpace);
    setColumnWidth(RuleTableModel::PositionColumn, widgets::ColumnWidth(metrics, u"● 00000"_s));
    setColumnWidth(RuleTableModel::HitColumn, widgets::ColumnWidth(metrics, u"100000（100.0%）"_s));
    setColumnWidth(RuleTableModel::PlaceColumn, widgets::ChineseWidth(metrics, 14));
}

void RuleTable::ShowColumn(int column, bool show)
{
    if (isColumnHidden(column) == !show) return;
    {
        const QScopedValueRollback<bool> sizing(m_isSizing, true);
        setColumnHidden(column, !show);
    }
    ShareWidth();
}

/// What the narrow columns leave goes to the others, until the user has given them widths of his own. None of
/// them is narrower than a few letters, and the conditions give way for that as long as they can.
void RuleTable::ShareWidth()
{
    if (m_isSized) return;
    const QScopedValueRollback<bool> sizing(m_isSizing, true);
    int free = viewport()->width();
    int shares = 0;
    for (int column = 0; column < RuleTableModel::ColumnCount; ++column) {
        const auto share = std::find_if(Shares.begin(), Shares.end(),
                                        [column](const auto& entry) { return entry.first == column; });
        if (isColumnHidden(column)) continue;
        share == Shares.end() ? free -= columnWidth(column) : shares += share->second;
    }
    const int least = widgets::ChineseWidth(QFontMetrics(font()), 8);
    int left = free;
    for (auto entry = Shares.rbegin(); entry != Shares.rend(); ++entry) {
        const auto& [column, share] = *entry;
        if (isColumnHidden(column)) continue;
        const bool takesTheRest = column == RuleTableModel::ConditionColumn;
        const int width = std::max(least, takesTheRest ? left : free * share / std::max(shares, 1));
        setColumnWidth(column, width);
        left -= width;
    }
}

void RuleTable::resizeEvent(QResizeEvent* event)
{
    ShareWidth();
    QTableView::resizeEvent(event);
}

void RuleTable::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    SizeRows();
    ShareWidth();
}

std::vector<int> RuleTable::ChosenLines() const
{
    std::vector<int> lines;
    for (const QModelIndex& index : selectionModel()->selectedRows(RuleTableModel::PositionColumn))
        lines.push_back(index.row());
    std::sort(lines.begin(), lines.end());
    return lines;
}

int RuleTable::CurrentLine() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void RuleTable::ChooseLines(const std::vector<int>& lines, int current)
{
    const QScopedValueRollback<bool> quiet(m_isQuiet, true);
    QItemSelection selection;
    for (std::size_t i = 0; i < lines.size();) {
        std::size_t end = i + 1; // neighbours are one range
        while (end < lines.size() && lines[end] == lines[end - 1] + 1)
            ++end;
        selection.select(m_model.index(lines[i], 0),
                         m_model.index(lines[end - 1], RuleTableModel::ColumnCount - 1));
        i = end;
    }
    if (current >= 0)
        selectionModel()->setCurrentIndex(m_model.index(current, RuleTableModel::ConditionColumn),
                                          QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (current >= 0) scrollTo(m_model.index(current, RuleTableModel::PositionColumn));
}

void RuleTable::ChoiceChanged()
{
    if (!m_isQuiet) m_chosen();
}

void RuleTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTableView::selectionChanged(selected, deselected);
    ChoiceChanged();
}

void RuleTable::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    // The cursor goes before the choice when that is extended, and without it when Ctrl is held.
    if (current.isValid() && selectionModel()->isRowSelected(current.row())) ChoiceChanged();
}

QModelIndex RuleTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const bool isToAnEnd = action == MoveHome || action == MoveEnd;
    if (!isToAnEnd || modifiers.testFlag(Qt::ControlModifier) || CurrentLine() < 0)
        return QTableView::moveCursor(action, modifiers);
    return currentIndex().siblingAtRow(action == MoveHome ? 0 : m_model.rowCount() - 1);
}

void RuleTable::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers().testFlags(Qt::NoModifier) && CurrentLine() >= 0) return m_activated();
    QTableView::keyPressEvent(event);
}

void RuleTable::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) m_activated();
}

} // namespace editor
