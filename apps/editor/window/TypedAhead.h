#pragma once

#include <QtCore/QObject>

namespace editor {

/// Lets whoever types ahead of a busy program, or fast, have what he means when he chooses from the list of a
/// combo and types on.
///
/// The window system addresses a key when it is typed: while such a list is open, to the list. The program
/// takes the keys later, when one of them has closed the list, and the toolkit would let the list that nobody
/// sees have the rest, so that they are lost or choose another entry. They go to the window that has the
/// keyboard, which counts as the active one from then on: widgets that ask for the focus before they take a
/// key have it. And the toolkit closes a list when it asks whether the key is a shortcut, so that the key
/// itself, where it was typed before the list was there, would go on to the window and press its default
/// button. A key that closes a list does nothing else.
class TypedAhead : public QObject
{
public:
    /// Watches all windows of the application for as long as it lives.
    TypedAhead();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_listWasOpen = false; ///< when it was last asked whether a key is a shortcut
};

} // namespace editor
