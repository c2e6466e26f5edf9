#include "dialogs/grid/CNvGridCtrl.h"

CNvGridCtrl::CNvGridCtrl(CWnd* parent) : CEnterGrid(parent) {}

CNvGridCtrl::~CNvGridCtrl() = default;
