#include "rules/match/CategoryMatcher.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

bool IsLowerOperator(const CString& text)
{
    return text == u"＞"_s || text == u"≥"_s;
}

bool IsUpperOperator(const CString& text)
{
    return text == u"＜"_s || text == u"≤"_s;
}

} // namespace

const AttributeFacts* FactsOf(const CString& name, const CategoryFacts& facts)
{
    const CString wanted = Normalised(name);
    const auto found = std::find_if(facts.begin(), facts.end(), [&](const AttributeFacts& fact) {
        return Normalised(fact.name) == wanted;
    });
    return found == facts.end() ? nullptr : &*found;
}

Defect DefectOf(const Condition& condition, const NumberReader& numbers)
{
    if (WithoutBlanks(condition.attribute).isEmpty()) return Defect::NoAttribute;
    if (condition.isValueForm) {
        const bool known = condition.equalOperator == u"＝"_s || condition.equalOperator == u"≠"_s;
        return known ? Defect::None : Defect::UnknownOperator;
    }
    // The operator of a bound that is not there is of no account.
    if (!condition.lowerBound.isEmpty() && !IsLowerOperator(condition.lowerOperator))
        return Defect::UnknownOperator;
    if (!condition.upperBound.isEmpty() && !IsUpperOperator(condition.upperOperator))
        return Defect::UnknownOperator;
    for (const CString& bound : {condition.lowerBound, condition.upperBound})
        if (!bound.isEmpty() && !numbers.Read(bound)) return Defect::BoundNotANumber;
    return Defect::None;
}

bool CategoryMatcher::Test::Holds(const CellKind& kind) const noexcept
{
    switch (form) {
    case Form::Equal:
        return kind.text == first || kind.number == second;
    case Form::Unequal:
        return kind.text != CellKind::Missing && kind.text != first && kind.number != second;
    case Form::Range:
        return first <= kind.range && kind.range <= second;
    }
    return false;
}

CategoryMatcher::CategoryMatcher(SmallCategoryPtr category, const CategoryFacts& facts)
    : m_category(std::move(category))
{
    CollectKnown(facts);
    for (std::size_t index = 0; index < m_category->rules.size(); ++index) {
        const Rule& rule = m_category->rules[index];
        if (rule.isDefault) {
            if (m_default == NoRule) m_default = static_cast<RuleIndex>(index);
            continue;
        }
        std::vector<Test> tests;
        const auto candidate = static_cast<std::uint32_t>(m_candidates.size());
        const bool mayApply =
            std::all_of(rule.conditions.begin(), rule.conditions.end(),
                        [&](const Condition& condition) { return Compile(condition, candidate, tests); });
        if (!mayApply) continue;
        m_candidates.push_back(static_cast<RuleIndex>(index));
        m_tests.insert(m_tests.end(), tests.begin(), tests.end());
    }
}

/// The index of the attribute of that name, which is added when it is new.
std::size_t CategoryMatcher::AttributeOf(const CString& name, const CategoryFacts& facts)
{
    const auto [place, isNew] = m_attributeByName.try_emplace(Normalised(name), m_attributes.size());
    if (isNew) {
        const AttributeFacts* fact = FactsOf(name, facts);
        m_attributes.push_back({.name = WithoutBlanks(name).toString(),
                                .code = fact != nullptr ? fact->code : CString(),
                                .unit = fact != nullptr ? fact->unit : CString(),
                                .isOwnName = place->first == OwnName,
                                .numbers = NumberReader(fact != nullptr ? fact->valueList : CStringArray())});
        m_known.emplace_back();
    }
    return place->second;
}

/// Finds the attributes and all that their conditions compare with.
void CategoryMatcher::CollectKnown(const CategoryFacts& facts)
{
    for (const Rule& rule : m_category->rules) {
        if (rule.isDefault) continue;
        for (const Condition& condition : rule.conditions) {
            if (WithoutBlanks(condition.attribute).isEmpty()) continue;
            const std::size_t attribute = AttributeOf(condition.attribute, facts);
            Known& known = m_known[attribute];
            if (condition.isValueForm) {
                known.texts.try_emplace(Normalised(condition.value), known.texts.size());
                if (const auto number = PlainNumber(condition.value))
                    known.numbers.try_emplace(*number, known.numbers.size());
            } else {
                known.hasRanges = true;
                for (const CString& bound : {condition.lowerBound, condition.upperBound})
                    if (const auto number = m_attributes[attribute].numbers.Read(bound))
                        known.bounds.push_back(*number);
            }
        }
    }
    for (Known& known : m_known) {
        std::sort(known.bounds.begin(), known.bounds.end());
        known.bounds.erase(std::unique(known.bounds.begin(), known.bounds.end()), known.bounds.end());
    }
}

/// Appends the test of a condition; false when it can hold for no component.
bool CategoryMatcher::Compile(const Condition& condition, std::uint32_t rule, std::vector<Test>& tests) const
{
    const auto place = m_attributeByName.find(Normalised(condition.attribute));
    if (place == m_attributeByName.end()) return false;
    if (DefectOf(condition, m_attributes[place->second].numbers) != Defect::None) return false;
    Test test;
    test.rule = rule;
    test.attribute = static_cast<std::uint32_t>(place->second);
    if (!(condition.isValueForm ? CompileValue(condition, test) : CompileRange(condition, test)))
        return false;
    tests.push_back(test);
    return true;
}

