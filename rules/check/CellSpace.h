#pragma once

#include "rules/check/CellSet.h"
#include "rules/match/CategoryMatcher.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace rules {

/// The components of one small category as its rules see them: for each attribute that conditions test, the
/// cells that they tell apart, numbered. A rule holds for the components of one region: for each attribute a
/// set of cells.
///
/// Cells are made of the texts that rules and value lists name, the numbers among them, the numbers between
/// these, a text that nobody names, and no text at all. Numbers stand in plain digits, or as the value list
/// writes them. Texts that are no number and become one by compatibility normalisation, such as "5²", count
/// only where a rule names them.
class KTQDDE_RULES_EXPORT CellSpace
{
public:
    using Cell = std::uint32_t;
    /// The cell of a component without the attribute, for every attribute.
    static constexpr Cell Missing = 0;

    /// One step of the way along the numbers of an attribute.
    struct Step
    {
        Cell cell = Missing;
        Decimal from;         ///< the number, or the one below
        Decimal to;           ///< the number, or the one above
        bool isPoint = true;  ///< one number, else those between the two
        bool isFirst = false; ///< all below `to`
        bool isLast = false;  ///< all above `from`; the first as well: all numbers
    };

    struct Attribute
    {
        CString name;
        std::size_t count = 1; ///< of cells
        CellSet filled;        ///< all but that of no text, unless another text shares it
        Cell other = Missing;  ///< of a text that nobody names
        std::vector<std::pair<CString, Cell>>
            texts;                 ///< those that are no plain number, in the order of the rules
        std::vector<Step> numbers; ///< all numbers, ascending
        /// The numbers that components may have, by which a gap is one: those of the value list where it has
        /// at least two, else all.
        std::vector<Step> line;
        bool hasList = false; ///< whether `line` is the value list
    };

    /// The set of a rule that does not test the attribute.
    static constexpr std::uint32_t All = 0;

    /// `facts` are needed during the call only.
    CellSpace(const SmallCategory& category, const CategoryFacts& facts);

    const std::vector<Attribute>& Attributes() const noexcept { return m_attributes; }
    /// Whether a rule can hold for anything: no default rule, known operators, conditions that do not
    /// contradict each other.
    bool IsPossible(std::size_t rule) const { return m_isPossible[rule]; }
    /// The number of the rule's set of cells for an attribute; equal numbers are equal sets.
    std::uint32_t SetOf(std::size_t rule, std::size_t attribute) const
    {
        return m_setOf[rule * m_attributes.size() + attribute];
    }
    const std::vector<CellSet>& Sets(std::size_t attribute) const { return m_sets[attribute]; }
    const CellSet& Cells(std::size_t rule, std::size_t attribute) const
    {
        return m_sets[attribute][SetOf(rule, attribute)];
    }
    /// The conditions of all rules but default rules, by number; those that differ in nothing but their id
    /// are one.
    std::size_t Conditions() const { return m_matcher->Category().rules.size(); }
    const Condition& ConditionAt(std::uint32_t number) const
    {
        return m_matcher->Category().rules[number].conditions.front();
    }
    /// The numbers of a rule's conditions, in their order; none of a default rule's.
    std::span<const std::uint32_t> ConditionsOf(std::size_t rule) const
    {
        return std::span(m_conditions)
            .subspan(m_firstCondition[rule], m_firstCondition[rule + 1] - m_firstCondition[rule]);
    }
    /// How the numbers of an attribute are read.
    const NumberReader& Numbers(std::size_t attribute) const
    {
        return m_matcher->Attributes()[attribute].numbers;
    }

    /// All that the rule holds for by its conditions.
    Region RegionOf(std::size_t rule) const;
    /// Whether the rule has a range on the attribute, or the sign ＝.
    bool HasRange(std::size_t rule, std::size_t attribute) const
    {
        return (Kinds(rule, attribute) & RangeKind) != 0;
    }
    bool HasEqual(std::size_t rule, std::size_t attribute) const
    {
        return (Kinds(rule, attribute) & EqualKind) != 0;
    }

    /// The cell of a component's text for an attribute; nothing stands for a missing one. Nothing comes back
    /// for a text of a kind that is not among the cells (see above).
    std::optional<Cell> Find(std::size_t attribute, const rules::Cell& text) const;
    /// The attribute of that name; nothing when no rule tests it.
    std::optional<std::size_t> AttributeOf(const CString& name) const;

private:
    class Builder;
    static constexpr std::uint8_t RangeKind = 1;
    static constexpr std::uint8_t EqualKind = 2;

    std::uint8_t Kinds(std::size_t rule, std::size_t attribute) const
    {
        return m_kinds[rule * m_attributes.size() + attribute];
    }

    std::shared_ptr<const CategoryMatcher> m_matcher; ///< of the distinct conditions, each a rule of its own
    std::vector<std::uint32_t> m_conditions;          ///< of all rules, one behind the other
    std::vector<std::size_t> m_firstCondition; ///< by rule: its first place in them; one more at the end
    std::vector<Attribute> m_attributes;
    std::vector<std::vector<CellKind>> m_cellKinds; ///< by attribute and cell
    std::vector<std::vector<CellSet>> m_sets;       ///< by attribute
    std::vector<std::uint32_t> m_setOf;             ///< by rule and attribute
    std::vector<std::uint8_t> m_kinds;              ///< by rule and attribute
    std::vector<bool> m_isPossible;                 ///< by rule
};

} // namespace rules
