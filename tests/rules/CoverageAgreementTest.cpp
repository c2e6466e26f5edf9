// Which rules never apply, what is left of the others, and the gaps, against going through all combinations
// of elementary values with the slow matcher of docs/matching.md. KTQDDE_CHECK_LISTS asks for more lists of
// rules, KTQDDE_CHECK_SEED repeats a run.
#include "rules/check/Gaps.h"
#include "rules/check/RuleCoverage.h"

#include "rules/BruteForce.h"
#include "rules/CoverageLists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <random>
#include <set>
#include <tuple>

using namespace Qt::StringLiterals;
using test::Mask;

namespace {

/// One random category, judged both ways.
class Trial
{
public:
    explicit Trial(test::Dice& dice)
        : m_kind(test::RandomKind(dice)), m_facts(test::FactsOf(m_kind)),
          m_list(test::RandomRules(dice, m_kind)), m_category(test::CategoryOf(m_list)),
          m_space(*m_category, m_facts), m_index(m_space, m_list.size()), m_brute(m_list, m_kind, m_facts)
    {
        for (std::size_t i = 0; i < test::CoverageNames.size(); ++i) {
            m_attributes.push_back(m_space.AttributeOf(test::CoverageNames[i]));
            m_cells.emplace_back();
            for (const rules::Cell& value : m_brute.Values(i))
                m_cells[i].push_back(m_attributes[i] ? m_space.Find(*m_attributes[i], value) : std::nullopt);
        }
        for (std::size_t i = 0; i < test::CoverageNames.size(); ++i) {
            m_naming.push_back(Naming(i, false));
            m_ranging.push_back(Naming(i, true));
        }
        m_seen.insert(m_brute.Holding().begin(), m_brute.Holding().end());
    }

    void Compare() const
    {
        CompareCoverage();
        CompareFilled();
        CompareGaps();
    }

    std::string Told() const
    {
        CString text;
        for (const rules::Rule& rule : m_list)
            text += rule.Text() + u'\n';
        return text.toStdString();
    }

private:
    bool IsIn(const rules::Region& region, std::size_t place, std::optional<std::size_t> without = {}) const
    {
        for (std::size_t i = 0; i < test::CoverageNames.size(); ++i) {
            if (!m_attributes[i] || without == i) continue;
            const auto cell = m_cells[i][m_brute.Places()[place][i]];
            if (!cell || !region[*m_attributes[i]].Has(*cell)) return false;
        }
        return true;
    }

    static Mask BitOf(std::size_t rule) { return Mask{1} << rule; }

    bool IsFirstAt(std::size_t rule, std::size_t place) const
    {
        return IsFirst(rule, m_brute.Holding()[place]);
    }
    static bool IsFirst(std::size_t rule, Mask holding)
    {
        return (holding & BitOf(rule)) != 0 && (holding & (BitOf(rule) - 1)) == 0;
    }

    /// Whether these rules take all that the rule holds for.
    bool Hide(Mask hiders, std::size_t rule) const
    {
        return std::all_of(m_seen.begin(), m_seen.end(), [&](Mask holding) {
            return (holding & BitOf(rule)) == 0 || (holding & hiders) != 0;
        });
    }

    /// The number of rules in the smallest set before the rule that hides it.
    std::size_t SmallestSet(std::size_t rule) const
    {
        std::size_t smallest = rule;
        for (Mask set = 0; set < BitOf(rule); ++set) {
            const auto count = static_cast<std::size_t>(std::popcount(set));
            if (count < smallest && Hide(set, rule)) smallest = count;
        }
        return smallest;
    }

