#include "rules/match/Matching.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <utility>

namespace rules {

namespace {

constexpr std::size_t WordBits = 64;
/// Texts remembered for an attribute. Free numbers have as many texts as there are components.
constexpr std::size_t MostTexts = 1U << 16;

/// The bytes of a set, by which equal sets are found.
std::string KeyOf(const std::vector<std::uint64_t>& set)
{
    return std::string(reinterpret_cast<const char*>(set.data()), set.size() * sizeof(std::uint64_t));
}

} // namespace

std::size_t Matching::KindHash::operator()(const CellKind& kind) const noexcept
{
    return qHashMulti(0, kind.text, kind.number, kind.range);
}

Matching::Matching(std::shared_ptr<const CategoryMatcher> matcher, std::size_t memory)
    : m_matcher(std::move(matcher)), m_tests(m_matcher->Attributes().size()), m_levels(m_tests.size()),
      m_words((m_matcher->m_candidates.size() + WordBits - 1) / WordBits), m_memory(memory),
      m_withoutAttributes(m_matcher->Match(std::vector<Cell>(m_tests.size())))
{
    for (const CategoryMatcher::Test& test : m_matcher->m_tests)
        m_tests[test.attribute].push_back(test);
    for (Level& level : m_levels) {
        level.kinds.push_back({});
        level.values.emplace(CellKind{}, Missing);
    }
    Forget();
}

Matching::~Matching() = default;

/// Back to the one state at which every component starts: all rules alive.
void Matching::Forget()
{
    for (Level& level : m_levels) {
        level.alive.assign(level.kinds.size(), {});
        level.sets.clear();
        level.stateBySet.clear();
        level.next.clear();
    }
    m_used = 0;
    if (m_levels.empty()) return;
    std::vector<Word> all(m_words, ~Word{0});
    const std::size_t rest = m_matcher->m_candidates.size() % WordBits;
    if (rest > 0) all.back() >>= WordBits - rest;
    StateOf(0, std::move(all));
}

Matching::Value Matching::Resolve(std::size_t attribute, QStringView cell)
{
    Level& level = m_levels[attribute];
    if (const auto known = level.texts.find(cell); known != level.texts.end()) return known->second;
    const CellKind kind = m_matcher->Classify(attribute, cell);
    const auto [place, isNew] = level.values.try_emplace(kind, static_cast<Value>(level.kinds.size()));
    if (isNew) {
        level.kinds.push_back(kind);
        level.alive.emplace_back();
    }
    if (level.texts.size() >= MostTexts) level.texts.clear();
    level.texts.emplace(cell.toString(), place->second);
    return place->second;
}

RuleIndex Matching::Match(std::span<const Value> values)
{
    if (m_levels.empty()) return m_withoutAttributes;
    std::uint32_t state = 0;
    for (std::size_t i = 0; i < m_levels.size(); ++i) {
        const std::vector<State>& next = m_levels[i].next[state];
        const Value value = values[i];
        std::uint32_t result = value < next.size() ? next[value] : Unknown;
        if (result == Unknown) {
            if (m_used > m_memory) { // the states so far are gone with the rest: from the beginning
                Forget();
                state = 0;
                for (std::size_t before = 0; before < i; ++before)
                    state = Compute(before, state, values[before]);
            }
            result = Compute(i, state, value);
        }
        state = result;
    }
    return static_cast<RuleIndex>(state) - 1; // the last level leads to rules, `NoRule` as 0
}

/// Where a value leads from a state, remembered.
std::uint32_t Matching::Compute(std::size_t level, State state, Value value)
{
    const std::vector<Word>& alive = Alive(level, value);
    std::vector<Word> set = m_levels[level].sets[state];
    for (std::size_t i = 0; i < m_words; ++i)
        set[i] &= alive[i];
    const bool isLast = level + 1 == m_levels.size();
    const std::uint32_t result =
        isLast ? static_cast<std::uint32_t>(FirstOf(set) + 1) : StateOf(level + 1, std::move(set));
    std::vector<State>& next = m_levels[level].next[state];
    if (value >= next.size()) {
        m_used += (m_levels[level].kinds.size() - next.size()) * sizeof(State);
        next.resize(m_levels[level].kinds.size(), Unknown);
    }
    next[value] = result;
    return result;
}

/// The state of a set of rules before that level, made when it is new.
Matching::State Matching::StateOf(std::size_t level, std::vector<Word> set)
{
    Level& here = m_levels[level];
    const auto [place, isNew] = here.stateBySet.try_emplace(KeyOf(set), static_cast<State>(here.sets.size()));
    if (isNew) {
        constexpr std::size_t Overhead = 160; // of the two containers and the three places
        m_used += 2 * m_words * sizeof(Word) + Overhead;
        here.sets.push_back(std::move(set));
        here.next.emplace_back();
    }
    return place->second;
}

/// The rules that a value leaves alive: those whose conditions on the attribute all hold, and those without
/// any.
const std::vector<Matching::Word>& Matching::Alive(std::size_t level, Value value)
{
    Level& here = m_levels[level];
    std::vector<Word>& alive = here.alive[value];
    if (!alive.empty() || m_words == 0) return alive;
    m_used += m_words * sizeof(Word);
    alive.assign(m_words, ~Word{0});
    for (const CategoryMatcher::Test& test : m_tests[level])
        if (!test.Holds(here.kinds[value]))
            alive[test.rule / WordBits] &= ~(Word{1} << (test.rule % WordBits));
    return alive;
}

RuleIndex Matching::FirstOf(const std::vector<Word>& set) const
{
    const auto word = std::find_if(set.begin(), set.end(), [](Word bits) { return bits != 0; });
    if (word == set.end()) return m_matcher->m_default;
    const std::size_t candidate = static_cast<std::size_t>(word - set.begin()) * WordBits +
                                  static_cast<std::size_t>(std::countr_zero(*word));
    return m_matcher->m_candidates[candidate];
}

} // namespace rules
