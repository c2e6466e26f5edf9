#include "rules/BruteForce.h"

#include "tests/rules/reference/ReferenceMatcher.h"

#include <algorithm>
#include <map>
#include <tuple>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// Whether a condition holds for a value, asked of the slow matcher once.
bool HoldsFor(const rules::Condition& condition, const rules::Cell& value, const rules::CategoryFacts& facts)
{
    static std::map<std::tuple<CString, CString, bool>, bool> known;
    const bool hasList = !facts.front().valueList.isEmpty();
    const CString told = condition.Text() + condition.upperOperator;
    const auto [place, isNew] = known.try_emplace({told, value.value_or(u"-"_s), hasList}, false);
    if (isNew) {
        Component component;
        if (value) component.cells[condition.attribute] = *value;
        place->second = ReferenceMatch({RuleOf({condition})}, facts, component) == 0;
    }
    return place->second;
}

} // namespace

BruteForce::BruteForce(const std::vector<rules::Rule>& list, const ListKind& kind,
                       const rules::CategoryFacts& facts)
{
    for (std::size_t attribute = 0; attribute < CoverageNames.size(); ++attribute) {
        CollectValues(attribute, kind);
        Evaluate(attribute, list, facts);
    }
    std::vector<std::size_t> place(CoverageNames.size());
    do {
        m_places.push_back(place);
        m_holding.push_back(HoldingAt(place));
    } while (Next(place));
}

Mask BruteForce::HoldingAt(const std::vector<std::size_t>& place) const
{
    Mask holding = ~Mask{0};
    for (std::size_t attribute = 0; attribute < place.size(); ++attribute)
        holding &= m_masks[attribute][place[attribute]];
    return holding;
}

/// Nothing, a text that nobody names, and what the stocks have; between and around the numbers one each.
void BruteForce::CollectValues(std::size_t attribute, const ListKind& kind)
{
    std::vector<rules::Cell>& values = m_values.emplace_back();
    std::vector<std::size_t>& line = m_lines.emplace_back();
    values = {rules::Cell(), u"谁也不说的"_s};
    if (attribute == 0) {
        for (const CString& text : CoverageTexts)
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

void BruteForce::Evaluate(std::size_t attribute, const std::vector<rules::Rule>& list,
                          const rules::CategoryFacts& facts)
{
    std::vector<Mask>& masks = m_masks.emplace_back();
    for (const rules::Cell& value : m_values[attribute]) {
        Mask& mask = masks.emplace_back(0);
        for (std::size_t rule = 0; rule < list.size(); ++rule) {
            const auto& conditions = list[rule].conditions;
            const bool holds = !list[rule].isDefault &&
                               std::all_of(conditions.begin(), conditions.end(), [&](const auto& condition) {
                                   return condition.attribute != CoverageNames[attribute] ||
                                          HoldsFor(condition, value, facts);
                               });
            if (holds) mask |= Mask{1} << rule;
        }
    }
}

bool BruteForce::Next(std::vector<std::size_t>& place) const
{
    for (std::size_t attribute = 0; attribute < place.size(); ++attribute) {
        if (++place[attribute] < m_values[attribute].size()) return true;
        place[attribute] = 0;
    }
    return false;
}

} // namespace test
