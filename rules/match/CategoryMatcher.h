#pragma once

#include "rules/match/CellText.h"
#include "rules/model/Configuration.h"
#include "rules/model/Facts.h"

#include <limits>
#include <map>
#include <optional>
#include <span>
#include <unordered_map>

namespace rules {

/// The cell of a component for one attribute; nothing when the take-off table has no column for it.
using Cell = std::optional<CString>;

/// The index of a rule in `SmallCategory::rules`; `NoRule` when none applies.
using RuleIndex = int;
inline constexpr RuleIndex NoRule = -1;

/// What one cell means to the conditions on one attribute: which of their texts, numbers and elementary
/// ranges it is. Cells of one kind are told apart by no rule.
struct CellKind
{
    static constexpr std::uint32_t None = 0xFFFFFFFF;    ///< no text, number or range that a condition knows
    static constexpr std::uint32_t Missing = 0xFFFFFFFE; ///< as `text`: there is no cell, or it is blank

    std::uint32_t text = Missing;
    std::uint32_t number = None;
    std::uint32_t range = None;

    bool operator==(const CellKind&) const = default;
};

/// The rules of one small category, compiled: each attribute's values and the elementary ranges between its
/// bounds are known, and every condition is a comparison of small whole numbers. Immutable, so any number of
/// threads may use one. For one component this is all that is needed; for many, `Matching` remembers what it
/// has met.
class KTQDDE_RULES_EXPORT CategoryMatcher
{
public:
    /// An attribute that conditions test.
    struct Attribute
    {
        CString name; ///< as the conditions write it, without blanks around
        CString code; ///< from the facts; empty when they have none
        CString unit; ///< from the facts; empty when they have none
        bool isOwnName = false;

        NumberReader numbers;
    };

    /// A condition of a rule that may apply.
    struct Test
    {
        enum class Form : std::uint8_t { Equal, Unequal, Range };
        static constexpr std::uint32_t NoNumber =
            0xFFFFFFFD; ///< the condition's value is none; equal to no cell's

        Form form = Form::Equal;
        std::uint32_t rule = 0;      ///< index in m_candidates
        std::uint32_t attribute = 0; ///< index in m_attributes
        std::uint32_t first = 0;     ///< the value's text, or the first elementary range
        std::uint32_t second = 0;    ///< the value's number, or the last elementary range

        bool Holds(const CellKind& kind) const noexcept;
    };

    /// How a cell may have a number.
    enum class Writing {
        Shortest,    ///< as `Decimal::ToText` has it, which a condition may name
        OtherPlain,  ///< as a plain number that no condition names, such as with one more 0 behind the point
        OtherListed, ///< in another way of those that the value list knows, and that no condition names
    };

    /// `facts` are needed during the call only. Raises nothing but lack of memory.
    CategoryMatcher(SmallCategoryPtr category, const CategoryFacts& facts);

    const SmallCategory& Category() const noexcept { return *m_category; }
    const SmallCategoryPtr& CategoryPtr() const noexcept { return m_category; }
    /// The attributes that conditions test, in the order in which the rules mention them. Conditions without
    /// an attribute's name never hold and count for none.
    const std::vector<Attribute>& Attributes() const noexcept { return m_attributes; }
    /// For each attribute the index of the column that gives it: that of its name, else that of its code,
    /// else that of its name with the unit in brackets, of several the first; nothing when there is none, and
    /// for the component's own name, which is no column. Headers are compared without blanks around and in
    /// compatibility normalisation.
    std::vector<std::optional<std::size_t>> ColumnsFor(const CStringArray& headers) const;

    /// What a cell means to an attribute. A blank cell is a missing one.
    CellKind Classify(std::size_t attribute, QStringView cell) const;
    /// What a number means to an attribute, by the way in which a cell has it.
    CellKind Classify(std::size_t attribute, const Decimal& number, Writing writing) const;

    /// The compiled conditions of a rule; nothing for a default rule and for one that can apply to no
    /// component, whatever its cells. Lives as long as this.
    std::optional<std::span<const Test>> TestsOf(RuleIndex rule) const;

    /// The rule that applies to a component, given its cell for each of `Attributes()`.
    RuleIndex Match(std::span<const Cell> cells) const;

private:
    friend class Matching;

    /// What the conditions on one attribute compare with.
    struct Known
    {
        std::unordered_map<CString, std::uint32_t> texts; ///< normalised values
        std::map<Decimal, std::uint32_t> numbers;         ///< those that are numbers
        std::vector<Decimal> bounds;                      ///< sorted; range 2i+1 is bound i, 2i lies below it
        bool hasRanges = false;
    };

    std::size_t AttributeOf(const CString& name, const CategoryFacts& facts);
    void CollectKnown(const CategoryFacts& facts);
    bool Compile(const Condition& condition, std::uint32_t rule, std::vector<Test>& tests) const;
    bool CompileValue(const Condition& condition, Test& test) const;
    bool CompileRange(const Condition& condition, Test& test) const;
    std::uint32_t RangeOf(const Known& known, const Decimal& number) const;

    SmallCategoryPtr m_category;
    std::vector<Attribute> m_attributes;
    std::vector<Known> m_known; ///< beside m_attributes
    std::map<CString, std::size_t> m_attributeByName;
    std::vector<RuleIndex> m_candidates; ///< the rules that may apply by their conditions, in list order
    std::vector<Test> m_tests;           ///< those of the candidates, rule by rule
    RuleIndex m_default = NoRule;
};

/// The facts of the attribute of that name, of several the first; null when there are none. Names are
/// compared as columns' headers are.
KTQDDE_RULES_EXPORT const AttributeFacts* FactsOf(const CString& name, const CategoryFacts& facts);

/// Whether the fields of a condition are such that it can hold at all: known operators at each place, bounds
/// that are numbers, a name. Shared with the trace, which tells what is wrong.
enum class Defect { None, NoAttribute, UnknownOperator, BoundNotANumber };
KTQDDE_RULES_EXPORT Defect DefectOf(const Condition& condition, const NumberReader& numbers);

} // namespace rules
