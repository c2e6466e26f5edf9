#include "dialogs/secondary/ComboItemDelegate.h"

#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QStyle>

#include <utility>

namespace {

int TextMargin(const QWidget* widget)
{
    return widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
}

} // namespace

ComboItemDelegate::ComboItemDelegate(QComboBox& combo, std::function<bool(int)> isRefused)
    : QStyledItemDelegate(&combo), m_combo(combo), m_isRefused(std::move(isRefused))
{
}

QRect ComboItemDelegate::TextRect(const QAbstractItemView& view, const QModelIndex& entry)
{
    const int margin = TextMargin(&view);
    // The viewport's width counts: an entry may reach beyond it where the list does not scroll sideways.
    const QRect visible = view.visualRect(entry) & view.viewport()->rect();
    return visible.adjusted(margin, 0, -margin, 0);
}

void ComboItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    const QPalette& colours = option.palette;
    const bool refused = m_isRefused(index.row());
    const bool selected = (option.state & QStyle::State_Selected) != 0 && !refused;
    painter->save();
    painter->fillRect(option.rect, colours.color(selected ? QPalette::Highlight : QPalette::Base));
    QColor ink = colours.color(selected ? QPalette::HighlightedText : QPalette::Text);
    if ((option.state & QStyle::State_Enabled) == 0) ink = colours.color(QPalette::Disabled, QPalette::Text);
    painter->setPen(ink);
    const int margin = TextMargin(&m_combo);
    painter->setFont(option.font);
    painter->drawText(option.rect.adjusted(margin, 0, -margin, 0), Qt::AlignVCenter | Qt::TextSingleLine,
                      index.data(Qt::DisplayRole).toString());
    painter->restore();
}
