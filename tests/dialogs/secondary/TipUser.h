#pragma once

#include "dialogs/secondary/CTTComboBox.h"
#include "dialogs/secondary/TipWindow.h"

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWidget>

namespace test {

/// A shown combo box that is too narrow for its entry 1, with a button beside it, and what a user does at
/// them.
class ComboUser
{
public:
    static const CString Wide;

    explicit ComboUser(bool editable);

    CTTComboBox& Combo() { return m_combo; }
    QWidget& Window() { return m_window; }
    QWidget* List() { return m_combo.view()->viewport(); }

    /// Opens the list.
    void Open();
    /// Moves the mouse onto an entry of the open list, `offset` pixels further to the right than at other
    /// times: a mouse that stays where it is sends nothing.
    void MoveTo(int entry, int offset = 0);
    void ClickEntry(int entry);
    /// Moves the mouse out to the button.
    void MoveOut();
    /// Lets the mouse rest in a part of the combo box.
    static void Rest(QWidget* part);
    void Wheel(int delta);
    CStringArray Chosen() const { return m_chosen; }

private:
    QWidget m_window;
    CTTComboBox m_combo;
    QPushButton m_button;
    CStringArray m_chosen;
};

/// The tip window, null when there is none.
TipWindow* Tip();
/// The text of the visible tip; nothing when none is visible.
CString TipText();

} // namespace test
