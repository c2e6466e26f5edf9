#pragma once

#include "tree/QdDeRecords.h"

/// Records of items of which a test only looks at the number.
namespace test {

/// A bill item of that number; every other field is empty.
inline QdStruct Qd(const CString& number)
{
    QdStruct record;
    record.strQdId = number;
    return record;
}

/// A quota item of that number; every other field is empty.
inline DeStruct De(const CString& number)
{
    DeStruct record;
    record.strDeId = number;
    return record;
}

} // namespace test