    void CompareCoverage() const
    {
        using State = rules::RuleCoverage::State;
        const auto coverage = rules::CoverageOf(m_index);
        ASSERT_EQ(coverage.size(), m_list.size());
        for (std::size_t rule = 0; rule < m_list.size(); ++rule) {
            bool holds = false;
            bool applies = false;
            for (const Mask holding : m_seen) {
                holds = holds || (holding & BitOf(rule)) != 0;
                applies = applies || IsFirst(rule, holding);
            }
            const State expected = !holds ? State::Impossible : applies ? State::Applies : State::Hidden;
            ASSERT_EQ(coverage[rule].state, expected) << "rule " << rule + 1;
            if (expected == State::Hidden) {
                Mask hiders = 0;
                for (const std::size_t hider : coverage[rule].hiders)
                    hiders |= BitOf(hider);
                EXPECT_LT(hiders, BitOf(rule)) << "only rules before it";
                EXPECT_TRUE(Hide(hiders, rule)) << "rule " << rule + 1;
                EXPECT_EQ(coverage[rule].hiders.size(), SmallestSet(rule)) << "rule " << rule + 1;
                EXPECT_TRUE(coverage[rule].isSmallest);
            }
            if (expected == State::Applies) CompareRest(coverage[rule], rule);
        }
    }

    void CompareRest(const rules::RuleCoverage& coverage, std::size_t rule) const
    {
        std::set<std::size_t> takers;
        for (std::size_t before = 0; before < rule; ++before) {
            bool takes = false;
            bool isBeyond = false;
            for (const Mask holding : m_seen)
                if ((holding & BitOf(before)) != 0) ((holding & BitOf(rule)) != 0 ? takes : isBeyond) = true;
            if (takes && isBeyond) takers.insert(before);
        }
        EXPECT_EQ(std::set<std::size_t>(coverage.takers.begin(), coverage.takers.end()), takers)
            << "rule " << rule + 1;
        if (takers.empty() || !coverage.isLeftAll) return;
        for (std::size_t place = 0; place < m_brute.Places().size(); ++place) {
            const auto count =
                std::count_if(coverage.left.begin(), coverage.left.end(),
                              [&](const rules::Region& region) { return IsIn(region, place); });
            EXPECT_EQ(count, IsFirstAt(rule, place) ? 1 : 0) << "rule " << rule + 1;
        }
    }

    void CompareFilled() const
    {
        bool isAll = true;
        for (std::size_t place = 0; place < m_brute.Places().size() && isAll; ++place) {
            bool isFilled = true;
            for (std::size_t i = 0; i < test::CoverageNames.size(); ++i)
                isFilled = isFilled && (!m_attributes[i] || m_brute.Places()[place][i] != 0);
            isAll = !isFilled || m_brute.Holding()[place] != 0;
        }
        EXPECT_EQ(rules::CoversAllFilled(m_index),
                  isAll ? rules::Cover::Answer::Covered : rules::Cover::Answer::Open);
    }

    /// A gap at one combination of the other attributes: attribute, first and last value of the gap, and the
    /// place of the first one.
    using Seen = std::tuple<std::size_t, std::size_t, std::size_t, std::size_t>;

    /// The rules that name the attribute's numbers, by a range alone or by ＝, too.
    Mask Naming(std::size_t attribute, bool rangeOnly) const
    {
        Mask naming = 0;
        for (std::size_t rule = 0; rule < m_list.size(); ++rule)
            for (const rules::Condition& condition : m_list[rule].conditions)
                if (condition.attribute == test::CoverageNames[attribute] &&
                    (!condition.isValueForm || (!rangeOnly && condition.equalOperator == u"＝")))
                    naming |= BitOf(rule);
        return naming;
    }

    /// Whether a rule takes the place, and whether one that names the number does, and one with a range.
    struct Taking
    {
        bool any = false;
        bool naming = false;
        bool range = false;
    };
    Taking TakingAt(const std::vector<std::size_t>& place, std::size_t attribute) const
    {
        const Mask holding = m_brute.HoldingAt(place);
        return {holding != 0, (holding & m_naming[attribute]) != 0, (holding & m_ranging[attribute]) != 0};
    }

    void FindGaps(std::size_t attribute, std::size_t start, std::set<Seen>& seen) const
    {
        const std::vector<std::size_t>& line = m_brute.Line(attribute);
        std::vector<std::size_t> place = m_brute.Places()[start];
        std::optional<std::size_t> below; // the last step that was taken
        Taking taken;
        for (std::size_t step = 0; step < line.size(); ++step) {
            place[attribute] = line[step];
            const Taking here = TakingAt(place, attribute);
            if (!here.any) continue;
            const bool joined =
                taken.naming && here.naming && (!m_kind.list.isEmpty() || taken.range || here.range);
            if (below && *below + 1 < step && joined)
                seen.emplace(attribute, line[*below + 1], line[step - 1], start);
            below = step;
            taken = here;
        }
    }

