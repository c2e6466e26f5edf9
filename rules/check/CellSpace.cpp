#include "rules/check/CellSpace.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

using Test = CategoryMatcher::Test;
using Writing = CategoryMatcher::Writing;

/// Conditions as keys: equal in all but their id. Operators tell few of them apart.
struct ConditionHash
{
    std::size_t operator()(const Condition* condition) const noexcept
    {
        return qHashMulti(0, condition->attribute, condition->value, condition->lowerBound,
                          condition->upperBound);
    }
};
struct ConditionEqual
{
    bool operator()(const Condition* a, const Condition* b) const
    {
        return a->isValueForm == b->isValueForm && a->attribute == b->attribute && a->value == b->value &&
               a->equalOperator == b->equalOperator && a->lowerOperator == b->lowerOperator &&
               a->lowerBound == b->lowerBound && a->upperOperator == b->upperOperator &&
               a->upperBound == b->upperBound;
    }
};

struct KindHash
{
    std::size_t operator()(const CellKind& kind) const noexcept
    {
        return qHashMulti(0, kind.text, kind.number, kind.range);
    }
};

/// A number between two, or one below or above.
Decimal Between(const Decimal& low, const Decimal& high)
{
    static const Decimal Half = *Decimal::Parse(u"0.5");
    return (low + high) * Half;
}

} // namespace

/// Makes the space: first the distinct conditions, then the cells of each attribute, then the sets.
class CellSpace::Builder
{
public:
    Builder(CellSpace& space, const SmallCategory& category, const CategoryFacts& facts)
        : m_space(space), m_category(category), m_facts(facts)
    {
        CollectConditions();
        m_space.m_matcher = std::make_shared<const CategoryMatcher>(m_distinct, facts);
        const std::size_t count = Matcher().Attributes().size();
        m_space.m_attributes.resize(count);
        m_space.m_cellKinds.resize(count);
        m_space.m_sets.resize(count);
        CollectTexts();
        for (std::size_t attribute = 0; attribute < count; ++attribute)
            MakeCells(attribute);
        MakeConditionSets();
        MakeRuleSets();
    }

private:
    const CategoryMatcher& Matcher() const { return *m_space.m_matcher; }

    /// A value that a condition names, or the value list.
    struct Named
    {
        CString text;
        std::optional<Decimal> number; ///< that ranges take it for
        bool isListed = false;
    };

    /// A rule of its own for each distinct condition, so that it is compiled once, and for every condition
    /// the index of that rule.
    void CollectConditions()
    {
        auto distinct = std::make_shared<rules::SmallCategory>();
        std::unordered_map<const Condition*, std::uint32_t, ConditionHash, ConditionEqual> known;
        std::vector<std::uint32_t>& conditions = m_space.m_conditions;
        for (const Rule& rule : m_category.rules) {
            m_space.m_firstCondition.push_back(conditions.size());
            if (rule.isDefault) continue;
            for (const Condition& condition : rule.conditions) {
                const auto [place, isNew] =
                    known.try_emplace(&condition, static_cast<std::uint32_t>(distinct->rules.size()));
                if (isNew) distinct->rules.emplace_back().conditions.push_back(condition);
                conditions.push_back(place->second);
            }
        }
        m_space.m_firstCondition.push_back(conditions.size());
        m_distinct = std::move(distinct);
    }

