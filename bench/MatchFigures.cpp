#include "bench/MatchFigures.h"

#include "bench/Measure.h"
#include "rules/match/Matching.h"
#include "tests/rules/reference/ReferenceMatcher.h"

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr std::size_t Components = 1'000'000;
constexpr std::size_t Sample = 500;
constexpr std::size_t ManyRules = 3'700;
constexpr std::size_t FewRules = 370;

const CString Material = u"材质"_s;
const CString Diameter = u"公称直径"_s;
const CString Connection = u"连接方式"_s;
const CStringArray Headers{Material, Diameter, Connection};
constexpr std::array Bounds{0, 15, 20, 25, 32, 40, 50, 65, 80, 100, 125, 150, 200, 250, 300, 350};
constexpr std::size_t Materials = 20;

rules::Condition Is(const CString& attribute, const CString& value)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = u"＝"_s;
    condition.value = value;
    return condition;
}

rules::Condition Between(const CString& attribute, int lower, int upper)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.isValueForm = false;
    condition.lowerOperator = u"＞"_s;
    condition.lowerBound = QString::number(lower);
    condition.upperOperator = u"≤"_s;
    condition.upperBound = QString::number(upper);
    return condition;
}

CString MaterialName(std::size_t index)
{
    return u"镀锌钢管%1型"_s.arg(index);
}

CString ConnectionName(std::size_t index)
{
    return u"沟槽连接%1"_s.arg(index);
}

/// A category with every combination of material, diameter range and connection, and components drawn from
/// these values alike; one in twenty has a material that no rule knows.
struct Work
{
    rules::SmallCategoryPtr category;
    std::vector<std::array<CString, 3>> components;

    explicit Work(std::size_t ruleCount)
    {
        auto made = std::make_shared<rules::SmallCategory>();
        const std::size_t ranges = Bounds.size() - 1;
        for (std::size_t i = 0; i < ruleCount; ++i) {
            rules::Rule rule;
            const std::size_t range = i / Materials % ranges;
            rule.conditions = {Is(Material, MaterialName(i % Materials)),
                               Between(Diameter, Bounds[range], Bounds[range + 1]),
                               Is(Connection, ConnectionName(i / Materials / ranges))};
            made->rules.push_back(std::move(rule));
        }
        made->rules.emplace_back().isDefault = true;
        category = std::move(made);

        const std::size_t connections = (ruleCount - 1) / Materials / ranges + 1;
        std::mt19937 random(20'240'601);
        components.reserve(Components);
        for (std::size_t i = 0; i < Components; ++i)
            components.push_back({MaterialName(random() % (Materials + 1)),
                                  QString::number(Bounds[1 + random() % ranges]),
                                  ConnectionName(random() % connections)});
    }
};

/// Compiles the rules and matches all components from their texts.
void MatchAll(const Work& work)
{
    rules::Matching matching(
        std::make_shared<const rules::CategoryMatcher>(work.category, rules::CategoryFacts()));
    std::uint64_t sum = 0;
    std::array<rules::Matching::Value, 3> values{};
    for (const std::array<CString, 3>& cells : work.components) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            values[i] = matching.Resolve(i, cells[i]);
        sum += static_cast<std::uint64_t>(matching.Match(values));
    }
    Keep(&sum);
}

void MatchSample(const Work& work)
{
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < Sample; ++i) {
        test::Component component;
        for (std::size_t attribute = 0; attribute < 3; ++attribute)
            component.cells[Headers[static_cast<qsizetype>(attribute)]] = work.components[i][attribute];
        sum += test::ReferenceMatch(work.category->rules, {}, component);
    }
    Keep(&sum);
}

} // namespace

bool Match(int rounds)
{
    const Work work(ManyRules);
    const Timed timed = Alternate(
        rounds, [&] { MatchAll(work); }, [&] { MatchSample(work); });
    const double peer = timed.peerMs * (static_cast<double>(Components) / Sample);
    return Report({"match", "reference_scaled", 0.02}, timed.oursMs, peer, timed.oursMs / peer);
}

bool MatchGrowth(int rounds)
{
    const Work many(ManyRules);
    const Work few(FewRules);
    const Timed timed = Alternate(
        rounds, [&] { MatchAll(many); }, [&] { MatchAll(few); });
    return Report({"match_growth", "370_rules", 1.5}, timed.oursMs, timed.peerMs, timed.Ratio());
}

} // namespace bench
