#include "dialogs/CutTextTips.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

namespace dialogs {

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
        const QRect place = m_view.visualRect(item);
        const QRect seen = place & m_view.viewport()->rect();
        if (!item.isValid() || m_view.sizeHintForIndex(item).width() <= seen.width()) {
            QToolTip::hideText();
            return true;
        }
        // As markup, which is broken into lines when it is wide; the text itself is none.
        const QString text = item.data().toString().toHtmlEscaped();
        QToolTip::showText(help->globalPos(), u"<span>"_s + text + u"</span>"_s, m_view.viewport(), place);
        return true;
    }

private:
    QAbstractItemView& m_view;
};

} // namespace

void ShowTipsOfCutTexts(QAbstractItemView& view)
{
    new CutTextTips(view); // owned by the view
}

} // namespace dialogs
