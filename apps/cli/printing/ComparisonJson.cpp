#include "cli/printing/ComparisonJson.h"

#include "rules/compare/DifferenceText.h"

namespace cli {

namespace {

QStringView WordOf(const rules::RuleDifference& rule)
{
    if (rule.IsAdded()) return u"added";
    if (rule.IsRemoved()) return u"removed";
    return rule.isChanged ? u"changed" : u"moved";
}

void WriteRule(JsonWriter& json, const rules::CategoryDifference& category, const rules::RuleDifference& rule)
{
    json.BeginObject();
    json.Key(u"change").Text(WordOf(rule));
    if (!rule.IsAdded()) json.Key(u"before").Number(rule.before + 1);
    if (!rule.IsRemoved()) json.Key(u"after").Number(rule.after + 1);
    json.Key(u"moved").Bool(rule.isMoved);
    json.Key(u"id").Number(category.RuleOf(rule).id);
    json.Key(u"rule").Text(category.RuleOf(rule).Text());
    json.Key(u"details").BeginArray();
    for (const CString& line : rules::Details(category, rule))
        json.Text(line);
    json.EndArray().EndObject();
}

qint64 Count(std::size_t count)
{
    return static_cast<qint64>(count);
}

} // namespace

void WriteComparison(JsonWriter& json, const rules::Comparison& comparison)
{
    json.Key(u"added").Number(Count(comparison.Added()));
    json.Key(u"removed").Number(Count(comparison.Removed()));
    json.Key(u"changed").Number(Count(comparison.Changed()));
    json.Key(u"moved").Number(Count(comparison.Moved()));
    json.Key(u"renumbered").Number(Count(comparison.renumbered));
    json.Key(u"completed").Number(Count(comparison.completed));
    json.Key(u"dropped").Number(Count(comparison.dropped));
    json.Key(u"categories").BeginArray();
    for (const rules::CategoryDifference& category : comparison.categories) {
        json.BeginObject();
        json.Key(u"category").Text(category.text);
        json.Key(u"rules").BeginArray();
        for (const rules::RuleDifference& rule : category.rules)
            WriteRule(json, category, rule);
        json.EndArray().EndObject();
    }
    json.EndArray();
}

} // namespace cli
