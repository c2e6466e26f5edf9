#include "dialogs/secondary/CExListBox.h"

#include "widgets/CutTextTips.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QScreen>
#include <QtGui/QTextDocument>
#include <QtWidgets/QToolTip>

namespace {

/// The form in which the platform's tip shows `text` as it stands and whole: a text that looks like markup is
/// escaped, and one that is wider than the screen is broken into lines, which the tip does for markup only.
CString TipForm(const CString& text, const QWidget& owner)
{
    const int room = owner.screen()->availableGeometry().width() / 2;
    const bool wide = QFontMetrics(QToolTip::font()).horizontalAdvance(text) > room;
    if (!wide && !Qt::mightBeRichText(text)) return text;
    return widgets::TipMarkup(text);
}

} // namespace

CExListBox::CExListBox(QWidget* parent) : ListBox(parent) {}

int CExListBox::ToolHitTest(const QPoint& point, QRect* rect) const
{
    if (count() == 0) return -1;
    QModelIndex row = indexAt({viewport()->rect().left(), point.y()});
    if (!row.isValid()) row = point.y() < 0 ? indexAt({0, 0}) : model()->index(count() - 1, 0);
    if (rect != nullptr) *rect = visualRect(row);
    return row.row();
}

CString CExListBox::ToolText(int row) const
{
    return row >= 0 && row < count() ? item(row)->text() : CString();
}

bool CExListBox::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) return ListBox::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    ShowTip(help->pos(), help->globalPos());
    return true;
}

void CExListBox::ShowTip(const QPoint& point, const QPoint& screenPoint)
{
    QRect rect;
    const int row = ToolHitTest(point, &rect);
    // The platform shows a tip only while the mouse is inside the rectangle that the hit test named.
    const CString text = rect.contains(point) ? ToolText(row) : CString();
    QToolTip::showText(screenPoint, TipForm(text, *this), viewport(), rect);
}