bool CategoryMatcher::CompileValue(const Condition& condition, Test& test) const
{
    const Known& known = m_known[test.attribute];
    test.form = condition.equalOperator == u"＝"_s ? Test::Form::Equal : Test::Form::Unequal;
    test.first = known.texts.at(Normalised(condition.value));
    const auto number = PlainNumber(condition.value);
    test.second = number ? known.numbers.at(*number) : Test::NoNumber;
    return true;
}

bool CategoryMatcher::CompileRange(const Condition& condition, Test& test) const
{
    const Known& known = m_known[test.attribute];
    const NumberReader& numbers = m_attributes[test.attribute].numbers;
    test.form = Test::Form::Range;
    test.first = 0;
    test.second = static_cast<std::uint32_t>(2 * known.bounds.size());
    if (!condition.lowerBound.isEmpty()) {
        const std::uint32_t bound = RangeOf(known, *numbers.Read(condition.lowerBound));
        test.first = condition.lowerOperator == u"≥"_s ? bound : bound + 1;
    }
    if (!condition.upperBound.isEmpty()) {
        const std::uint32_t bound = RangeOf(known, *numbers.Read(condition.upperBound));
        test.second = condition.upperOperator == u"≤"_s ? bound : bound - 1;
    }
    return test.first <= test.second;
}

/// The elementary range of a number: 2i+1 for bound i itself, 2i for what lies between it and the one before.
std::uint32_t CategoryMatcher::RangeOf(const Known& known, const Decimal& number) const
{
    const auto place = std::lower_bound(known.bounds.begin(), known.bounds.end(), number);
    const auto below = static_cast<std::uint32_t>(place - known.bounds.begin());
    return 2 * below + (place != known.bounds.end() && *place == number ? 1 : 0);
}

std::vector<std::optional<std::size_t>> CategoryMatcher::ColumnsFor(const CStringArray& headers) const
{
    std::map<CString, std::size_t> byHeader;
    for (qsizetype i = 0; i < headers.size(); ++i)
        byHeader.try_emplace(Normalised(headers[i]), static_cast<std::size_t>(i));
    std::vector<std::optional<std::size_t>> columns;
    for (const Attribute& attribute : m_attributes) {
        std::optional<std::size_t>& column = columns.emplace_back();
        if (attribute.isOwnName) continue;
        const CString withUnit =
            attribute.unit.isEmpty() ? CString() : WithUnit(attribute.name, attribute.unit);
        for (const CString& header : {attribute.name, attribute.code, withUnit}) {
            const auto found = byHeader.find(Normalised(header));
            if (header.isEmpty() || found == byHeader.end()) continue;
            column = found->second;
            break;
        }
    }
    return columns;
}

CellKind CategoryMatcher::Classify(std::size_t attribute, QStringView cell) const
{
    if (WithoutBlanks(cell).isEmpty()) return {};
    const Known& known = m_known[attribute];
    CellKind kind;
    const auto text = known.texts.find(Normalised(cell));
    kind.text = text == known.texts.end() ? CellKind::None : text->second;
    if (!known.numbers.empty()) {
        if (const auto number = PlainNumber(cell)) {
            const auto found = known.numbers.find(*number);
            if (found != known.numbers.end()) kind.number = found->second;
        }
    }
    if (known.hasRanges) {
        if (const auto number = m_attributes[attribute].numbers.Read(cell))
            kind.range = RangeOf(known, *number);
    }
    return kind;
}

CellKind CategoryMatcher::Classify(std::size_t attribute, const Decimal& number, Writing writing) const
{
    const Known& known = m_known[attribute];
    if (writing == Writing::Shortest && !known.texts.empty()) return Classify(attribute, number.ToText());
    CellKind kind{.text = CellKind::None};
    if (writing != Writing::OtherListed) {
        const auto found = known.numbers.find(number);
        if (found != known.numbers.end()) kind.number = found->second;
    }
    if (known.hasRanges) kind.range = RangeOf(known, number);
    return kind;
}

std::optional<std::span<const CategoryMatcher::Test>> CategoryMatcher::TestsOf(RuleIndex rule) const
{
    const auto place = std::lower_bound(m_candidates.begin(), m_candidates.end(), rule);
    if (place == m_candidates.end() || *place != rule) return std::nullopt;
    const auto candidate = static_cast<std::uint32_t>(place - m_candidates.begin());
    const auto begin = std::partition_point(m_tests.begin(), m_tests.end(),
                                            [&](const Test& test) { return test.rule < candidate; });
    const auto end =
        std::partition_point(begin, m_tests.end(), [&](const Test& test) { return test.rule == candidate; });
    return std::span<const Test>(begin, end);
}

RuleIndex CategoryMatcher::Match(std::span<const Cell> cells) const
{
    std::vector<CellKind> kinds(m_attributes.size());
    for (std::size_t i = 0; i < kinds.size(); ++i)
        if (cells[i]) kinds[i] = Classify(i, *cells[i]);
    auto test = m_tests.begin();
    for (std::uint32_t candidate = 0; candidate < m_candidates.size(); ++candidate) {
        bool holds = true;
        for (; test != m_tests.end() && test->rule == candidate; ++test)
            holds = holds && test->Holds(kinds[test->attribute]);
        if (holds) return m_candidates[candidate];
    }
    return m_default;
}

} // namespace rules
