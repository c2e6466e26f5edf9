#include "dialogs/secondary/CTTComboBox.h"

#include "dialogs/secondary/ComboItemDelegate.h"
#include "dialogs/secondary/TipWindow.h"
#include "widgets/TextMetrics.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionComboBox>

#include <algorithm>

namespace {

/// Whether `text` ends beyond `room`, be it in the tip's font or, where that is the wider one, in the
/// control's.
bool IsCutOff(const CString& text, const QRect& room, const QWidget& control)
{
    const QRect own(room.topLeft(), QSize(control.fontMetrics().horizontalAdvance(text), 1));
    return std::max(TipWindow::Measure(text, room).right(), own.right()) > room.right();
}

} // namespace

CTTComboBox::CTTComboBox(QWidget* parent) : QComboBox(parent), m_tip(TipWindow::Shared())
{
    setMouseTracking(true);
    HookParts();
}

CTTComboBox::~CTTComboBox()
{
    UnhookParts();
    if (m_tip->Holder() == this) m_tip->HideTip();
}

void CTTComboBox::SetTipsEnabled(bool enabled)
{
    m_tipsEnabled = enabled;
    if (enabled) {
        HookParts();
    } else {
        UnhookParts();
    }
}

void CTTComboBox::SetOwnerDrawn(bool ownerDrawn)
{
    if (ownerDrawn) {
        setItemDelegate(new ComboItemDelegate(*this, [this](int item) { return IsItemDisabled(item); }));
    } else {
        setItemDelegate(new QStyledItemDelegate(this));
    }
}

int CTTComboBox::GetDroppedWidth() const
{
    return std::max(width(), view()->minimumWidth());
}
void CTTComboBox::SetDroppedWidth(int width)
{
    view()->setMinimumWidth(width);
}

void CTTComboBox::HookParts()
{
    if (!m_tipsEnabled) return;
    const auto hook = [this](QPointer<QWidget>& hooked, QWidget* part) {
        if (part == hooked) return;
        if (hooked != nullptr) hooked->removeEventFilter(this);
        hooked = part;
        if (part == nullptr) return;
        part->setMouseTracking(true);
        part->installEventFilter(this);
    };
    hook(m_list, view()->viewport());
    hook(m_edit, lineEdit());
}

void CTTComboBox::UnhookParts()
{
    for (QPointer<QWidget>* part : {&m_list, &m_edit}) {
        if (*part == nullptr) continue;
        (*part)->removeEventFilter(this);
        if (m_tip->Holder() == *part) m_tip->HideTip();
        part->clear();
    }
}

bool CTTComboBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && FilterList(event)) return true;
    if (watched == m_edit) FilterEdit(event);
    return QComboBox::eventFilter(watched, event);
}

bool CTTComboBox::FilterList(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        OnListMove(static_cast<QMouseEvent*>(event)->position().toPoint());
        return false;
    case QEvent::Leave:
    case QEvent::Hide:
        OnPartLeft();
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease: {
        // The toolkit chooses on release, so the click is refused in all of its steps.
        const auto* click = static_cast<QMouseEvent*>(event);
        return click->button() == Qt::LeftButton && RefusesClick(click->position().toPoint());
    }
    default:
        return false;
    }
}

bool CTTComboBox::RefusesClick(const QPoint& point) const
{
    if (!m_list->rect().contains(point)) return false;
    const QModelIndex entry = view()->indexAt(point);
    return entry.isValid() && IsItemDisabled(entry.row());
}

void CTTComboBox::FilterEdit(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        if (!m_edit->rect().contains(static_cast<QMouseEvent*>(event)->position().toPoint())) OnPartLeft();
        m_tip->BeginMouseTracking(m_edit);
        break;
    case QEvent::ToolTip:
        if (m_tip->TakeHover(m_edit)) ShowEditTip();
        break;
    case QEvent::Leave:
        OnPartLeft();
        break;
    default:
        break;
    }
}

void CTTComboBox::OnListMove(const QPoint& point)
{
    if (m_list->rect().contains(point)) {
        ShowListTip(point);
        m_tip->BeginMouseTracking(m_list);
    } else {
        OnPartLeft();
    }
}

void CTTComboBox::OnPartLeft()
{
    m_tip->SetLastItem(TipWindow::NoItem);
    OnFaceLeft();
}

// The last list entry stays remembered: only lists and edit fields forget it.
void CTTComboBox::OnFaceLeft()
{
    m_tip->EndMouseTracking();
    m_tip->HideTip();
}

bool CTTComboBox::event(QEvent* event)
{
    // An edit field comes with the toolkit's calls, none of which can be overridden. It goes by itself: while
    // it does, the toolkit still gives it as the present one.
    if (event->type() == QEvent::ChildPolished) HookParts();
    if (event->type() == QEvent::ToolTip && m_tipsEnabled) {
        if (m_tip->TakeHover(this)) ShowFaceTip();
        return true;
    }
    return QComboBox::event(event);
}

void CTTComboBox::mouseMoveEvent(QMouseEvent* event)
{
    if (!rect().contains(event->position().toPoint())) OnFaceLeft();
    m_tip->BeginMouseTracking(this);
    QComboBox::mouseMoveEvent(event);
}

void CTTComboBox::leaveEvent(QEvent* event)
{
    OnFaceLeft();
    QComboBox::leaveEvent(event);
}

void CTTComboBox::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) m_tip->HideTip();
    QComboBox::mousePressEvent(event);
}

void CTTComboBox::wheelEvent(QWheelEvent* event)
{
    const int step = event->angleDelta().y() < 0 ? 1 : -1;
    QComboBox::wheelEvent(event);
    int selection = currentIndex();
    if (selection < 0) return;
    for (const int item : m_disabledItems) {
        if (item != selection) continue;
        selection += step;
        setCurrentIndex(selection);
    }
}

void CTTComboBox::ShowListTip(const QPoint& point)
{
    const QModelIndex entry = view()->indexAt(point);
    if (!entry.isValid() || entry.row() == m_tip->LastItem()) return;
    m_tip->SetLastItem(entry.row());
    const CString text = itemText(entry.row());
    const QRect room = ComboItemDelegate::TextRect(*view(), entry);
    if (IsCutOff(text, room, *view())) {
        m_tip->ShowTip(m_list, text, TipWindow::Measure(text, room));
    } else {
        m_tip->HideTip();
    }
}

void CTTComboBox::ShowEditTip()
{
    const QRect room = m_edit->rect().adjusted(widgets::EditSideMargin, 0, -widgets::EditSideMargin, 0);
    ShowPartTip(m_edit, currentText(), room, m_edit->rect().bottom());
}

void CTTComboBox::ShowFaceTip()
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    ShowPartTip(this, currentText(), room, rect().bottom());
}

void CTTComboBox::ShowPartTip(QWidget* part, const CString& text, const QRect& room, int bottom)
{
    if (!IsCutOff(text, room, *part)) {
        m_tip->HideTip();
        return;
    }
    QRect measured = TipWindow::Measure(text, room);
    measured.setBottom(bottom);
    m_tip->ShowTip(part, text, measured);
}

void CTTComboBox::showPopup()
{
    HookParts();
    m_tip->HideTip();
    QComboBox::showPopup();
    if (m_tipsEnabled) AlignDropDownList();
}

void CTTComboBox::AlignDropDownList()
{
    QWidget* list = view()->window();
    const int excess = list->width() - width();
    int offset = 0;
    if (m_listAlignment == AlignRight) offset = excess;
    if (m_listAlignment == AlignCenter) offset = excess / 2;
    if (offset != 0) list->move(list->x() - offset, list->y());
}
