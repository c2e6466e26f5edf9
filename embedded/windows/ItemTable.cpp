#include "embedded/windows/ItemTable.h"

#include "embedded/windows/ItemModel.h"
#include "embedded/windows/TipDelegate.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHeaderView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

/// The narrowest name column, in characters of Chinese text.
constexpr int NameCharacters = 12;

} // namespace

ItemTable::ItemTable(QWidget* parent) : QTableView(parent)
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    // Names of neighbouring items often differ at their end only.
    setTextElideMode(Qt::ElideMiddle);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setCornerButtonEnabled(false);
    setItemDelegate(new TipDelegate(this));
    // Rows of one height: the header then need not ask for thousands of them.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
}

void ItemTable::SizeColumns()
{
    const QFontMetrics metrics(font());
    const int margin = metrics.height();
    const auto width = [&](const QString& sample, int column) {
        const QString title = model()->headerData(column, Qt::Horizontal).toString();
        return std::max(metrics.horizontalAdvance(sample), metrics.horizontalAdvance(title)) + margin;
    };
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(metrics.height() + metrics.height() / 2);
    QHeaderView& header = *horizontalHeader();
    header.resizeSection(ItemModel::Number, width(u"0000000000"_s, ItemModel::Number));
    header.resizeSection(ItemModel::Name, metrics.horizontalAdvance(u'名') * NameCharacters);
    header.resizeSection(ItemModel::Unit, width(u"100m2"_s, ItemModel::Unit));
    header.resizeSection(ItemModel::Rule, width(u"风管展开面积"_s, ItemModel::Rule));
    header.resizeSection(ItemModel::Annex, width({}, ItemModel::Annex));
    header.setSectionResizeMode(ItemModel::Name, QHeaderView::Stretch);
    header.setMinimumSectionSize(width({}, ItemModel::Unit));
}

QSize ItemTable::sizeHint() const
{
    const QFontMetrics metrics(font());
    constexpr int Lines = 12;
    return {metrics.horizontalAdvance(u'名') * 3 * NameCharacters, metrics.height() * Lines};
}

void ItemTable::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QTableView::keyPressEvent(event);
        return;
    }
    if (currentIndex().isValid()) m_picked();
}

void ItemTable::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTableView::mouseDoubleClickEvent(event);
    const bool onItem = indexAt(event->position().toPoint()).isValid();
    if (event->button() == Qt::LeftButton && onItem) m_picked();
}

void ItemTable::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && model() != nullptr) SizeColumns();
}

} // namespace embedded
