#include "rules/check/Finding.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

struct Entry
{
    FindingCode code;
    QStringView text;
    Severity severity;
};

constexpr std::array Entries{
    Entry{FindingCode::NeverApplies, u"never-applies", Severity::Error},
    Entry{FindingCode::PartlyHidden, u"partly-hidden", Severity::Note},
    Entry{FindingCode::DefaultNeverApplies, u"default-never-applies", Severity::Warning},
    Entry{FindingCode::Gap, u"gap", Severity::Warning},
    Entry{FindingCode::NotDecided, u"not-decided", Severity::Warning},
    Entry{FindingCode::NoConditions, u"no-conditions", Severity::Warning},
    Entry{FindingCode::NoAttribute, u"no-attribute", Severity::Error},
    Entry{FindingCode::UnknownOperator, u"unknown-operator", Severity::Error},
    Entry{FindingCode::EmptyValue, u"empty-value", Severity::Error},
    Entry{FindingCode::BoundNotANumber, u"bound-not-a-number", Severity::Error},
    Entry{FindingCode::BoundsReversed, u"bounds-reversed", Severity::Error},
    Entry{FindingCode::NoBounds, u"no-bounds", Severity::Warning},
    Entry{FindingCode::Contradiction, u"contradiction", Severity::Error},
    Entry{FindingCode::FullWidthDigits, u"full-width-digits", Severity::Note},
    Entry{FindingCode::UnknownAttribute, u"unknown-attribute", Severity::Error},
    Entry{FindingCode::RangeNotAllowed, u"range-not-allowed", Severity::Warning},
    Entry{FindingCode::ValueNotInList, u"value-not-in-list", Severity::Warning},
    Entry{FindingCode::NoItems, u"no-items", Severity::Warning},
    Entry{FindingCode::RepeatedItem, u"repeated-item", Severity::Error},
    Entry{FindingCode::AddedQuantities, u"added-quantities", Severity::Warning},
    Entry{FindingCode::NumberTwoNames, u"number-two-names", Severity::Error},
    Entry{FindingCode::NumberTwoUnits, u"number-two-units", Severity::Error},
    Entry{FindingCode::NumberTwoFeatures, u"number-two-features", Severity::Note},
    Entry{FindingCode::BadNumber, u"bad-number", Severity::Error},
    Entry{FindingCode::UnknownItem, u"unknown-item", Severity::Warning},
    Entry{FindingCode::OtherLibrary, u"other-library", Severity::Note},
    Entry{FindingCode::QuotaNotOnBill, u"quota-not-on-bill", Severity::Warning},
    Entry{FindingCode::UnfitUnit, u"unfit-unit", Severity::Error},
    Entry{FindingCode::UnitMultiple, u"unit-multiple", Severity::Error},
    Entry{FindingCode::NoFormula, u"no-formula", Severity::Warning},
    Entry{FindingCode::BadFormula, u"bad-formula", Severity::Error},
    Entry{FindingCode::UnknownName, u"unknown-name", Severity::Error},
    Entry{FindingCode::NoDefault, u"no-default", Severity::Warning},
    Entry{FindingCode::SeveralDefaults, u"several-defaults", Severity::Error},
    Entry{FindingCode::DefaultNotLast, u"default-not-last", Severity::Warning},
    Entry{FindingCode::RepeatedId, u"repeated-id", Severity::Error},
    Entry{FindingCode::RepeatedElement, u"repeated-element", Severity::Error},
    Entry{FindingCode::UnknownCategory, u"unknown-category", Severity::Warning},
    Entry{FindingCode::UnknownElement, u"unknown-element", Severity::Warning},
};

const Entry& EntryOf(FindingCode code)
{
    return *std::find_if(Entries.begin(), Entries.end(),
                         [&](const Entry& entry) { return entry.code == code; });
}

} // namespace

CString CodeText(FindingCode code)
{
    return EntryOf(code).text.toString();
}

Severity SeverityOf(FindingCode code)
{
    return EntryOf(code).severity;
}

std::vector<FindingCode> AllFindingCodes()
{
    std::vector<FindingCode> codes;
    codes.reserve(Entries.size());
    for (const Entry& entry : Entries)
        codes.push_back(entry.code);
    return codes;
}

} // namespace rules
