#include "widgets/CutTextTips.h"

#include "widgets/ControlMetrics.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

namespace widgets {

namespace {

class CutTextTips : public QObject
{
public:
    explicit CutTextTips(QAbstractItemView& view) : QObject(&view), m_view(view)
    {
        view.viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
        const auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex item = m_view.indexAt(help->pos());
        ShowTipIfCut(m_view, item, m_view.visualRect(item), m_view.sizeHintForIndex(item).width(),
                     help->globalPos());
        return true;
    }

private:
    QAbstractItemView& m_view;
};

class CutEditTip : public QObject
{
public:
    explicit CutEditTip(QLineEdit& edit) : QObject(&edit), m_edit(edit) { edit.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
        const auto* help = static_cast<QHelpEvent*>(event);
        const bool isCut = NeededSize(m_edit, m_edit.text()).width() > m_edit.width();
        if (isCut)
            QToolTip::showText(help->globalPos(), TipMarkup(m_edit.text()), &m_edit);
        else
            QToolTip::hideText();
        return true;
    }

private:
    QLineEdit& m_edit;
};

} // namespace

CString TipMarkup(const CString& text)
{
    return u"<span style=\"white-space:pre-wrap\">"_s + text.toHtmlEscaped() + u"</span>"_s;
}

void ShowTipIfCut(QAbstractItemView& view, const QModelIndex& item, const QRect& place, int neededWidth,
                  const QPoint& screenPoint)
{
    const QRect seen = place & view.viewport()->rect();
    if (item.isValid() && neededWidth > seen.width())
        QToolTip::showText(screenPoint, TipMarkup(item.data().toString()), view.viewport(), place);
    else
        QToolTip::hideText();
}

void ShowTipsOfCutTexts(QAbstractItemView& view)
{
    new CutTextTips(view); // owned by the view
}

void ShowTipOfCutText(QLineEdit& edit)
{
    new CutEditTip(edit); // owned by the edit
}

} // namespace widgets
