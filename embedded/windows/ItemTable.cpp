#include "embedded/windows/ItemTable.h"

#include "embedded/windows/ItemModel.h"
#include "widgets/TextMetrics.h"
#include "widgets/TipDelegate.h"

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
    setItemDelegate(new widgets::TipDelegate(this));
    // Rows of one height: the header then need not ask for thousands of them.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (column != ItemModel::Name) StretchNames();
    });
}

void ItemTable::SizeColumns()
{
    const QFontMetrics metrics(font());
    const auto width = [&](const QString& sample, int column) {
        const QString title = model()->headerData(column, Qt::Horizontal).toString();
        return std::max(widgets::ColumnWidth(metrics, sample), widgets::ColumnWidth(metrics, title));
    };
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(metrics.height() + metrics.height() / 2);
    QHeaderView& header = *horizontalHeader();
    header.resizeSection(ItemModel::Number, width(u"0000000000"_s, ItemModel::Number));
    header.resizeSection(ItemModel::Unit, width(u"100m2"_s, ItemModel::Unit));
    header.resizeSection(ItemModel::Rule, width(u"风管展开面积"_s, ItemModel::Rule));
    header.resizeSection(ItemModel::Annex, width({}, ItemModel::Annex));
    header.setSectionResizeMode(ItemModel::Name, QHeaderView::Fixed);
    header.setMinimumSectionSize(width({}, ItemModel::Unit));
    StretchNames();
}

void ItemTable::StretchNames()
{
    QHeaderView& header = *horizontalHeader();
    const int others = header.length() - header.sectionSize(ItemModel::Name);
    const int needed = widgets::ChineseWidth(QFontMetrics(font()), NameCharacters);
    header.resizeSection(ItemModel::Name, std::max(viewport()->width() - others, needed));
}

void ItemTable::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    if (model() != nullptr) StretchNames();
}

QSize ItemTable::sizeHint() const
{
    const QFontMetrics metrics(font());
    constexpr int Lines = 12;
    return {widgets::ChineseWidth(metrics, 3 * NameCharacters), metrics.height() * Lines};
}

QSize ItemTable::minimumSizeHint() const
{
    const QFontMetrics metrics(font());
    constexpr int Lines = 7;
    return {widgets::ChineseWidth(metrics, 2 * NameCharacters), metrics.height() * Lines};
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
