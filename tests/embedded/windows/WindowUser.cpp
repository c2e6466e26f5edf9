#include "embedded/windows/WindowUser.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QLabel>

namespace test {

QString Told(const QWidget& window, const QString& description)
{
    for (QLabel* label : window.findChildren<QLabel*>()) {
        if (label->accessibleDescription() == description)
            return QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name);
    }
    throw std::logic_error("no label for " + description.toStdString());
}

QAbstractButton& Button(const QWidget& window, const QString& caption)
{
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (button->text().remove(u'&').startsWith(caption)) return *button;
    }
    throw std::logic_error("no button " + caption.toStdString());
}

void ClickButton(const QWidget& window, const QString& caption)
{
    QAbstractButton& button = Button(window, caption);
    // The toolkit delivers to a hidden button what a test sends it.
    if (!button.isVisible() || !button.isEnabled()) return;
    QTest::mouseClick(&button, Qt::LeftButton, {}, {8, button.height() / 2});
}

void TypeText(QWidget& field, const QString& text)
{
    // Not keyClicks(), which knows the keys of ASCII only.
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &field, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void ClickAt(QAbstractItemView& view, const QRect& place)
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, {place.left() + 8, place.center().y()});
}

void ClickRow(QAbstractItemView& view, int row)
{
    const QModelIndex index = view.model()->index(row, 0);
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
}

void DoubleClickRow(QAbstractItemView& view, int row)
{
    ClickRow(view, row);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {},
                       view.visualRect(view.model()->index(row, 0)).center());
}

QStringList ColumnTexts(const QAbstractItemView& view, int column)
{
    QStringList texts;
    for (int row = 0; row < view.model()->rowCount(); ++row)
        texts.append(view.model()->index(row, column).data().toString());
    return texts;
}

QString SelectedText(const QAbstractItemView& view)
{
    const QModelIndexList selected = view.selectionModel()->selectedRows();
    return selected.isEmpty() ? QString() : selected.first().data().toString();
}

} // namespace test
