#include "embedded/windows/ItemPane.h"

#include "embedded/windows/ItemTable.h"
#include "embedded/windows/SearchField.h"

#include <QtCore/QItemSelectionModel>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

/// No position, and not -1 either, which stands for no item: whatever is selected next is a change.
constexpr int Undecided = -2;

} // namespace

ItemPane::ItemPane(const CString& searchLabel, const CString& listName, SearchIn searchIn, QWidget* parent)
    : QWidget(parent), m_searchIn(searchIn), m_table(new ItemTable(this)),
      m_search(new SearchField(*m_table, this)), m_count(new QLabel(this)), m_searchLine(new QHBoxLayout)
{
    auto* label = new QLabel(searchLabel, this);
    label->setBuddy(m_search);
    m_search->setAccessibleName(u"搜索"_s + listName);
    m_table->setAccessibleName(listName);
    m_table->setModel(&m_model);
    m_table->SizeColumns();
    // Wide enough for any number, so that the field keeps its width while the user types.
    m_count->setMinimumWidth(m_count->fontMetrics().horizontalAdvance(u"00000 条"_s));
    m_count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_searchLine->addWidget(label);
    m_searchLine->addWidget(m_search, 1);
    m_searchLine->addWidget(m_count);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addLayout(m_searchLine);
    layout->addWidget(m_table, 1);
    setTabOrder(m_search, m_table);
    connect(m_search, &QLineEdit::textChanged, this, [this] { Refresh(); });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { CurrentChanged(); });
}

ItemPane::~ItemPane() = default;

void ItemPane::OnPicked(std::function<void()> handler)
{
    m_table->OnPicked(std::move(handler));
}

void ItemPane::SetItems(std::vector<PickerItem> items)
{
    {
        const QSignalBlocker quiet(m_search);
        m_search->clear();
    }
    m_scope.reset();
    m_current = Undecided;
    m_model.SetItems(std::move(items));
    Refresh();
}

void ItemPane::SetScope(SearchIndex::Scope scope)
{
    m_scope = std::move(scope);
    Refresh();
}

void ItemPane::ClearSearch()
{
    m_search->clear();
}

void ItemPane::FocusSearch()
{
    m_search->setFocus();
}

const PickerItem* ItemPane::Current() const
{
    return m_current < 0 ? nullptr : &m_model.Items()[static_cast<std::size_t>(m_current)];
}

void ItemPane::Refresh()
{
    const CString query = m_search->text();
    const bool everywhere = m_searchIn == SearchIn::Everything && !query.trimmed().isEmpty();
    const int former = m_current;
    m_model.Show(everywhere ? SearchIndex::Scope() : m_scope, query);
    m_count->setText(u"%1 条"_s.arg(m_model.rowCount()));
    // What was selected stays selected when it is still there.
    const int row = m_model.RowOf(former);
    const int column = qMax(m_table->currentIndex().column(), 0);
    m_table->setCurrentIndex(m_model.index(qMax(row, 0), column));
    CurrentChanged();
}

void ItemPane::CurrentChanged()
{
    const int item = m_model.ItemAt(m_table->currentIndex().row());
    if (item == m_current) return;
    m_current = item;
    m_selected();
}

} // namespace embedded
