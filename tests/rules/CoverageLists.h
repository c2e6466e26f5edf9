#pragma once

#include "rules/RandomRules.h"

/// Random lists of rules that hide each other and leave gaps often, over few values.
namespace test {

/// The attributes; the first has words for values, the others numbers.
extern const std::vector<CString> CoverageNames;
/// The words that conditions name.
extern const std::vector<CString> CoverageTexts;
/// The numbers that conditions name, and the same as a value list writes them.
extern const std::vector<CString> PlainNumbers;
extern const std::vector<CString> WrittenNumbers;

/// A rule list of a kind: how its values are written, and the list that the catalogue has.
struct ListKind
{
    std::vector<CString> numbers = PlainNumbers;
    CStringArray list{};
};

/// A kind with or without a value list.
ListKind RandomKind(Dice& dice);

std::vector<rules::Rule> RandomRules(Dice& dice, const ListKind& kind);

/// What the catalogue knows of the attributes with numbers.
rules::CategoryFacts FactsOf(const ListKind& kind);

} // namespace test
