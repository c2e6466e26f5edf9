#pragma once

#include "host/Records.h"
#include "platform/Export.h"
#include "platform/Text.h"
#include "tree/QdDeRecords.h"

#include <optional>

/// What a rule keeps of an item that a person picks from a library: the fields that the library knows, the
/// code of the library, and a formula.

/// The formula that an item without a calculation rule gets: the rule of the category's first calculation
/// item, empty when the host does not know it. Nothing for a category without calculation items. The category
/// is told by its full text; the host is asked.
KTQDDE_EXPORT std::optional<CString> CategoryFormula(const CString& categoryText);

/// The record of a bill item under `number`, which may have another suffix than the library's. `library` is
/// the code of the bill library. A calculation rule of the item's own comes before `formula`.
KTQDDE_EXPORT QdStruct RecordOf(const SQdInfo& bill, const CString& number, const CString& library,
                                const CString& formula);

/// The record of a quota item of the quota library of that code.
KTQDDE_EXPORT DeStruct RecordOf(const SPickedDe& quota, const CString& library, const CString& formula);

/// The unit code of a unit that a person has typed: its leading number, as in "10m", at least 1.
KTQDDE_EXPORT CString UnitCodeOf(const CString& unit);
