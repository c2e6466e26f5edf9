#pragma once

#include "host/Roles.h"
#include "platform/Export.h"

using host::CellData;

namespace APCellData {

/// Value sources of attributes.
class KTQDDE_EXPORT CellDataFactory
{
public:
    CellDataFactory() = delete;
    /// The value source of an attribute code, to be given back with `Release`; null when the code is unknown.
    static CellData* Create(const CString& code);
    /// Frees what `Create` gave; null is allowed.
    static void Release(CellData* cell);
};

} // namespace APCellData
