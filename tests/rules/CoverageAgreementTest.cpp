// Which rules never apply, what is left of the others, and the gaps, against going through all combinations
// of elementary values with the slow matcher of docs/matching.md. KTQDDE_CHECK_LISTS asks for more lists of
// rules, KTQDDE_CHECK_SEED repeats a run.
#include "rules/check/Coverage.h"
#include "rules/check/Gaps.h"

#include "rules/RulesTesting.h"
#include "tests/rules/reference/ReferenceMatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <map>
#include <random>
#include <set>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

class Dice
{
public:
    explicit Dice(unsigned seed) : m_random(seed) {}

    std::size_t Below(std::size_t limit) { return m_random() % limit; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    template <typename T>
    const T& Of(const std::vector<T>& stock)
    {
        return stock[Below(stock.size())];
    }

private:
    std::mt19937 m_random;
};

const std::vector<CString> Names{u"材质"_s, u"公称直径"_s, u"壁厚"_s};
const std::vector<CString> Texts{u"甲"_s, u"乙"_s, u"丙"_s};
const std::vector<CString> Numbers{u"10"_s, u"20"_s, u"20.0"_s, u"３０"_s, u"40"_s};
const std::vector<CString> Written{u"DN10"_s, u"DN20"_s, u"DN30"_s, u"DN40"_s, u"20"_s};

/// A rule list of a kind: how its values are written, and the list that the catalogue has.
struct Kind
{
    std::vector<CString> numbers = Numbers;
    CStringArray list{};
};

rules::Condition RandomCondition(Dice& dice, const Kind& kind)
{
    const CString& name = dice.Of(Names);
    if (name == Names[0]) return test::Value(name, dice.OneIn(4) ? u"≠"_s : u"＝"_s, dice.Of(Texts));
    if (dice.OneIn(3)) return test::Value(name, dice.OneIn(4) ? u"≠"_s : u"＝"_s, dice.Of(kind.numbers));
    const CString lower = dice.OneIn(5) ? CString() : dice.Of(kind.numbers);
    const CString upper = dice.OneIn(5) ? CString() : dice.Of(kind.numbers);
    return test::Range(name, dice.OneIn(2) ? u"＞"_s : u"≥"_s, lower,
                       dice.OneIn(40)  ? u"<"_s
                       : dice.OneIn(2) ? u"＜"_s
                                       : u"≤"_s,
                       upper);
}

std::vector<rules::Rule> RandomRules(Dice& dice, const Kind& kind)
{
    std::vector<rules::Rule> list;
    for (std::size_t count = 2 + dice.Below(7); count > 0; --count) {
        std::vector<rules::Condition> conditions;
        for (std::size_t i = dice.OneIn(30) ? 0 : 1 + dice.Below(3); i > 0; --i)
            conditions.push_back(RandomCondition(dice, kind));
        list.push_back(test::RuleOf(std::move(conditions), dice.OneIn(40)));
    }
    return list;
}

using Mask = unsigned; // of rules, one bit each

/// Whether a condition holds for a value, asked of the slow matcher once.
bool HoldsFor(const rules::Condition& condition, const rules::Cell& value, const rules::CategoryFacts& facts)
{
    static std::map<std::tuple<CString, CString, bool>, bool> known;
    const bool hasList = !facts.front().valueList.isEmpty();
    const CString told = condition.Text() + condition.upperOperator;
    const auto [place, isNew] = known.try_emplace({told, value.value_or(u"-"_s), hasList}, false);
    if (isNew) {
        test::Component component;
        if (value) component.cells[condition.attribute] = *value;
        place->second = test::ReferenceMatch({test::RuleOf({condition})}, facts, component) == 0;
    }
    return place->second;
}

/// Everything gone through: which rules hold for which combination of elementary values.
class Brute
{
public:
    Brute(const std::vector<rules::Rule>& list, const Kind& kind, const rules::CategoryFacts& facts)
    {
        for (std::size_t attribute = 0; attribute < Names.size(); ++attribute) {
            CollectValues(attribute, kind);
            Evaluate(attribute, list, facts);
        }
        std::vector<std::size_t> place(Names.size());
        do {
            m_places.push_back(place);
            m_holding.push_back(HoldingAt(place));
        } while (Next(place));
    }

    const std::vector<std::vector<std::size_t>>& Places() const { return m_places; }
    const std::vector<rules::Cell>& Values(std::size_t attribute) const { return m_values[attribute]; }
    /// The rules that hold at each place.
    const std::vector<Mask>& Holding() const { return m_holding; }

    Mask HoldingAt(const std::vector<std::size_t>& place) const
    {
        Mask holding = ~Mask{0};
        for (std::size_t attribute = 0; attribute < place.size(); ++attribute)
            holding &= m_masks[attribute][place[attribute]];
        return holding;
    }

