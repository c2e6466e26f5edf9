#include "dialogs/secondary/CExListBox.h"

#include "dialogs/LineDelegate.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QHelpEvent>
#include <QtGui/QScreen>
#include <QtGui/QTextDocument>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

namespace {

/// The form in which the platform's tip shows `text` as it stands and whole: a text that looks like markup is
/// escaped, and one that is wider than the screen is broken into lines, which the tip does for markup only.
CString TipForm(const CString& text, const QWidget& owner)
{
    const int room = owner.screen()->availableGeometry().width() / 2;
    const bool wide = QFontMetrics(QToolTip::font()).horizontalAdvance(text) > room;
    if (!wide && !Qt::mightBeRichText(text)) return text;
    return u"<span style=\"white-space:pre-wrap\">"_s + text.toHtmlEscaped() + u"</span>"_s;
}

} // namespace

CExListBox::CExListBox(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new dialogs::LineDelegate(this));
}

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
    if (event->type() != QEvent::ToolTip) return QListWidget::viewportEvent(event);
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

void CExListBox::mousePressEvent(QMouseEvent* event)
{
    const QScopedValueRollback<bool> acting(m_userActs, true);
    QListWidget::mousePressEvent(event);
}

void CExListBox::mouseMoveEvent(QMouseEvent* event)
{
    const QScopedValueRollback<bool> acting(m_userActs, true);
    QListWidget::mouseMoveEvent(event);
}

void CExListBox::mouseReleaseEvent(QMouseEvent* event)
{
    const QScopedValueRollback<bool> acting(m_userActs, true);
    QListWidget::mouseReleaseEvent(event);
}

void CExListBox::keyPressEvent(QKeyEvent* event)
{
    const QScopedValueRollback<bool> acting(m_userActs, true);
    QListWidget::keyPressEvent(event);
}

QItemSelectionModel::SelectionFlags CExListBox::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* event) const
{
    // The toolkit takes the selection away at a click with Ctrl; a list box of this kind keeps it.
    const auto command = QListWidget::selectionCommand(index, event);
    return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
}

void CExListBox::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListWidget::selectionChanged(selected, deselected);
    if (!m_userActs) return;
    // What the receiver selects from here on is code again.
    m_userActs = false;
    emit UserSelected();
}
