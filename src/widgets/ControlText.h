#pragma once

#include "platform/Text.h"

class QWidget;

namespace widgets {

/// The text of a control: a caption, or what stands in an edit field. Empty for a control that has none.
CString ControlText(const QWidget& control);

/// Sets it. An edit field that already shows `text` keeps its cursor. Nothing happens to a control that has
/// no text.
void SetControlText(QWidget& control, const CString& text);

/// Whether the control's text is a caption, which has to fit, and not something that the user may edit.
bool HasCaption(const QWidget& control);

/// A caption as it is spoken: "文件名(&N):" is 文件名.
CString Spoken(CString caption);

/// The text with a place for a line break behind every character. A path has none of its own, so that a long
/// one would stand out of its window.
CString Breakable(const CString& text);

} // namespace widgets
