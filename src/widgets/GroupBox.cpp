#include "widgets/GroupBox.h"

#include "widgets/LineColour.h"

#include <QtWidgets/QStyle>
#include <QtWidgets/QStylePainter>

namespace widgets {

namespace {

constexpr int TitleIndent = 8;
constexpr int TitleMargin = 3;

} // namespace

QRect GroupBox::FrameRect() const
{
    return rect().adjusted(0, fontMetrics().height() / 2, -1, -1);
}

void GroupBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    const QSize size = fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, title());
    const QRect text(QPoint(TitleIndent, 0), QSize(size.width(), fontMetrics().height()));
    painter.save();
    if (!title().isEmpty())
        painter.setClipRegion(QRegion(rect()) - text.adjusted(-TitleMargin, 0, TitleMargin, 0));
    painter.setPen(LineColour(palette(), QPalette::Window, QPalette::WindowText));
    painter.drawRect(FrameRect());
    painter.restore();
    style()->drawItemText(&painter, text, Qt::TextShowMnemonic | Qt::TextSingleLine, palette(), isEnabled(),
                          title(), QPalette::WindowText);
}

} // namespace widgets
