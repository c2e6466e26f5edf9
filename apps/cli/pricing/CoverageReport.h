#pragma once

#include "cli/drawing/Picture.h"
#include "rules/bill/Coverage.h"

/// What the rules catch, for people and programs.
namespace cli {

/// A coverage and what belongs to it.
struct CoverageReport
{
    rules::Coverage coverage;
    CString table;    ///< native path
    CString ruleFile; ///< native path
    CString category; ///< the only one that is asked for; empty for all
    /// Categories that the table has no component of, and their rules.
    std::uint64_t otherCategories = 0;
    std::uint64_t otherRules = 0;
};

/// As tables on a terminal, with the first groups of every category.
CString CoverageText(const CoverageReport& report);

/// With every group.
CString CoverageJson(const CoverageReport& report);

/// What each rule and the default catch, category by category.
Picture CoveragePicture(const CoverageReport& report);

/// The line of a batch that makes a rule of a group: it has a condition on each attribute for which the group
/// has a value. Empty when there is no such attribute.
CString BatchLine(const rules::CategoryCoverage& category, const rules::UncaughtGroup& group);

} // namespace cli
