#pragma once

#include "platform/Text.h"

#include <array>

/// The values of a bill item, all as text. Each field's name is also the name of its XML attribute.
struct QdStruct
{
    CString strQdId;     ///< the bill number
    CString strQdIdUser; ///< only a file can bring a value; the next edit of the row loses it
    CString strName;     ///< the bill's name
    CString strUnit;     ///< the unit
    CString strUnitCode; ///< a decimal number: of the library's record, after an edit the unit's leading
                         ///< number, at least 1
    CString strtypeid;   ///< as `strQdIdUser`
    CString strQdCode;   ///< code of the bill library that the item comes from; others are kept but not shown
    CString strFormula;  ///< the quantity formula
    CString
        strAnnex; ///< "是" or "否": with pipe fittings; empty when read back from a grid without that column

    bool operator==(const QdStruct&) const = default;
};

/// The values of a quota item, all as text. Mind that the order differs from `QdStruct`: the number comes
/// fourth.
struct DeStruct
{
    CString strName;     ///< the quota item's name
    CString strUnit;     ///< the unit
    CString strUnitCode; ///< as in `QdStruct`
    CString strDeId;     ///< the quota number
    CString strDeCode;  ///< code of the quota library that the item comes from; others are kept but not shown
    CString strFormula; ///< the quantity formula
    CString strAnnex;   ///< as in `QdStruct`

    bool operator==(const DeStruct&) const = default;
};

/// One field of a record under the name that it has in files.
template <typename Record>
struct RecordField
{
    CString name;
    CString Record::*field;
};

/// The fields in the order in which they are written.
inline const std::array<RecordField<QdStruct>, 9> QdFields{{
    {QStringLiteral("strQdId"), &QdStruct::strQdId},
    {QStringLiteral("strQdIdUser"), &QdStruct::strQdIdUser},
    {QStringLiteral("strName"), &QdStruct::strName},
    {QStringLiteral("strUnit"), &QdStruct::strUnit},
    {QStringLiteral("strUnitCode"), &QdStruct::strUnitCode},
    {QStringLiteral("strtypeid"), &QdStruct::strtypeid},
    {QStringLiteral("strQdCode"), &QdStruct::strQdCode},
    {QStringLiteral("strFormula"), &QdStruct::strFormula},
    {QStringLiteral("strAnnex"), &QdStruct::strAnnex},
}};

inline const std::array<RecordField<DeStruct>, 7> DeFields{{
    {QStringLiteral("strName"), &DeStruct::strName},
    {QStringLiteral("strUnit"), &DeStruct::strUnit},
    {QStringLiteral("strUnitCode"), &DeStruct::strUnitCode},
    {QStringLiteral("strDeId"), &DeStruct::strDeId},
    {QStringLiteral("strDeCode"), &DeStruct::strDeCode},
    {QStringLiteral("strFormula"), &DeStruct::strFormula},
    {QStringLiteral("strAnnex"), &DeStruct::strAnnex},
}};
