#pragma once

#include "dialogs/grid/CCtrlBase.h"
#include "dialogs/grid/CEnterGrid.h"

/// A grid that a container of controls can command.
class CNvGridCtrl : public CEnterGrid, public CCtrlBase
{
    Q_OBJECT

public:
    explicit CNvGridCtrl(CWnd* parent = nullptr);
    ~CNvGridCtrl() override;
};
