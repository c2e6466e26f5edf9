#include "embedded/windows/PickerWindow.h"

#include "embedded/windows/ChapterTree.h"
#include "embedded/windows/ItemPane.h"
#include "embedded/windows/WindowPlacement.h"
#include "host/UserMessage.h"
#include "widgets/WindowFrame.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

/// The window before a person has sized it, in heights of a line of text, and the width down to which it
/// makes room for its neighbour.
constexpr QSize WindowInLines(36, 54);
constexpr int NarrowestInLines = 18;
/// Percentages of the window's height: what stands above the second list, and in it the chapters. They stand
/// above the items and not beside them, since beside the dialog there is height but little width.
constexpr int UpperShare = 66;
constexpr int ChapterShare = 28;

} // namespace

PickerWindow::PickerWindow(QWidget& parent, const LibraryContents& contents,
                           std::shared_ptr<PickerMemory> memory)
    : QDialog(&parent), m_contents(contents), m_memory(std::move(memory)), m_content(new QWidget(this)),
      m_lists(new QSplitter(Qt::Vertical, m_content)),
      m_chapterSplitter(new QSplitter(Qt::Vertical, m_lists)), m_chapters(new ChapterTree(m_chapterSplitter)),
      m_mainPane(new ItemPane(u"搜索(&F):"_s, u"项目"_s, ItemPane::SearchIn::Everything, m_chapterSplitter)),
      m_pickButtons(new QWidget(this)), m_buttonLine(new QHBoxLayout)
{
    m_chapterSplitter->setStretchFactor(1, 1);
    m_chapterSplitter->setChildrenCollapsible(false);
    m_lists->setChildrenCollapsible(false);
    auto* content = new QVBoxLayout(m_content);
    content->setContentsMargins({});
    content->addWidget(m_lists, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_content, 1);
    layout->addLayout(m_buttonLine);
    m_buttonLine->addWidget(m_pickButtons);
    m_buttonLine->addStretch();
    setSizeGripEnabled(true);
    m_chapters->OnSelected([this] { ShowChapter(); });
    m_chapters->OnClicked([this] { m_mainPane->ClearSearch(); });
}

PickerWindow::~PickerWindow()
{
    if (isVisible()) Remember();
}

void PickerWindow::Finish(std::initializer_list<QWidget*> buttons)
{
    auto* picking = new QHBoxLayout(m_pickButtons);
    picking->setContentsMargins({});
    for (QWidget* button : buttons)
        picking->addWidget(button);
    auto* close = new QPushButton(u"关闭(&C)"_s, this);
    m_buttonLine->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::hide);
    // Enter picks; no button may take it.
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setAutoDefault(false);
    const int line = fontMetrics().height();
    resize(m_memory->size.isValid() ? m_memory->size : WindowInLines * line);
    m_lists->setSizes({UpperShare * height() / 100, (100 - UpperShare) * height() / 100});
    m_chapterSplitter->setSizes(
        {ChapterShare * height() / 100, (UpperShare - ChapterShare) * height() / 100});
    m_lists->restoreState(m_memory->lists);
    m_chapterSplitter->restoreState(m_memory->chapters);
    m_mainPane->FocusSearch();
}

void PickerWindow::SelectChapter(const CString& key)
{
    if (m_chapters->Select(key)) m_mainPane->ClearSearch();
}

void PickerWindow::EnableContent(bool enable)
{
    m_content->setEnabled(enable);
    m_pickButtons->setEnabled(enable);
}

void PickerWindow::PlaceBesideWindow(QWidget& neighbour)
{
    create(); // before that the window has no frame that could be waited for
    // A window that is just coming up does not know its frame yet. It will be like that of its neighbour.
    const QMargins known = widgets::FrameOf(*this);
    const QMargins frame = known.isNull() ? widgets::FrameOf(neighbour) : known;
    // A size that a former place allowed is not the one that was wanted.
    if (size() != m_placed) m_wanted = size();
    const int narrowest = std::max(NarrowestInLines * fontMetrics().height(), minimumSizeHint().width());
    const QRect stands = widgets::OuterGeometry(neighbour);
    const QSize wanted = m_wanted.expandedTo(minimumSizeHint()).grownBy(frame);
    const int least = narrowest + frame.left() + frame.right();
    const QRect screen = neighbour.screen()->availableGeometry();
    const WindowPlaces places = neighbour.isWindow()
                                    ? PlaceBeside(stands, wanted, least, screen)
                                    : PlaceBesidePart({neighbour.mapToGlobal(QPoint()), neighbour.size()},
                                                      stands, wanted, least, screen);
    const QPoint way = places.neighbour.topLeft() - stands.topLeft();
    if (QWindow* window = neighbour.window()->windowHandle(); window != nullptr && !way.isNull())
        window->setPosition(window->position() + way);
    m_place = places.window;
    TakePlace(frame);
    // While the frame was being made the window system may have taken the place for that of the inside. The
    // window is brought back where it then stands elsewhere, but never under the user's mouse.
    widgets::WhenFrameIsKnown(*this, [this] {
        if (widgets::OuterGeometry(*this) != m_place) TakePlace(widgets::FrameOf(*this));
    });
}

void PickerWindow::TakePlace(const QMargins& frame)
{
    resize(m_place.size().shrunkBy(frame));
    m_placed = size();
    widgets::MoveFrameTo(*this, m_place.topLeft());
}

void PickerWindow::hideEvent(QHideEvent* event)
{
    Remember();
    QDialog::hideEvent(event);
}

void PickerWindow::Remember()
{
    m_memory->size = size() == m_placed ? m_wanted : size();
    m_memory->chapters = m_chapterSplitter->saveState();
    m_memory->lists = m_lists->saveState();
}

void PickerWindow::SendQuota(const PickerItem& quota)
{
    const SPickedDe record{quota.unitCode, quota.withAnnex, quota.number,
                           quota.name,     quota.unit,      quota.calRule};
    Send(host::DePickedMessage, &record);
}

void PickerWindow::Send(int code, const void* record)
{
    // The receiver may ask for a bill number in a window of its own, behind which it becomes the active one.
    // Who picks goes on picking.
    const QPointer<PickerWindow> self(this);
    const bool wasActive = isActiveWindow();
    host::UserMessage message(code, record);
    QCoreApplication::sendEvent(parentWidget(), &message);
    if (self && wasActive && isVisible()) activateWindow();
}

void PickerWindow::ShowChapter()
{
    const SearchIndex::Scope chapters = m_chapters->SelectedChapters();
    if (!chapters) {
        m_mainPane->SetScope(std::nullopt);
        return;
    }
    std::vector<bool> shown(m_chapters->ChapterCount());
    for (const int chapter : *chapters)
        shown[static_cast<std::size_t>(chapter)] = true;
    const std::vector<PickerItem>& items = m_mainPane->Items();
    std::vector<int> scope;
    for (std::size_t item = 0; item < items.size(); ++item) {
        if (shown[static_cast<std::size_t>(items[item].chapter)]) scope.push_back(static_cast<int>(item));
    }
    m_mainPane->SetScope(std::move(scope));
}

} // namespace embedded
