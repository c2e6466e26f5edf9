#pragma once

class QWidget;

namespace test {

/// Waits until a window that was told to be the active one is. Raises `std::runtime_error` when patience is
/// over.
void WaitUntilActive(QWidget& window);

} // namespace test
