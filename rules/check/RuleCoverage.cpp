#include "rules/check/RuleCoverage.h"

#include <algorithm>

namespace rules {

namespace {

/// The part of the effort that one rule may take, so that it does not cost the others their answer, and that
/// which the rests may take.
constexpr long long PartForOne = 20;
constexpr long long PartForRests = 10;

/// A share of an effort: what is used of it is taken from the whole.
class Share
{
public:
    Share(Effort& whole, long long most)
        : m_whole(whole), m_given(std::min(whole.left, most)), m_share{m_given}
    {
    }
    ~Share() { m_whole.left -= m_given - std::max(m_share.left, 0LL); }
    Share(const Share&) = delete;
    Share& operator=(const Share&) = delete;

    Effort& Own() { return m_share; }

private:
    Effort& m_whole;
    long long m_given;
    Effort m_share;
};

class Asking
{
public:
    Asking(const RegionIndex& index, long long effort)
        : m_index(index), m_space(index.Space()), m_answers{effort}, m_rests{effort / PartForRests},
          m_forOne(effort / PartForOne)
    {
    }

    RuleCoverage Of(std::size_t rule)
    {
        RuleCoverage coverage;
        if (!m_space.IsPossible(rule)) {
            coverage.state = RuleCoverage::State::Impossible;
            return coverage;
        }
        if (!FindOneHider(rule, coverage)) FindHiders(rule, coverage);
        if (coverage.state == RuleCoverage::State::Applies) FindRest(rule, coverage);
        return coverage;
    }

private:
    std::size_t Attributes() const { return m_space.Attributes().size(); }

    CellSet Before(std::size_t rule) const
    {
        CellSet before = m_index.Possible();
        before.CutAt(rule);
        return before;
    }

    bool FindOneHider(std::size_t rule, RuleCoverage& coverage) const
    {
        CellSet hiding = Before(rule);
        for (std::size_t i = 0; i < Attributes(); ++i)
            hiding &= m_index.Containing(i, m_space.SetOf(rule, i));
        if (hiding.IsEmpty()) return false;
        coverage.state = RuleCoverage::State::Hidden;
        coverage.hiders.push_back(hiding.First());
        return true;
    }

    /// Of the components that a rule holds for, those that lack every attribute that it does not test are the
    /// hardest to take: only rules that do not test these either hold for them. So it is enough to look at
    /// them.
    void FindHiders(std::size_t rule, RuleCoverage& coverage)
    {
        CellSet meeting = Before(rule);
        std::vector<std::size_t> tested;
        for (std::size_t i = 0; i < Attributes(); ++i) {
            const std::uint32_t set = m_space.SetOf(rule, i);
            if (set != CellSpace::All) tested.push_back(i);
            meeting &= set == CellSpace::All ? m_index.Containing(i, set) : m_index.Meeting(i, set);
        }
        if (meeting.Count() < 2) return;
        std::vector<std::size_t> rules;
        meeting.Each([&](std::size_t other) { rules.push_back(other); });
        Share share(m_answers, m_forOne);
        Cover cover(PartOf(rule, tested), PartsOf(rules, tested), Cover::Purpose::Answer, share.Own());
        const Cover::Answer answer = cover.Ask();
        if (answer == Cover::Answer::Unknown) coverage.state = RuleCoverage::State::Undecided;
        if (answer != Cover::Answer::Covered) return;
        coverage.state = RuleCoverage::State::Hidden;
        for (const std::size_t hider : cover.SmallestCover(coverage.isSmallest))
            coverage.hiders.push_back(rules[hider]);
    }

    void FindRest(std::size_t rule, RuleCoverage& coverage)
    {
        CellSet meeting = Before(rule);
        std::vector<std::size_t> all;
        for (std::size_t i = 0; i < Attributes(); ++i) {
            all.push_back(i);
            meeting &= m_index.Meeting(i, m_space.SetOf(rule, i));
        }
        std::vector<std::size_t> rules;
        meeting.Each([&](std::size_t other) {
            rules.push_back(other);
            if (!IsWithin(other, rule)) coverage.takers.push_back(other);
        });
        if (coverage.takers.empty()) return;
        Share share(m_rests, m_forOne);
        if (share.Own().left <= 0) {
            coverage.isLeftAll = false;
            return;
        }
        Cover cover(PartOf(rule, all), PartsOf(rules, all), Cover::Purpose::Rest, share.Own());
        coverage.left = cover.Rest(MostLeft, coverage.isLeftAll);
    }

    bool IsWithin(std::size_t inner, std::size_t outer) const
    {
        for (std::size_t i = 0; i < Attributes(); ++i) {
            if (m_space.SetOf(inner, i) == m_space.SetOf(outer, i)) continue;
            if (!m_space.Cells(inner, i).IsWithin(m_space.Cells(outer, i))) return false;
        }
        return true;
    }

    Cover::Part PartOf(std::size_t rule, const std::vector<std::size_t>& attributes) const
    {
        Cover::Part part;
        for (const std::size_t attribute : attributes)
            part.push_back(&m_space.Cells(rule, attribute));
        return part;
    }

    std::vector<Cover::Part> PartsOf(const std::vector<std::size_t>& rules,
                                     const std::vector<std::size_t>& attributes) const
    {
        std::vector<Cover::Part> parts;
        parts.reserve(rules.size());
        for (const std::size_t rule : rules)
            parts.push_back(PartOf(rule, attributes));
        return parts;
    }

    const RegionIndex& m_index;
    const CellSpace& m_space;
    Effort m_answers;
    Effort m_rests;
    long long m_forOne;
};

} // namespace

std::vector<RuleCoverage> CoverageOf(const RegionIndex& index, long long effort)
{
    Asking asking(index, effort);
    std::vector<RuleCoverage> coverage;
    for (std::size_t rule = 0; rule < index.Rules(); ++rule)
        coverage.push_back(asking.Of(rule));
    return coverage;
}

Cover::Answer CoversAllFilled(const RegionIndex& index, long long effort)
{
    const CellSpace& space = index.Space();
    if (index.Possible().IsEmpty()) return Cover::Answer::Open;
    // A text that nobody names is taken by rules that do not look at the attribute and by ≠ only, so that
    // this component mostly has the answer.
    CellSet unnamed = index.Possible();
    Cover::Part target;
    for (std::size_t i = 0; i < space.Attributes().size(); ++i) {
        unnamed &= index.Holding(i, space.Attributes()[i].other);
        target.push_back(&space.Attributes()[i].filled);
    }
    if (unnamed.IsEmpty()) return Cover::Answer::Open;
    std::vector<Cover::Part> parts;
    index.Possible().Each([&](std::size_t rule) {
        Cover::Part& part = parts.emplace_back();
        for (std::size_t attribute = 0; attribute < target.size(); ++attribute)
            part.push_back(&space.Cells(rule, attribute));
    });
    Effort share{effort / PartForOne};
    return Cover(target, parts, Cover::Purpose::Answer, share).Ask();
}

} // namespace rules
