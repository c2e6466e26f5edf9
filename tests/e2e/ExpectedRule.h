#pragma once

#include <QtCore/QByteArray>

/// The rules that the journeys leave in the file, as XML.
namespace test {

/// The rule of `EditorTest::AddRangeRule` without items, with bill and quota of `PickBillWithQuota`, and with
/// the quota of `PickQuota`.
QByteArray BareRule();
QByteArray BillRule();
QByteArray QuotaRule();

/// A rule file with a comment before its specialty, as another hand may have left it.
QByteArray WithNote(QByteArray file, const QByteArray& note);

/// A rule file with a second rule of 给水管 added before its default rule.
QByteArray WithRule(QByteArray file, const QByteArray& rule);
/// The same with several rules, the last of which has that id.
QByteArray WithRules(QByteArray file, const QByteArray& rules, int lastRuleId);

/// Expects that two rule files say the same. A failure shows the lines that differ, not the whole files.
void ExpectSameXml(const QByteArray& found, const QByteArray& expected);

} // namespace test
