#pragma once

#include "dialogs/grid/CGridCtrl.h"

/// A grid with a say in what the Enter key does. Enter never leaves the grid, so it presses no button of the
/// dialog around it and does not close it.
class CEnterGrid : public CGridCtrl
{
    Q_OBJECT

public:
    explicit CEnterGrid(CWnd* parent = nullptr);

    /// Whether Enter moves on to the next cell, at the end of a row to the next row. It does at first.
    /// Otherwise Enter only ends an edit.
    void SetAutoEnterNext(bool enable) { m_autoEnterNext = enable; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool m_autoEnterNext = true;
};