    void CompareGaps() const
    {
        std::set<Seen> expected;
        std::set<Seen> found;
        const rules::GapsFound gaps = rules::GapsOf(m_index);
        EXPECT_TRUE(gaps.isDecided);
        for (std::size_t attribute = 1; attribute < test::CoverageNames.size(); ++attribute) {
            for (std::size_t start = 0; start < m_brute.Places().size(); ++start) {
                if (m_brute.Places()[start][attribute] != 0) continue; // the other attributes are what counts
                FindGaps(attribute, start, expected);
                for (const rules::Gap& gap : gaps.gaps) {
                    if (m_attributes[attribute] != gap.attribute) continue;
                    const auto times = std::count_if(
                        gap.contexts.begin(), gap.contexts.end(),
                        [&](const rules::Region& region) { return IsIn(region, start, attribute); });
                    if (times == 0) continue;
                    EXPECT_EQ(times, 1);
                    const auto [first, last] = ValuesOf(gap, attribute);
                    EXPECT_TRUE(found.emplace(attribute, first, last, start).second) << "told twice";
                }
            }
        }
        EXPECT_EQ(found, expected);
    }

    /// The first and the last elementary value in a gap.
    std::pair<std::size_t, std::size_t> ValuesOf(const rules::Gap& gap, std::size_t attribute) const
    {
        const auto& line = m_space.Attributes()[gap.attribute].line;
        std::pair<std::size_t, std::size_t> ends{0, 0};
        for (const std::size_t value : m_brute.Line(attribute)) {
            CString digits = *m_brute.Values(attribute)[value];
            const rules::Decimal number = *rules::Decimal::Parse(digits.remove(u"DN"_s));
            const auto isAbove = [&](const rules::CellSpace::Step& step) {
                return step.isPoint ? number >= step.from : step.isFirst || number > step.from;
            };
            const auto isBelow = [&](const rules::CellSpace::Step& step) {
                return step.isPoint ? number <= step.to : step.isLast || number < step.to;
            };
            if (!isAbove(line[gap.first]) || !isBelow(line[gap.last])) continue;
            if (ends.first == 0) ends.first = value;
            ends.second = value;
        }
        return ends;
    }

    test::ListKind m_kind;
    rules::CategoryFacts m_facts;
    std::vector<rules::Rule> m_list;
    rules::SmallCategoryPtr m_category;
    rules::CellSpace m_space;
    rules::RegionIndex m_index;
    test::BruteForce m_brute;
    std::vector<std::optional<std::size_t>> m_attributes;
    std::vector<std::vector<std::optional<rules::CellSpace::Cell>>> m_cells; ///< of the values, by attribute
    std::vector<Mask> m_naming;                                              ///< by attribute
    std::vector<Mask> m_ranging;                                             ///< by attribute
    std::set<Mask> m_seen; ///< which rules hold together somewhere
};

} // namespace

TEST(CoverageAgreement, HiddenRulesRestsAndGapsAreThoseOfAllCombinationsOfElementaryValues)
{
    const std::size_t lists = qEnvironmentVariableIsSet("KTQDDE_CHECK_LISTS")
                                  ? qEnvironmentVariable("KTQDDE_CHECK_LISTS").toULongLong()
                                  : 1000;
    const unsigned seed = qEnvironmentVariableIsSet("KTQDDE_CHECK_SEED")
                              ? qEnvironmentVariable("KTQDDE_CHECK_SEED").toUInt()
                              : std::random_device{}();
    std::printf("seed %u\n", seed);
    test::Dice dice(seed);
    for (std::size_t list = 0; list < lists && !HasFailure(); ++list) {
        const Trial trial(dice);
        SCOPED_TRACE("seed " + std::to_string(seed) + ", list " + std::to_string(list + 1) + "\n" +
                     trial.Told());
        trial.Compare();
    }
}
