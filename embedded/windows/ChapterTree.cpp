#include "embedded/windows/ChapterTree.h"

#include "widgets/TipDelegate.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHeaderView>

#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

constexpr int PositionRole = Qt::UserRole;
constexpr int WholeLibrary = -1;

int PositionOf(const QTreeWidgetItem& item)
{
    return item.data(0, PositionRole).toInt();
}

void Collect(const QTreeWidgetItem& item, std::vector<int>& positions)
{
    positions.push_back(PositionOf(item));
    for (int child = 0; child < item.childCount(); ++child)
        Collect(*item.child(child), positions);
}

} // namespace

ChapterTree::ChapterTree(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setItemDelegate(new widgets::TipDelegate(this));
    setAccessibleName(u"章节"_s);
}

void ChapterTree::OnSelected(std::function<void()> handler)
{
    connect(this, &QTreeWidget::currentItemChanged, this,
            [run = std::move(handler)](const QTreeWidgetItem* item) {
                if (item != nullptr) run();
            });
}

void ChapterTree::OnClicked(std::function<void()> handler)
{
    connect(this, &QTreeWidget::itemClicked, this, [run = std::move(handler)] { run(); });
}

void ChapterTree::SetChapters(const CString& title, const std::vector<Chapter>& chapters)
{
    {
        const QSignalBlocker quiet(this);
        clear();
        m_items.clear();
        m_count = chapters.size();
        auto* root = new QTreeWidgetItem(this, {title});
        root->setData(0, PositionRole, WholeLibrary);
        for (std::size_t position = 0; position < chapters.size(); ++position) {
            const Chapter& chapter = chapters[position];
            auto* item = new QTreeWidgetItem(m_items.value(chapter.parent, root),
                                             {chapter.code + u' ' + chapter.title});
            item->setData(0, PositionRole, static_cast<int>(position));
            m_items.insert(chapter.key, item);
        }
        root->setExpanded(true);
    }
    setCurrentItem(topLevelItem(0));
}

bool ChapterTree::Select(const CString& key)
{
    QTreeWidgetItem* const item = m_items.value(key);
    if (item == nullptr) return false;
    const bool seen = viewport()->rect().contains(visualItemRect(item));
    setCurrentItem(item);
    // With its neighbours around it; one that was seen stays where the eye has found it.
    if (!seen) scrollToItem(item, PositionAtCenter);
    return true;
}

SearchIndex::Scope ChapterTree::SelectedChapters() const
{
    const QTreeWidgetItem* const item = currentItem();
    if (item == nullptr || PositionOf(*item) == WholeLibrary) return std::nullopt;
    std::vector<int> positions;
    Collect(*item, positions);
    return positions;
}

} // namespace embedded
