#pragma once

#include "dialogs/template/DialogTemplate.h"

class QWidget;

namespace dialogs {

/// A widget of the kind that the row names, without text or notes. Owned by `parent`.
QWidget* MakeControl(const ControlRow& row, QWidget* parent);

/// Gives a widget the caption, the notes and the object name of its row.
void ApplyRow(const ControlRow& row, QWidget& control);

} // namespace dialogs
