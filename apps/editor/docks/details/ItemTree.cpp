#include "editor/docks/details/ItemTree.h"

#include "editor/messages/ErrorBox.h"
#include "host/NvKtDataMng.h"
#include "presenter/PickedItems.h"
#include "widgets/LineColour.h"
#include "widgets/TextMetrics.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// The colour of bill rows in the module's grid. It is laid thinly over whatever the list's background is.
constexpr QRgb BillColour = qRgba(128, 255, 255, 70);
constexpr int BranchWidth = 12;

/// Sets a field that both kinds of records have.
template <typename Record>
void SetField(Record& record, int column, const CString& text)
{
    if (column == ItemTree::NameColumn) record.strName = text;
    if (column == ItemTree::FormulaColumn) record.strFormula = text;
    if (column == ItemTree::AnnexColumn) record.strAnnex = text;
    if (column != ItemTree::UnitColumn) return;
    record.strUnit = text;
    record.strUnitCode = UnitCodeOf(text);
}

CString TextOf(const ItemLine& line, int column)
{
    if (column == ItemTree::NameColumn) return line.name;
    if (column == ItemTree::UnitColumn) return line.unit;
    if (column == ItemTree::FormulaColumn) return line.formula;
    return line.annex;
}

} // namespace

ItemTree::ItemTree(const ChosenRules& chosen, QWidget* parent) : QTreeWidget(parent), m_chosen(chosen)
{
    setColumnCount(ColumnCount);
    setAccessibleName(u"清单和定额"_s);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed);
    setItemsExpandable(false);
    setRootIsDecorated(false);
    setIndentation(BranchWidth);
    setUniformRowHeights(true);
    header()->setStretchLastSection(false);
    FitColumns();
}

void ItemTree::FitColumns()
{
    const std::array<CString, ColumnCount> samples{u"0310010010010"_s,    u"00/00"_s,
                                                   u"镀锌钢管管道安装"_s, u"100m"_s,
                                                   u"管道长度+超高"_s,    u"带管道配件"_s};
    for (int column = 0; column < ColumnCount; ++column)
        setColumnWidth(column,
                       widgets::ColumnWidth(fontMetrics(), samples[static_cast<std::size_t>(column)]));
    FitName();
}

/// The name takes what room is left.
void ItemTree::FitName()
{
    int others = 0;
    for (int column = 0; column < ColumnCount; ++column)
        if (column != NameColumn && !isColumnHidden(column)) others += columnWidth(column);
    const int least = widgets::ColumnWidth(fontMetrics(), u"镀锌钢管管道安装"_s);
    setColumnWidth(NameColumn, std::max(least, viewport()->width() - others));
}

// The module's grid shows the column for some categories only.
bool ItemTree::HasAnnex() const
{
    SNvKtSmallCategoryId id;
    return NvKtDataMng::SmallCategoryNameToId(m_chosen.Category(), id) &&
           NvKtDataMng::CSysSmallCategoryMng(id).GetAttType() != 0;
}

void ItemTree::Refresh()
{
    const RulesInView view = m_chosen.Look();
    const bool isBillMode = m_chosen.Facts().isBillMode;
    setHeaderLabels({isBillMode ? u"清单/定额编号"_s : u"定额编号"_s, u"规则"_s,
                     isBillMode ? u"清单/定额名称"_s : u"定额名称"_s, u"单位"_s, u"计算结果编辑"_s,
                     u"带管道配件"_s});
    setColumnHidden(AnnexColumn, view.IsEmpty() || !HasAnnex());
    setColumnHidden(RulesColumn, view.Count() < 2);
    std::vector<ItemLine> lines = LinesOf(view, m_chosen.Facts());
    const bool isSameRule = std::exchange(m_shown, m_chosen.Named()) == m_chosen.Named();
    const bool isSameTree = isSameRule && std::equal(m_lines.begin(), m_lines.end(), lines.begin(),
                                                     lines.end(), [](const auto& a, const auto& b) {
                                                         return a.place == b.place && a.id == b.id;
                                                     });
    if (isSameTree)
        m_lines = std::move(lines);
    else
        ShowLines(std::move(lines));
    for (const ItemLine& line : m_lines)
        ShowLine(*RowOf(line.place), line);
    // The word behind the numbers of foreign items is not to be cut off.
    if (!isSameTree && sizeHintForColumn(NumberColumn) > columnWidth(NumberColumn))
        setColumnWidth(NumberColumn, sizeHintForColumn(NumberColumn));
    FitName();
}

