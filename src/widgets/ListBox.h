#pragma once

#include <QtWidgets/QListWidget>

#include <functional>

namespace widgets {

/// A list box with one selected entry, none of them edited in place, each high enough for Chinese. Once an
/// entry is selected the user can select another, but not none.
class ListBox : public QListWidget
{
public:
    explicit ListBox(QWidget* parent = nullptr);

    /// Runs `handler` after another entry has been selected, once per handler that was given: by mouse, keys
    /// or assistive technology, and from code unless that blocks the signals of the list, as `SetCurSel`
    /// does.
    void OnSelected(std::function<void()> handler);

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
};

} // namespace widgets
