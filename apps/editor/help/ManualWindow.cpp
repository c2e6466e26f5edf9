#include "editor/help/ManualWindow.h"

#include "editor/help/ManualView.h"
#include "widgets/LineColour.h"
#include "widgets/SelectedRow.h"
#include "widgets/TipDelegate.h"

#include <QtCore/QEvent>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtGui/QAction>
#include <QtGui/QDesktopServices>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

// In characters and lines, for a large font needs a larger window.
constexpr int FirstWidth = 130;
constexpr int FirstHeight = 36;
constexpr int ListWidth = 34;
constexpr int SearchWidth = 28;
/// Headings below these are found by reading.
constexpr int DeepestListed = 3;

enum Data { PathData = Qt::UserRole, AnchorData, HitData };

QTreeWidgetItem* MakeItem(const QString& text, const QString& path, const QString& anchor)
{
    auto* item = new QTreeWidgetItem({text});
    item->setData(0, PathData, path);
    item->setData(0, AnchorData, anchor);
    return item;
}

void AddHeadings(QTreeWidgetItem& chapter, const ManualPage& page)
{
    for (const ManualHeading& heading : page.headings)
        if (heading.level > 1 && heading.level <= DeepestListed)
            chapter.addChild(MakeItem(heading.text, page.path, heading.anchor));
}

} // namespace

ManualWindow::ManualWindow(std::function<void(const QUrl&)> browse)
    : m_browse(std::move(browse)), m_view(new ManualView), m_lists(new QStackedWidget),
      m_contents(MakeTree(u"目录"_s)), m_hitList(MakeTree(u"查到的地方"_s)), m_words(new QLineEdit),
      m_count(new QLabel)
{
    if (!m_browse) m_browse = [](const QUrl& link) { QDesktopServices::openUrl(link); };
    setWindowTitle(u"手册"_s);
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(fontMetrics().averageCharWidth() * FirstWidth, fontMetrics().lineSpacing() * FirstHeight);
    m_lists->addWidget(m_contents);
    m_lists->addWidget(m_hitList);
    auto* splitter = new QSplitter;
    splitter->addWidget(m_lists);
    splitter->addWidget(m_view);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    const int listWidth = fontMetrics().averageCharWidth() * ListWidth;
    splitter->setSizes({listWidth, width() - listWidth});
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeBar());
    column->addWidget(splitter, 1);
    connect(m_view, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { FollowLink(link); });
    connect(m_view->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { NoteScrolling(); });
    connect(m_words, &QLineEdit::textChanged, this, [this] { Find(); });
    m_words->installEventFilter(this);
    EnableCommands();
}

ManualWindow::~ManualWindow() = default;

QWidget* ManualWindow::MakeBar()
{
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](QAction* action, QStyle::StandardPixmap icon) {
        action->setIcon(style()->standardIcon(icon));
        auto* button = new QToolButton;
        button->setDefaultAction(action);
        button->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(button);
        return action;
    };
    m_back = add(AddCommand(u"后退"_s, u"回到刚才看的地方"_s, QKeySequence::Back, [this] { Back(); }),
                 QStyle::SP_ArrowBack);
    m_forward =
        add(AddCommand(u"前进"_s, u"再到后退以前看的地方"_s, QKeySequence::Forward, [this] { Forward(); }),
            QStyle::SP_ArrowForward);
    row->addStretch();
    m_words->setPlaceholderText(u"在手册中查找"_s);
    m_words->setAccessibleName(u"在手册中查找"_s);
    m_words->setClearButtonEnabled(true);
    widgets::ColourHint(*m_words);
    m_words->setMinimumWidth(fontMetrics().averageCharWidth() * SearchWidth);
    m_words->setToolTip(u"列出有这些字的所有页（%1），Enter 到下一处"_s.arg(
        QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText)));
    row->addWidget(m_words);
    row->addWidget(m_count);
    m_previous =
        add(AddCommand(u"上一处"_s, u"到查到的上一处"_s, QKeySequence::FindPrevious, [this] { StepHit(-1); }),
            QStyle::SP_ArrowUp);
    m_next = add(AddCommand(u"下一处"_s, u"到查到的下一处"_s, QKeySequence::FindNext, [this] { StepHit(1); }),
                 QStyle::SP_ArrowDown);
    AddCommand(u"查找"_s, u"在手册中查找"_s, QKeySequence::Find, [this] {
        m_words->setFocus();
        m_words->selectAll();
    });
    AddCommand(u"关闭"_s, u"关闭手册"_s, Qt::Key_Escape, [this] { close(); });
    return bar;
}

