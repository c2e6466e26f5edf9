#pragma once

#include <QtCore/QStringList>

class QWidget;

namespace test {

/// Waits until a window that was told to be the active one is. Raises `std::runtime_error` when patience is
/// over.
void WaitUntilActive(QWidget& window);

/// The texts of the window's buttons that do not say on hover what they do.
QStringList ButtonsWithoutTip(const QWidget& window);

} // namespace test
