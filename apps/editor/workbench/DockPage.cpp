#include "editor/workbench/DockPage.h"

#include <QtCore/QEvent>
#include <QtGui/QAction>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLayout>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTabWidget>

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// How low a panel may become, in lines of text.
constexpr int LeastLines = 4;

/// Where the keyboard goes in a panel: its own choice, else the first field that can be used.
QWidget& FirstField(QWidget& panel)
{
    if (panel.focusProxy() != nullptr) return panel;
    for (QWidget* field : panel.findChildren<QWidget*>())
        if ((field->focusPolicy() & Qt::TabFocus) != 0 && field->isEnabled() && field->isVisibleTo(&panel))
            return *field;
    return panel;
}

/// Scrolls a panel where it is lower than it would be, so that on a small screen, or with large letters, the
/// window is not higher than the screen.
class ScrolledPanel : public QScrollArea
{
public:
    explicit ScrolledPanel(QWidget* panel)
    {
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
        setWidget(panel);
    }

    QSize sizeHint() const override { return widget()->sizeHint(); }

    QSize minimumSizeHint() const override
    {
        const QSize panel = widget()->minimumSizeHint();
        return {panel.width() + verticalScrollBar()->sizeHint().width(),
                std::min(panel.height(), fontMetrics().height() * LeastLines)};
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        Fit();
        QScrollArea::resizeEvent(event);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == widget() && event->type() == QEvent::LayoutRequest) Fit();
        return QScrollArea::eventFilter(watched, event);
    }

private:
    /// The toolkit's own way gives a panel with texts of several lines the height that it would like to have.
    void Fit()
    {
        const int least = widget()->minimumSizeHint().height();
        widget()->resize(viewport()->width(), std::max(viewport()->height(), least));
    }
};

/// Whether a widget is in a dock that stands behind another one: the toolkit moves such a dock out of sight
/// but does not hide it.
bool IsInDockBehind(const QWidget& widget, const QWidget& page)
{
    for (const QWidget* part = &widget; part != nullptr && part != &page; part = part->parentWidget())
        if (const auto* dock = qobject_cast<const QDockWidget*>(part))
            return !dock->isFloating() && !page.rect().intersects(dock->geometry());
    return false;
}

} // namespace

DockPage::DockPage()
{
    setWindowFlags(Qt::Widget); // a page, not a window
    setDockOptions(AnimatedDocks | AllowTabbedDocks | AllowNestedDocks);
    setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
}

QDockWidget* DockPage::AddDock(const QString& name, const QString& title, QWidget* content,
                               Qt::DockWidgetArea area)
{
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setWidget(new ScrolledPanel(content));
    QDockWidget* beside = nullptr;
    for (QDockWidget* other : m_docks)
        if (dockWidgetArea(other) == area) beside = other;
    m_docks.append(dock);
    addDockWidget(area, dock);
    if (beside != nullptr) tabifyDockWidget(beside, dock);
    AddDockCommand(*dock, *content);
    return dock;
}

void DockPage::AddDockCommand(QDockWidget& dock, QWidget& panel)
{
    auto* command = new QAction(dock.windowTitle(), this);
    command->setShortcut(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_0 + m_docks.size()));
    command->setStatusTip(u"到面板“%1”"_s.arg(dock.windowTitle()));
    connect(command, &QAction::triggered, &dock, [&dock, &panel] {
        dock.show();
        dock.raise();
        FirstField(panel).setFocus(Qt::ShortcutFocusReason);
    });
    m_dockCommands.append(command);
}

QList<QDockWidget*> DockPage::Docks() const
{
    return m_docks;
}

QDockWidget* DockPage::FindDock(const QString& name) const
{
    for (QDockWidget* dock : m_docks)
        if (dock->objectName() == name) return dock;
    throw std::out_of_range("no dock of that name");
}

void DockPage::SetFirstSizes(const QList<QDockWidget*>& docks, const QList<int>& sizes)
{
    m_firstDocks = docks;
    m_firstSizes = sizes;
}

bool DockPage::Restore(const QByteArray& layout, int version)
{
    if (layout.isEmpty() || !restoreState(layout, version)) return false;
    m_firstDocks.clear();
    return true;
}

/// Sizes count only once the page has its own.
void DockPage::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    layout()->activate();
    const QList<QDockWidget*> docks = std::exchange(m_firstDocks, {});
    for (qsizetype i = 0; i < docks.size(); ++i) {
        const bool isBottom = dockWidgetArea(docks[i]) == Qt::BottomDockWidgetArea;
        resizeDocks({docks[i]}, {m_firstSizes[i]}, isBottom ? Qt::Vertical : Qt::Horizontal);
    }
}

/// As the toolkit's own, but past what nobody sees.
bool DockPage::focusNextPrevChild(bool next)
{
    const QWidget* const from = window()->focusWidget();
    for (const QWidget* now = nullptr; now != from;) {
        if (!QMainWindow::focusNextPrevChild(next)) return false;
        const QWidget* const former = std::exchange(now, window()->focusWidget());
        if (now == nullptr || now == former || !IsInDockBehind(*now, *this)) return true;
    }
    return true;
}

} // namespace editor
