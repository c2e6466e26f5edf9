#include "dialogs/secondary/TipWindow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace {

/// What a tip is wider and higher than its text, on each side.
constexpr int Margin = 2;

/// `rect` moved to the left and up as far as it sticks out of the screen at `point`; its start stays visible.
QRect OnScreen(QRect rect, const QScreen* screen)
{
    if (screen == nullptr) return rect;
    const QRect room = screen->availableGeometry();
    rect.moveLeft(std::max(room.left(), std::min(rect.left(), room.right() + 1 - rect.width())));
    rect.moveTop(std::max(room.top(), std::min(rect.top(), room.bottom() + 1 - rect.height())));
    return rect;
}

} // namespace

TipWindow::TipWindow()
    : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput),
      m_timer(this)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TipWindow::HideTip);
}

TipWindow::~TipWindow() = default;

std::shared_ptr<TipWindow> TipWindow::Shared()
{
    static std::weak_ptr<TipWindow> window;
    std::shared_ptr<TipWindow> shared = window.lock();
    if (shared == nullptr) {
        shared.reset(new TipWindow);
        window = shared;
    }
    return shared;
}

QRect TipWindow::Measure(const CString& text, const QRect& rect)
{
    const QFontMetrics metrics(QToolTip::font());
    return {rect.topLeft(), QSize(metrics.size(Qt::TextSingleLine, text).width(), metrics.height())};
}

void TipWindow::ShowTip(QWidget* holder, const CString& text, const QRect& rect)
{
    HideTip();
    m_holder = holder;
    QCoreApplication::instance()->installEventFilter(this);
    m_text = text;
    const QRect grown = rect.adjusted(-Margin, -Margin, Margin, Margin);
    setGeometry(OnScreen({holder->mapToGlobal(grown.topLeft()), grown.size()}, holder->screen()));
    show();
    raise();
    m_timer.start(Duration);
}

void TipWindow::HideTip()
{
    hide();
}

void TipWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
    QCoreApplication::instance()->removeEventFilter(this);
    m_holder.clear();
}

bool TipWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove) {
        OnMouseAt(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
        return false;
    }
    if (watched != m_holder) return false;
    switch (event->type()) {
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::Destroy:
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
        HideTip();
        break;
    default:
        break;
    }
    return false;
}

void TipWindow::OnMouseAt(const QPoint& screenPoint)
{
    const QPointer<QWidget> holder = m_holder;
    if (holder.isNull() || holder->rect().contains(holder->mapFromGlobal(screenPoint))) return;
    HideTip();
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(holder, &leave);
}

void TipWindow::BeginMouseTracking(QWidget* control)
{
    if (m_tracked == control) return;
    m_tracked = control;
    m_hoverTaken = false;
}

void TipWindow::EndMouseTracking()
{
    m_tracked.clear();
}

bool TipWindow::TakeHover(const QWidget* control)
{
    if (m_tracked != control || m_hoverTaken) return false;
    m_hoverTaken = true;
    return true;
}

void TipWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QPalette colours = QToolTip::palette();
    painter.fillRect(rect(), colours.color(QPalette::Inactive, QPalette::ToolTipBase));
    painter.setPen(Qt::black);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(colours.color(QPalette::Inactive, QPalette::ToolTipText));
    painter.setFont(QToolTip::font());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, m_text);
}
