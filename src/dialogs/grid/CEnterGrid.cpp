#include "dialogs/grid/CEnterGrid.h"

#include <QtGui/QKeyEvent>

CEnterGrid::CEnterGrid(CWnd* parent) : CGridCtrl(parent) {}

void CEnterGrid::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        CGridCtrl::keyPressEvent(event);
        return;
    }
    event->accept();
    if (m_autoEnterNext) setCurrentIndex(moveCursor(MoveNext, Qt::NoModifier));
}
