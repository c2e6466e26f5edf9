#pragma once

#include <QtGui/QIcon>

namespace editor {

/// The program's icon in the usual sizes. Needs the application object.
QIcon AppIcon();

} // namespace editor
