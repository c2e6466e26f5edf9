#pragma once

#include "platform/Text.h"
#include "widgets/ListBox.h"

/// A list box whose rows show their whole text in the platform's tool tip.
class CExListBox : public widgets::ListBox
{
    Q_OBJECT

public:
    explicit CExListBox(QWidget* parent = nullptr);

    /// The row that a tool tip at `point` of the viewport belongs to: the row there, or the nearest one when
    /// no row is there (below the last row, the last). -1 for an empty list. `rect`, if given, gets the row's
    /// rectangle.
    int ToolHitTest(const QPoint& point, QRect* rect = nullptr) const;
    /// The whole text of a row; empty when there is no such row.
    CString ToolText(int row) const;
    /// Runs `handler` at `UserSelected` only.
    void OnSelected(std::function<void()> handler) override;

signals:
    /// The user, by mouse or keys, has selected another row. A selection from code does not send it.
    void UserSelected();

protected:
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void ShowTip(const QPoint& point, const QPoint& screenPoint);
    bool m_userActs = false;
};
