#include "dialogs/grid/GridEditors.h"

#include "dialogs/grid/GridText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QItemSelectionModel>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QAbstractItemView>

QValidator::State GridTextValidator::validate(QString& input, int& position) const
{
    const qsizetype cursor = position;
    position = static_cast<int>(grid::WithoutForbidden(input.left(cursor)).size());
    input = grid::WithoutForbidden(input);
    return Acceptable;
}

GridChoiceEditor::GridChoiceEditor(const CStringArray& options, const CString& text, QWidget* parent)
    : QComboBox(parent)
{
    setFrame(false);
    addItems(options);
    setCurrentIndex(findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive));
    // A text outside the list stands in the placeholder's place, in the colour of a real entry.
    setPlaceholderText(text);
    QPalette colours = palette();
    colours.setColor(QPalette::PlaceholderText, colours.color(QPalette::ButtonText));
    setPalette(colours);
    connect(this, &QComboBox::textActivated, this, &GridChoiceEditor::Chosen);
    view()->installEventFilter(this);
}

void GridChoiceEditor::hidePopup()
{
    QComboBox::hidePopup();
    // The toolkit closes the list first and reports the choice afterwards, in the same event.
    QMetaObject::invokeMethod(this, &GridChoiceEditor::Finish, Qt::QueuedConnection);
}

void GridChoiceEditor::showEvent(QShowEvent* event)
{
    QComboBox::showEvent(event);
    // Queued: the view places the editor and gives it the focus before the list may open below it.
    QMetaObject::invokeMethod(this, &QComboBox::showPopup, Qt::QueuedConnection);
}

void GridChoiceEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        Finish();
        return;
    }
    if (!view()->isVisible()) showPopup();
    QCoreApplication::sendEvent(view(), event);
}

// The toolkit takes a list without a selection to stand on its first entry, and the key would skip that.
bool GridChoiceEditor::eventFilter(QObject* watched, QEvent* event)
{
    const bool down =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down;
    if (watched != view() || !down || view()->selectionModel()->hasSelection())
        return QComboBox::eventFilter(watched, event);
    view()->setCurrentIndex(model()->index(0, modelColumn()));
    return true;
}

void GridChoiceEditor::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void GridChoiceEditor::Finish()
{
    if (m_finished) return;
    m_finished = true;
    emit Finished();
}
