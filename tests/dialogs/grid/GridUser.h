#pragma once

#include "dialogs/MyGridCtrl.h"
#include "support/HostGuard.h"

#include <QtWidgets/QWidget>

#include <vector>

namespace test {

/// A shown grid in a window of its own, what it told its parent, and what a user does at it.
class GridUser
{
public:
    static constexpr int Id = 50002;

    /// `attType` picks the column plan; `rows` data rows with the texts "r1c1", "r1c2", ... are added.
    explicit GridUser(int attType = 1, int rows = 5);

    MyGridCtrl& Grid() { return m_grid; }
    QWidget& Window() { return m_window; }
    MemoryHost& Host() { return m_host.Host(); }
    const std::vector<GridNotification>& Told() const { return m_told; }
    /// The notifications of a code.
    std::vector<GridNotification> Told(int code) const;

    void Click(int row, int col, Qt::KeyboardModifiers modifiers = {});
    void DoubleClick(int row, int col);
    /// Presses at one cell and releases at another.
    void Drag(GridCellId from, GridCellId to);
    /// Clicks the arrow of a choice cell.
    void ClickArrow(int row, int col);
    /// A key to whatever has the focus.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void Type(const CString& text);
    /// The open line of an in-place edit, null when there is none.
    QLineEdit* Line();
    /// The open choice list's entries; empty when none is open.
    CStringArray OpenChoices();
    /// Chooses an entry of the open choice list by mouse.
    void Choose(int entry);
    /// Lets queued work run.
    static void Settle();

    QRect RectOf(int row, int col);

private:
    HostGuard m_host;
    QWidget m_window;
    MyGridCtrl m_grid;
    std::vector<GridNotification> m_told;
};

/// What stands on the clipboard.
CString Clipboard();
void SetClipboard(const CString& text);

} // namespace test
