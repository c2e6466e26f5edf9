#pragma once

#include "rules/compare/Comparison.h"

/// Differences in the words of people who write rules.
namespace rules {

/// What happened to a rule, in a line: 加了第 4 条：材质＝铜管;
CString Headline(const CategoryDifference& category, const RuleDifference& rule);

/// What changed in a rule's conditions and items, one a line: 条件 公称直径≤50 改为 公称直径≤65. Of a rule
/// that was added or removed its items. Empty for one that was only moved.
CStringArray Details(const CategoryDifference& category, const RuleDifference& rule);

/// What the rule of one state has and the other one has not, as `Details` tells it.
CStringArray DetailsBetween(const Rule& before, const Rule& after);
/// The items of a rule, one a line: 清单 030801001 镀锌钢管（m）：管道长度.
CStringArray ItemLines(const Rule& rule);

/// How many there are of each kind of difference, and what programs did by themselves; a line each.
/// 规则没有差别 when there is nothing.
CStringArray SummaryLines(const Comparison& comparison);

/// The whole comparison: a heading for each category, each rule below it with its details, then the summary.
CStringArray DifferenceLines(const Comparison& comparison);

} // namespace rules
