#include "editor/dialogs/DifferenceView.h"

#include <QtGui/QFontDatabase>

namespace editor {

DifferenceView::DifferenceView()
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font().pointSizeF());
    setReadOnly(true);
    setLineWrapMode(NoWrap);
    setFont(fixed);
    // Rule files are indented with tabs, a dozen deep, which at the toolkit's width push the text out of
    // sight.
    constexpr int TabInBlanks = 2;
    setTabStopDistance(TabInBlanks * QFontMetricsF(fixed).horizontalAdvance(u' '));
}

} // namespace editor
