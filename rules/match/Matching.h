#pragma once

#include "rules/match/CategoryMatcher.h"
#include "rules/match/TextKey.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace rules {

/// Matches many components of one small category. Where `CategoryMatcher` goes through the rules for each
/// component, this remembers: a text that it has met is looked up, not read again, and so is every
/// combination of cells.
///
/// It is an automaton that is built while it runs. A state is the set of rules still alive after the cells of
/// the attributes so far, one bit a rule; the next cell leads to the state of those that it leaves alive.
/// What leads where is computed when it is first needed, as an intersection of two sets, and is one look-up
/// from then on. The cost of a component so depends on the number of attributes, hardly on that of rules. The
/// memory has a limit: when it is reached, all is forgotten and built anew, which costs time and changes no
/// result.
///
/// Keeps the matcher alive. For one thread; threads that share a matcher have one of these each.
class KTQDDE_RULES_EXPORT Matching
{
public:
    /// What a cell means to one attribute, as a number of this object.
    using Value = std::uint32_t;
    /// That of a missing and of a blank cell, for every attribute.
    static constexpr Value Missing = 0;
    static constexpr std::size_t UsualMemory = std::size_t{64} << 20;

    /// `memory` in bytes is what the sets may take, roughly; the work goes on with any limit.
    explicit Matching(std::shared_ptr<const CategoryMatcher> matcher, std::size_t memory = UsualMemory);
    ~Matching();
    Matching(const Matching&) = delete;
    Matching& operator=(const Matching&) = delete;

    const CategoryMatcher& Matcher() const noexcept { return *m_matcher; }

    /// The value of a cell for the attribute at that index of `CategoryMatcher::Attributes()`. Stays valid as
    /// long as this object, so that a column whose texts repeat asks once for each.
    Value Resolve(std::size_t attribute, QStringView cell);

    /// The rule that applies to a component, given the value of each attribute.
    RuleIndex Match(std::span<const Value> values);

private:
    using Word = std::uint64_t;
    using State = std::uint32_t;
    static constexpr std::uint32_t Unknown = 0xFFFFFFFF;

    struct KindHash
    {
        std::size_t operator()(const CellKind& kind) const noexcept;
    };

    /// One attribute: the kinds of cells met so far, the rules that each leaves alive, and the states before
    /// it.
    struct Level
    {
        TextMap<Value> texts;
        std::unordered_map<CellKind, Value, KindHash> values;
        std::vector<CellKind> kinds;          ///< by value
        std::vector<std::vector<Word>> alive; ///< by value; empty when not yet, or no more, known
        std::vector<std::vector<Word>> sets;  ///< by state
        std::unordered_map<std::string, State> stateBySet;
        std::vector<std::vector<State>> next; ///< by state and value: a state of the next level, or a rule
    };

    void Forget();
    State StateOf(std::size_t level, std::vector<Word> set);
    const std::vector<Word>& Alive(std::size_t level, Value value);
    std::uint32_t Compute(std::size_t level, State state, Value value);
    RuleIndex FirstOf(const std::vector<Word>& set) const;

    std::shared_ptr<const CategoryMatcher> m_matcher;
    std::vector<std::vector<CategoryMatcher::Test>> m_tests; ///< by attribute
    std::vector<Level> m_levels;
    std::size_t m_words = 0; ///< of a set
    std::size_t m_memory = 0;
    std::size_t m_used = 0;
    RuleIndex m_withoutAttributes = NoRule; ///< what applies where no condition tests anything
};

} // namespace rules