    /// The values and numbers that conditions on each attribute name.
    void CollectTexts()
    {
        m_values.resize(Matcher().Attributes().size());
        m_points.resize(m_values.size());
        std::map<CString, std::size_t> indexes;
        for (std::size_t i = 0; i < m_values.size(); ++i)
            indexes.emplace(Normalised(Matcher().Attributes()[i].name), i);
        for (const Rule& rule : m_distinct->rules) {
            const Condition& condition = rule.conditions.front();
            const auto place = indexes.find(Normalised(condition.attribute));
            if (place == indexes.end()) continue;
            if (condition.isValueForm) {
                const CString normalised = Normalised(condition.value);
                AddText(place->second, condition.value);
                if (normalised != condition.value) AddText(place->second, normalised);
            } else {
                AddPoint(place->second, condition.lowerBound);
                AddPoint(place->second, condition.upperBound);
            }
        }
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            const AttributeFacts* const fact = FactsOf(Matcher().Attributes()[i].name, m_facts);
            if (fact == nullptr) continue;
            for (const CString& value : fact->valueList)
                AddText(i, value, true);
        }
    }

    void AddText(std::size_t attribute, const CString& text, bool isListed = false)
    {
        if (WithoutBlanks(text).isEmpty()) return;
        m_values[attribute].push_back({text, AddPoint(attribute, text), isListed});
    }

    std::optional<Decimal> AddPoint(std::size_t attribute, const CString& text)
    {
        std::optional<Decimal> number = m_space.Numbers(attribute).Read(text);
        if (number) m_points[attribute].push_back(*number);
        return number;
    }

    /// The cell of a text, which is made when it is of a kind that was not there before.
    Cell CellOf(std::size_t attribute, const CString& text)
    {
        return CellOf(attribute, Matcher().Classify(attribute, text));
    }
    Cell CellOf(std::size_t attribute, const CellKind& kind)
    {
        std::vector<CellKind>& kinds = m_space.m_cellKinds[attribute];
        const auto [place, isNew] = m_cellByKind.try_emplace(kind, static_cast<Cell>(kinds.size()));
        if (isNew) kinds.push_back(kind);
        return place->second;
    }

    void MakeCells(std::size_t attribute)
    {
        Attribute& made = m_space.m_attributes[attribute];
        made.name = Matcher().Attributes()[attribute].name;
        m_cellByKind.clear();
        CellOf(attribute, CellKind{});
        std::set<CString> seen;
        std::map<Decimal, Cell> listed;
        for (const Named& value : m_values[attribute]) {
            const Cell cell = CellOf(attribute, value.text);
            if (value.isListed && value.number) listed.try_emplace(*value.number, cell);
            if (!PlainNumber(value.text) && seen.insert(Normalised(value.text)).second)
                made.texts.emplace_back(WithoutBlanks(value.text).toString(), cell);
        }
        made.other = CellOf(attribute, CellKind{.text = CellKind::None});
        MakeNumbers(attribute);
        made.count = m_space.m_cellKinds[attribute].size();
        made.filled = CellSet::AllOf(made.count);
        made.filled.Remove(Missing);
        MakeLine(made, listed);
    }

    /// The numbers that conditions and list name, and those between. Where nobody names one, a range without
    /// bounds still tells numbers from texts, and all numbers are one step.
    void MakeNumbers(std::size_t attribute)
    {
        std::vector<Decimal>& points = m_points[attribute];
        std::sort(points.begin(), points.end());
        points.erase(std::unique(points.begin(), points.end()), points.end());
        std::vector<Step>& numbers = m_space.m_attributes[attribute].numbers;
        if (points.empty()) {
            const Cell any = CellOf(attribute, Matcher().Classify(attribute, Decimal(), Writing::Shortest));
            if (any != m_space.m_attributes[attribute].other)
                numbers.push_back({any, {}, {}, false, true, true});
            return;
        }
        for (std::size_t i = 0; i <= points.size(); ++i) {
            const bool isFirst = i == 0;
            const bool isLast = i == points.size();
            const Decimal from = isFirst ? points[i] - Decimal(1) : points[i - 1];
            const Decimal to = isLast ? points[i - 1] + Decimal(1) : points[i];
            const Decimal inside = isFirst ? from : isLast ? to : Between(from, to);
            numbers.push_back({AddNumber(attribute, inside), from, to, false, isFirst, isLast});
            if (!isLast)
                numbers.push_back(
                    {AddNumber(attribute, points[i]), points[i], points[i], true, false, false});
        }
    }

    /// The cells of all writings of a number; that of the shortest one.
    Cell AddNumber(std::size_t attribute, const Decimal& number)
    {
        const Cell shortest = CellOf(attribute, Matcher().Classify(attribute, number, Writing::Shortest));
        CellOf(attribute, Matcher().Classify(attribute, number, Writing::OtherPlain));
        if (!m_space.Numbers(attribute).Forms().empty())
            CellOf(attribute, Matcher().Classify(attribute, number, Writing::OtherListed));
        return shortest;
    }

    static void MakeLine(Attribute& made, const std::map<Decimal, Cell>& listed)
    {
        made.hasList = listed.size() >= 2;
        if (!made.hasList) {
            made.line = made.numbers;
            return;
        }
        for (const auto& [number, cell] : listed)
            made.line.push_back({cell, number, number, true, false, false});
    }

    /// The cells for which each distinct condition holds.
    void MakeConditionSets()
    {
        m_setOfCondition.resize(m_distinct->rules.size());
        m_attributeOfCondition.resize(m_distinct->rules.size());
        m_numberOfSet.resize(m_space.m_sets.size());
        for (std::size_t attribute = 0; attribute < m_space.m_sets.size(); ++attribute)
            m_space.m_sets[attribute].push_back(CellSet::AllOf(m_space.m_attributes[attribute].count));
        for (std::size_t i = 0; i < m_distinct->rules.size(); ++i) {
            const auto tests = Matcher().TestsOf(static_cast<RuleIndex>(i));
            if (!tests || tests->empty()) continue;
            const Test& test = tests->front();
            const std::vector<CellKind>& kinds = m_space.m_cellKinds[test.attribute];
            CellSet cells(kinds.size());
            for (std::size_t cell = 0; cell < kinds.size(); ++cell)
                if (test.Holds(kinds[cell])) cells.Add(cell);
            m_attributeOfCondition[i] = test.attribute;
            if (!cells.IsEmpty()) m_setOfCondition[i] = Number(test.attribute, cells);
        }
    }

    /// The number of a set of cells that is no rule's lack of a condition.
    std::uint32_t Number(std::size_t attribute, const CellSet& cells)
    {
        std::vector<CellSet>& sets = m_space.m_sets[attribute];
        const auto [place, isNew] =
            m_numberOfSet[attribute].try_emplace(cells, static_cast<std::uint32_t>(sets.size()));
        if (isNew) sets.push_back(cells);
        return place->second;
    }

    void MakeRuleSets()
    {
        const std::size_t attributes = m_space.m_attributes.size();
        m_space.m_isPossible.assign(m_category.rules.size(), true);
        m_space.m_setOf.assign(m_category.rules.size() * attributes, All);
        m_space.m_kinds.assign(m_category.rules.size() * attributes, 0);
        for (std::size_t rule = 0; rule < m_category.rules.size(); ++rule) {
            m_space.m_isPossible[rule] = !m_category.rules[rule].isDefault;
            for (const std::uint32_t condition : m_space.ConditionsOf(rule))
                Join(rule, condition);
        }
    }

    /// Adds one more condition to a rule.
    void Join(std::size_t rule, std::uint32_t condition)
    {
        const std::uint32_t number = m_setOfCondition[condition];
        if (number == All) {
            m_space.m_isPossible[rule] = false;
            return;
        }
        const std::size_t attribute = m_attributeOfCondition[condition];
        const std::size_t place = rule * m_space.m_attributes.size() + attribute;
        const Condition& told = m_space.ConditionAt(condition);
        if (!told.isValueForm)
            m_space.m_kinds[place] |= RangeKind;
        else if (told.equalOperator == u"＝"_s)
            m_space.m_kinds[place] |= EqualKind;
        std::uint32_t& set = m_space.m_setOf[place];
        if (set == All || set == number) {
            set = number;
            return;
        }
        CellSet both = m_space.m_sets[attribute][set];
        both &= m_space.m_sets[attribute][number];
        if (both.IsEmpty())
            m_space.m_isPossible[rule] = false;
        else
            set = Number(attribute, both);
    }

    CellSpace& m_space;
    const rules::SmallCategory& m_category;
    const CategoryFacts& m_facts;
    SmallCategoryPtr m_distinct;
    std::vector<std::uint32_t> m_setOfCondition;     ///< `All` for one that never holds
    std::vector<std::size_t> m_attributeOfCondition; ///< beside it
    std::vector<std::map<CellSet, std::uint32_t>> m_numberOfSet;
    std::vector<std::vector<Named>> m_values;   ///< by attribute
    std::vector<std::vector<Decimal>> m_points; ///< by attribute
    // of the attribute whose cells are being made
    std::unordered_map<CellKind, Cell, KindHash> m_cellByKind;
};

CellSpace::CellSpace(const SmallCategory& category, const CategoryFacts& facts)
{
    Builder(*this, category, facts);
}

Region CellSpace::RegionOf(std::size_t rule) const
{
    Region region;
    for (std::size_t attribute = 0; attribute < m_attributes.size(); ++attribute)
        region.push_back(Cells(rule, attribute));
    return region;
}

std::optional<CellSpace::Cell> CellSpace::Find(std::size_t attribute, const rules::Cell& text) const
{
    const CellKind kind = text ? m_matcher->Classify(attribute, *text) : CellKind{};
    const std::vector<CellKind>& kinds = m_cellKinds[attribute];
    const auto place = std::find(kinds.begin(), kinds.end(), kind);
    if (place == kinds.end()) return std::nullopt;
    return static_cast<Cell>(place - kinds.begin());
}

std::optional<std::size_t> CellSpace::AttributeOf(const CString& name) const
{
    const CString wanted = Normalised(name);
    for (std::size_t i = 0; i < m_attributes.size(); ++i)
        if (Normalised(m_attributes[i].name) == wanted) return i;
    return std::nullopt;
}

} // namespace rules
