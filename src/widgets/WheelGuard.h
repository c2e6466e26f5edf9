#pragma once

class QComboBox;

namespace widgets {

/// Keeps the wheel from a closed combo box whose choice counts at once, so that nobody chooses by scrolling
/// past; whatever stands around it scrolls instead. An open list takes the wheel by a widget of its own.
void KeepWheelFrom(QComboBox& combo);

} // namespace widgets
