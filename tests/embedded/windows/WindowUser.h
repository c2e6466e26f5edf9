#pragma once

#include "support/PrintText.h"

#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QWidget>

#include <stdexcept>

namespace test {

/// What a user does at a window: the controls are found by what a screen reader calls them.

/// The control of that accessible name. Raises when there is not exactly one.
template <typename Control>
Control& Named(const QWidget& window, const QString& accessibleName)
{
    Control* found = nullptr;
    for (Control* control : window.findChildren<Control*>()) {
        if (control->accessibleName() != accessibleName) continue;
        if (found != nullptr) throw std::logic_error("two controls named " + accessibleName.toStdString());
        found = control;
    }
    if (found == nullptr) throw std::logic_error("no control named " + accessibleName.toStdString());
    return *found;
}

/// What a screen reader says of the label that is described so: its text. Raises when there is none.
QString Told(const QWidget& window, const QString& description);

/// The button whose caption, without mnemonic, begins with `caption`.
QAbstractButton& Button(const QWidget& window, const QString& caption);
/// Clicks that button with the mouse; one that is hidden or disabled takes no notice.
void ClickButton(const QWidget& window, const QString& caption);

/// Types a text at the cursor, key by key.
void TypeText(QWidget& field, const QString& text);

/// Clicks an item of `view`, of which `place` is the rectangle, where its text begins: the middle of a long
/// one may lie outside of the view.
void ClickAt(QAbstractItemView& view, const QRect& place);
/// Clicks, or clicks twice, the first cell of a row.
void ClickRow(QAbstractItemView& view, int row);
void DoubleClickRow(QAbstractItemView& view, int row);

/// The texts of one column from the top.
QStringList ColumnTexts(const QAbstractItemView& view, int column);
/// The text in the first column of the selected row; empty when none is.
QString SelectedText(const QAbstractItemView& view);

} // namespace test
