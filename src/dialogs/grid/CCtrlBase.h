#pragma once

#include "platform/Text.h"

/// The commands that a container can give to any of its controls. The order of declaration is the order in
/// which containers know them. A control that does not override a command does not support it: nothing
/// happens, and the answer is 0 or false.
class CCtrlBase
{
public:
    virtual ~CCtrlBase() = default;

    virtual int New(CStringArray*) { return 0; }
    virtual bool Del(CStringArray*) { return false; }
    virtual bool Change(CStringArray*) { return false; }
    virtual bool SelChange(CStringArray*) { return false; }
    virtual bool Copy(CStringArray*) { return false; }
    virtual bool Move(CStringArray*) { return false; }
    virtual bool MoveUp(CStringArray*) { return false; }
    virtual bool MoveDown(CStringArray*) { return false; }
};
