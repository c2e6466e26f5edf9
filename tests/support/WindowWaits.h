#pragma once

#include <QtCore/QStringList>

class QModelIndex;
class QTreeView;
class QWidget;

namespace test {

/// Waits until a window that was told to be the active one is. Raises `std::runtime_error` when patience is
/// over.
void WaitUntilActive(QWidget& window);

/// The texts of the window's buttons that do not say on hover what they do.
QStringList ButtonsWithoutTip(const QWidget& window);
/// Selects an item that is in sight, as a screen reader does: without mouse, keys and focus. Raises
/// `std::runtime_error` when the list does not let it.
void SelectByAid(QTreeView& list, const QModelIndex& index);

} // namespace test
