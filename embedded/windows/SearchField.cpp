#include "embedded/windows/SearchField.h"

#include "widgets/LineColour.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>

using namespace Qt::StringLiterals;

namespace embedded {

SearchField::SearchField(QWidget& list, QWidget* parent) : QLineEdit(parent), m_list(list)
{
    setClearButtonEnabled(true);
    setPlaceholderText(u"编号或名称，多个词用空格隔开"_s);
    widgets::ColourHint(*this);
}

void SearchField::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) widgets::ColourHint(*this);
}

void SearchField::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        QCoreApplication::sendEvent(&m_list, event);
        return;
    case Qt::Key_Escape:
        if (!text().isEmpty()) {
            clear();
            return;
        }
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

} // namespace embedded
