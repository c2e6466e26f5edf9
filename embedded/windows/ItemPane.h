#pragma once

#include "embedded/windows/ItemModel.h"

#include <QtWidgets/QWidget>

#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;

namespace embedded {

class ItemTable;
class SearchField;

/// A list of items under its search field. One item is always selected while any is shown.
class ItemPane : public QWidget
{
public:
    /// What a search looks at while the list is narrowed to a scope.
    enum class SearchIn { Everything, Scope };

    /// `searchLabel` is the caption of the search field, `listName` the name of the list for screen readers.
    ItemPane(const CString& searchLabel, const CString& listName, SearchIn searchIn,
             QWidget* parent = nullptr);
    ~ItemPane() override;

    /// Runs when the user picks the selected item.
    void OnPicked(std::function<void()> handler);
    /// Runs when another item, or none, has become the selected one, and after every `SetItems`.
    void OnSelected(std::function<void()> handler) { m_selected = std::move(handler); }

    /// Replaces the items; search and scope are emptied.
    void SetItems(std::vector<PickerItem> items);
    const std::vector<PickerItem>& Items() const noexcept { return m_model.Items(); }
    /// Narrows the list to these positions in `Items()`.
    void SetScope(SearchIndex::Scope scope);
    void ClearSearch();
    void FocusSearch();

    /// The selected item; null when there is none. Lives until the next `SetItems`.
    const PickerItem* Current() const;

    /// The line of the search field, for controls that belong beside it.
    QHBoxLayout& SearchLine() noexcept { return *m_searchLine; }

private:
    void Refresh();
    void CurrentChanged();

    ItemModel m_model;
    SearchIndex::Scope m_scope;
    SearchIn m_searchIn;
    int m_current = -1;
    std::function<void()> m_selected = [] {};
    ItemTable* m_table;
    SearchField* m_search;
    QLabel* m_count;
    QHBoxLayout* m_searchLine;
};

} // namespace embedded
