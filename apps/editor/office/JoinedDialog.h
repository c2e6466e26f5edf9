#pragma once

#include "shared/OfficeFiles.h"

#include <QtWidgets/QDialog>

namespace editor {

/// Shows what was merged with a published version before it is published: what has come into the project's
/// file, and what is published by that. Accepted when it is to be so.
class JoinedDialog : public QDialog
{
public:
    JoinedDialog(const shared::JoinedStates& joined, QWidget* parent);

    /// Runs it.
    static bool Ask(const shared::JoinedStates& joined, QWidget* parent);
};

} // namespace editor
