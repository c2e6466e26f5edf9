#pragma once

#include "platform/Text.h"

#include <utility>

/// The plain records that pass between the module and its host. All texts are value types; nothing here owns
/// anything else.

/// Id of a specialty. The last field of each id record is the level's own id, a decimal number as text; the
/// others are the host's affair and are only carried along.
struct SNvKtSpecId
{
    CString strSpecId;
};

/// Id of a big category.
struct SNvKtBigCategoryId
{
    CString strSpecId;
    CString strBigCategoryId;
};

/// Id of a small category.
struct SNvKtSmallCategoryId
{
    CString strSpecId;
    CString strBigCategoryId;
    CString strSmallCategoryId;
};

struct SQdDeInfo
{
    /// The mode of a project. Some code tests for 0 and some for 1, so a host that knows further values
    /// must read what each place says.
    enum EQdDeMode : int {
        BillMode = 0,  ///< rules hold bill items, and those hold quota items
        QuotaMode = 1, ///< rules hold quota items
    };
};

/// A bill item of the host's bill library or history.
struct SQdInfo
{
    int nReserved = 0;   ///< not read by the module
    int nUnitCode = 0;   ///< the unit code
    int nWithAnnex = 0;  ///< not 0: the quantity includes pipe fittings
    CString strNumber;   ///< the bill number
    CString strName;     ///< the name
    CString strUnit;     ///< the unit
    CString strCalRule;  ///< the calculation rule
    CString strFeatures; ///< not read by the module
    CString strContents; ///< not read by the module
};

/// A calculation item's description. The module reads `strRule` only.
struct RuleCodeStruct
{
    CString strCode;
    int nKind = 0;
    CString strRule;
    CString strName;
};

/// What the bill picker sends with message 0x450. The module reads `strNumber` only. Stays the sender's.
struct SPickedQd
{
    int nReserved = 0;
    int nUnitCode = 0;
    int nWithAnnex = 0;
    CString strNumber;
};

/// What either picker sends with message 0x446. Stays the sender's.
struct SPickedDe
{
    int nUnitCode = 0;  ///< the unit code
    int nWithAnnex = 0; ///< not 0: the quantity includes pipe fittings
    CString strNumber;  ///< the quota number
    CString strName;
    CString strUnit;
    CString strCalRule; ///< the calculation rule
};

/// The version of the program, opaque to the module but for its text.
class CNvKtVersion
{
public:
    CNvKtVersion() = default;
    explicit CNvKtVersion(CString text) : m_text(std::move(text)) {}
    /// The version as text; may be empty.
    CString ToString() const { return m_text; }

private:
    CString m_text;
};
