#include "dialogs/CutTextTips.h"

#include "dialogs/ControlMetrics.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

namespace dialogs {

namespace {

// As markup, which is broken into lines when it is wide; the text itself is none.
QString Wrapping(const QString& text)
{
    return u"<span>"_s + text.toHtmlEscaped() + u"</span>"_s;
}

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
        const QRect place = m_view.visualRect(item);
        const QRect seen = place & m_view.viewport()->rect();
        if (!item.isValid() || m_view.sizeHintForIndex(item).width() <= seen.width()) {
            QToolTip::hideText();
            return true;
        }
        const QString tip = Wrapping(item.data().toString());
        QToolTip::showText(help->globalPos(), tip, m_view.viewport(), place);
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
            QToolTip::showText(help->globalPos(), Wrapping(m_edit.text()), &m_edit);
        else
            QToolTip::hideText();
        return true;
    }

private:
    QLineEdit& m_edit;
};

} // namespace

void ShowTipsOfCutTexts(QAbstractItemView& view)
{
    new CutTextTips(view); // owned by the view
}

void ShowTipOfCutText(QLineEdit& edit)
{
    new CutEditTip(edit); // owned by the edit
}

} // namespace dialogs