void ItemTree::ShowLines(std::vector<ItemLine> lines)
{
    const int column = std::max(0, currentColumn());
    const QModelIndex former = currentIndex();
    const int at = former.isValid() ? former.row() : 0;
    const bool wasBelow = former.isValid() && former.parent().isValid();
    const int above = wasBelow ? former.parent().row() : at;
    clear(); // whoever is told of it still finds the lines of the rows that go
    m_lines = std::move(lines);
    for (const ItemLine& line : m_lines) {
        QTreeWidgetItem* const parent =
            line.place.bill >= 0 && !line.place.IsBill() ? topLevelItem(line.place.bill) : nullptr;
        auto* row = parent == nullptr ? new QTreeWidgetItem(this) : new QTreeWidgetItem(parent);
        row->setData(NumberColumn, Qt::UserRole, static_cast<int>(&line - m_lines.data()));
    }
    expandAll();
    if (topLevelItemCount() == 0) return;
    QTreeWidgetItem* next = topLevelItem(std::min(above, topLevelItemCount() - 1));
    if (wasBelow && next->childCount() > 0) next = next->child(std::min(at, next->childCount() - 1));
    GoTo(*next, column);
}

// The toolkit's own way looks at the keys that are held, and those of a command are no wish to select more.
void ItemTree::GoTo(const QTreeWidgetItem& row, int column)
{
    selectionModel()->setCurrentIndex(indexFromItem(&row, column),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ItemTree::ShowLine(QTreeWidgetItem& row, const ItemLine& line)
{
    const bool isSeveral = m_chosen.Count() > 1;
    const CString formula = line.formulasDiffer ? u"（各不相同）"_s : line.formula;
    const QStringList texts{line.isForeign ? u"%1（其他库）"_s.arg(line.number) : line.number,
                            u"%1/%2"_s.arg(line.rules).arg(m_chosen.Count()),
                            line.name,
                            line.unit,
                            formula,
                            line.annex};
    const CString hint =
        line.isForeign ? u"属于没有采用的库：配置对话框不显示它，套价时不算；可以移动、删除"_s : CString();
    for (int column = 0; column < ColumnCount; ++column) {
        row.setText(column, texts[column]);
        row.setToolTip(column, hint.isEmpty() ? texts[column] : texts[column] + u'\n' + hint);
        row.setData(column, Qt::AccessibleDescriptionRole, hint);
        row.setForeground(column, line.isForeign ? widgets::HintColour(palette()) : QBrush());
        row.setBackground(column, line.place.IsBill() ? QColor::fromRgba(BillColour) : QBrush());
    }
    row.setFlags(line.isForeign || isSeveral ? Qt::ItemIsSelectable | Qt::ItemIsEnabled
                                             : Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable);
}

QTreeWidgetItem* ItemTree::RowOf(const ItemPlace& place) const
{
    if (place.bill < 0) return topLevelItem(place.quota);
    QTreeWidgetItem* const bill = topLevelItem(place.bill);
    return bill == nullptr || place.IsBill() ? bill : bill->child(place.quota);
}

const ItemLine& ItemTree::LineAt(const QModelIndex& index) const
{
    const int line = index.siblingAtColumn(NumberColumn).data(Qt::UserRole).toInt();
    return m_lines.at(static_cast<std::size_t>(line));
}

std::optional<ItemLine> ItemTree::Current() const
{
    if (!currentIndex().isValid()) return std::nullopt;
    return LineAt(currentIndex());
}

std::vector<ItemPlace> ItemTree::Selected() const
{
    std::vector<ItemPlace> places;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        places.push_back(LineAt(index).place);
    std::sort(places.begin(), places.end());
    return places;
}

void ItemTree::Choose(const ItemPlace& place)
{
    if (const QTreeWidgetItem* row = RowOf(place)) GoTo(*row, std::max(0, currentColumn()));
}

void ItemTree::Finish(QWidget* editor)
{
    if (editor == nullptr || !editor->isVisible() || state() != EditingState) return; // closed meanwhile
    commitData(editor);
    emit itemDelegate()->closeEditor(editor);
}

void ItemTree::Commit()
{
    if (!m_isEntering) Finish(m_editor);
}

void ItemTree::SetCell(const ItemLine& line, int column, const CString& text)
{
    if (text == TextOf(line, column)) return;
    const QScopedValueRollback entering(m_isEntering, true);
    RunGuarded([&] {
        const CString step =
            u"修改 %1 的%2"_s.arg(line.number, column == FormulaColumn ? u"计算结果编辑"_s
                                               : column == NameColumn  ? u"名称"_s
                                                                       : headerItem()->text(column));
        m_chosen.Change(step, [&](rules::Rule& rule) {
            rules::BillItem* const bill = line.place.IsBill() ? BillAt(rule, line.place) : nullptr;
            rules::QuotaItem* const quota = line.place.IsBill() ? nullptr : QuotaAt(rule, line.place);
            if (bill != nullptr && bill->record.strQdId == line.number) SetField(bill->record, column, text);
            if (quota != nullptr && quota->record.strDeId == line.number)
                SetField(quota->record, column, text);
        });
        Refresh();
    });
}

void ItemTree::DeleteSelected()
{
    Commit();
    const std::vector<ItemPlace> places = Selected();
    if (places.empty()) return;
    const CString text = places.size() == 1 ? u"删除 %1"_s.arg(LineAt(currentIndex()).number)
                                            : u"删除 %1 条清单定额"_s.arg(places.size());
    m_chosen.Change(text, [&](rules::Rule& rule) {
        // From behind, so that the indexes in front stay; a bill item comes before its quota items.
        for (auto place = places.rbegin(); place != places.rend(); ++place) {
            if (place->IsBill())
                rule.bills.erase(rule.bills.begin() + place->bill);
            else if (std::vector<rules::QuotaItem>* quotas = QuotasAt(rule, *place))
                quotas->erase(quotas->begin() + place->quota);
        }
    });
    Refresh();
}

bool ItemTree::CanMove(bool down) const
{
    const auto line = Current();
    if (!line || m_chosen.Count() != 1) return false;
    const QModelIndex index = currentIndex();
    return down ? index.row() + 1 < model()->rowCount(index.parent()) : index.row() > 0;
}

void ItemTree::MoveCurrent(bool down)
{
    Commit();
    if (!CanMove(down)) return;
    const ItemLine line = *Current();
    const int way = down ? 1 : -1;
    ItemPlace target = line.place;
    (line.place.IsBill() ? target.bill : target.quota) += way;
    m_chosen.Change((down ? u"下移 %1"_s : u"上移 %1"_s).arg(line.number), [&](rules::Rule& rule) {
        if (line.place.IsBill())
            std::swap(*BillAt(rule, line.place), *BillAt(rule, target));
        else
            std::swap(*QuotaAt(rule, line.place), *QuotaAt(rule, target));
    });
    Refresh();
    Choose(target);
}

QModelIndex ItemTree::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action != MoveLeft && action != MoveRight) return QTreeWidget::moveCursor(action, modifiers);
    const int step = action == MoveLeft ? -1 : 1;
    int column = currentIndex().column() + step;
    while (column >= 0 && column < ColumnCount && isColumnHidden(column))
        column += step;
    const QModelIndex next = currentIndex().siblingAtColumn(column);
    return next.isValid() ? next : currentIndex();
}

bool ItemTree::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const bool isMeant = (trigger & (DoubleClicked | SelectedClicked | EditKeyPressed)) != 0;
    const bool isFormula = index.isValid() && index.column() == FormulaColumn;
    if (isFormula && isMeant && !LineAt(index).isForeign) {
        if (trigger != SelectedClicked) emit FormulaWanted();
        return true;
    }
    return QTreeWidget::edit(index, trigger, event);
}

void ItemTree::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && state() != EditingState && currentIndex().isValid()) {
        edit(currentIndex(), EditKeyPressed, event);
        return;
    }
    QTreeWidget::keyPressEvent(event);
}

void ItemTree::resizeEvent(QResizeEvent* event)
{
    QTreeWidget::resizeEvent(event);
    FitName();
}

void ItemTree::changeEvent(QEvent* event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) FitColumns();
    if (event->type() == QEvent::PaletteChange)
        for (const ItemLine& line : m_lines)
            if (QTreeWidgetItem* row = RowOf(line.place)) ShowLine(*row, line);
}

} // namespace editor
