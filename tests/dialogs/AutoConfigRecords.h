#pragma once

#include "host/Records.h"
#include "support/PrintText.h"
#include "tree/CPath.h"
#include "tree/ConfigNode.h"

/// Rules and items of the main dialog's tests, and how they read in an expectation.
namespace test::autoconfig {

/// The 给水管 of the standard catalogue; its default rule has the id 1.
inline constexpr CPath WaterPipes{1, 11, 111, 1, 0, 0, 0, 0};
inline constexpr CPath DrainPipes{1, 11, 112, 1, 0, 0, 0, 0};

/// A condition on the value page, as the presenter takes it.
CStringArray ValueCondition(const CString& attribute, const CString& value);
/// Items of the standard libraries with that number; the other fields follow from it.
QdStruct Bill(const CString& number);
DeStruct Quota(const CString& number, SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode);

/// A rule as "id conditions [bill(quota,quota) bill] quota quota", by the items' numbers.
CString Described(const ConfigNode& rule);
/// All fields of a record in file order, joined by bars.
CString Texts(const QdStruct& record);
CString Texts(const DeStruct& record);

} // namespace test::autoconfig
