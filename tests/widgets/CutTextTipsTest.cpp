#include "widgets/CutTextTips.h"

#include "support/Patience.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QToolTip>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Blanks that mean something, and what looks like markup.
const CString Text = u"8-87  室内   镀锌钢管 <b>（螺纹连接）</b> &amp; 公称直径    15mm 以内"_s;

/// What a tip says to the eye: the toolkit's tips are documents of markup.
CString Seen(const CString& markup)
{
    QTextDocument document;
    document.setHtml(markup);
    return document.toPlainText();
}

/// The tip that the mouse at rest in the middle of a part brings up; empty for none.
CString TipAt(QWidget& part, const QPoint& point)
{
    QHelpEvent rest(QEvent::ToolTip, point, part.mapToGlobal(point));
    QCoreApplication::sendEvent(&part, &rest);
    const CString tip = QToolTip::isVisible() ? Seen(QToolTip::text()) : CString();
    QToolTip::hideText();
    test::WaitInLoopFor(u"end of the tip"_s, [] { return !QToolTip::isVisible(); });
    return tip;
}

CString TipOfLine(QListWidget& list)
{
    return TipAt(*list.viewport(), list.viewport()->rect().center());
}

} // namespace

TEST(CutTextTips, ItemThatIsCutShowsItsTextWithEveryBlank)
{
    for (const bool byDelegate : {false, true}) {
        QListWidget list;
        if (byDelegate)
            list.setItemDelegate(new widgets::TipDelegate(&list));
        else
            widgets::ShowTipsOfCutTexts(list);
        list.addItem(Text);
        list.resize(120, 30);
        list.show();
        EXPECT_EQ(TipOfLine(list), Text);
        list.resize(2000, 30);
        EXPECT_EQ(TipOfLine(list), CString());
    }
}

TEST(CutTextTips, EditThatIsTooNarrowShowsItsTextWithEveryBlank)
{
    QLineEdit edit(Text);
    widgets::ShowTipOfCutText(edit);
    edit.resize(120, 30);
    edit.show();
    EXPECT_EQ(TipAt(edit, edit.rect().center()), Text);
    edit.resize(2000, 30);
    EXPECT_EQ(TipAt(edit, edit.rect().center()), CString());
}
