#pragma once

#include <QtWidgets/QTableView>

#include <functional>

namespace embedded {

/// The table in which one item at a time is selected, and picked by Enter or a double click. Typing goes to
/// the next item that begins with what is typed, in the column of the cursor.
class ItemTable : public QTableView
{
public:
    explicit ItemTable(QWidget* parent = nullptr);

    /// Runs when the user picks the selected item.
    void OnPicked(std::function<void()> handler) { m_picked = std::move(handler); }

    /// To be called once the model is set.
    void SizeColumns();

    QSize sizeHint() const override;
    /// Room for number and name, and for some rows.
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// Gives the names the room that the other columns leave, but never less than they need: in a narrow
    /// window the columns at the right are scrolled to instead.
    void StretchNames();

    std::function<void()> m_picked = [] {};
};

} // namespace embedded
