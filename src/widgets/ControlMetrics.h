#pragma once

#include "platform/Text.h"

#include <QtCore/QSize>

class QWidget;

namespace widgets {

/// How large `control` must be so that its caption, or for an edit or combo the text `fits`, is shown in full
/// with its present font and style. A side that no text decides is 0.
QSize NeededSize(const QWidget& control, const CString& fits);

} // namespace widgets
