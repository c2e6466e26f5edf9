#pragma once

#include <QtCore/QByteArray>

/// The rules that the journeys leave in the file, as XML.
namespace test {

/// The rule of `EditorTest::AddRangeRule` without items, with bill and quota of `PickBillWithQuota`, and with
/// the quota of `PickQuota`.
QByteArray BareRule();
QByteArray BillRule();
QByteArray QuotaRule();

/// A rule file with a second rule of 给水管 added before its default rule.
QByteArray WithRule(QByteArray file, const QByteArray& rule);

} // namespace test
