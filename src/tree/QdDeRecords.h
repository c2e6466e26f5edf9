#pragma once

#include "platform/Text.h"

#include <QtCore/QStringView>

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
};

/// One field of a record under the name that it has in files.
template <typename Record>
struct RecordField
{
    QStringView name;
    CString Record::*field;
};

/// The fields in the order in which they are written.
inline constexpr std::array<RecordField<QdStruct>, 9> QdFields{{
    {u"strQdId", &QdStruct::strQdId},
    {u"strQdIdUser", &QdStruct::strQdIdUser},
    {u"strName", &QdStruct::strName},
    {u"strUnit", &QdStruct::strUnit},
    {u"strUnitCode", &QdStruct::strUnitCode},
    {u"strtypeid", &QdStruct::strtypeid},
    {u"strQdCode", &QdStruct::strQdCode},
    {u"strFormula", &QdStruct::strFormula},
    {u"strAnnex", &QdStruct::strAnnex},
}};

inline constexpr std::array<RecordField<DeStruct>, 7> DeFields{{
    {u"strName", &DeStruct::strName},
    {u"strUnit", &DeStruct::strUnit},
    {u"strUnitCode", &DeStruct::strUnitCode},
    {u"strDeId", &DeStruct::strDeId},
    {u"strDeCode", &DeStruct::strDeCode},
    {u"strFormula", &DeStruct::strFormula},
    {u"strAnnex", &DeStruct::strAnnex},
}};
