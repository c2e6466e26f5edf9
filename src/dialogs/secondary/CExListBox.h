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

protected:
    bool viewportEvent(QEvent* event) override;

private:
    void ShowTip(const QPoint& point, const QPoint& screenPoint);
};
