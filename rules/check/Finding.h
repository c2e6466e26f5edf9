#pragma once

#include "rules/Export.h"
#include "tree/QdDeRecords.h"

#include <map>
#include <optional>
#include <vector>

namespace rules {

enum class Severity {
    Note,    ///< worth knowing; may well be meant
    Warning, ///< probably not what was meant
    Error,   ///< does not do what it says
};

/// What is wrong. The order is that of docs/checks.md.
enum class FindingCode {
    // which rule applies
    NeverApplies,
    PartlyHidden,
    DefaultNeverApplies,
    Gap,
    NotDecided,
    // conditions
    NoConditions,
    NoAttribute,
    UnknownOperator,
    EmptyValue,
    BoundNotANumber,
    BoundsReversed,
    NoBounds,
    Contradiction,
    FullWidthDigits,
    UnknownAttribute,
    RangeNotAllowed,
    ValueNotInList,
    // items
    NoItems,
    RepeatedItem,
    AddedQuantities,
    NumberTwoNames,
    NumberTwoUnits,
    NumberTwoFeatures,
    BadNumber,
    UnknownItem,
    OtherLibrary,
    QuotaNotOnBill,
    UnfitUnit,
    UnitMultiple,
    NoFormula,
    BadFormula,
    UnknownName,
    // how the file is built
    NoDefault,
    SeveralDefaults,
    DefaultNotLast,
    RepeatedId,
    RepeatedElement,
    UnknownCategory,
    UnknownElement,
};

/// The word by which programs know it, such as "never-applies". Never changes.
KTQDDE_RULES_EXPORT CString CodeText(FindingCode code);
KTQDDE_RULES_EXPORT Severity SeverityOf(FindingCode code);
/// All codes, in the order above.
KTQDDE_RULES_EXPORT std::vector<FindingCode> AllFindingCodes();

/// An operation that takes a finding away, as a line of a batch has it; docs/json.md has the words. What is 0
/// or empty is not part of the line.
struct Mend
{
    CString op;
    int configId = 0;
    int conditionId = 0;
    int qdId = 0;
    int deId = 0;
    CStringArray array{};
    std::vector<int> ids{};
    std::map<int, std::vector<int>> deIdsByQd{};
    std::optional<QdStruct> qd{};
    std::optional<DeStruct> de{};
};

struct Finding
{
    FindingCode code = FindingCode::NeverApplies;
    CString category; ///< joined by backslashes; a specialty or big category alone, or empty, where it is
                      ///< about that
    int position = 0; ///< of the rule in its list, from 1; 0 when it is about none
    int ruleId = 0;   ///< its id
    CString text{};   ///< a sentence for a cost engineer, without a final mark
    std::vector<int> others{}; ///< the positions of further rules that it is about, in the same list
    std::optional<Mend> mend{};
};

} // namespace rules