QAction* ManualWindow::AddCommand(const QString& text, const QString& tip, const QKeySequence& keys,
                                  const std::function<void()>& step)
{
    auto* action = new QAction(text, this);
    action->setShortcut(keys);
    action->setToolTip(u"%1（%2）"_s.arg(tip, keys.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this, step);
    addAction(action);
    return action;
}

QTreeWidget* ManualWindow::MakeTree(const QString& name)
{
    auto* tree = new QTreeWidget;
    tree->setHeaderHidden(true);
    tree->setAccessibleName(name);
    tree->setUniformRowHeights(true);
    tree->setItemDelegate(new widgets::TipDelegate(tree));
    widgets::MakeSelectedRowCurrent(*tree);
    connect(tree, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item == nullptr || m_isSelecting) return;
        const QVariant hit = item->data(0, HitData);
        if (hit.isValid()) return GoToHit(hit.toLongLong());
        GoTo({item->data(0, PathData).toString(), item->data(0, AnchorData).toString()});
    });
    return tree;
}

void ManualWindow::Read()
{
    if (m_pages) return;
    m_pages.emplace();
    FillContents();
    ShowPage(m_pages->Pages().first().path);
}

// The chapters of the manual, and below one entry the documents that these lead to.
void ManualWindow::FillContents()
{
    const QScopedValueRollback<bool> selecting(m_isSelecting, true);
    QTreeWidgetItem* beyond = nullptr;
    for (const ManualPage& page : m_pages->Pages()) {
        auto* chapter = MakeItem(page.title, page.path, {});
        AddHeadings(*chapter, page);
        if (ManualPages::IsOfTheManual(page.path)) {
            m_contents->addTopLevelItem(chapter);
            continue;
        }
        if (beyond == nullptr) {
            beyond = MakeItem(u"其他文档（英文）"_s, {}, {});
            m_contents->addTopLevelItem(beyond);
        }
        beyond->addChild(chapter);
    }
}

void ManualWindow::Show(const QString& topic)
{
    Read();
    const auto place = m_pages->PlaceOf(topic);
    m_words->clear();
    show();
    if (isMinimized()) showNormal();
    StandBesideModalWindow();
    raise();
    activateWindow();
    m_view->setFocus();
    GoTo(place.value_or(ManualPlace{m_pages->Pages().first().path, {}}));
}

// The last headings of a page cannot come to the top: what was asked for counts until somebody scrolls.
void ManualWindow::NoteScrolling()
{
    if (!m_pages || m_isSelecting) return;
    const qsizetype heading = m_view->HeadingAtTop();
    m_anchor = heading <= 0 ? QString() : m_pages->Find(m_path)->headings[heading].anchor;
    SelectInContents();
}

void ManualWindow::GoTo(const ManualPlace& place)
{
    const ManualPage* page = m_pages->Find(place.path);
    if (page == nullptr) return;
    const Visit here = Here();
    {
        const QScopedValueRollback<bool> selecting(m_isSelecting, true);
        ShowPage(place.path);
        qsizetype number = 0;
        while (number < page->headings.size() && page->headings[number].anchor != place.anchor)
            ++number;
        m_view->GoToHeading(number);
        m_anchor = place.anchor;
    }
    if (here.path != place.path || here.position != Here().position) {
        m_past.append(here);
        m_future.clear();
    }
    SelectInContents();
    EnableCommands();
}

void ManualWindow::ShowPage(const QString& path)
{
    if (std::exchange(m_path, path) != path) m_view->ShowPage(path);
    MarkHits();
    setWindowTitle(u"%1 - 手册"_s.arg(m_pages->Find(path)->title));
}

void ManualWindow::FollowLink(const QUrl& link)
{
    const QString text = link.toString();
    if (const auto place = m_pages->Follow(m_path, text))
        GoTo(*place);
    else if (!link.scheme().isEmpty())
        m_browse(link);
}

ManualWindow::Visit ManualWindow::Here() const
{
    return {m_path, m_view->TopPosition()};
}

void ManualWindow::Return(const Visit& visit)
{
    ShowPage(visit.path);
    m_view->ScrollTo(visit.position);
    NoteScrolling();
    EnableCommands();
}

void ManualWindow::Back()
{
    if (m_past.isEmpty()) return;
    m_future.append(Here());
    Return(m_past.takeLast());
}

void ManualWindow::Forward()
{
    if (m_future.isEmpty()) return;
    m_past.append(Here());
    Return(m_future.takeLast());
}

void ManualWindow::Search(const QString& words)
{
    m_words->setText(words);
}

void ManualWindow::Find()
{
    Read();
    m_hits = FindInManual(*m_pages, m_words->text().trimmed());
    m_hitOrder.clear();
    for (qsizetype page = 0; page < m_hits.size(); ++page)
        for (qsizetype place = 0; place < m_hits[page].places.size(); ++place)
            m_hitOrder.append({page, place});
    m_hit = -1;
    FillHits();
    m_lists->setCurrentWidget(m_words->text().trimmed().isEmpty() ? m_contents : m_hitList);
    MarkHits();
    ShowCount();
    EnableCommands();
}