    /// The numbers of an attribute that components may have, ascending, as indexes of its values.
    const std::vector<std::size_t>& Line(std::size_t attribute) const { return m_lines[attribute]; }

private:
    /// Nothing, a text that nobody names, and what the stocks have; between and around the numbers one each.
    void CollectValues(std::size_t attribute, const Kind& kind)
    {
        std::vector<rules::Cell>& values = m_values.emplace_back();
        std::vector<std::size_t>& line = m_lines.emplace_back();
        values = {rules::Cell(), u"谁也不说的"_s};
        if (attribute == 0) {
            for (const CString& text : Texts)
                values.emplace_back(text);
            return;
        }
        for (int number = 5; number <= 45; number += 5) {
            const CString written = u"DN%1"_s.arg(number);
            if (!kind.list.isEmpty()) {
                if (kind.list.contains(written)) line.push_back(values.size());
                values.emplace_back(written);
                if (kind.list.contains(written)) values.emplace_back(written + u".0"_s);
            } else {
                line.push_back(values.size());
            }
            values.emplace_back(QString::number(number));
        }
    }

    void Evaluate(std::size_t attribute, const std::vector<rules::Rule>& list,
                  const rules::CategoryFacts& facts)
    {
        std::vector<Mask>& masks = m_masks.emplace_back();
        for (const rules::Cell& value : m_values[attribute]) {
            Mask& mask = masks.emplace_back(0);
            for (std::size_t rule = 0; rule < list.size(); ++rule) {
                const auto& conditions = list[rule].conditions;
                const bool holds =
                    !list[rule].isDefault &&
                    std::all_of(conditions.begin(), conditions.end(), [&](const auto& condition) {
                        return condition.attribute != Names[attribute] || HoldsFor(condition, value, facts);
                    });
                if (holds) mask |= Mask{1} << rule;
            }
        }
    }

    bool Next(std::vector<std::size_t>& place) const
    {
        for (std::size_t attribute = 0; attribute < place.size(); ++attribute) {
            if (++place[attribute] < m_values[attribute].size()) return true;
            place[attribute] = 0;
        }
        return false;
    }

    std::vector<std::vector<rules::Cell>> m_values;
    std::vector<std::vector<std::size_t>> m_lines;
    std::vector<std::vector<Mask>> m_masks; ///< by attribute and value
    std::vector<std::vector<std::size_t>> m_places;
    std::vector<Mask> m_holding; ///< by place
};

/// One random category, judged both ways.
class Trial
{
public:
    explicit Trial(Dice& dice)
        : m_kind(dice.OneIn(3) ? Kind{Written, {u"DN10"_s, u"DN20"_s, u"DN30"_s, u"DN40"_s}} : Kind{}),
          m_facts(Facts()), m_list(RandomRules(dice, m_kind)), m_category(test::CategoryOf(m_list)),
          m_space(*m_category, m_facts), m_index(m_space, m_list.size()), m_brute(m_list, m_kind, m_facts)
    {
        for (std::size_t i = 0; i < Names.size(); ++i) {
            m_attributes.push_back(m_space.AttributeOf(Names[i]));
            m_cells.emplace_back();
            for (const rules::Cell& value : m_brute.Values(i))
                m_cells[i].push_back(m_attributes[i] ? m_space.Find(*m_attributes[i], value) : std::nullopt);
        }
        for (std::size_t i = 0; i < Names.size(); ++i) {
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
    rules::CategoryFacts Facts() const
    {
        rules::CategoryFacts facts;
        for (std::size_t i = 1; i < Names.size(); ++i)
            facts.push_back({.name = Names[i], .valueList = m_kind.list});
        return facts;
    }

    bool IsIn(const rules::Region& region, std::size_t place, std::optional<std::size_t> without = {}) const
    {
        for (std::size_t i = 0; i < Names.size(); ++i) {
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
            for (std::size_t i = 0; i < Names.size(); ++i)
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
                if (condition.attribute == Names[attribute] &&
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
        for (std::size_t attribute = 1; attribute < Names.size(); ++attribute) {
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

    Kind m_kind;
    rules::CategoryFacts m_facts;
    std::vector<rules::Rule> m_list;
    rules::SmallCategoryPtr m_category;
    rules::CellSpace m_space;
    rules::RegionIndex m_index;
    Brute m_brute;
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
    Dice dice(seed);
    for (std::size_t list = 0; list < lists && !HasFailure(); ++list) {
        const Trial trial(dice);
        SCOPED_TRACE("seed " + std::to_string(seed) + ", list " + std::to_string(list + 1) + "\n" +
                     trial.Told());
        trial.Compare();
    }
}
