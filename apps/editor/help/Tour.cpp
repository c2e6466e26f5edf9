#include "editor/help/Tour.h"

#include <QtCore/QEvent>
#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// In characters.
constexpr int Width = 44;
/// Between the callout and what it tells of, and to the edges of the window.
constexpr int Gap = 10;
constexpr int FrameWidth = 3;

/// Where a callout of that size stands beside `told` without leaving `room`: below, above, at the right, at
/// the left, and else over it.
QRect PlaceBeside(const QRect& told, const QSize& size, const QRect& room)
{
    const QList<QPoint> corners{
        {told.left(), told.bottom() + Gap},
        {told.left(), told.top() - Gap - size.height()},
        {told.right() + Gap, told.top()},
        {told.left() - Gap - size.width(), told.top()},
    };
    const auto moved = [&](QRect place) {
        place.moveLeft(std::clamp(place.left(), room.left(), qMax(room.left(), room.right() - size.width())));
        place.moveTop(std::clamp(place.top(), room.top(), qMax(room.top(), room.bottom() - size.height())));
        return place;
    };
    for (const QPoint& corner : corners) {
        const QRect place = moved(QRect(corner, size));
        if (!place.intersects(told)) return place;
    }
    QRect middle(QPoint(), size);
    middle.moveCenter(told.center());
    return moved(middle);
}

} // namespace

/// Drawn around what is told of; the mouse goes through.
class Tour::Frame : public QWidget
{
public:
    explicit Frame(QWidget& window) : QWidget(&window)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        hide();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Highlight), FrameWidth));
        const int inset = FrameWidth / 2;
        painter.drawRect(rect().adjusted(inset, inset, -inset - 1, -inset - 1));
    }
};

Tour::Tour(QWidget& window, QList<Step> steps, std::function<void()> ended)
    : QFrame(&window), m_window(window), m_steps(std::move(steps)), m_ended(std::move(ended)),
      m_frame(new Frame(window)), m_title(new QLabel), m_text(new QLabel), m_count(new QLabel)
{
    hide();
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(1);
    setAutoFillBackground(true);
    setFixedWidth(fontMetrics().averageCharWidth() * Width);
    QFont bold = font();
    bold.setBold(true);
    m_title->setFont(bold);
    for (QLabel* label : {m_title, m_text}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_count, 1);
    m_back = AddButton(u"上一步(&B)"_s, u"上一步（←）"_s, [this] { GoTo(m_current - 1); });
    m_next = AddButton(u"下一步(&N)"_s, u"下一步（→）"_s, [this] { GoTo(m_current + 1); });
    m_end = AddButton(u"结束(&E)"_s, u"结束（Esc）"_s, [this] { End(); });
    for (QPushButton* button : {m_back, m_next, m_end})
        buttons->addWidget(button);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_title);
    column->addWidget(m_text);
    column->addLayout(buttons);
    Colour();
}

Tour::~Tour() = default;

QPushButton* Tour::AddButton(const QString& text, const QString& tip, const std::function<void()>& step)
{
    auto* button = new QPushButton(text);
    button->setToolTip(tip);
    button->installEventFilter(this);
    connect(button, &QPushButton::clicked, this, step);
    return button;
}

void Tour::Start()
{
    GoTo(0);
}

void Tour::Offer(const QString& title, const QString& text)
{
    Watch(nullptr);
    m_next->setText(u"开始(&N)"_s);
    m_next->setToolTip(u"开始（→）"_s);
    m_end->setText(u"不用了(&E)"_s);
    m_back->hide();
    Present(title, text, {});
}

void Tour::GoTo(qsizetype step)
{
    if (step < 0) return;
    if (step >= m_steps.size()) return End();
    m_current = step;
    Watch(m_steps[step].widget ? m_steps[step].widget() : nullptr);
    const bool isLast = step + 1 == m_steps.size();
    m_next->setText(isLast ? u"完成(&N)"_s : u"下一步(&N)"_s);
    m_next->setToolTip(isLast ? u"完成（→）"_s : u"下一步（→）"_s);
    m_end->setText(u"结束(&E)"_s);
    m_end->setVisible(!isLast);
    m_back->show();
    m_back->setEnabled(step > 0);
    Present(m_steps[step].title, m_steps[step].text, u"%1/%2"_s.arg(step + 1).arg(m_steps.size()));
}

void Tour::Present(const QString& title, const QString& text, const QString& count)
{
    m_title->setText(title);
    m_text->setText(text);
    m_count->setText(count);
    m_count->setAccessibleName(count.isEmpty() ? QString() : u"第 %1 步"_s.arg(count));
    setAccessibleName(title);
    setAccessibleDescription(text);
    // What has the focus is read aloud, with what it is about.
    m_next->setAccessibleDescription(u"%1。%2"_s.arg(title, text));
    m_window.installEventFilter(this);
    show();
    Place();
    m_next->setFocus();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void Tour::Watch(QWidget* widget)
{
    if (m_told != nullptr && m_told != &m_window) m_told->removeEventFilter(this);
    m_told = widget;
    if (m_told != nullptr) m_told->installEventFilter(this);
}

void Tour::Place()
{
    const QRect room = m_window.rect().adjusted(Gap, Gap, -Gap, -Gap);
    resize(width(), hasHeightForWidth() ? heightForWidth(width()) : sizeHint().height());
    const bool isSeen = m_told != nullptr && m_told->isVisibleTo(&m_window);
    m_frame->setVisible(isSeen);
    if (!isSeen) {
        QRect middle(QPoint(), size());
        middle.moveCenter(m_window.rect().center());
        setGeometry(middle);
    } else {
        const QRect told = QRect(m_told->mapTo(&m_window, QPoint()), m_told->size()) & m_window.rect();
        m_frame->setGeometry(told.adjusted(-FrameWidth, -FrameWidth, FrameWidth, FrameWidth));
        m_frame->raise();
        setGeometry(PlaceBeside(told, size(), room));
    }
    raise();
}

void Tour::Colour()
{
    setBackgroundRole(QPalette::ToolTipBase);
    for (QLabel* label : {m_title, m_text, m_count})
        label->setForegroundRole(QPalette::ToolTipText);
}

void Tour::End()
{
    Watch(nullptr);
    m_window.removeEventFilter(this);
    m_frame->hide();
    hide();
    m_current = -1;
    if (const auto ended = std::exchange(m_ended, {})) ended();
}

bool Tour::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        if (isVisible() && (watched == &m_window || watched == m_told)) Place();
        return false;
    case QEvent::KeyPress: {
        if (watched != m_back && watched != m_next && watched != m_end) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape) return End(), true;
        if (key == Qt::Key_Left) return GoTo(m_current - 1), true;
        if (key == Qt::Key_Right) return GoTo(m_current + 1), true;
        return false;
    }
    default:
        return false;
    }
}

void Tour::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_end != nullptr && isVisible()) {
        setFixedWidth(fontMetrics().averageCharWidth() * Width);
        Place();
    }
}

} // namespace editor
