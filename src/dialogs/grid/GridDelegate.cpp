#include "dialogs/grid/GridDelegate.h"

#include "dialogs/grid/GridEditors.h"

#include <QtCore/QPersistentModelIndex>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include <algorithm>

namespace {

constexpr int ArrowWidth = 14;
constexpr int ArrowSize = 8;
constexpr int ArrowLayers = 3;
/// Width less than which a cell's text never shrinks, so that its first character stays readable.
constexpr int LeastTextWidth = 8;

QStyle* StyleOf(const QStyleOptionViewItem& option)
{
    return option.widget != nullptr ? option.widget->style() : QApplication::style();
}

/// What the style leaves free at either side of a text.
int TextMargin(const QStyleOptionViewItem& option)
{
    return StyleOf(option)->pixelMetric(QStyle::PM_FocusFrameHMargin, &option) + 1;
}

} // namespace

GridDelegate::GridDelegate(IGridCells& cells, QObject* parent) : QStyledItemDelegate(parent), m_cells(cells)
{
}

QRect GridDelegate::ArrowRect(const QRect& cell)
{
    const int width = std::min(ArrowWidth, cell.width());
    return {cell.right() + 1 - width, cell.top(), width, cell.height()};
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (!m_cells.HasChoices(index)) return;
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const QPalette::ColorGroup group =
        (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
    const QColor ink = cell.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);

    QStyleOption arrow;
    arrow.state = QStyle::State_Enabled;
    arrow.state.setFlag(QStyle::State_Selected, selected); // for styles with colours of their own for these
    arrow.palette = cell.palette;
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        arrow.palette.setColor(role, ink);
    }
    arrow.rect = QRect(0, 0, ArrowSize, ArrowSize);
    arrow.rect.moveCenter(ArrowRect(option.rect).center());
    // The toolkit's own style draws it half transparent, which is too faint on a strong selection.
    for (int layer = 0; layer < ArrowLayers; ++layer)
        StyleOf(option)->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize text = QStyledItemDelegate::sizeHint(option, index);
    return m_cells.HasChoices(index) ? text + QSize(ArrowWidth - TextMargin(option), 0) : text;
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (!option->rect.isValid() || !m_cells.HasChoices(index)) return;
    // Between text and arrow the arrow's own margin is enough: the column of the units is narrow.
    const int room = std::max(option->rect.width() - ArrowWidth - TextMargin(*option), LeastTextWidth);
    option->text = option->fontMetrics.elidedText(option->text, option->textElideMode, room);
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const
{
    QWidget* editor = nullptr;
    if (m_cells.HasChoices(index)) {
        editor = MakeChoiceEditor(parent, index);
    } else {
        auto* line = new QLineEdit(parent);
        line->setFrame(false);
        line->setValidator(new GridTextValidator(line));
        editor = line;
    }
    m_cells.EditorOpened(editor, index);
    return editor;
}

QWidget* GridDelegate::MakeChoiceEditor(QWidget* parent, const QModelIndex& index) const
{
    auto* editor =
        new GridChoiceEditor(m_cells.ChoicesOf(index), index.data(Qt::EditRole).toString(), parent);
    // Both signals leave the delegate as it is; only its own signals are declared non-const by the toolkit.
    auto* self = const_cast<GridDelegate*>(this);
    connect(editor, &GridChoiceEditor::Chosen, self,
            [self, place = QPersistentModelIndex(index)](const QString& text) {
                if (place.isValid()) self->m_cells.ChoiceMade(place, text);
            });
    connect(editor, &GridChoiceEditor::Finished, self,
            [self, editor] { emit self->closeEditor(editor, NoHint); });
    return editor;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setText(index.data(Qt::EditRole).toString());
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (auto* line = qobject_cast<QLineEdit*>(editor)) model->setData(index, line->text(), Qt::EditRole);
}

void GridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex&) const
{
    editor->setGeometry(option.rect);
}
