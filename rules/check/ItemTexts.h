#pragma once

#include "rules/check/CheckFacts.h"

#include <unordered_map>

namespace rules {

/// What the units and formulas of items come to, each text read once: a file has many items and few of these.
class ItemTexts
{
public:
    struct FormulaText
    {
        enum class State { Missing, Bad, Good };

        State state = State::Missing;
        /// The names in it that are no calculation item and no quantity that these ask for.
        CStringArray furtherNames{};
        /// What it counts, if it is a calculation item or written out what one comes from.
        Dimension dimension = Dimension::Unknown;
    };

    /// The facts must stay.
    explicit ItemTexts(const CheckFacts& facts) : m_facts(facts) {}

    /// The results live as long as this.
    const UnitOfMeasure& UnitOf(const CString& text);
    const FormulaText& FormulaOf(const CString& text);

private:
    FormulaText Read(const CString& text) const;
    Dimension Counted(const CString& formula) const;

    const CheckFacts& m_facts;
    std::unordered_map<CString, UnitOfMeasure> m_units;
    std::unordered_map<CString, FormulaText> m_formulas;
};

} // namespace rules
