#pragma once

#include <QtCore/QRect>

class QWidget;

/// A window of the toolkit. Only declared here: the layers below the dialogs pass windows on without ever
/// looking into them, and so link no graphics library.
using CWnd = QWidget;

/// A rectangle in screen pixels.
using CRect = QRect;
