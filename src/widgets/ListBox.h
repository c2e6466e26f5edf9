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

    /// Runs `handler` after another entry has been selected, once per handler that was given. The base tells
    /// of selections from code, too, unless the signals of the list are blocked as `SetCurSel` does.
    virtual void OnSelected(std::function<void()> handler);

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
};

} // namespace widgets
