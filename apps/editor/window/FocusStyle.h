#pragma once

#include <QtWidgets/QProxyStyle>

namespace editor {

/// Shows which list has the focus, by its frame and by the selection, which is pale in every other list. The
/// toolkit's own style draws all of them alike, and whoever works with the keyboard does not see where he is.
class FocusStyle : public QProxyStyle
{
public:
    /// Owns `base`, as its base class does.
    explicit FocusStyle(QStyle* base);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

/// Puts it over the application's style where that is the toolkit's own; the styles of desktops show the
/// focus in their way.
void ShowFocusInLists();

} // namespace editor
