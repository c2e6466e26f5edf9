#include "editor/window/FocusStyle.h"

#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOption>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// The toolkit's own style.
const QString Toolkit = u"fusion"_s;

/// The share of the highlight in a pale selection; the rest is the background.
constexpr float PaleShare = 0.4F;

/// Whether a list does without the focus: the list of a combo never does, and an open editor is part of its
/// list.
bool IsWithoutFocus(const QWidget* widget)
{
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    if (view == nullptr || view->window()->windowType() == Qt::Popup || view->hasFocus()) return false;
    const QWidget* focus = QApplication::focusWidget();
    return focus == nullptr || !view->isAncestorOf(focus);
}

QColor Mixed(const QColor& one, const QColor& other)
{
    const auto part = [](float a, float b) { return a * PaleShare + b * (1 - PaleShare); };
    return QColor::fromRgbF(part(one.redF(), other.redF()), part(one.greenF(), other.greenF()),
                            part(one.blueF(), other.blueF()));
}

/// The option with other colours for what is selected, in a window that has the user's attention or not.
QStyleOptionViewItem Coloured(QStyleOptionViewItem option, QPalette::ColorRole role, const QColor& colour)
{
    option.palette.setColor(QPalette::Active, role, colour);
    option.palette.setColor(QPalette::Inactive, role, colour);
    return option;
}

/// The item that is drawn, when its selection is to be pale; null otherwise.
const QStyleOptionViewItem* PaleItem(const QStyleOption* option, const QWidget* widget)
{
    const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
    const bool selected = item != nullptr && (item->state & QStyle::State_Selected) != 0;
    return selected && IsWithoutFocus(widget) ? item : nullptr;
}

/// An arrow in the colour of the text: whoever draws it in a selected cell takes the colour for a strong
/// selection. In other cells it is made for their background, which may be one of their own.
QStyleOption Inked(QStyleOption arrow, const QColor& ink)
{
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        arrow.palette.setColor(role, ink);
    return arrow;
}

/// Around a list that has the focus: where nothing is selected its frame alone shows it.
void DrawFocusFrame(const QRect& frame, const QPalette& palette, QPainter& painter)
{
    painter.save();
    painter.setPen(palette.color(QPalette::Highlight));
    painter.drawRect(frame.adjusted(0, 0, -1, -1));
    painter.restore();
}

} // namespace

FocusStyle::FocusStyle(QStyle* base) : QProxyStyle(base) {}

void FocusStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    const bool isItem = element == PE_PanelItemViewItem || element == PE_PanelItemViewRow;
    if (const QStyleOptionViewItem* pale = isItem ? PaleItem(option, widget) : nullptr) {
        const QColor highlight =
            Mixed(widget->palette().color(QPalette::Highlight), widget->palette().color(QPalette::Base));
        const QStyleOptionViewItem item = Coloured(*pale, QPalette::Highlight, highlight);
        QProxyStyle::drawPrimitive(element, &item, painter, widget);
    } else if (element == PE_IndicatorArrowDown && (option->state & State_Selected) != 0 &&
               IsWithoutFocus(widget)) {
        const QStyleOption arrow = Inked(*option, widget->palette().color(QPalette::Text));
        QProxyStyle::drawPrimitive(element, &arrow, painter, widget);
    } else {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool isFrame = element == PE_Frame && qobject_cast<const QAbstractItemView*>(widget) != nullptr;
        if (isFrame && widget->hasFocus()) DrawFocusFrame(option->rect, widget->palette(), *painter);
    }
}

void FocusStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const
{
    const QStyleOptionViewItem* pale = element == CE_ItemViewItem ? PaleItem(option, widget) : nullptr;
    if (pale == nullptr) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    // The view's text colour, not the item's: that is made for another background. The panel behind the text
    // is drawn by the primitive, which comes back to this style.
    const QStyleOptionViewItem item =
        Coloured(*pale, QPalette::HighlightedText, widget->palette().color(QPalette::Text));
    QProxyStyle::drawControl(element, &item, painter, widget);
}

void ShowFocusInLists()
{
    if (QApplication::style()->name() != Toolkit) return;
    QApplication::setStyle(new FocusStyle(QStyleFactory::create(Toolkit)));
}

} // namespace editor
