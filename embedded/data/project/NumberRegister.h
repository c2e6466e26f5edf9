#pragma once

#include "host/Records.h"

namespace embedded {

/// A register of bill numbers that several projects share, so that no two of them give one number to
/// different items. A number is claimed while a dialog that may propose it is open, and kept when it was
/// taken. Raises nothing: a register that cannot be reached knows no numbers and claims none.
class NumberRegister
{
public:
    virtual ~NumberRegister();

    /// The items of a base number that others and this project have taken or claim, in the order of their
    /// numbers.
    virtual CArray<SQdInfo> Find(const CString& library, const CString& base) = 0;
    /// Claims numbers for this project, all or none; gives up what it had claimed and not kept before. False
    /// when another project has one of them: `Find` tells it then. True when the register cannot be reached.
    virtual bool Claim(const CString& library, const CArray<SQdInfo>& items) = 0;
    /// Keeps a claimed number for good, and gives up the other claims.
    virtual void Keep(const CString& library, const SQdInfo& item) = 0;
    /// Gives up every claim that was not kept.
    virtual void Release() = 0;
};

} // namespace embedded