void ManualWindow::FillHits()
{
    const QScopedValueRollback<bool> selecting(m_isSelecting, true);
    m_hitList->clear();
    qsizetype number = 0;
    const int length = static_cast<int>(m_words->text().trimmed().size());
    for (const ManualHits& hits : std::as_const(m_hits)) {
        auto* page =
            MakeItem(u"%1（%2 处）"_s.arg(hits.page->title).arg(hits.places.size()), hits.page->path, {});
        page->setData(0, HitData, number);
        for (const int place : hits.places) {
            auto* hit = MakeItem(LineAround(*hits.page, place, length), hits.page->path, {});
            hit->setData(0, HitData, number++);
            page->addChild(hit);
        }
        m_hitList->addTopLevelItem(page);
    }
    m_hitList->expandAll();
}

void ManualWindow::GoToHit(qsizetype number)
{
    m_hit = number;
    const auto [page, place] = m_hitOrder[number];
    const Visit here = Here();
    ShowPage(m_hits[page].page->path);
    if (here.path != m_path) {
        m_past.append(here);
        m_future.clear();
    }
    {
        const QScopedValueRollback<bool> selecting(m_isSelecting, true);
        QTreeWidgetItem* item = m_hitList->topLevelItem(static_cast<int>(page));
        if (m_hitList->currentItem() != item || place > 0)
            m_hitList->setCurrentItem(item->child(static_cast<int>(place)));
    }
    ShowCount();
    EnableCommands();
}

void ManualWindow::StepHit(int step)
{
    if (m_hitOrder.isEmpty()) return;
    const qsizetype count = m_hitOrder.size();
    const qsizetype from = m_hit < 0 && step < 0 ? 0 : m_hit;
    GoToHit((from + step + count) % count);
}

void ManualWindow::MarkHits()
{
    const int length = static_cast<int>(m_words->text().trimmed().size());
    for (qsizetype i = 0; i < m_hits.size(); ++i) {
        if (m_hits[i].page->path != m_path) continue;
        const bool isHere = m_hit >= 0 && m_hitOrder[m_hit].first == i;
        return m_view->MarkPlaces(m_hits[i].places, length, isHere ? m_hitOrder[m_hit].second : -1);
    }
    m_view->MarkPlaces({}, 0, -1);
}

void ManualWindow::ShowCount()
{
    if (m_words->text().trimmed().isEmpty())
        m_count->clear();
    else if (m_hitOrder.isEmpty())
        m_count->setText(u"没有查到"_s);
    else if (m_hit < 0)
        m_count->setText(u"%1 处"_s.arg(m_hitOrder.size()));
    else
        m_count->setText(u"第 %1 处，共 %2 处"_s.arg(m_hit + 1).arg(m_hitOrder.size()));
}

void ManualWindow::SelectInContents()
{
    const QScopedValueRollback<bool> selecting(m_isSelecting, true);
    QTreeWidgetItem* chapter = nullptr;
    for (QTreeWidgetItem* item = m_contents->topLevelItem(0); item != nullptr;
         item = m_contents->itemBelow(item)) {
        if (item->data(0, PathData).toString() != m_path) continue;
        if (item->data(0, AnchorData).toString() == m_anchor) return m_contents->setCurrentItem(item);
        if (chapter != nullptr) continue;
        chapter = item;
        if (item->isExpanded()) continue;
        m_contents->collapseAll();
        for (QTreeWidgetItem* around = item; around != nullptr; around = around->parent())
            around->setExpanded(true);
    }
    if (chapter != nullptr) m_contents->setCurrentItem(chapter);
}

void ManualWindow::EnableCommands()
{
    m_back->setEnabled(!m_past.isEmpty());
    m_forward->setEnabled(!m_future.isEmpty());
    m_next->setEnabled(!m_hitOrder.isEmpty());
    m_previous->setEnabled(!m_hitOrder.isEmpty());
}

void ManualWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    windowHandle()->installEventFilter(this);
}

bool ManualWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == windowHandle() && event->type() == QEvent::WindowBlocked)
        QTimer::singleShot(0, this, [this] { StandBesideModalWindow(); });
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched == m_words && isKey && TakeSearchKey(static_cast<QKeyEvent&>(*event))) return true;
    return QWidget::eventFilter(watched, event);
}

// Esc empties the field first and closes the window then, which a shortcut would do at once.
bool ManualWindow::TakeSearchKey(QKeyEvent& event)
{
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const bool empties = event.key() == Qt::Key_Escape && !m_words->text().isEmpty();
    if (!isReturn && !empties) return false;
    event.accept();
    if (event.type() == QEvent::ShortcutOverride) return true;
    if (empties)
        m_words->clear();
    else
        StepHit(event.modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    return true;
}

/// A modal window keeps the user from all windows but those that belong to it, and so this one has to.
void ManualWindow::StandBesideModalWindow()
{
    const QWidget* modal = QApplication::activeModalWidget();
    if (windowHandle() == nullptr || modal == nullptr || modal->windowHandle() == nullptr) return;
    windowHandle()->setTransientParent(modal->windowHandle());
}

} // namespace editor
