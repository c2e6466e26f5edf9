#pragma once

#include <QtWidgets/QPlainTextEdit>

namespace editor {

/// Shows the lines of a difference in letters of one width, as large as those of the program. Read only.
class DifferenceView : public QPlainTextEdit
{
public:
    DifferenceView();
};

} // namespace editor
